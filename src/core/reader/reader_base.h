// What the three text readers share: the position on their table, the
// layout switch, the line moves, the search with its refinements and hit
// walk, and what a render and an action hand back to the window. The
// writings, the sutra and the sources readers add what is their own.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core/corpus/corpus.h"
#include "core/corpus/note_journal.h"
#include "core/corpus/selection.h"
#include "core/corpus/settings.h"
#include "core/reader/column_meter.h"
#include "core/reader/navigation.h"
#include "core/reader/texts.h"
#include "core/search/driver.h"

namespace suizo::reader {

// Key codes of the keyboard handler and the bits of its Shift value.
namespace key {
inline constexpr int kEnter = 13, kSpace = 32, kLeft = 37, kUp = 38, kRight = 39, kDown = 40;
inline constexpr int kA = 65, kF = 70, kS = 83, kV = 86, kX = 88, kF1 = 112;
inline constexpr int kShift = 1, kCtrl = 2, kAlt = 4;
}  // namespace key

// One pane of the window: the frame to write when the layout changed, the
// body's inner HTML and colour. A pane the render leaves alone keeps what it
// had: `body` is empty then and `written` false.
struct PaneView {
  std::optional<std::u16string> frame;
  bool written = false;
  std::u16string body;
  std::uint32_t colour = 0;
  bool colourSet = false;
  // Vertical text begins at the right: the pane is scrolled there by this.
  int scrollRight = 0;
};

// What a reader's window shows after a render. A reader fills what it has.
struct ReaderView {
  int Muki1 = 0;
  std::array<PaneView, 8> panes;                 // `Web(1)` to `Web(7)`; index 0 unused
  std::optional<std::u16string> measuringFrame;  // `Web9`, with a vertical layout
  std::u16string zoom;                           // the panes' zoom, with a frame
  std::u16string caption;
  std::u16string Bangou, Text1, Text2, Text3, Text4, Text5, Text6;
  std::vector<std::pair<int, std::u16string>> pageBoxes;  // `Page(i)` and its text
  ClevColours clev;  // `Clev(i)` and `PageTitle(i)`: the collection and classes in use
  std::u16string SinSyaCaption;
  std::uint32_t SinSyaColour = search::kButtonFace;
  std::u16string TyoKatCaption;
  bool KakkoVisible = false;
  std::u16string Label3Text;
  std::uint32_t Label3Colour = search::kButtonFace;
  bool Label3Enabled = false;
  std::vector<bool> tabVisible;  // `TagT(i)` and `TagB(i)`
  int tabDown = 0;
  std::u16string Command1Caption, LimitCaption, Command13Caption, Command10Caption;
  bool Check1Visible = false;
  bool Check1 = false;
  // In the compact layout the two vertical panes share a place: which is on top.
  int compactTop = 1;
  // A vertical page: the pane of its second text and the column heights of
  // both texts in pixels, which the panes are sized to; an empty main text
  // leaves the second alone.
  int secondPane = 2;
  int height1 = 0, height2 = 0;
  bool mainEmpty = false;
  search::RefineControls refine;
  // Horizontal: every pane starts at its top.
  bool scrollPanesToTop = false;
  int BlockLines = 0;

  // The text of `Page(box)`, empty when the reader has no such box.
  std::u16string PageBox(int box) const;
};

// What an action asks of the window beyond a new render.
struct ReaderOutcome {
  bool redraw = false;
  bool toast = false;  // "** 見つかりません **"
  bool closeHitList = false;
  bool openSettings = false;    // F1
  bool focusSearchBox = false;  // Ctrl+F: the box with all its text selected
  bool focusPanel = false;      // the focus goes back to the reading area
  std::u16string message{};     // for a message box
  // A link to another line of the writings or to the sutra: a jump for the
  // navigation, which picks or opens the window.
  enum class Jump { None, WritingsLine, SutraRow } jump = Jump::None;
  int jumpPosition = 0;
};

class ReaderBase {
 public:
  ReaderBase(corpus::Corpus& corpus, corpus::Selection& selection, corpus::Settings& settings,
             corpus::NoteJournal* journal, TextTable table, int muki);
  virtual ~ReaderBase() = default;
  ReaderBase(const ReaderBase&) = delete;
  ReaderBase& operator=(const ReaderBase&) = delete;

  // --- state, under the window's names ---
  int& Lpos() { return engine_.pos.Lpos; }
  int& Mpos() { return engine_.pos.Mpos; }
  int Lpos() const { return engine_.pos.Lpos; }
  int Mpos() const { return engine_.pos.Mpos; }
  int Muki1 = 0;
  int Okuri = 0;
  int BlockLines = 0;
  int BackFill = 0;
  int BTShift = 0;
  int ActivePane = 0;

