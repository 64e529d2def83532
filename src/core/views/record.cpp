#include "core/views/record.h"

#include <algorithm>
#include <map>

#include "core/corpus/orders.h"
#include "core/corpus/schema.h"
#include "core/reader/frame.h"
#include "core/reader/highlight.h"
#include "core/reader/page_boxes.h"
#include "core/reader/reader_base.h"
#include "core/search/compilers.h"
#include "core/text/numbers.h"
#include "core/text/sjis.h"
#include "core/text/utf16.h"
#include "core/text/width.h"

namespace suizo::views {

using text::ReplaceAll;

namespace {

constexpr std::u16string_view kLeftBody =
    u"<body scroll=auto bgcolor=#FEF6EA text=#0A7576 style='width:98%; margin:auto; "
    u"margin-top:5px; "
    u"line-height:1.6em; font-size:14px; font-family:ＭＳ ゴシック;'>";
constexpr std::u16string_view kRightBody =
    u"<body scroll=auto bgcolor=#FEF6EA text=#0A7576 style='width:98%; margin:auto; "
    u"margin-top:3px; "
    u"line-height:1.2em; font-size:13.5px; font-family:ＭＳ ゴシック;'>";

// Fields of `Mok` the head reads.
constexpr int kSeriesNumber = 5;
constexpr int kReading = 25;
constexpr int kRecipientNote = 19;
constexpr int kAge = 35;
constexpr int kLastField = 52;

// What a document number in running text is made of.
constexpr std::u16string_view kNumberChars =
    u"－0123456789０１２３４５６７８９bｂxｘsｓ新加対追編ⅠⅡⅢⅣⅤⅥⅦⅧⅨⅩ-";

std::u16string_view MokText(const corpus::Corpus& c, int row, int field) {
  return c.Mok().Get(row, field);
}

// The list position of the document whose 番号 or 定番 is the number read.
int DocumentPosition(std::u16string_view read, const corpus::Corpus& c) {
  std::u16string number;
  for (const char16_t ch : text::Narrow(read)) {
    if (ch != u' ') number += ch;
  }
  if (number.size() > 2 && !text::ContainsUnit(number, u'-')) number = u"1-" + number;
  for (int m = 1; m <= c.MosMaxY; ++m) {
    const int row = c.MokOrder[static_cast<std::size_t>(m)];
    if (MokText(c, row, corpus::mok::kBangou) == number || MokText(c, row, kSeriesNumber) == number)
      return m;
  }
  return 0;
}

// The reading position of the line whose ｼｽﾃﾑNo. has the number's value.
int LinePosition(std::u16string_view number, const corpus::Corpus& c) {
  const double value = text::Val(number);
  for (int p = 1; p <= c.DasMaxY; ++p) {
    if (text::Val(c.Dat().Get(c.DatOrder[static_cast<std::size_t>(p)], corpus::dat::kSysNo)) ==
        value)
      return p;
  }
  return 0;
}

// Kanji for the word selection: from the first level-one kanji up.
bool IsKanji(char16_t c) {
  return c != u'々' && static_cast<std::uint16_t>(text::SjisCode(c)) >= 0x889F;
}
bool IsKanjiOrMark(char16_t c) {
  return c == u'々' || IsKanji(c);
}
bool IsBlank(char16_t c) {
  return c == u' ' || c == u'\u3000';
}
bool IsLineEnd(char16_t c) {
  return c == u'\r' || c == u'\n';
}

// What a title search reads: the title, then its reading, so that a title
// is found in kana too.
std::u16string TitleText(const corpus::Corpus& c, int row) {
  return std::u16string(MokText(c, row, corpus::mok::kTitle)) +
         std::u16string(MokText(c, row, kReading));
}

}  // namespace

// ---- texts ----

std::u16string RecordPageText(const RecordPageBox& box, std::u16string_view source) {
  return reader::PageBoxText(box.form, source);
}

std::u16string RecordFrame(int pane) {
  return std::u16string(reader::kDoctype) + std::u16string(reader::kHitStyle) +
         std::u16string(reader::kLinkStyle) + std::u16string(pane == 1 ? kLeftBody : kRightBody);
}

std::u16string BuildPane(std::u16string_view field) {
  std::u16string t = ReplaceAll(field, u"／", u"<BR>");
  t = ReplaceAll(t, u"番号№", u"№");
  for (const std::u16string_view series : {u"1-", u"3-", u"4-"}) {
    t = ReplaceAll(t, u"№" + std::u16string(series), u"番号" + std::u16string(series));
  }
  return t;
}

std::u16string LinkDocumentNumbers(std::u16string_view text, const corpus::Corpus& corpus) {
  std::u16string out;
  std::size_t copied = 0;
  for (std::size_t from = 0;;) {
    const std::size_t p = text.find(u"番号", from);
    if (p == std::u16string_view::npos) break;
    const std::size_t start = p + 2;
    std::size_t end = start;
    while (end < text.size() && text::ContainsUnit(kNumberChars, text[end])) ++end;
    from = end == start ? p + 1 : end;
    if (end == start) continue;
    const std::u16string_view read = text.substr(start, end - start);
    if (const int position = DocumentPosition(read, corpus); position > 0) {
      out += text.substr(copied, start - copied);
      out += u"<a href='" + text::IntText(position) + u"'>" + std::u16string(read) + u"</a>";
      copied = end;
    }
  }
  out += text.substr(copied);
  return out;
}

std::u16string LinkSysNos(std::u16string_view text, const corpus::Corpus& corpus) {
  std::map<std::u16string, int, std::less<>> known;  // a number often stands twice in a pane
  std::u16string out;
  std::size_t copied = 0;
  for (std::size_t i = 0; i < text.size();) {
    std::size_t at = std::u16string_view::npos, length = 0;
    if (text::LooksLike(text, i, u"(#####)")) {
      ++i;  // past the bracket: the digits are the place now
      at = i, length = 5;
    }
    // At one place the later forms win.
    if (text::LooksLike(text, i, u"#####.#")) at = i, length = 7;
    if (text::LooksLike(text, i, u"№#####.#")) at = i + 1, length = 7;
    if (text::LooksLike(text, i, u"№#####")) at = i + 1, length = 5;
    if (at == std::u16string_view::npos) {
      ++i;
      continue;
    }
    const std::u16string_view number = text.substr(at, length);
    auto found = known.find(number);
    if (found == known.end())
      found = known.emplace(std::u16string(number), LinePosition(number, corpus)).first;
    if (found->second == 0) {
      ++i;
      continue;
    }
    out += text.substr(copied, at - copied);
    out += u"<a href='D" + text::IntText(found->second) + u"'>" + std::u16string(number) + u"</a>";
    copied = i = at + length;
  }
  out += text.substr(copied);
  return out;
}

std::u16string LinkPane(std::u16string_view text, const corpus::Corpus& corpus) {
  return LinkSysNos(LinkDocumentNumbers(text, corpus), corpus);
}

void CopyToReservedSlot(corpus::Corpus& corpus, int row) {
  corpus::Table& mok = corpus.Mok();
  for (int f = 0; f <= kLastField; ++f) mok.Set(kReservedSlot, f, mok.Get(row, f));
  if (corpus.MokOrder.size() <= static_cast<std::size_t>(kReservedSlot))
    corpus.MokOrder.resize(kReservedSlot + 1, 0);
  corpus.MokOrder[kReservedSlot] = kReservedSlot;
}

std::pair<std::size_t, std::size_t> WordSelect(std::u16string_view text, std::size_t start,
                                               std::size_t end) {
  end = std::min(end, text.size());
  start = std::min(start, end);
  while (end > start && IsBlank(text[end - 1])) --end;
  if (start >= text.size() || !IsKanji(text[start])) return {start, end};
  while (start > 0 && IsKanjiOrMark(text[start - 1]) && !IsLineEnd(text[start - 1])) --start;
  if (end <= start) end = start + 1;
  while (end < text.size() && IsKanjiOrMark(text[end])) ++end;
  return {start, end};
}

// ---- the model ----

DocumentRecord::DocumentRecord(corpus::Corpus& corpus, corpus::Selection& selection,
                               const corpus::Settings& settings)
    : corpus_(&corpus), selection_(&selection), settings_(&settings) {
  ClearHitList();
  ClevWrite();
}

int DocumentRecord::MokRowAt(int mpos) const {
  if (mpos == kReservedSlot) return kReservedSlot;
  if (mpos < 1 || mpos > corpus_->MosMaxY) return 0;
  return corpus_->MokOrder[static_cast<std::size_t>(mpos)];
}

int DocumentRecord::getSr(int i, int j) const {
  if (i < 1 || i > Srn) return 0;
  const Hit& h = Sr_[static_cast<std::size_t>(i)];
  return j == 0 ? h.mpos : h.lpos;
}

int DocumentRecord::getSrf(int mpos) const {
  return mpos >= 0 && static_cast<std::size_t>(mpos) < Srf_.size()
             ? Srf_[static_cast<std::size_t>(mpos)]
             : 0;
}

// The document's head row in `Dat`: by its reading position, or, for the
// copy in the slot, whose position in this order is not known, by its ｼｽﾃﾑNo.
int DocumentRecord::HeadDatRow(int mokRow) const {
  const corpus::Corpus& c = *corpus_;
  if (mokRow == kReservedSlot) {
    const std::u16string_view sysNo = MokText(c, mokRow, corpus::mok::kSysNo);
    for (int p = 1; p <= c.DasMaxY; ++p) {
      const int row = c.DatOrder[static_cast<std::size_t>(p)];
      if (c.Dat().Get(row, corpus::dat::kSysNo) == sysNo) return row;
    }
    return 0;
  }
  const double p = text::Val(MokText(c, mokRow, corpus::mok::kPosition));
  if (p < 1 || p > c.DasMaxY) return 0;
  return c.DatOrder[static_cast<std::size_t>(p)];
}

void DocumentRecord::ClevWrite() {
  clev_ = reader::ClevWriteColours(*selection_);
}

RecordDisplay DocumentRecord::Display() const {
  RecordDisplay v = head_;
  v.Clev = clev_.Clev;
  for (RecordPageView& page : v.pages) {
    // Only the captions 1 to 35 are painted.
    page.titleColour = page.title >= 1 ? clev_.PageTitle[static_cast<std::size_t>(page.title)]
                                       : search::kButtonFace;
  }
  for (int p = 1; p <= kRecordPanes; ++p)
    v.panes[static_cast<std::size_t>(p)].body = panes_[static_cast<std::size_t>(p)];
  if (LeftPane > 0) {
    v.panes[1].body = panes_[static_cast<std::size_t>(LeftPane)];
    v.PicVisible = true;
    v.PicPane = LeftPane;
    v.Text9Visible = true;
    v.Text9 = u"【 " + std::u16string(kRecordPaneInfo[static_cast<std::size_t>(LeftPane)].title) +
              u" 】を表示中";
  }
  v.selDown = SrTarget;
  v.Label3Text = text::IntText(SrnPos) + u"/" + text::IntText(Srn);
  v.Label3Colour = Label3Colour;
  v.Label3Enabled = Label3Enabled;
  v.refine = controls;
  const bool inSlot = Mpos == kReservedSlot;
  v.Command4Enabled = v.Command5Enabled = v.Command7Enabled = !inSlot;
  return v;
}

RecordDisplay DocumentRecord::Hyouji() {
  const corpus::Corpus& c = *corpus_;
  const int row = MokRowAt(Mpos);
  // On an empty list the window keeps its last state.
  if (row > 0) {
    RecordDisplay& h = head_;
    const auto field = [&](int f) { return MokText(c, row, f); };
    h.Bangou = ReplaceAll(text::Narrow(field(corpus::mok::kBangou)), u"  ", u"\u3000");
    h.Text1 = field(corpus::mok::kDating);
    const std::u16string_view date = field(corpus::mok::kDate);
    h.Text6 = date == u"??" ? u" ?? 年" : std::u16string(date.substr(0, 4)) + u"年";
    h.Text2 = std::u16string(field(kAge)) + u" 歳";
    const std::u16string_view title = field(corpus::mok::kTitle);
    const std::size_t bracket = title.find(u'＜');
    h.Text4 = title.substr(0, bracket);
    h.Text8.clear();
    if (bracket != std::u16string_view::npos) {
      const std::u16string_view rest = title.substr(bracket + 1);
      h.Text8 = rest.substr(0, rest.empty() ? 0 : rest.size() - 1);  // without the closing bracket
    }
    h.Text7 = field(kReading);
    h.Text5 = field(corpus::mok::kClass);
    h.Text3 = text::TrimSpace(field(kRecipientNote));

    const int datRow = HeadDatRow(row);
    h.pages.clear();
    for (const RecordPageBox& box : kRecordPageBoxes) {
      std::u16string_view source;
      if (!box.fromDat) {
        source = field(box.field);
      } else if (datRow > 0) {
        source = c.Dat().Get(datRow, box.field);
      }
      h.pages.push_back(
          {box.box, box.title, box.caption, RecordPageText(box, source), search::kButtonFace});
    }

    for (int p = 1; p <= kRecordPanes; ++p) {
      std::u16string t =
          LinkPane(BuildPane(field(kRecordPaneInfo[static_cast<std::size_t>(p)].field)), c);
      // Only the pane searched is marked, and only on a hit.
      if (p == Srk && getSrf(Mpos) == 1 && Label3Colour == search::kWordColour)
        t = reader::MarkWords(t, Sw_, Swn, settings_->Itaiji);
      panes_[static_cast<std::size_t>(p)] = std::move(t);
    }
  }
  RecordDisplay v = Display();
  for (int p = 1; p <= kRecordPanes; ++p) {
    RecordPaneView& pane = v.panes[static_cast<std::size_t>(p)];
    pane.written = true;
    pane.toStart = true;
    if (framesDue_) pane.frame = RecordFrame(p);
  }
  if (framesDue_) v.zoom = reader::ZoomText(dpi_);
  framesDue_ = false;
  return v;
}

// ---- search ----

void DocumentRecord::ClearHitList() {
  Sr_.resize(1);
  Srf_.assign(
      static_cast<std::size_t>(std::max({kRecordHitCapacity, kReservedSlot, corpus_->MosMaxY})) + 1,
      0);
  Srn = 0;
  SrnPos = 0;
}

std::u16string DocumentRecord::SearchText(int mokRow, int target) const {
  if (target == 0) return TitleText(*corpus_, mokRow);
  return BuildPane(
      MokText(*corpus_, mokRow, kRecordPaneInfo[static_cast<std::size_t>(target)].field));
}

RecordOutcome DocumentRecord::Kensaku(int mode) {
  if (text::TrimSpace(Combo1).empty()) mode = RefineCount > 0 ? 2 : 1;
  if (mode > 0) Combo1.clear();
  search::RememberSearch(Combo, Combo1);
  Label3Colour = search::kButtonFace;
  Label3Enabled = false;
  if (mode == 2) return {.redraw = true};

  Srk = SrTarget;
  ClearHitList();
  const Hit remembered{Mpos, Lpos};
  // AND only, and no second try by single characters.
  const auto query = search::WordQuery::Compile(Combo1, search::Method::And, settings_->Itaiji);
  Sw_ = query ? query->Sw() : std::vector<std::u16string>{};
  Swn = static_cast<int>(Sw_.size());
  const corpus::Corpus& c = *corpus_;
  if (query && c.MosMaxY > 0) {
    Label3Colour = search::kWordColour;
    for (int m = 1; m <= c.MosMaxY && Srn < kRecordHitCapacity; ++m) {
      const int row = c.MokOrder[static_cast<std::size_t>(m)];
      if (!query->Matches(SearchText(row, Srk))) continue;
      ++Srn;
      Sr_.push_back({m, text::ValInt(MokText(c, row, corpus::mok::kPosition))});
      Srf_[static_cast<std::size_t>(m)] = 1;
    }
  }
  if (Srn > 0) {
    SrnPos = 1;
    Mpos = Sr_[1].mpos;
    Lpos = Sr_[1].lpos;
  } else {
    Mpos = remembered.mpos;
    Lpos = remembered.lpos;
  }

  RecordOutcome out{.redraw = true};
  if (mode == 0 && Srn == 0) {
    out.toast = true;
    ClearHits();
    Label3Enabled = true;
  } else if (mode == 0) {
    ShowRefine();
    Label3Enabled = true;
  }
  return out;
}

void DocumentRecord::ShowRefine() {
  controls.Command14Visible = controls.Command15Visible = controls.RefineLevelVisible = true;
  controls.Text6Visible = false;
  controls.Command14Enabled = true;
  controls.Command15Enabled = RefineCount > 0;
}

void DocumentRecord::ClearHits() {
  controls.Command14Visible = controls.Label5Visible = controls.RefineLevelVisible =
      controls.Command15Visible = false;
  controls.Text6Visible = true;
}

RecordOutcome DocumentRecord::GoToHit() {
  Mpos = Sr_[static_cast<std::size_t>(SrnPos)].mpos;
  Lpos = Sr_[static_cast<std::size_t>(SrnPos)].lpos;
  return {.redraw = true};
}

RecordOutcome DocumentRecord::SrnBack() {
  if (Srn == 0) return {};
  SrnPos = std::max(SrnPos - 1, 1);
  return GoToHit();
}

RecordOutcome DocumentRecord::SrnNext() {
  if (Srn == 0) return {};
  SrnPos = std::min(SrnPos + 1, Srn);
  return GoToHit();
}

RecordOutcome DocumentRecord::Combo1Enter() {
  RecordOutcome out = Kensaku(0);
  out.focusPanel = true;
  return out;
}

RecordOutcome DocumentRecord::Command1(std::u16string_view selection) {
  if (!selection.empty()) Combo1 = selection;
  return Kensaku(0);
}

RecordOutcome DocumentRecord::SelClick(int i) {
  if (i < 0 || i > kRecordPanes || i == SrTarget) return {};
  SrTarget = i;
  if (text::TrimSpace(Combo1).empty()) return {};
  return Kensaku(0);
}

RecordOutcome DocumentRecord::Command15() {
  // Nothing is ever kept, so there is nothing to undo.
  return {};
}

RecordOutcome DocumentRecord::Label3Click() {
  ClearHits();
  return Kensaku(1);
}

// ---- keys, links, buttons ----

RecordOutcome DocumentRecord::KeyDownAll(int keyCode, int shift) {
  namespace key = reader::key;
  if (keyCode == key::kF1) return {.openSettings = true};
  if (Mpos == kReservedSlot) return {};
  switch (keyCode) {
    case key::kUp:
      if (corpus_->MosMaxY == 0) return {};
      Mpos = std::max(Mpos - 1, 1);
      return {.redraw = true};
    case key::kDown:
      if (corpus_->MosMaxY == 0) return {};
      Mpos = std::min(Mpos + 1, corpus_->MosMaxY);
      return {.redraw = true};
    case key::kRight:
      return SrnNext();
    case key::kLeft:
      return SrnBack();
    case key::kF:
      if (shift & key::kCtrl) return {.focusSearchBox = true};
      return {};
    default:
      return {};
  }
}

RecordOutcome DocumentRecord::LinkClick(std::u16string_view href) {
  if (!CancelsNavigation(href)) return {};
  if (href.starts_with(u"about:")) href.remove_prefix(6);
  if (href.starts_with(u"D")) {
    const double lpos = text::Val(href.substr(1));
    if (lpos < 1 || lpos > corpus_->DasMaxY) return {};
    return {.jump = RecordOutcome::Jump::Reader, .lpos = static_cast<int>(lpos)};
  }
  const double n = text::Val(href);
  if (n >= 1 && n <= corpus_->MosMaxY) {
    Mpos = static_cast<int>(n);
    return {.redraw = true};
  }
  // A record the list does not hold: its copy stands in the slot.
  if (n <= -1 && -n < kReservedSlot && -n <= corpus_->Mok().rows()) {
    CopyToReservedSlot(*corpus_, static_cast<int>(-n));
    Mpos = kReservedSlot;
    return {.redraw = true};
  }
  return {};
}

std::u16string DocumentRecord::Title() const {
  const int row = MokRowAt(Mpos);
  if (row == 0) return {};
  const std::u16string_view title = MokText(*corpus_, row, corpus::mok::kTitle);
  return std::u16string(title.substr(0, title.find(u' ')));
}

RecordOutcome DocumentRecord::Command4() const {
  if (!OnDocument()) return {};
  return {.jump = RecordOutcome::Jump::Contents, .mpos = Mpos};
}

RecordOutcome DocumentRecord::Command5() const {
  if (!OnDocument()) return {};
  return {.jump = RecordOutcome::Jump::Reader, .mpos = Mpos};
}

RecordOutcome DocumentRecord::Command6(std::u16string_view selection) const {
  return {.jump = RecordOutcome::Jump::Sutra, .text = std::u16string(selection)};
}

RecordOutcome DocumentRecord::Command7() const {
  if (!OnDocument()) return {};
  return {.jump = RecordOutcome::Jump::Chronology, .text = Title(), .mpos = Mpos};
}

RecordOutcome DocumentRecord::Command8(std::u16string_view selection) const {
  std::u16string word = selection.empty() ? Title() : std::u16string(selection);
  if (word.empty()) return {};
  return {.jump = RecordOutcome::Jump::Dictionary, .text = std::move(word)};
}

reader::MenuChoice DocumentRecord::MenuGo(int item, reader::MenuTarget target,
                                          std::u16string_view selection,
                                          std::u16string_view family) const {
  using Kind = reader::MenuChoice::Kind;
  reader::MenuChoice choice;
  const bool pane = target == reader::MenuTarget::Pane;
  const auto lookup = [&](Kind kind) {
    if (selection.empty()) return;
    choice.kind = kind;
    choice.text = selection;
    choice.family = family;
    choice.clearPaneSelection = pane;
  };
  switch (item) {
    case 1:
      lookup(Kind::Jisho);
      break;
    case 2:
      lookup(Kind::Honbun);
      break;
    case 3:
      lookup(Kind::Kyou);
      break;
    case 5:
      choice.kind = Kind::Edit;
      if (pane) {
        choice.execWB = reader::kExecCopy;
      } else {
        choice.message = reader::kWmCopy;
      }
      break;
    case 6:
      // The panes take nothing.
      if (pane) break;
      choice.kind = Kind::Edit;
      choice.message = reader::kWmPaste;
      choice.caretToEnd = true;
      break;
    default:
      break;
  }
  return choice;
}

// ---- the left pane ----

RecordDisplay DocumentRecord::ShowLeft(int pane) {
  LeftPane = pane >= 2 && pane <= kRecordPanes ? pane : 0;
  RecordDisplay v = Display();
  v.panes[1].written = v.panes[1].toStart = true;
  if (LeftPane > 0) v.panes[static_cast<std::size_t>(LeftPane)].clearSelection = true;
  return v;
}

RecordDisplay DocumentRecord::ShowBack() {
  LeftPane = 0;
  RecordDisplay v = Display();
  for (int p = 1; p <= kRecordPanes; ++p) {
    v.panes[static_cast<std::size_t>(p)].written = v.panes[static_cast<std::size_t>(p)].toStart =
        true;
  }
  return v;
}

std::optional<RecordDisplay> DocumentRecord::PaneDoubleClick(int pane) {
  if (pane < 2 || pane > kRecordPanes) return std::nullopt;
  return ShowLeft(pane);
}

std::optional<RecordDisplay> DocumentRecord::PaneClick(int pane) {
  if (pane != 1 || LeftPane == 0) return std::nullopt;
  return ShowBack();
}

// ---- the selection ----

RecordOutcome DocumentRecord::FollowSelection() {
  const corpus::ContentsPlace place = corpus::FindContentsPlace(*corpus_, OldMsys);
  Mpos = place.Mpos;
  OldMsys = place.OldMsys;
  RecordOutcome out{.redraw = Resize == 0};
  ClevWrite();
  if (!text::TrimSpace(Combo1).empty()) out = Kensaku(0);
  return out;
}

void DocumentRecord::Deactivate() {
  if (const int row = MokRowAt(Mpos); row > 0)
    OldMsys = MokText(*corpus_, row, corpus::mok::kSysNo);
  const corpus::Corpus& c = *corpus_;
  OldLsys = Lpos >= 1 && Lpos <= c.DasMaxY
                ? std::u16string(
                      c.Dat().Get(c.DatOrder[static_cast<std::size_t>(Lpos)], corpus::dat::kSysNo))
                : u"";
}

// ---- the window ----

RecordWindow::RecordWindow(corpus::Corpus& corpus, corpus::Selection& selection,
                           const corpus::Settings& settings)
    : Hooked(reader::FormKind::Form5), model_(corpus, selection, settings) {}

void RecordWindow::Hyouji() {
  const RecordDisplay v = model_.Hyouji();
  if (onView) onView(v);
}

void RecordWindow::Kensaku(int mode) {
  toastDue = model_.Kensaku(mode).toast;
  Hyouji();
}

void RecordWindow::ClevWrite() {
  model_.ClevWrite();
  if (onView) onView(model_.Display());
}

void RecordWindow::FollowSelection() {
  const RecordOutcome out = model_.FollowSelection();
  toastDue = out.toast;
  if (out.redraw) {
    Hyouji();
  } else if (onView) {
    onView(model_.Display());  // the colours of the new selection
  }
}

std::u16string RecordWindow::Family() const {
  return ParentForm.empty() ? std::u16string(reader::kWritingsFamily) : ParentForm;
}

reader::JumpOutcome RecordWindow::Follow(reader::Navigator& navigator,
                                         const RecordOutcome& outcome) {
  using Jump = RecordOutcome::Jump;
  reader::JumpOutcome out;
  const std::u16string family = Family();
  switch (outcome.jump) {
    case Jump::None:
      if (outcome.redraw) Hyouji();
      return out;
    case Jump::Contents:
      return out;
    case Jump::Reader:
      out = navigator.GoHonbun(outcome.text, outcome.mpos, outcome.lpos, search::Method::And, 0,
                               family);
      break;
    case Jump::Sutra:
      out = navigator.GoKyou(outcome.text, 0, family);
      break;
    case Jump::Chronology:
      out = navigator.GoNen(outcome.text, outcome.mpos, family);
      break;
    case Jump::Dictionary:
      out = navigator.GoJisho(outcome.text, family);
      break;
  }
  if (out.window != nullptr && out.window != this && !Pin) Minimized = true;
  return out;
}

}  // namespace suizo::views
