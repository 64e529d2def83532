// The two contents lists: the writings' `Form9`, the main window, and the
// sources' `Form15`, which is the same window over `SMok`. The model holds
// what the window shows: the grid's cells, widths, alignments and colours,
// the order label and class strip, the search box with its history and hit
// counter, and the refinement by 印, which narrows the list itself rather
// than confining later searches as the readers' refinement does.
#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "core/corpus/corpus.h"
#include "core/corpus/selection.h"
#include "core/corpus/settings.h"
#include "core/reader/navigation.h"
#include "core/search/driver.h"

namespace suizo::views {

enum class ContentsKind { Writings, Sources };  // `Form9`, `Form15`

inline constexpr int kContentsCols = 8;

// `ColAlignment` values of the grid.
enum class CellAlign { LeftTop, LeftCentre, Centre };

// Colours, as the program's BGR numbers.
inline constexpr std::uint32_t kContentsFixedBack = 0xCCCCCC;     // header row and first column
inline constexpr std::uint32_t kContentsRowBack = 0xDCE5EC;       // #ECE5DC
inline constexpr std::uint32_t kContentsRowOn = 0x00FFFF;         // the current row, yellow
inline constexpr std::uint32_t kCheck1On = 0xFFC0C0;              // #C0C0FF
inline constexpr std::uint32_t kHitsShown = search::kWordColour;  // `Label3` with hits

// At the design size; the window's scale multiplies them.
inline constexpr int kContentsRowHeight = 300;  // twips
inline constexpr double kContentsFontSize = 11;

inline constexpr std::u16string_view kOrderLabelHead = u"並替:";

// What tells the two windows apart.
struct ContentsLayout {
  std::u16string_view FormatString;       // the header, "|" between cells
  std::array<int, kContentsCols> widths;  // twips at the design size
  std::array<CellAlign, kContentsCols> alignments;
  std::array<int, 2> selColumns;  // the header cells `Sel(0)` and `Sel(1)` lie over
  std::u16string_view Label2;     // the title label
  std::u16string_view Caption;
  std::u16string_view FromTag;  // the family handed to every jump
};
const ContentsLayout& LayoutOf(ContentsKind kind);

// The grid as the window copies it. Row 0 is the header, column 0 fixed;
// grid row m shows list position m.
struct ContentsGrid {
  int Rows = 2;  // an empty list keeps two rows, the second with height 0
  int Row = 1;
  int TopRow = 1;
  bool empty = true;
  std::array<int, kContentsCols> ColWidth{};  // twips at the current scale
  std::array<CellAlign, kContentsCols> ColAlignment{};
  int RowHeight = kContentsRowHeight;
  double FontSize = kContentsFontSize;

  std::u16string_view TextMatrix(int row, int col) const;
  // The header is centred but for its first cell, which is left-aligned.
  CellAlign CellAlignment(int row, int col) const;
  // The fixed cells grey; the current row yellow from the first column that
  // is not fixed to the last.
  std::uint32_t CellBackColor(int row, int col) const;
  int RowHeightOf(int row) const { return empty && row == 1 ? 0 : RowHeight; }

