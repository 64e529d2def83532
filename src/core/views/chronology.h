// The chronology `Form12`: the table `Nen` as a grid, one event a row beside
// the offices of its year, or folded to one row an era so that the user can
// pick an era and open it again at that place. It has its own search on the
// event text, a refinement on the display mark of `Nen`, links from an event
// to the writings, the record and the sources, and the dialog `Form14` that
// chooses the kinds of event listed. The model keeps what the window paints;
// the window measures wrapped text for it and carries out the jumps.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core/corpus/corpus.h"
#include "core/corpus/selection.h"
#include "core/corpus/settings.h"
#include "core/reader/navigation.h"
#include "core/search/driver.h"

namespace suizo::views {

inline constexpr std::u16string_view kChronologyCaption = u"年表";
inline constexpr std::u16string_view kChronologySection = u"@年表";

// Colours are kept as BGR numbers; they are written here as RGB, as one reads them.
constexpr std::uint32_t Bgr(std::uint32_t rgb) {
  return (rgb & 0xFFu) << 16 | (rgb & 0xFF00u) | (rgb >> 16 & 0xFFu);
}
inline constexpr std::uint32_t kGridBack = 0x80000005;  // the grid's own: window background
inline constexpr std::uint32_t kGridText = 0x80000008;  // window text
inline constexpr std::uint32_t kFixedBack = search::kButtonFace;
inline constexpr std::uint32_t kCurrentBack = Bgr(0xFFFF00);
inline constexpr std::uint32_t kEraBack = Bgr(0xFEF6EA);     // columns 5, 6 and 8
inline constexpr std::uint32_t kDetailBack = Bgr(0xE0E8ED);  // columns 7, 9 and 10
inline constexpr std::uint32_t kFoldedBack = Bgr(0xECE5DC);  // columns 7 to 10 while folded
inline constexpr std::uint32_t kGreyText = Bgr(0x777777);
inline constexpr std::uint32_t kLinkText = Bgr(0x5555AA);
inline constexpr std::uint32_t kBlack = 0;
// The event's colour by its kind (分類 0 to 5).
inline constexpr std::array<std::uint32_t, 6> kKindText = {
    Bgr(0x777777), Bgr(0x660066), Bgr(0x0A7576), Bgr(0x003399), Bgr(0x660000), kBlack};

// The grid: 11 columns, the header row fixed.
inline constexpr int kNenCols = 11;
inline constexpr int kEraCol = 5;    // 年号
inline constexpr int kAgeCol = 6;    // 聖寿
inline constexpr int kDayCol = 7;    // 月日
inline constexpr int kEventCol = 8;  // 事項, wrapped
inline constexpr int kLinkCol = 9;   // 関連・備考
inline constexpr int kClassCol = 10;
inline constexpr int kFirstDetailCol = 7;  // columns 7 to 10 are hidden while folded
inline constexpr std::array<std::u16string_view, kNenCols> kNenHeaders = {
    u"天\n皇", u"院\n政", u"摂\n関",   u"将\n軍",     u"執\n権", u"年　号",
    u"聖寿",   u"月　日", u"事　　項", u"関連・備考", u"C"};
// Twips at the design size; the window multiplies them by its scale.
inline constexpr std::array<int, kNenCols> kNenColWidths = {520, 520,  520,  520,  520, 1800,
                                                            620, 1400, 7000, 1600, 300};
inline constexpr double kNormalRow = 330;
inline constexpr double kHeaderRow = 500;

// Column 9 of an event whose document the selection does not show.
inline constexpr std::u16string_view kBlank = u"  ------ ";

// The key codes the window hands on (Windows virtual-key numbers).
inline constexpr int kKeyEnter = 13;
inline constexpr int kKeySpace = 32;
inline constexpr int kKeyLeft = 37;
inline constexpr int kKeyRight = 39;

// `NenSel(0..7)`: kinds 0 to 5 of event, then the told events, then the
// saint's lifetime only.
using NenSelection = std::array<int, 8>;
inline constexpr NenSelection kDefaultNenSel = {1, 1, 1, 1, 1, 1, 1, 0};
// The 年表No range the last switch keeps.
inline constexpr double kLifetimeFirst = 175;
inline constexpr double kLifetimeLast = 1606;

// `Form14`, caption "設定": one box per entry of `NenSel`.
inline constexpr std::u16string_view kFilterCaption = u"設定";
inline constexpr std::u16string_view kFilterConfirm = u"確定";
inline constexpr std::array<std::u16string_view, 8> kNenSelCaptions = {
    u"国史一般の事項",     u"仏教一般の事項",     u"本尊の書顕書写事項", u"聖人の消息著作事項",
    u"聖人門下の一般事項", u"聖人事跡の主要事項", u"｢…と伝う｣の事項",    u"聖人御在世のみ"};

class ChronologyFilterDialog {
 public:
  explicit ChronologyFilterDialog(const NenSelection& nenSel);

