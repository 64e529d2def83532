#include "core/reader/writings_reader.h"

#include "core/corpus/orders.h"
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
}  // namespace

WritingsReader::WritingsReader(corpus::Corpus& corpus, corpus::Selection& selection,
                               corpus::Settings& settings, corpus::NoteJournal* journal, int muki)
    : ReaderBase(corpus, selection, settings, journal, TextTable::Writings(corpus, selection),
                 muki) {
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

std::vector<bool> WritingsReader::TabVisibility() const {
  std::vector<bool> shown(11, true);
  for (int tab = 2; tab <= 5; ++tab)
    shown[static_cast<std::size_t>(tab)] = tab == 2 + SinSya * 2 + TyoKat;
  shown[6] = SinSya == 0;
  shown[7] = SinSya == 1;
  if (Muki1 == 1 && settings_->Gcm1 == 0 && TateOne == 1) shown[1] = false;
  return shown;
}

// --- rendering ---

ReaderView WritingsReader::Hyouji() {
  ReaderView v;
  v.Muki1 = Muki1;
  WriteFrames(v, kPanes, {1, 2}, {3, 4});

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
  const std::u16string t4 = ReplaceAll(
      col(SinSya == 0 ? corpus::dat::kAutographNote : corpus::dat::kCopyNote), u"\n", u"/");
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
    const auto hiLight = [&](std::u16string_view t, int pane, int at) {
      return highlighter.HiLight(t, pane, at);
    };
    VerticalPage page =
        HyoujiTate(table_, {&engine_.pos, engine_.Limit, &BackFill, &BlockLines, TateOne}, vs,
                   selection_->Gk, selection_->CSel[10], hiLight, meter());
    v.panes[1].body = std::move(page.main);
    v.panes[1].written = true;
    if (page.translationWritten) {
      v.panes[2].body = std::move(page.translation);
      v.panes[2].written = true;
      v.panes[2].scrollRight = 100000;
    }
  } else {
    HorizontalPanes panes = HyoujiYoko(table_, *corpus_, lpos, highlighter, engine_.Srn, Kakko,
                                       selection_->Gk, selection_->CSel[10]);
    for (const int pane : {1, 2, 5, 6, 7}) {
      v.panes[static_cast<std::size_t>(pane)].body =
          std::move(panes.html[static_cast<std::size_t>(pane)]);
      v.panes[static_cast<std::size_t>(pane)].written = true;
    }
    v.KakkoVisible = panes.KakkoVisible;
    v.scrollPanesToTop = true;
  }
  v.BlockLines = BlockLines;

  // The page boxes show the line the layout left the position on.
  if (Lpos() >= 1 && Lpos() <= corpus_->DasMaxY) {
    const auto boxes =
        PageBoxTexts(corpus_->Dat(), corpus_->DatOrder[static_cast<std::size_t>(Lpos())]);
    for (std::size_t i = 0; i < kPageBoxes.size(); ++i)
      v.pageBoxes.emplace_back(kPageBoxes[i], boxes[i]);
  }

  v.clev = ClevWriteColours(*selection_);
  SearchView(v);
  v.tabVisible = TabVisibility();
  v.TyoKatCaption = TyoKatCaption();
  v.Command13Caption = TateOne == 1 ? u"△" : u"▽";
  v.Command10Caption = GcmShow == 1 ? u"△" : u"▽";
  v.compactTop = CompactSwap == 0 ? 1 : 2;
  return v;
}

// --- keys ---

ReaderOutcome WritingsReader::KeyDownAll(int keyCode, int shift) {
  if (Mpos() == 0) return {};
  if (auto common = CommonKey(keyCode, shift)) return *common;
  switch (keyCode) {
    case key::kA:
      if (Muki1 == 0) return Command10();
      return settings_->Gcm1 == 1 ? Command16() : ReaderOutcome{};
    case key::kS:
      return SinSyaButton();
    case key::kV:
      return Command13();
    default:
      break;
  }
  if (keyCode != key::kUp && keyCode != key::kDown) return {};
  if (shift != key::kCtrl) return LineKey(keyCode, shift);
  const LineOrder order = LineOrder::Writings(*corpus_);
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
    case LinkTarget::Kind::NotFound:
      break;
  }
  return {.message = target.message};
}

namespace {
int NoteColumnOf(int pane) {
  switch (pane) {
    case 5:
      return corpus::dat::kNote2;
    case 6:
      return corpus::dat::kNote3;
    case 7:
      return corpus::dat::kQuotations;
    default:
      return 0;
  }
}
}  // namespace

std::optional<std::u16string> WritingsReader::StartNoteEdit(int pane) const {
  const int column = NoteColumnOf(pane);
  if (column == 0) return std::nullopt;
  return ReplaceAll(table_.Text(Lpos(), column), u"／", u"\r\n");
}

ReaderOutcome WritingsReader::EndNoteEdit(int pane, std::u16string_view startText,
                                          std::u16string_view text) {
  const int column = NoteColumnOf(pane);
  if (column == 0 || Lpos() < 1 || Lpos() > corpus_->DasMaxY) return {};
  ReaderOutcome out = Redraw();
  out.message = StoreNote(corpus::TableId::Dat, corpus_->DatOrder[static_cast<std::size_t>(Lpos())],
                          column, startText, text);
  return out;
}

void WritingsReader::Deactivate() {
  OldMsys = Mpos() >= 1 && Mpos() <= corpus_->MosMaxY
                ? std::u16string(corpus_->Mok().Get(
                      corpus_->MokOrder[static_cast<std::size_t>(Mpos())], corpus::mok::kSysNo))
                : u"";
  OldLsys = std::u16string(table_.Text(Lpos(), corpus::dat::kSysNo));
}

void WritingsReader::FindPlaceAgain() {
  const corpus::ReaderPlace place = corpus::FindReaderPlace(*corpus_, OldLsys);
  engine_.pos.Mpos = place.Mpos;
  engine_.pos.Lpos = place.Lpos;
  if (place.Mpos == 0) {  // no document is left in the lists
    OldMsys.clear();
    OldLsys.clear();
  }
}

// --- double click ---

namespace {
// Kanji for the double click: from the first level-one kanji up, and "々".
bool IsKanji(char16_t c) {
  return c == u'々' || text::SjisCode(c) >= -30561;
}
bool IsBlank(char16_t c) {
  return c == u' ' || c == u'\u3000';
}
// The clicked character is taken in its full-width form: ASCII and half-width
// kana are no kanji there, though their one-byte codes pass the test above.
bool IsWideKanji(char16_t c) {
  return c >= 0x80 && !(c >= 0xFF61 && c <= 0xFF9F) && IsKanji(c);
}
}  // namespace

std::pair<std::size_t, std::size_t> KanjiRunAround(std::u16string_view text, std::size_t start,
                                                   std::size_t end) {
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
