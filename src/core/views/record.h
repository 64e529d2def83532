// The document record (`Form5`): one document's numbers in every printed
// series, its dating, recipient and class, and seven panes of commentary in
// which references to other documents become links. It walks the contents'
// list, so the arrow keys go from document to document. The model decides
// everything; the window copies what `Hyouji` returns into its controls.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core/corpus/corpus.h"
#include "core/corpus/selection.h"
#include "core/corpus/settings.h"
#include "core/reader/context_menu.h"
#include "core/reader/navigation.h"
#include "core/search/driver.h"

namespace suizo::views {

inline constexpr std::u16string_view kRecordCaption = u"翠典資料";

// `Mpos` 1050 shows a copy of a `Mok` row that the current list does not
// hold; the copy lives in `Mok` row 1050 and `MokOrder(1050)`.
inline constexpr int kReservedSlot = 1050;
// A search keeps at most this many documents.
inline constexpr int kRecordHitCapacity = 1100;

// Pane i (1 to 7): the `Mok` field it shows, its tab `Label1(i)`, and its
// title in the note while it stands in the left pane. Index 0 is `Sel(0)`,
// the title, which has no pane.
struct RecordPaneInfo {
  int field;
  std::u16string_view label;
  std::u16string_view title;
};
inline constexpr int kRecordPanes = 7;
inline constexpr std::array<RecordPaneInfo, kRecordPanes + 1> kRecordPaneInfo = {{
    {0, u"", u""},
    {14, u"解 題", u""},
    {16, u"書 名", u"書 名"},
    {18, u"系年", u"系 年"},
    {20, u"対告", u"対 告"},
    {21, u"真蹟", u"真 蹟"},
    {23, u"写本", u"書 写"},
    {24, u"其他", u"其 他"},
}};

// The head's page boxes `Page(box)` with their captions `PageTitle(title)`:
// the table and field each reads, and the reader's page box whose form it
// shares (0: the text as it stands).
struct RecordPageBox {
  int box;
  int title;
  std::u16string_view caption;
  bool fromDat;  // from the document's head row in `Dat`, else from `Mok`
  int field;
  int form;
};
inline constexpr std::array<RecordPageBox, 13> kRecordPageBoxes = {{
    {0, 0, u"ｼｽﾃﾑ", false, 3, 0},
    {5, 1, u"定番", false, 5, 0},  // no collection: captions 1 and 2 are free
    {7, 2, u"新番", false, 7, 0},
    {22, 22, u"定本", true, 22, 22},
    {23, 23, u"新定", true, 23, 23},
    {24, 24, u"縮", true, 24, 24},
    {25, 25, u"全集", true, 25, 25},
    {26, 26, u"内", true, 26, 26},
    {27, 27, u"外", true, 27, 27},
    {28, 28, u"新編", true, 28, 28},
    {29, 29, u"新修", true, 29, 29},
    {32, 31, u"対照", false, 50, 32},
    {36, 35, u"集成", false, 51, 36},
}};

// The text of a page box for its source text; empty stays empty.
std::u16string RecordPageText(const RecordPageBox& box, std::u16string_view source);

// The frame of pane 1 (the large left one) or of a right pane 2 to 7.
std::u16string RecordFrame(int pane);

// `BuildPanes` for one field: line marks become "<BR>", and every document
// number comes to stand behind "番号", however the data wrote it.
std::u16string BuildPane(std::u16string_view field);
// `LinkPane`: document numbers behind "番号" that the current list holds
// link to their list position; ｼｽﾃﾑNo. references ("(12345)", "12345.6",
// "№12345", "№12345.6") that the current order holds link to "D" and the
// reading position.
std::u16string LinkPane(std::u16string_view text, const corpus::Corpus& corpus);
// The two passes on their own.
std::u16string LinkDocumentNumbers(std::u16string_view text, const corpus::Corpus& corpus);
std::u16string LinkSysNos(std::u16string_view text, const corpus::Corpus& corpus);

// Copies `Mok` row `row` into the reserved slot and lists the slot.
void CopyToReservedSlot(corpus::Corpus& corpus, int row);

// Whether a pane's navigation to `href` is cancelled and read as a link:
// every one but the blank page.
inline bool CancelsNavigation(std::u16string_view href) {
  return href != u"about:blank";
}

// `WordSelect`: a double click in pane 1 grows the selection [start, end) of
// the pane's text to the run of kanji around it.
std::pair<std::size_t, std::size_t> WordSelect(std::u16string_view text, std::size_t start,
                                               std::size_t end);

// The left-pane note: the picture over the pane shown on the left.
inline constexpr std::u16string_view kPicNote = u"左枠に表示中";
inline constexpr int kPicInset = 25;  // the picture is this much narrower and lower than its pane

struct RecordPaneView {
  std::optional<std::u16string> frame;  // written when the layout is (re)built
  bool written = false;                 // false: the pane keeps what it has
  std::u16string body;
  bool toStart = false;         // scrolled to its start
  bool clearSelection = false;  // its selection goes
};

struct RecordPageView {
  int box;
  int title;
  std::u16string_view caption;
  std::u16string text;
  std::uint32_t titleColour;
};

// What the window shows.
struct RecordDisplay {
  std::u16string caption{kRecordCaption};
  std::u16string Bangou, Text1, Text2, Text3, Text4, Text5, Text6, Text7, Text8;
  std::vector<RecordPageView> pages;  // in the order of kRecordPageBoxes
  std::array<std::uint32_t, 11> Clev{};
  std::array<RecordPaneView, kRecordPanes + 1> panes;  // `Web(1)` to `Web(7)`
  std::u16string zoom;                                 // with the frames
  int selDown = 0;                                     // the `Sel` that is down
  bool PicVisible = false;
  int PicPane = 0;
  bool Text9Visible = false;
  std::u16string Text9;
  std::u16string Label3Text;
  std::uint32_t Label3Colour = search::kButtonFace;
  bool Label3Enabled = false;
  search::RefineControls refine;
  // 目次, 本文 and 年表 need a listed document.
  bool Command4Enabled = true, Command5Enabled = true, Command7Enabled = true;
};

// What an action asks beyond a new render. A jump to another view is a
// request: `RecordWindow` runs it through the navigation.
struct RecordOutcome {
  bool redraw = false;
  bool toast = false;           // "** 見つかりません **"
  bool openSettings = false;    // F1
  bool focusSearchBox = false;  // with its text selected
  bool focusPanel = false;
  enum class Jump { None, Contents, Reader, Sutra, Chronology, Dictionary } jump = Jump::None;
  std::u16string text{};  // the jump's search text
  int mpos = 0;           // a list position
  int lpos = 0;           // a reading position
};

class DocumentRecord {
 public:
  DocumentRecord(corpus::Corpus& corpus, corpus::Selection& selection,
                 const corpus::Settings& settings);