  NenSelection Check2{};
  // The told events mean something only while some kind is listed.
  bool Check2Enabled(int index) const;
  // "確定": the boxes go into `NenSel`; true when they changed (the global
  // changed flag). Cancel is the caller's: it applies nothing.
  bool Command1(NenSelection& nenSel) const;

 private:
  int keptSum_;
};

// One row of the grid: the texts, and the two things its colours follow.
struct ChronologyRow {
  std::array<std::u16string, kNenCols> text;
  int kind = 0;          // 分類: the event's colour
  bool RowLink = false;  // column 9 is a live link
  double height = 0;
};

// What the window copies into its grid. Row 0 is the header; rows 1 to
// `NesMaxY` the list. An empty list keeps one empty row of height 0.
struct ChronologyGrid {
  std::vector<ChronologyRow> rows;
  int Row = 0;  // the current row; 0 before the first move
  int TopRow = 1;
  bool folded = false;
  // Counts the rebuilds, so that a window copies the cells only when they
  // changed and otherwise repaints the rows that moved.
  int generation = 0;

  int Rows() const { return static_cast<int>(rows.size()); }
  std::u16string_view TextMatrix(int row, int col) const;
  double RowHeight(int row) const { return rows[static_cast<std::size_t>(row)].height; }
  // 0 for a column hidden while folded.
  int ColWidth(int col) const;
  std::uint32_t CellBackColor(int row, int col) const;
  std::uint32_t CellForeColor(int row, int col) const;
  bool WordWrap(int col) const { return col == kEventCol; }
};

// `Edit`, the text box over the current event cell, from which the user
// selects and copies.
struct EditBox {
  bool Visible = false;
  int row = 0;
  std::u16string Text;
  std::uint32_t ForeColor = kBlack;
  double Top = 0;  // below the top of the cell, so that the text stands centred
  double Height = 0;
};

// Where a link of an event leads; the window makes the jump in its family.
struct ChronologyJump {
  enum class Target { Reader, Record, Sources };
  Target target = Target::Reader;
  int Mpos = 0;  // the work in the writings' or the sources' list, or 0
  int Lpos = 0;  // a row of the writings, when the event names no work
};

// What a button or key asks of the program beyond the model: the toast,
// the dialogs, the focus, or the family's contents at a work.
struct ChronologyAction {
  bool handled = false;
  bool toast = false;
  bool openFilter = false;    // `Form14`
  bool openSettings = false;  // `Form13`
  bool focusBox = false;
  bool contents = false;  // the family's contents list, at `contentsMpos` when above 0
  reader::FormKind contentsKind = reader::FormKind::Form9;
  int contentsMpos = 0;
};

// The rule of the row heights: each measured height of the hidden label
// `Lab` that exceeds the row doubles it, once per measure.
double FitRowHeight(double rowHeight, std::span<const double> labHeights);

// The age of the saint in a year, as column 6 shows it: there is no year 0,
// and after 年表No 1590 the years since his death, marked "*".
std::u16string AgeText(std::u16string_view seireki, double nenNo);

class Chronology {
 public:
  // Loads the chronology's group of the store at the first opening, then
  // lists and draws at the first event. The corpus and selection outlive
  // the model; the refinement writes the display marks of `Nen`.
  Chronology(corpus::Corpus& corpus, const corpus::Selection& selection,
             const corpus::Settings& settings);