 private:
  friend class Contents;
  std::vector<std::u16string> texts_;  // Rows * kContentsCols, row by row
};

// The sizes the window reports after each layout, in one unit of its choice.
struct GridMetrics {
  double height = 0;        // the grid
  double rowHeight = 0;     // row 1
  double headerHeight = 0;  // row 0
};

// A place on the window, for `SetSel`.
struct Rect {
  double left = 0, top = 0, width = 0, height = 0;
};
// `SetSel`: `Sel` fills the header cell, `SelT` with the caption is inset by
// a tenth of the cell on each side.
struct SelPlace {
  Rect Sel, SelT;
};
SelPlace SetSel(const Rect& headerCell);

// One search target switch over the header.
struct TargetSwitch {
  int column = 0;
  std::u16string_view caption;  // the header text of its column
  bool down = false;
};

// The window around the grid.
struct ContentsScreen {
  std::u16string_view Caption, Label2;
  std::u16string Label1;  // the order
  std::uint32_t Label1Back = 0;
  bool ClevVisible = false;  // the writings only
  std::array<std::uint32_t, 11> ClevBack{};
  std::u16string Label3;
  std::uint32_t Label3Back = search::kButtonFace;
  bool Label3Enabled = false;
  std::u16string Label5;  // listed / all
  search::RefineControls refine;
  bool Check1Visible = false;  // the writings only
  bool Check1 = false;
  std::uint32_t Check1Back = search::kButtonFace;
  std::array<TargetSwitch, 2> Sel;
  std::u16string Combo1;
  std::vector<std::u16string> Combo;
};

// Captions of the class strip: "0" to "9", then "S".
std::u16string_view ClevCaption(int index);

// One hit: the list position, the first text row of its document, and its
// record row, by which a refinement marks it.
struct ContentsHit {
  int Mpos = 0;
  int Lpos = 0;
  int row = 0;
};

// What a key asked of the window beyond its own redraw.
struct ContentsKey {
  bool handled = false;  // the key was the window's, not the grid's
  bool redraw = false;
  bool openReader = false;  // as `Command4`
  bool focusBox = false;    // the search box, its text selected
  bool openSettings = false;
};

class Contents {
 public:
  Contents(ContentsKind kind, corpus::Corpus& corpus, corpus::Selection& selection,
           const corpus::Settings& settings);

  ContentsKind kind() const { return kind_; }

  // --- state, under the window's names ---
  int Mpos = 1;
  int Lpos = 0;  // kept on the first text row of the document at `Mpos`
  std::u16string OldMsys, OldLsys;
  std::u16string Combo1;
  std::vector<std::u16string> Combo;  // history, newest first
  int SrTarget = 0;                   // 0 titles; 1 recipients (writings) or authors (sources)
  int KeepTop = 0;
  bool Check1 = false;  // the recipients' second form
  int HitQuiet = 0;
  double Scale = 1;  // the window's size against its design
  GridMetrics metrics;

  // `ConvSui` for the writings, `ConvSir` for the sources: rebuild the lists
  // and let every open window follow, this one included. The program wires
  // the selection routine here; unset, only the store's lists are rebuilt
  // and only this window follows.
  std::function<void()> ConvSui;

  // --- routines ---
  // The grid from the list, then `Hyouji2`, then `Label5`.
  void Hyouji();
  // The hit counter, and the grid moved to `Mpos`.
  void Hyouji2();
  // The class strip and the order label.
  void ClevWrite();
  // Mode 0 searches the target, mode 1 clears box and hits.
  search::Outcome Kensaku(int mode);
  void SrnBack();
  void SrnNext();
  // `KeyDownAll` with the key's code and the shift state (reader::key).
  ContentsKey KeyDownAll(int keyCode, int shift);
  // `Command14` "絞込": keeps the hits as a narrowed list; false when there
  // is nothing to keep or 21 levels are kept already.
  bool Command14();
  // `Command15` "解除": one level back.
  void Command15();
  void RefineClear();
  // Replays the kept refinements after the placements were made anew.
  void GetBack();
  search::Outcome Label3Click();
  // A target switch: a box with text is searched anew on the new target.
  search::Outcome SelClick(int target);
  // "切替": the other recipient text, the list where it was.
  void Check1Click();
  // The writings open the selection dialog (true); the sources switch their
  // order and rebuild (false).
  bool Label1Click();
  // The grid's row moved; a row outside the list is ignored.
  void EnterCell(int row);
  void Scroll(int topRow) { grid_.TopRow = std::max(1, topRow); }
  // Whether a double click at that height is below the header.
  bool BelowHeader(double mouseY) const { return mouseY > metrics.headerHeight; }
  // After a change of selection: the document found again by `OldMsys`.
  search::Outcome FollowSelection();
  // Deactivation: the stable numbers of the place.
  void KeepPlace();

  // --- what the window shows ---
  const ContentsGrid& Grid() const { return grid_; }
  ContentsScreen Screen() const;
  // The title handed to the chronology and the dictionary: cut before its
  // first blank.
  std::u16string JumpTitle() const;
  bool ListEmpty() const { return Count() == 0; }