  // --- state, under the window's names ---
  int Mpos = 1;
  int Lpos = 0;
  std::u16string OldMsys, OldLsys;
  // 1 while the window is being resized: a change of selection does not redraw.
  int Resize = 0;
  int SrTarget = 0;  // the `Sel` that is down: 0 the title, 1 to 7 a pane
  int LeftPane = 0;  // the right pane shown in the left one, 0 for none
  std::u16string Combo1;
  std::vector<std::u16string> Combo;  // the history, newest first

  // --- the hit state, as the other windows read it ---
  int Srn = 0, SrnPos = 0, Srk = 0, Swn = 0;
  int RefineCount = 0;            // the record keeps no refinements
  int getSr(int i, int j) const;  // j 0 `Mpos`, 1 `Lpos` of hit i (from 1)
  int getSrf(int mpos) const;
  const std::vector<std::u16string>& getSw() const { return Sw_; }
  std::uint32_t Label3Colour = search::kButtonFace;
  bool Label3Enabled = false;
  search::RefineControls controls;

  // --- rendering ---
  RecordDisplay Hyouji();
  // What stands now, without a new render; the panes are not written.
  RecordDisplay Display() const;
  void ClevWrite();
  // The frames go out again with the next render.
  void YokoInit() { framesDue_ = true; }
  void SetDpi(double dpi) { dpi_ = dpi; }
  // The `Mok` row at a list position (the slot is its own row), or 0.
  int MokRowAt(int mpos) const;

