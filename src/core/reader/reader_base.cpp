#include "core/reader/reader_base.h"

#include <algorithm>
#include <chrono>

#include "core/reader/context_menu.h"
#include "core/reader/frame.h"
#include "core/reader/line_text.h"
#include "core/text/utf16.h"

namespace suizo::reader {

namespace {
constexpr std::int64_t kSwitchGapMs = 50;
}  // namespace

std::u16string ReaderView::PageBox(int box) const {
  for (const auto& [index, text] : pageBoxes) {
    if (index == box) return text;
  }
  return {};
}

ReaderBase::ReaderBase(corpus::Corpus& corpus, corpus::Selection& selection,
                       corpus::Settings& settings, corpus::NoteJournal* journal, TextTable table,
                       int muki)
    : Muki1(muki),
      corpus_(&corpus),
      selection_(&selection),
      settings_(&settings),
      journal_(journal),
      table_(std::move(table)),
      engine_(table_, settings),
      meter_(std::make_shared<TextColumnMeter>()),
      now_([] {
        return std::chrono::duration_cast<std::chrono::milliseconds>(
                   std::chrono::steady_clock::now().time_since_epoch())
            .count();
      }) {}

// --- layout ---

void ReaderBase::YokoInit() {
  Muki1 = 0;
  framesDue_ = true;
  BackFill = 0;
}

void ReaderBase::TateInit() {
  Muki1 = 1;
  framesDue_ = true;
  BackFill = 0;
}

void ReaderBase::TateYoko() {
  if (Muki1 == 0) {
    TateInit();
  } else {
    YokoInit();
  }
}

void ReaderBase::WriteFrames(ReaderView& v, int panes, std::initializer_list<int> verticalPanes,
                             std::initializer_list<int> blankPanes) {
  if (!framesDue_) return;
  framesDue_ = false;
  v.zoom = ZoomText(dpi_);
  if (Muki1 == 0) {
    for (int pane = 1; pane <= panes; ++pane) {
      PaneView& p = v.panes[static_cast<std::size_t>(pane)];
      p.frame = HorizontalFrame(pane);
      p.colour = kHorizontalColours[static_cast<std::size_t>(pane)];
      p.colourSet = true;
    }
    return;
  }
  const double step = WheelStep(dpi_);
  for (const int pane : verticalPanes) {
    PaneView& p = v.panes[static_cast<std::size_t>(pane)];
    p.frame = VerticalFrame(step);
    p.colour = pane == 1 ? kMainColour : kTranslationColour;
    p.colourSet = true;
  }
  // Refreshed: an empty document that takes its text alone.
  for (const int pane : blankPanes) v.panes[static_cast<std::size_t>(pane)].frame = u"";
  v.measuringFrame = MeasuringFrame(step);
}

void ReaderBase::SearchView(ReaderView& v) const {
  v.Label3Text = engine_.Label3Text();
  v.Label3Colour = engine_.Label3Colour;
  v.Label3Enabled = engine_.Label3Enabled;
  v.tabDown = engine_.Tab;
  v.Command1Caption = engine_.Command1Caption();
  v.LimitCaption = engine_.LimitCaption();
  v.refine = engine_.controls;
}

void ReaderBase::Hyouji2() {
  for (int i = 1; i <= engine_.Srn; ++i) {
    const search::Position& hit = engine_.Hit(i);
    if (hit.Mpos == Mpos() && hit.Lpos == Lpos() && hit.chapter == engine_.pos.chapter)
      engine_.SrnPos = i;
  }
}

// --- keys ---

std::optional<ReaderOutcome> ReaderBase::CommonKey(int keyCode, int shift) {
  switch (keyCode) {
    case key::kF1:
      return ReaderOutcome{.openSettings = true};
    case key::kSpace:
      return Command3(now_());
    case key::kX:
      return LimitClick();
    case key::kF:
      return shift == key::kCtrl ? ReaderOutcome{.focusSearchBox = true} : ReaderOutcome{};
    case key::kRight:
      return SrnNext();
    case key::kLeft:
      return SrnBack();
    default:
      return std::nullopt;
  }
}

ReaderOutcome ReaderBase::LineKey(int keyCode, int shift) {
  if (Okuri == 1) shift = key::kShift;
  if (shift != 0 && shift != key::kShift) return {};
  if (keyCode == key::kUp) {
    const int before = Lpos();
    table_.Up(engine_.pos, engine_.Limit);
    if (Lpos() == before) return {};
    BackFill = shift == key::kShift ? 0 : 1;
    return Redraw();
  }
  if (Muki1 == 0 || shift == key::kShift) BlockLines = 1;
  const int s = Lpos();
  const int m = Mpos();
  const std::u16string chapter = engine_.pos.chapter;
  for (int k = 0; k < BlockLines; ++k) table_.Down(engine_.pos, engine_.Limit);
  // The end came inside the block: the page stays.
  if (Mpos() == m && engine_.pos.chapter == chapter && Lpos() < s + BlockLines) Lpos() = s;
  return Redraw();
}

ReaderOutcome ReaderBase::Command3(std::int64_t nowMs) {
  const bool switched = nowMs - lastSwitch_ > kSwitchGapMs;
  lastSwitch_ = nowMs;
  if (!switched) return {};
  TateYoko();
  return Redraw();
}

// --- search ---

ReaderOutcome ReaderBase::FromSearch(const search::Outcome& o) {
  return {.redraw = o.redraw, .toast = o.toast, .closeHitList = o.closeHitList};
}

ReaderOutcome ReaderBase::LimitClick() {
  ReaderOutcome out = FromSearch(engine_.LimitClick());
  out.focusPanel = true;
  out.redraw = true;
  return out;
}

ReaderOutcome ReaderBase::Label3Click() {
  return FromSearch(engine_.Label3Click());
}

ReaderOutcome ReaderBase::Command1(std::u16string_view selection) {
  if (!selection.empty()) engine_.Combo1 = selection;
  ReaderOutcome out = FromSearch(engine_.Kensaku(0));
  out.focusPanel = true;
  return out;
}

ReaderOutcome ReaderBase::Combo1Enter() {
  ReaderOutcome out = FromSearch(engine_.Kensaku(0));
  out.focusPanel = true;
  return out;
}

ReaderOutcome ReaderBase::TagBClick(int tab) {
  ReaderOutcome out = FromSearch(engine_.TabClick(tab));
  out.focusPanel = true;
  return out;
}

ReaderOutcome ReaderBase::Command14() {
  engine_.Command14();
  return Redraw();
}

ReaderOutcome ReaderBase::Command15() {
  return FromSearch(engine_.Command15());
}
ReaderOutcome ReaderBase::SrnNext() {
  return FromSearch(engine_.SrnNext());
}
ReaderOutcome ReaderBase::SrnBack() {
  return FromSearch(engine_.SrnBack());
}

ReaderOutcome ReaderBase::PageBoxEnter(int box, std::u16string_view text) {
  ReaderOutcome out = FromSearch(engine_.PageBoxEnter(box, text));
  out.focusPanel = out.redraw;
  return out;
}

// --- notes ---

std::u16string ReaderBase::StoreNote(corpus::TableId table, int row, int column,
                                     std::u16string_view startText, std::u16string_view text) {
  if (text == startText) return {};
  const std::u16string stored = text::ReplaceAll(text, u"\r\n", u"／");
  if (journal_ != nullptr) {
    try {
      corpus::EditNote(*corpus_, *journal_, table, row, column, stored);
    } catch (const corpus::CorpusError& e) {
      return std::u16string(corpus::kNoteNotJournaled) + text::FromUtf8(e.what());
    }
    return {};
  }
  corpus_->table(table).Set(row, column, stored);
  (table == corpus::TableId::Dat   ? corpus_->DatDirty
   : table == corpus::TableId::Hok ? corpus_->HokDirty
                                   : corpus_->SDatDirty) = 1;
  return {};
}

// --- keys in a pane ---

PaneKey PaneKeyDown(int keyCode, bool shift, bool ctrl, bool alt, bool menuOpen) {
  using A = PaneKey::Action;
  if (PaneKeyClosesMenu(keyCode, menuOpen)) return {A::CloseMenu};
  if (ctrl && keyCode == key::kF) return {A::FocusSearch};
  // Print, new window, open, address bar, find, zoom in, zoom out, zoom reset.
  static constexpr int kBrowserCommands[] = {80, 78, 79, 76, 70, 187, 189, 48};
  if (ctrl && std::find(std::begin(kBrowserCommands), std::end(kBrowserCommands), keyCode) !=
                  std::end(kBrowserCommands)) {
    return {A::Swallow};
  }
  if (ctrl && keyCode == 67) return {A::Copy};
  if (keyCode == 116) return {A::Swallow};  // F5 would reload the blank page
  if (keyCode >= key::kLeft && keyCode <= key::kDown) {
    return {A::Move, (shift ? key::kShift : 0) | (ctrl ? key::kCtrl : 0) | (alt ? key::kAlt : 0)};
  }
  return {};
}

std::u16string PaneText(std::u16string_view text, bool translation, bool breaks) {
  std::u16string t = Indented(text);
  if (translation && t.starts_with(u' ')) t = u"\u3000" + std::u16string(text::TrimSpace(t));
  return breaks ? text::ReplaceAll(t, u"／", u"<BR>") : t;
}

}  // namespace suizo::reader
