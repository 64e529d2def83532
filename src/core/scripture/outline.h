// The sutra outlines `Form8`: the broad outline `Sok` in `Grid(0)` and the
// fine one `Kam` in `Grid(1)`, each a grid of nine columns filled once. The
// unit of selection is a group, a run of neighbouring rows with the same
// 法華No.; the window shows where the sutra reader's row stands in the
// outline and leads back to it. The model holds what the window paints: cell
// texts and back colours, the selected and top rows, title and caption.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/corpus/corpus.h"
#include "core/reader/texts.h"

namespace suizo::scripture {

// Fields of `Sok` and `Kam`: alike up to 法華No., the page fields differ.
namespace outline_field {
inline constexpr int kSutraName = 1;                        // 經名
inline constexpr int kChapter = 2;                          // 品名
inline constexpr int kHeading = corpus::outline::kHeading;  // 科文
inline constexpr int kNumber = 5;                           // 法華No.
// 蔵経頁行, 開結頁行, 対訳頁行 of `Sok` and of `Kam`.
inline constexpr std::array<int, 3> kSokPages = {8, 9, 10};
inline constexpr std::array<int, 3> kKamPages = {7, 8, 9};
}  // namespace outline_field

inline constexpr int kSoukaGrid = 0;  // `Grid(0)`, `Sok`
inline constexpr int kKamonGrid = 1;  // `Grid(1)`, `Kam`

inline constexpr int kOutlineCols = 9;
inline constexpr std::u16string_view kOutlineFormat = u"||法華No.||蔵経頁行||開結頁行||対訳頁行";
// Twips. Columns 1, 3, 5 and 7 are thin coloured rules.
inline constexpr std::array<int, kOutlineCols> kOutlineColWidths = {7800, 8,   700, 8,  800,
                                                                    8,    800, 8,   800};
inline constexpr int kOutlineHeaderHeight = 400;
inline constexpr int kOutlineHeaderFontSize = 12;  // the header cell of column 0, bold
// Columns 1 to 8 are centred, in the header as well.
constexpr bool OutlineColCentred(int col) {
  return col >= 1;
}

// Colours, BGR numbers.
inline constexpr std::uint32_t kOutlineBack = 15527162;       // 0xECECFA, the grids' own
inline constexpr std::uint32_t kKamonColumn0Back = 14349299;  // 0xDAF3F3
inline constexpr std::uint32_t kRuleBack = 0xAAA0C0;
inline constexpr std::uint32_t kGroupBack = 65535;       // yellow
inline constexpr std::uint32_t kFixedBack = 0x8000000F;  // the system's button face
inline constexpr std::uint32_t kTitleBlue = 0xFF0000;
inline constexpr std::uint32_t kTitleBlack = 0;

inline constexpr std::u16string_view kSoukaTitle = u"法　華　経　総　科";
inline constexpr std::u16string_view kKamonTitle = u"法　華　経　科　文";
inline constexpr std::u16string_view kSoukaCaption = u"法華経総科";
// After a switch the caption is one character short, as it always was.
inline constexpr std::u16string_view kSoukaSwitchCaption = u"法華経総";
inline constexpr std::u16string_view kKamonCaption = u"法華経科文";

// A group reaches at most this many rows each way from the selected row.
inline constexpr int kGroupReach = 13;

// One grid: row 0 is the fixed header, rows 1 to Rows - 1 the table's rows.
struct OutlineGrid {
  int Rows = 1;
  int Row = 0;     // the selected row; 0 only in a grid without rows
  int TopRow = 0;  // the first row in view below the header
  std::uint32_t column0Back = kOutlineBack;
  int groupFirst = 0, groupLast = -1;  // the rows painted yellow; none when first > last
  std::vector<std::u16string> texts;   // row by row, kOutlineCols a row
  std::vector<std::uint32_t> backs;

  std::u16string_view TextMatrix(int row, int col) const { return texts[Cell(row, col)]; }
  std::uint32_t CellBackColor(int row, int col) const { return backs[Cell(row, col)]; }
  // The header cell of column 0: where the selected row stands.
  std::u16string_view Header() const { return texts[0]; }

 private:
  friend class Outline;
  std::size_t Cell(int row, int col) const {
    return static_cast<std::size_t>(row) * kOutlineCols + static_cast<std::size_t>(col);
  }
};

// The size of the grids as the window lays them out, in one unit of its
// choice. Zero heights leave the top row on the selected row.
struct GridMetrics {
  double height = 0;        // the grid's height
  double rowHeight = 0;     // the height of row 1
  double headerHeight = 0;  // the height of the header row
};

// What a key in a grid asks for; the arrows move the grid's row, which the
// window reports through RowChange.
enum class OutlineKey { None, Switch, Go };
OutlineKey OutlineKeyAction(int keyCode);

class Outline {
 public:
  // Fills both grids from the loaded `Sok` and `Kam`; `corpus` must outlive
  // the model, which reads `Hok` for the header and for SutraGo.
  explicit Outline(const corpus::Corpus& corpus);

  // Set by the sutra reader before InitSub.
  int SKflag = 0;              // the grid shown: 0 `Sok`, 1 `Kam`
  int HKno = 0;                // the reader's `Lpos`, compared with 法華No.
  std::int32_t ParentWnd = 0;  // handle of the reader SutraGo returns to

  GridMetrics metrics;  // set by the window at each layout

  // The grid of `SKflag`: the one shown and given the focus.
  int ShownGrid() const { return SKflag == kKamonGrid ? kKamonGrid : kSoukaGrid; }

  const OutlineGrid& Grid(int index) const { return grids_[static_cast<std::size_t>(index)]; }
  std::u16string Label1 = std::u16string(kSoukaTitle);
  std::uint32_t Label1Colour = kTitleBlack;
  std::u16string Caption = std::u16string(kSoukaCaption);

  // Brings the window to `SKflag` and puts both grids at `HKno`.
  void InitSub();
  // Selects the group of `row` and scrolls it a little above the middle.
  void SelectRow(int grid, int row);
  // The grid's row moved to `row` (a key or a click): a step of one row
  // moves by whole groups.
  void RowChange(int grid, int row);
  // The user scrolled the grid.
  void Scroll(int grid, int topRow);
  // After a resize: the selected row of the grid shown stays in view.
  void Layout();
  // `Command1`: the other grid, following the place of this one.
  void Command1();
  // `SutraGo`: the reader's row and chapter for the selected row of the grid
  // shown; the caller applies them, shows its reader and hides this window.
  // Nothing when the row names no row of `Hok`.
  std::optional<search::Position> SutraGo() const;

 private:
  void Fill(int grid, const corpus::Table& table, const std::array<int, 3>& pages);
  void Clear(int grid);
  void Paint(int grid);
  void WriteHeader(int grid);
  int StepTo(int grid, int oldRow, int row) const;
  // The first row of the last group whose 法華No. is not above `number`.
  std::optional<int> PlaceOf(int grid, double number) const;
  int TopRowFor(int row) const;
  void Show(int grid, std::u16string_view caption);

  OutlineGrid& grid(int index) { return grids_[static_cast<std::size_t>(index)]; }
  const corpus::Table& table(int grid) const;

  const corpus::Corpus& corpus_;
  std::array<OutlineGrid, 2> grids_;
};

}  // namespace suizo::scripture
