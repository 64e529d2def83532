// The writings reader as a model: everything the window decides. The window
// hands it the user's actions and shows what `Hyouji` returns; it only has
// to put texts into controls and bodies into panes.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "core/corpus/corpus.h"
#include "core/corpus/note_journal.h"
#include "core/corpus/selection.h"
#include "core/corpus/settings.h"
#include "core/reader/column_meter.h"
#include "core/reader/highlight.h"
#include "core/reader/links.h"
#include "core/reader/navigation.h"
#include "core/reader/page_boxes.h"
#include "core/reader/text_table.h"
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
};

// What the window shows after a render.
struct WritingsView {
  int Muki1 = 0;
  std::array<PaneView, 8> panes;    // `Web(1)` to `Web(7)`; index 0 unused
  std::optional<std::u16string> measuringFrame;  // `Web9`, with a vertical layout
  std::u16string zoom;              // the panes' zoom, with a frame
  std::u16string caption;
  std::u16string Bangou, Text1, Text4, Text5, Text6;
  std::array<std::u16string, kPageBoxes.size()> pageBoxes;  // in the order of kPageBoxes
  ClevColours clev;  // `Clev(i)` and `PageTitle(i)`: the collection and classes in use
  std::u16string SinSyaCaption;
  std::uint32_t SinSyaColour = search::kButtonFace;
  std::u16string TyoKatCaption;
  bool KakkoVisible = false;
  std::u16string Label3Text;
  std::uint32_t Label3Colour = search::kButtonFace;
  bool Label3Enabled = false;
  std::array<bool, 11> tabVisible{};  // `TagT(i)` and `TagB(i)`
  int tabDown = 0;
  std::u16string Command1Caption, LimitCaption, Command13Caption, Command10Caption;
  search::RefineControls refine;
  // Horizontal: every pane starts at its top. Vertical: the translation
  // pane shows its right-hand end, where vertical text begins.
  bool scrollPanesToTop = false;
  bool scrollTranslationToStart = false;
  int BlockLines = 0;
};

// What an action asks of the window beyond a new render.
struct ReaderOutcome {
  bool redraw = false;
  bool toast = false;          // "** 見つかりません **"
  bool closeHitList = false;
  bool openSettings = false;   // F1
  bool focusSearchBox = false; // Ctrl+F: the box with all its text selected
  bool focusPanel = false;     // the focus goes back to the reading area
  std::u16string message{};    // for a message box
  // A link to another line of the writings or to the sutra: a jump for the
  // navigation, which picks or opens the window.
  enum class Jump { None, WritingsLine, SutraRow } jump = Jump::None;
  int jumpPosition = 0;
};

class WritingsReader {
 public:
  // `journal` records note edits; without it an edit only marks `Dat` dirty.
  WritingsReader(corpus::Corpus& corpus, corpus::Selection& selection, corpus::Settings& settings,
                 corpus::NoteJournal* journal = nullptr, int muki = 0);

  // --- state, under the window's names ---
  int& Lpos() { return engine_.pos.Lpos; }
  int& Mpos() { return engine_.pos.Mpos; }
  int Lpos() const { return engine_.pos.Lpos; }
  int Mpos() const { return engine_.pos.Mpos; }
  int Muki1 = 0;
  std::u16string OldLsys, OldMsys;
  int Okuri = 0;
  int SinSya = 0, TyoKat = 0;
  int TateOne = 0;
  int GcmShow = 1;
  int CompactSwap = 0;
  int BlockLines = 0;
  int BackFill = 0;
  int BTShift = 0;
  bool Kakko = false;  // pressed: keep the first text form on a hit line
  int ActivePane = 0;

  search::SearchEngine& engine() { return engine_; }
  const search::SearchEngine& engine() const { return engine_; }
  const TextTable& table() const { return table_; }

  // Puts the reader on a line: its work is found from it.
  void GoToLine(int lpos);
  // On a work's first line.
  void GoToWork(int mpos);

  // --- rendering ---
  WritingsView Hyouji();
  // Only the hit counter: the hit that stands at the position, if any.
  void Hyouji2();
  // The layout switches: frames are written again by the next render.
  void YokoInit();
  void TateInit();
  void TateYoko();
  void Gcm1Change();
  void SetColumnMeter(std::shared_ptr<const ColumnMeter> meter) { meter_ = std::move(meter); }
  void SetDpi(double dpi) { dpi_ = dpi; }
  // The monotonic clock in milliseconds that guards the layout switch.
  void SetClock(std::function<std::int64_t()> now) { now_ = std::move(now); }

  // --- actions ---
  ReaderOutcome KeyDownAll(int keyCode, int shift);
  ReaderOutcome BTup() { return KeyDownAll(key::kUp, BTShift); }
  ReaderOutcome BTdown() { return KeyDownAll(key::kDown, BTShift); }
  // `Command3` and the space bar: a repeat within 50 ms of the last switch
  // is swallowed. `nowMs` is a monotonic clock in milliseconds.
  ReaderOutcome Command3(std::int64_t nowMs);
  ReaderOutcome SinSyaButton();
  ReaderOutcome TyoKatButton();
  ReaderOutcome Command10();
  ReaderOutcome Command13();
  ReaderOutcome Command16();
  ReaderOutcome KakkoClick();
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
  ReaderOutcome LinkClick(std::u16string_view href);
  // Ctrl+double click on panes 5, 6 and 7: the note to edit, with line ends
  // for "／"; nothing for the other panes.
  std::optional<std::u16string> StartNoteEdit(int pane) const;
  // The edit box lost the focus: a changed text is stored in the line.
  ReaderOutcome EndNoteEdit(int pane, std::u16string_view startText, std::u16string_view text);
  // The window loses activation: what outlives a change of orders.
  void Deactivate();
  // After a change of collection or order: the position found again.
  void FindPlaceAgain();

  // The caption of `TyoKatButton`: the other form.
  std::u16string TyoKatCaption() const { return TyoKat == 0 ? u"活" : u"直"; }
  // Which `Web(3)` and `Web(4)` tabs are shown for the side and form.
  std::array<bool, 11> TabVisibility() const;

 private:
  ReaderOutcome Redraw() { return {.redraw = true}; }
  ReaderOutcome FromSearch(const search::Outcome& o);
  void LineUp();
  void LineDown();

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

// Double click in a pane selects the run of kanji around the click: the
// range [start, end) of `text` grown to it. `vertical` only changes how the
// window reports the range, so it is not needed here.
std::pair<std::size_t, std::size_t> KanjiRunAround(std::u16string_view text, std::size_t start, std::size_t end);

}  // namespace suizo::reader