  // --- state the window and the navigation set and read ---
  int Npos = 1;
  std::u16string Nkey;  // 年表No of the current row
  int Fold = 0;
  std::u16string FoldKey, FoldEra;
  NenSelection NenSel = kDefaultNenSel;
  // Heights in the window's unit (the design twips until it scales them).
  double BaseRow = kNormalRow;
  double HeaderRow = kHeaderRow;
  double GridHeight = 0;
  // The height `Lab` takes with `text` at the font and width of column
  // `col`. Without it no text is measured and rows keep their height.
  std::function<double(std::u16string_view text, int col)> MeasureLab;

  std::span<const int> NenOrder() const { return order_; }
  int NesMaxY() const { return static_cast<int>(order_.size()) - 1; }
  const ChronologyGrid& Grid() const { return grid_; }
  const EditBox& Edit() const { return edit_; }

  // --- the controls ---
  std::u16string Combo1;
  std::vector<std::u16string> Combo;  // the history, newest first
  std::u16string Command13Caption() const { return Fold == 1 ? u"▼" : u"▲"; }
  std::u16string Label3Text() const;  // "SrnPos/Srn"
  std::uint32_t Label3Colour = search::kButtonFace;
  bool Label3Enabled = false;
  const std::u16string& Label4() const { return Nkey; }
  std::u16string Label5Text() const;  // "NesMaxY/rows of Nen"
  std::u16string Label1;              // the collection and order
  std::array<std::uint32_t, 11> Clev{};
  search::RefineControls controls;
  bool Command4Enabled = false;   // 翠典
  bool Command5Enabled = false;   // 資料
  bool Command9Enabled = false;   // 史料
  bool Command10Enabled = false;  // 本尊

  // --- the hits ---
  int Srn = 0;
  int SrnPos = 0;
  int RefineCount = 0;
  int HitQuiet = 0;
  // Hit i (from 1): column 0 the position, column 1 the `Nen` row.
  int getSr(int i, int j) const;
  int getSrf(int npos) const;
  const std::vector<std::u16string>& getSw() const { return sw_; }

  // --- routines ---
  void NenSort();
  void Hyouji();
  void Hyouji2();
  void ClevWrite();
  // Mode 0 searches, 1 clears the box and the hits; a jump searches with
  // -1, which leaves the history and the toast alone. True when the toast
  // "** 見つかりません **" is due.
  bool Kensaku(int mode);
  void Kensaku1();
  void SrnBack();
  void SrnNext();
  void ShowEdit();
  void RestoreCellHeight();
  void DisableEdit();
  // Folds or opens (`Command13`, Space).
  void Command13();
  // `Command14` "絞込": false when there was nothing to keep or the stack
  // is full.
  bool Command14();
  void Command15();
  void GetBack();
  void RefineClear();
  void ClearHits();
  void ShowRefine();
  void Label3Click();
  // The grid moved to `row` (a click or a key).
  void RowChange(int row);
  void GoRow(int row);
  void Scroll(int topRow) { grid_.TopRow = topRow; }

  // The links of the current event: `kind` 1 opens the reader, else the
  // record, where the event names a document.
  std::vector<ChronologyJump> GoLink(int kind) const;
  std::vector<ChronologyJump> Command4() const;  // 翠典
  std::vector<ChronologyJump> Command5() const;  // 資料
  std::vector<ChronologyJump> Command9() const;  // 史料
  // Enter or Space on the grid or in `Edit`; the arrows walk the hits.
  std::vector<ChronologyJump> KeyDown(int keyCode);
  // A click on a cell: column 9 of a live link follows it.
  std::vector<ChronologyJump> Click(int row, int col);
  // A double click, `mouseY` the last place the grid reported.
  void DblClick(int col, double mouseY);
  bool HandCursor(int row, int col) const;
  // The place of the current event's work in the writings' or the sources'
  // list, or 0 when it names none that the list shows.
  int WorkPlace(bool sources) const;