  search::SearchEngine& engine() { return engine_; }
  const search::SearchEngine& engine() const { return engine_; }
  const TextTable& table() const { return table_; }

  // --- rendering ---
  virtual ReaderView Hyouji() = 0;
  // Only the hit counter: the hit that stands at the position, if any.
  void Hyouji2();
  // The layout switches: frames are written again by the next render.
  void YokoInit();
  void TateInit();
  void TateYoko();
  void Gcm1Change() { framesDue_ = true; }
  void SetColumnMeter(std::shared_ptr<const ColumnMeter> meter) { meter_ = std::move(meter); }
  void SetDpi(double dpi) { dpi_ = dpi; }
  // The monotonic clock in milliseconds that guards the layout switch.
  void SetClock(std::function<std::int64_t()> now) { now_ = std::move(now); }

  // --- actions ---
  virtual ReaderOutcome KeyDownAll(int keyCode, int shift) = 0;
  ReaderOutcome BTup() { return KeyDownAll(key::kUp, BTShift); }
  ReaderOutcome BTdown() { return KeyDownAll(key::kDown, BTShift); }
  // `Command3` and the space bar: a repeat within 50 ms of the last switch
  // is swallowed. `nowMs` is a monotonic clock in milliseconds.
  ReaderOutcome Command3(std::int64_t nowMs);
  ReaderOutcome LimitClick();
  ReaderOutcome Label3Click();
  // `Command1`: a selection in a pane, if any, replaces the box first.
  ReaderOutcome Command1(std::u16string_view selection);
  ReaderOutcome Combo1Enter();
  ReaderOutcome TagBClick(int tab);
  ReaderOutcome TagTClick(int tab) { return TagBClick(tab); }
  ReaderOutcome Command14();
  ReaderOutcome Command15();
  ReaderOutcome SrnNext();
  ReaderOutcome SrnBack();
  ReaderOutcome PageBoxEnter(int box, std::u16string_view text);

 protected:
  ReaderOutcome Redraw() { return {.redraw = true}; }
  static ReaderOutcome FromSearch(const search::Outcome& o);
  // The keys every reader answers alike (F1, Space, X, Ctrl+F, Left,
  // Right); nothing for the others.
  std::optional<ReaderOutcome> CommonKey(int keyCode, int shift);
  // Plain Up and Down, with Shift or under `Okuri`: a line up (a vertical
  // page then fills backwards unless Shift), a block down. Nothing for other
  // Shift values.
  ReaderOutcome LineKey(int keyCode, int shift);
  // Frames when the layout changed: the horizontal ones for panes 1 to
  // `panes`, or the vertical ones for `verticalPanes` with the measuring
  // pane, and empty documents for `blankPanes`.
  void WriteFrames(ReaderView& v, int panes, std::initializer_list<int> verticalPanes,
                   std::initializer_list<int> blankPanes);
  // The search's part of the render: the hit counter, colours and captions.
  void SearchView(ReaderView& v) const;
  // A note edited in a pane: a changed text is stored in the line's column,
  // "／" for each line end, and journalled. Returns what the user must be
  // told when the journal could not take it, or nothing.
  std::u16string StoreNote(corpus::TableId table, int row, int column,
                           std::u16string_view startText, std::u16string_view text);
  const ColumnMeter& meter() const { return *meter_; }

  corpus::Corpus* corpus_;
  corpus::Selection* selection_;
  corpus::Settings* settings_;
  corpus::NoteJournal* journal_;
  TextTable table_;
  search::SearchEngine engine_;
  std::shared_ptr<const ColumnMeter> meter_;
  double dpi_ = 96;
  bool framesDue_ = true;
  std::int64_t lastSwitch_ = -1000;
  std::function<std::int64_t()> now_;
};

// A key pressed in a pane. The browser's own commands must not act, the
// letter keys act only outside the panes, and the arrows move the reader.
struct PaneKey {
  enum class Action {
    Pass,         // the pane handles it (Esc goes on to the window's cancel)
    Swallow,      // the key code becomes 0
    CloseMenu,    // an open menu closes, and nothing else happens
    FocusSearch,  // Ctrl+F: the search box with its text selected
    Copy,         // Ctrl+C: the clipboard takes the pane's selection alone
    Move,         // an arrow: to KeyDownAll with `shift`, and no further
  } action = Action::Pass;
  int shift = 0;
};
PaneKey PaneKeyDown(int keyCode, bool shift, bool ctrl, bool alt, bool menuOpen);

// The edits of a pane's text in the sutra and the sources: two leading
// blanks are an indent; a leading blank of a translation is trimmed and
// becomes one; with `breaks` each "／" is a line break.
std::u16string PaneText(std::u16string_view t, bool translation, bool breaks);

}  // namespace suizo::reader
