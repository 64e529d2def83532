#include "core/reader/writings_reader.h"

#include <algorithm>
#include <chrono>

#include "core/corpus/orders.h"
#include "core/reader/context_menu.h"
#include "core/reader/frame.h"
#include "core/reader/horizontal.h"
#include "core/reader/vertical.h"
#include "core/text/sjis.h"
#include "core/text/utf16.h"
#include "core/text/width.h"

namespace suizo::reader {

using text::ReplaceAll;

namespace {
constexpr std::uint32_t kOtherSideCopy = 0x99FFFF;       // the copies hold this line
constexpr std::uint32_t kOtherSideAutograph = 0xFF80FF;  // the autograph holds it
constexpr std::int64_t kSwitchGapMs = 50;
}  // namespace

WritingsReader::WritingsReader(corpus::Corpus& corpus, corpus::Selection& selection, corpus::Settings& settings,
                               corpus::NoteJournal* journal, int muki)
    : Muki1(muki),
      corpus_(&corpus),
      selection_(&selection),
      settings_(&settings),
      journal_(journal),
      table_(TextTable::Writings(corpus, selection)),
      engine_(table_, settings),
      meter_(std::make_shared<TextColumnMeter>()),
      now_([] {
        return std::chrono::duration_cast<std::chrono::milliseconds>(
                   std::chrono::steady_clock::now().time_since_epoch())
            .count();
      }) {
  const corpus::ReaderPlace place = corpus::FindReaderPlace(corpus, u"");
  engine_.pos = {place.Mpos, place.Lpos, {}};
}

void WritingsReader::GoToLine(int lpos) {
  engine_.pos.Lpos = lpos;
  engine_.pos.Mpos = corpus::LineToWork(*corpus_, lpos);
}

void WritingsReader::GoToWork(int mpos) {
  engine_.pos.Mpos = mpos;
  engine_.pos.Lpos = LineOrder::Writings(*corpus_).FirstLineOf(mpos);
}

// --- layout ---

void WritingsReader::YokoInit() {
  Muki1 = 0;
  framesDue_ = true;
  BackFill = 0;
}

void WritingsReader::TateInit() {
  Muki1 = 1;
  framesDue_ = true;
  BackFill = 0;
}

void WritingsReader::TateYoko() {
  if (Muki1 == 0) {
    TateInit();
  } else {
    YokoInit();
  }
}

void WritingsReader::Gcm1Change() { framesDue_ = true; }

std::array<bool, 11> WritingsReader::TabVisibility() const {
  std::array<bool, 11> shown{};
  shown.fill(true);
  for (int tab = 2; tab <= 5; ++tab) shown[static_cast<std::size_t>(tab)] = tab == 2 + SinSya * 2 + TyoKat;
  shown[6] = SinSya == 0;
  shown[7] = SinSya == 1;
  if (Muki1 == 1 && settings_->Gcm1 == 0 && TateOne == 1) shown[1] = false;
  return shown;
}

// --- rendering ---

WritingsView WritingsReader::Hyouji() {
  WritingsView v;
  v.Muki1 = Muki1;
  if (framesDue_) {
    framesDue_ = false;
    v.zoom = ZoomText(dpi_);
    if (Muki1 == 0) {
      for (int pane = 1; pane <= kPanes; ++pane) {
        PaneView& p = v.panes[static_cast<std::size_t>(pane)];
        p.frame = HorizontalFrame(pane);
        p.colour = kHorizontalColours[static_cast<std::size_t>(pane)];
        p.colourSet = true;
      }
    } else {
      const double step = WheelStep(dpi_);
      v.panes[1].frame = VerticalFrame(step);
      v.panes[2].frame = VerticalFrame(step);
      v.panes[3].frame = u"";  // refreshed: an empty document that takes text alone
      v.panes[4].frame = u"";
      v.measuringFrame = MeasuringFrame(step);
      v.panes[1].colour = kMainColour;
      v.panes[2].colour = kTranslationColour;
      v.panes[1].colourSet = v.panes[2].colourSet = true;
    }
  }

  const int lpos = Lpos();
  const auto col = [&](int field) { return table_.Text(lpos, field); };
  v.Bangou = ReplaceAll(text::Narrow(col(corpus::dat::kBangou)), u"  ", u" ");
  const std::u16string title(col(corpus::dat::kTitle));
  v.caption = u"本文「" + title + u"」";
  if (const std::size_t p = title.find(u'('); p != std::u16string::npos) {
    v.Text6 = title.substr(p);
    v.Text4 = std::u16string(text::TrimSpace(std::u16string_view(title).substr(0, p)));
  } else {
    v.Text4 = title;
  }
  v.Text5 = col(corpus::dat::kClass);
  v.Text1 = col(corpus::dat::kDating);

  Highlighter highlighter(engine_, settings_->Itaiji);
  // Pane 3 shows one of four texts by side and form, pane 4 the side's notes.
  const int kind3 = 2 + SinSya * 2 + TyoKat;
  std::u16string t3(col(corpus::kPaneCol[static_cast<std::size_t>(kind3)]));
  t3 = ReplaceAll(t3, u"\n", u"/");
  if (kind3 == 2) t3 = ReplaceAll(t3, u"／", u" / ");
  PaneView& p3 = v.panes[3];
  p3.body = highlighter.HiLight(t3, kind3, lpos);
  p3.written = true;
  p3.colour = SinSya == 0 ? kTranslationColour : kCopyColour;
  p3.colourSet = true;
  const int kind4 = 6 + SinSya;
  const std::u16string t4 = ReplaceAll(col(SinSya == 0 ? corpus::dat::kAutographNote : corpus::dat::kCopyNote), u"\n", u"/");
  v.panes[4].body = highlighter.HiLight(LinkRefs(t4, *corpus_), kind4, lpos);
  v.panes[4].written = true;

  if (SinSya == 0 && !col(corpus::dat::kCopy).empty()) {
    v.SinSyaColour = kOtherSideCopy;
    v.SinSyaCaption = u"写";
  } else if (SinSya == 1 && !col(corpus::dat::kAutograph).empty()) {
    v.SinSyaColour = kOtherSideAutograph;
    v.SinSyaCaption = u"真";
  }

  if (Muki1 == 1) {
    const VerticalSettings vs{settings_->GmL1, settings_->GmL2, settings_->Gcm1};
    const auto hiLight = [&](std::u16string_view t, int pane, int at) { return highlighter.HiLight(t, pane, at); };
    VerticalPage page = HyoujiTate(table_, {&engine_.pos, engine_.Limit, &BackFill, &BlockLines, TateOne}, vs,
                                   selection_->Gk, selection_->CSel[10], hiLight, *meter_);
    v.panes[1].body = std::move(page.main);
    v.panes[1].written = true;
    if (page.translationWritten) {
      v.panes[2].body = std::move(page.translation);
      v.panes[2].written = true;
      v.scrollTranslationToStart = true;
    }
  } else {
    HorizontalPanes panes = HyoujiYoko(table_, *corpus_, lpos, highlighter, engine_.Srn, Kakko, selection_->Gk,
                                       selection_->CSel[10]);
    for (const int pane : {1, 2, 5, 6, 7}) {
      v.panes[static_cast<std::size_t>(pane)].body = std::move(panes.html[static_cast<std::size_t>(pane)]);
      v.panes[static_cast<std::size_t>(pane)].written = true;
    }
    v.KakkoVisible = panes.KakkoVisible;
    v.scrollPanesToTop = true;
  }
  v.BlockLines = BlockLines;

  // The page boxes show the line the layout left the position on.
  if (Lpos() >= 1 && Lpos() <= corpus_->DasMaxY) {
    v.pageBoxes = PageBoxTexts(corpus_->Dat(), corpus_->DatOrder[static_cast<std::size_t>(Lpos())]);
  }

  v.clev = ClevWriteColours(*selection_);
  v.Label3Text = engine_.Label3Text();
  v.Label3Colour = engine_.Label3Colour;
  v.Label3Enabled = engine_.Label3Enabled;
  v.tabVisible = TabVisibility();
  v.tabDown = engine_.Tab;
  v.TyoKatCaption = TyoKatCaption();
  v.Command1Caption = engine_.Command1Caption();
  v.LimitCaption = engine_.LimitCaption();
  v.Command13Caption = TateOne == 1 ? u"△" : u"▽";
  v.Command10Caption = GcmShow == 1 ? u"△" : u"▽";
  v.refine = engine_.controls;
  return v;
}

void WritingsReader::Hyouji2() {
  for (int i = 1; i <= engine_.Srn; ++i) {
    if (engine_.getSr(i, 0) == Mpos() && engine_.getSr(i, 1) == Lpos()) engine_.SrnPos = i;
  }
}

// --- movement ---

void WritingsReader::LineUp() { table_.Up(engine_.pos, engine_.Limit); }
void WritingsReader::LineDown() { table_.Down(engine_.pos, engine_.Limit); }

ReaderOutcome WritingsReader::KeyDownAll(int keyCode, int shift) {
  if (Mpos() == 0) return {};
  const LineOrder order = LineOrder::Writings(*corpus_);
  switch (keyCode) {
    case key::kF1: return {.openSettings = true};
    case key::kA:
      if (Muki1 == 0) return Command10();
      return settings_->Gcm1 == 1 ? Command16() : ReaderOutcome{};
    case key::kSpace: return Command3(now_());
    case key::kS: return SinSyaButton();
    case key::kV: return Command13();
    case key::kX: return LimitClick();
    case key::kF: return shift == key::kCtrl ? ReaderOutcome{.focusSearchBox = true} : ReaderOutcome{};
    case key::kRight: return SrnNext();
    case key::kLeft: return SrnBack();
    default: break;
  }
  if (keyCode != key::kUp && keyCode != key::kDown) return {};
  if (shift == key::kCtrl) {
    if (keyCode == key::kUp) {
      if (Lpos() == order.FirstLineOf(Mpos()) && Mpos() > 1) --Mpos();
      Lpos() = order.FirstLineOf(Mpos());
      return Redraw();
    }
    if (Mpos() >= corpus_->MosMaxY) return {};
    ++Mpos();
    Lpos() = order.FirstLineOf(Mpos());
    return Redraw();
  }
  if (Okuri == 1) shift = key::kShift;
  if (shift != 0 && shift != key::kShift) return {};
  if (keyCode == key::kUp) {
    const int before = Lpos();
    LineUp();
    if (Lpos() == before) return {};
    BackFill = shift == key::kShift ? 0 : 1;
    return Redraw();
  }
  if (Muki1 == 0 || shift == key::kShift) BlockLines = 1;
  const int s = Lpos();
  const int m = Mpos();
  for (int k = 0; k < BlockLines; ++k) LineDown();
  // The end came inside the block: the page stays.
  if (Mpos() == m && Lpos() < s + BlockLines) Lpos() = s;
  return Redraw();
}

ReaderOutcome WritingsReader::Command3(std::int64_t nowMs) {
  const bool switched = nowMs - lastSwitch_ > kSwitchGapMs;
  lastSwitch_ = nowMs;
  if (!switched) return {};
  TateYoko();
  return Redraw();
}

ReaderOutcome WritingsReader::SinSyaButton() {
  if (Muki1 != 0) return {};
  SinSya = 1 - SinSya;
  return Redraw();
}

ReaderOutcome WritingsReader::TyoKatButton() {
  if (Muki1 != 0) return {};
  TyoKat = 1 - TyoKat;
  return Redraw();
}

ReaderOutcome WritingsReader::Command10() {
  if (Muki1 == 0 && settings_->Gcm1 == 1) {
    GcmShow = 1 - GcmShow;
    YokoInit();
  }
  return Redraw();
}

ReaderOutcome WritingsReader::Command13() {
  if (Muki1 != 1 || settings_->Gcm1 != 0) return {};
  TateOne = 1 - TateOne;
  TateInit();
  return Redraw();
}

ReaderOutcome WritingsReader::Command16() {
  CompactSwap = 1 - CompactSwap;
  return Redraw();
}

ReaderOutcome WritingsReader::KakkoClick() {
  Kakko = !Kakko;
  return {.redraw = true, .focusPanel = true};
}

// --- search ---

ReaderOutcome WritingsReader::FromSearch(const search::Outcome& o) {
  return {.redraw = o.redraw, .toast = o.toast, .closeHitList = o.closeHitList};
}

ReaderOutcome WritingsReader::LimitClick() {
  ReaderOutcome out = FromSearch(engine_.LimitClick());
  out.focusPanel = true;
  out.redraw = true;
  return out;
}

ReaderOutcome WritingsReader::Label3Click() { return FromSearch(engine_.Label3Click()); }

ReaderOutcome WritingsReader::Command1(std::u16string_view selection) {
  if (!selection.empty()) engine_.Combo1 = selection;
  ReaderOutcome out = FromSearch(engine_.Kensaku(0));
  out.focusPanel = true;
  return out;
}

ReaderOutcome WritingsReader::Combo1Enter() {
  ReaderOutcome out = FromSearch(engine_.Kensaku(0));
  out.focusPanel = true;
  return out;
}

ReaderOutcome WritingsReader::TagBClick(int tab) {
  ReaderOutcome out = FromSearch(engine_.TabClick(tab));
  out.focusPanel = true;
  return out;
}

ReaderOutcome WritingsReader::Command14() {
  engine_.Command14();
  return Redraw();
}

ReaderOutcome WritingsReader::Command15() { return FromSearch(engine_.Command15()); }
ReaderOutcome WritingsReader::SrnNext() { return FromSearch(engine_.SrnNext()); }
ReaderOutcome WritingsReader::SrnBack() { return FromSearch(engine_.SrnBack()); }

ReaderOutcome WritingsReader::PageBoxEnter(int box, std::u16string_view text) {
  ReaderOutcome out = FromSearch(engine_.PageBoxEnter(box, text));
  out.focusPanel = out.redraw;
  return out;
}

// --- links and notes ---

ReaderOutcome WritingsReader::LinkClick(std::u16string_view href) {
  const LinkTarget target = ResolveLink(href, *corpus_);
  switch (target.kind) {
    case LinkTarget::Kind::Line:
      return {.jump = ReaderOutcome::Jump::WritingsLine, .jumpPosition = target.position};
    case LinkTarget::Kind::Sutra:
      return {.jump = ReaderOutcome::Jump::SutraRow, .jumpPosition = target.position};
    case LinkTarget::Kind::SysNo:
      // The line only: the work stays until the next move.
      Lpos() = target.position;
      return Redraw();
    case LinkTarget::Kind::NotFound: break;
  }
  return {.message = target.message};
}

namespace {
int NoteColumnOf(int pane) {
  switch (pane) {
    case 5: return corpus::dat::kNote2;
    case 6: return corpus::dat::kNote3;
    case 7: return corpus::dat::kQuotations;
    default: return 0;
  }
}
}  // namespace

std::optional<std::u16string> WritingsReader::StartNoteEdit(int pane) const {
  const int column = NoteColumnOf(pane);
  if (column == 0) return std::nullopt;
  return ReplaceAll(table_.Text(Lpos(), column), u"／", u"\r\n");
}

ReaderOutcome WritingsReader::EndNoteEdit(int pane, std::u16string_view startText, std::u16string_view text) {
  const int column = NoteColumnOf(pane);
  if (column == 0 || Lpos() < 1 || Lpos() > corpus_->DasMaxY) return {};
  if (text != startText) {
    const int row = corpus_->DatOrder[static_cast<std::size_t>(Lpos())];
    const std::u16string stored = ReplaceAll(text, u"\r\n", u"／");
    if (journal_ != nullptr) {
      corpus::EditNote(*corpus_, *journal_, corpus::TableId::Dat, row, column, stored);
    } else {
      corpus_->Dat().Set(row, column, stored);
      corpus_->DatDirty = 1;
    }
  }
  return Redraw();
}

void WritingsReader::Deactivate() {
  OldMsys = Mpos() >= 1 && Mpos() <= corpus_->MosMaxY
                ? std::u16string(corpus_->Mok().Get(corpus_->MokOrder[static_cast<std::size_t>(Mpos())], corpus::mok::kSysNo))
                : u"";
  OldLsys = std::u16string(table_.Text(Lpos(), corpus::dat::kSysNo));
}

void WritingsReader::FindPlaceAgain() {
  const corpus::ReaderPlace place = corpus::FindReaderPlace(*corpus_, OldLsys);
  engine_.pos.Mpos = place.Mpos;
  engine_.pos.Lpos = place.Lpos;
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

// --- double click ---

namespace {
// Kanji for the double click: from the first level-one kanji up, and "々".
bool IsKanji(char16_t c) { return c == u'々' || text::SjisCode(c) >= -30561; }
bool IsBlank(char16_t c) { return c == u' ' || c == u'\u3000'; }
// The clicked character is taken in its full-width form: ASCII and half-width
// kana are no kanji there, though their one-byte codes pass the test above.
bool IsWideKanji(char16_t c) { return c >= 0x80 && !(c >= 0xFF61 && c <= 0xFF9F) && IsKanji(c); }
}  // namespace

std::pair<std::size_t, std::size_t> KanjiRunAround(std::u16string_view text, std::size_t start, std::size_t end) {
  end = std::min(end, text.size());
  start = std::min(start, end);
  while (end > start && IsBlank(text[end - 1])) --end;
  if (start >= text.size() || !IsWideKanji(text[start])) return {start, end};
  while (start > 0 && IsKanji(text[start - 1]) && text[start - 1] != u'\r') --start;
  if (end <= start) end = start + 1;
  while (end < text.size() && IsKanji(text[end])) ++end;
  return {start, end};
}

}  // namespace suizo::reader