  // The selection changed and the store's orders were rebuilt: the list
  // anew, the place found again by `Nkey`, the search of the box run again.
  // True when that search found nothing and the toast is due.
  bool FollowSelection();
  // `Form14` was confirmed with a change (`Command7`): the same, since the
  // hits' positions belong to the old list.
  bool FilterChanged() { return FollowSelection(); }

 private:
  struct LinkCell {
    std::u16string text;
    bool link = false;
  };
  LinkCell Column9(int row) const;
  ChronologyRow MakeRow(int row) const;
  void Reorder();  // `NenSort`, `Hyouji`, the row found by `Nkey`
  void FindByNkey();
  void EnterCell();
  void LeaveCell();
  void PaintRow(int row, bool current);
  void ClearHitList();
  void ClearSearch();  // the hits and the colour of `Label3`
  void UpdateGauge();
  std::u16string_view Field(int row, int field) const;
  int NenRow(int npos) const { return order_[static_cast<std::size_t>(npos)]; }
  bool Listed() const { return NesMaxY() > 0 && Npos >= 1 && Npos <= NesMaxY(); }
  bool OnList(int row) const;  // a row of the grid that shows an event
  std::vector<ChronologyJump> LinkToWritings(int kind) const;
  std::vector<ChronologyJump> LinkToSources() const;

  corpus::Corpus& corpus_;
  const corpus::Selection& selection_;
  const corpus::Settings& settings_;
  std::vector<int> order_{0};
  ChronologyGrid grid_;
  EditBox edit_;
  int generation_ = 0;
  std::vector<std::u16string> sw_;
  std::vector<std::pair<int, int>> sr_{{0, 0}};
  std::vector<std::uint8_t> srf_;
  std::vector<std::u16string> refineWord_;
};

// The chronology as the navigation sees it: the one `Form12` of the
// registry, reached by `GoNen` and `GoNenS`.
class ChronologyWindow : public reader::Hooked<reader::ChronologyView> {
 public:
  ChronologyWindow(corpus::Corpus& corpus, const corpus::Selection& selection,
                   const corpus::Settings& settings);

  Chronology& model() { return model_; }
  const Chronology& model() const { return model_; }
  // Whether the last search found nothing: the caller shows the toast.
  bool toastDue = false;

  std::u16string Combo1() const override { return model_.Combo1; }
  void SetCombo1(std::u16string_view text) override { model_.Combo1 = text; }
  // Draws the list anew and stands on the current place.
  void Hyouji() override;
  void Kensaku(int mode) override;
  int Npos() const override { return model_.Npos; }
  void SetNpos(int npos) override { model_.Npos = npos; }
  void Hyouji2() override;
  void ShowEdit() override;
  std::span<const int> NenOrder() const override { return model_.NenOrder(); }
  void FollowSelection() override;

  // Makes the jumps a link asked for, in this window's family.
  void Follow(reader::Navigator& navigator, const std::vector<ChronologyJump>& jumps);

  // The window repaints after each change a jump or the selection made.
  std::function<void()> onView;

  // Opened from the sources' side: its contents are the sources' list.
  bool FromSources() const;
  // A button of the window: 1 searches the box as it stands, 2 shows the
  // family's contents, 4 to 9 and 13 to 15 as their captions say; 3 and 10
  // lead to views this program does not have and do nothing.
  ChronologyAction Command(int number, std::u16string_view selection, reader::Navigator& navigator);
  // `KeyDownAll`, for the keys the grid does not walk with.
  ChronologyAction KeyDownAll(int keyCode, int shift, reader::Navigator& navigator);
  // A click on a cell of the grid, following a live link.
  void Click(int row, int col, reader::Navigator& navigator);

 private:
  Chronology model_;
};

}  // namespace suizo::views