  // --- the hits and the refinement ---
  int Srn() const { return static_cast<int>(Sr_.size()); }
  int SrnPos() const { return srnPos_; }
  const ContentsHit& Hit(int i) const { return Sr_[static_cast<std::size_t>(i - 1)]; }
  // Column 0 the list position, 1 the text row; 0 outside the hits.
  int getSr(int i, int j) const;
  int getSrf(int mpos) const;
  const std::vector<std::u16string>& Sw() const { return sw_; }
  int RefineCount() const { return refineCount_; }
  std::u16string_view RefineWord(int level) const {
    return refineWord_[static_cast<std::size_t>(level)];
  }
  int RefineTarget(int level) const { return refineTarget_[static_cast<std::size_t>(level)]; }
  std::u16string_view RefineLevel() const { return controls_.RefineLevel; }

 private:
  int Count() const;
  int RowAt(int mpos) const;
  int FirstLine(int mpos) const;
  std::u16string SearchText(int row) const;
  void Cells(int m, std::u16string* cells) const;
  void GoRow(int row);
  void SetMpos(int mpos);
  void ClearHitList();
  void ShowRefine();
  void ClearHits();
  void UpdateBar();
  void Rebuild();
  void AddToMarks(int delta, bool negativeOnly);

  ContentsKind kind_;
  const ContentsLayout* layout_;
  corpus::Corpus* corpus_;
  corpus::Selection* selection_;
  const corpus::Settings* settings_;
  ContentsGrid grid_;
  std::vector<ContentsHit> Sr_;
  std::vector<std::uint8_t> Srf_;  // by list position
  int srnPos_ = 0;
  std::vector<std::u16string> sw_;
  std::uint32_t label3Back_ = search::kButtonFace;
  bool label3Enabled_ = false;
  search::RefineControls controls_;
  int refineCount_ = 0;
  std::array<std::u16string, search::kRefineLevels> refineWord_;
  std::array<int, search::kRefineLevels> refineTarget_{};
  std::u16string label1_;
  std::uint32_t label1Back_ = 0;
  std::array<std::uint32_t, 11> clev_{};
  std::u16string label5_;
};

// What a button or a grid event led to.
struct ContentsAction {
  reader::JumpOutcome jump;
  bool minimise = false;       // a jump landed and `Pin` is up
  bool openSelection = false;  // `Form3`, centred on `Picture3`, `Parent` "@選択"
  bool openSettings = false;   // `Form13`, centred on this window
};

// A contents list as the registry of open windows holds it.
class ContentsWindow : public reader::Hooked<reader::ContentsView> {
 public:
  ContentsWindow(ContentsKind kind, corpus::Corpus& corpus, corpus::Selection& selection,
                 const corpus::Settings& settings);

  Contents& model() { return model_; }
  const Contents& model() const { return model_; }
  // Each redraw, each show and raise, and the box selected by a jump.
  std::function<void(const Contents&)> onView;
  std::function<void()> onSelectBox;
  // Whether the last search found nothing: the caller shows the toast.
  bool toastDue = false;

  std::u16string Combo1() const override { return model_.Combo1; }
  void SetCombo1(std::u16string_view text) override { model_.Combo1 = text; }
  void Hyouji() override;
  void Kensaku(int mode) override;
  void SelectBox() override;
  void FollowSelection() override;
  // `Form9.GetBack`; the sources' list has no placements to follow.
  void PlacementsRebuilt() override;
  void Deactivate() override { model_.KeepPlace(); }

  // `Command3` to `Command11` by number: the jumps of the strip of buttons.
  ContentsAction Command(int number, reader::Navigator& navigator, reader::WindowRegistry& windows);
  // A double click below the header or Enter in the grid: `Command4`.
  ContentsAction GridDblClick(double mouseY, reader::Navigator& navigator,
                              reader::WindowRegistry& windows);

 private:
  void Emit();

  Contents model_;
};

}  // namespace suizo::views