  // --- search ---
  RecordOutcome Kensaku(int mode);
  RecordOutcome SrnBack();
  RecordOutcome SrnNext();
  RecordOutcome Combo1Enter();
  // `Command1`: a selection in a pane replaces the box first.
  RecordOutcome Command1(std::u16string_view selection);
  // `Sel(i)` goes down; a new target with text in the box is searched.
  RecordOutcome SelClick(int i);
  RecordOutcome Text4Click() { return SelClick(0); }
  RecordOutcome Label1Click(int i) { return SelClick(i); }
  // The target only, for a jump that searches next.
  void ChooseTitle() { SrTarget = 0; }
  RecordOutcome Command14() { return {}; }  // shown with a result, and nothing more
  RecordOutcome Command15();
  RecordOutcome Label3Click();

  // --- keys, links, buttons ---
  RecordOutcome KeyDownAll(int keyCode, int shift);
  RecordOutcome LinkClick(std::u16string_view href);
  RecordOutcome Command3() { return {.focusPanel = true}; }
  RecordOutcome Command4() const;
  RecordOutcome Command5() const;
  RecordOutcome Command6(std::u16string_view selection) const;
  RecordOutcome Command7() const;
  RecordOutcome Command8(std::u16string_view selection) const;
  reader::MenuChoice MenuGo(int item, reader::MenuTarget target, std::u16string_view selection,
                            std::u16string_view family) const;

  // --- the left pane ---
  RecordDisplay ShowLeft(int pane);
  RecordDisplay ShowBack();
  // A double click in a right pane shows it on the left; nothing for pane 1.
  std::optional<RecordDisplay> PaneDoubleClick(int pane);
  // A click in pane 1 or on `Text9` while a pane stands on the left.
  std::optional<RecordDisplay> PaneClick(int pane);
  std::optional<RecordDisplay> Text9Click() { return PaneClick(1); }

  // --- the selection changed under the window ---
  RecordOutcome FollowSelection();
  void Deactivate();

 private:
  struct Hit {
    int mpos;
    int lpos;
  };
  int HeadDatRow(int mokRow) const;
  std::u16string SearchText(int mokRow, int target) const;
  void ClearHitList();
  void ClearHits();
  void ShowRefine();
  RecordOutcome GoToHit();
  std::u16string Title() const;
  bool OnDocument() const { return Mpos != kReservedSlot && MokRowAt(Mpos) > 0; }

  corpus::Corpus* corpus_;
  corpus::Selection* selection_;
  const corpus::Settings* settings_;
  std::vector<Hit> Sr_{{0, 0}};
  std::vector<std::uint8_t> Srf_;
  std::vector<std::u16string> Sw_;
  reader::ClevColours clev_;
  // The last render: the head, and each pane's text as shown.
  RecordDisplay head_;
  std::array<std::u16string, kRecordPanes + 1> panes_;
  bool framesDue_ = true;
  double dpi_ = 96;
};

// The record as the navigation sees it: a view in the registry of open
// windows, wrapping the model and handing each render to whoever shows it.
class RecordWindow : public reader::Hooked<reader::RecordView> {
 public:
  RecordWindow(corpus::Corpus& corpus, corpus::Selection& selection,
               const corpus::Settings& settings);

  DocumentRecord& model() { return model_; }
  std::function<void(const RecordDisplay&)> onView;
  // Whether the last search found nothing: the caller shows the toast.
  bool toastDue = false;

  std::u16string Combo1() const override { return model_.Combo1; }
  void SetCombo1(std::u16string_view text) override { model_.Combo1 = text; }
  void Hyouji() override;
  void Kensaku(int mode) override;
  int Mpos() const override { return model_.Mpos; }
  void SetMpos(int mpos) override { model_.Mpos = mpos; }
  void ClevWrite() override;
  void Text4_Click() override { model_.ChooseTitle(); }
  void FollowSelection() override;
  void Deactivate() override { model_.Deactivate(); }

  // The family the window hands on: its own, or the writings'.
  std::u16string Family() const;
  // Runs what an action asked: a redraw, or a jump through the navigation,
  // after which the window minimises itself unless pinned. A request for
  // the contents is left to the caller.
  reader::JumpOutcome Follow(reader::Navigator& navigator, const RecordOutcome& outcome);
  reader::JumpOutcome LinkClick(reader::Navigator& navigator, std::u16string_view href) {
    return Follow(navigator, model_.LinkClick(href));
  }

 private:
  DocumentRecord model_;
};

}  // namespace suizo::views
