#include "core/views/dictionary.h"

#include <algorithm>

#include "core/corpus/orders.h"
#include "core/corpus/schema.h"
#include "core/reader/frame.h"
#include "core/reader/highlight.h"
#include "core/reader/reader_base.h"
#include "core/search/regex.h"
#include "core/text/numbers.h"
#include "core/text/utf16.h"
#include "core/views/balloons.h"

namespace suizo::views {

using text::ReplaceAll;

namespace {

namespace dic = corpus::dic;

// Fields the links read beyond the schema's names.
constexpr int kSDatSourceNo = 4;  // 史料番号 of a source line
constexpr int kMokClass = corpus::mok::kClass;

std::u16string_view DicText(const corpus::Corpus& c, int row, int field) {
  return c.Dic().Get(row, field);
}

// The source document numbered `v`: its place in the sources' list.
int SourceDocument(const corpus::Corpus& c, double v) {
  for (int p = 1; p <= c.SMosMaxY; ++p) {
    if (text::Val(c.SMok().Get(c.SMokOrder[static_cast<std::size_t>(p)], corpus::smok::kNumber)) ==
        v)
      return p;
  }
  return 0;
}

// The source line whose ｼｽﾃﾑNo. is `v`, when its document is in the list.
int SourceLine(const corpus::Corpus& c, double v) {
  for (int p = 1; p <= c.SDasMaxY; ++p) {
    const int row = c.SDatOrder[static_cast<std::size_t>(p)];
    if (text::Val(c.SDat().Get(row, corpus::sdat::kSysNo)) != v) continue;
    const double number = text::Val(c.SDat().Get(row, kSDatSourceNo));
    for (int r = 1; r <= c.SMok().rows(); ++r) {
      if (text::Val(c.SMok().Get(r, corpus::smok::kNumber)) == number &&
          text::Val(c.SMok().Get(r, corpus::smok::kMark)) == 0)
        return p;
    }
    return 0;
  }
  return 0;
}

// The line of the writings whose ｼｽﾃﾑNo. is `v`, of a class shown and of a
// listed document.
int WritingsLine(const corpus::Corpus& c, const corpus::Selection& s, double v) {
  for (int p = 1; p <= c.DasMaxY; ++p) {
    const int row = c.DatOrder[static_cast<std::size_t>(p)];
    if (text::Val(c.Dat().Get(row, corpus::dat::kSysNo)) != v) continue;
    if (!s.Shows(text::ValInt(c.Dat().Get(row, corpus::dat::kClass)))) continue;
    if (corpus::LineToWork(c, p) > 0) return p;
  }
  return 0;
}

// Whether a listed document of a class shown has the ｼｽﾃﾑNo. `v`.
int WritingsDocument(const corpus::Corpus& c, const corpus::Selection& s, double v) {
  for (int m = 1; m <= c.MosMaxY; ++m) {
    const int row = c.MokOrder[static_cast<std::size_t>(m)];
    if (text::Val(c.Mok().Get(row, corpus::mok::kSysNo)) == v &&
        s.Shows(text::ValInt(c.Mok().Get(row, kMokClass))))
      return m;
  }
  return 0;
}

// The link target of a number in an explanation, or empty.
std::u16string NumberTarget(std::u16string_view number, bool seeRecord, const corpus::Corpus& c,
                            const corpus::Selection& s) {
  const double v = text::Val(number);
  if (v < 2000) {
    const int p = SourceDocument(c, v);
    return p > 0 ? u"r" + text::IntText(p) : u"";
  }
  if (v >= 50000) {
    const int p = SourceLine(c, v);
    return p > 0 ? u"s" + text::IntText(p) : u"";
  }
  if (!seeRecord) {
    const int p = WritingsLine(c, s, v);
    return p > 0 ? text::IntText(p) : u"";
  }
  return WritingsDocument(c, s, v) > 0 ? u"-" + std::u16string(number) : u"";
}

std::u16string Anchor(std::u16string_view target, std::u16string_view label) {
  return u"<a href='" + std::u16string(target) + u"'>" + std::u16string(label) + u"</a>";
}

const search::Regex& SutraReference() {
  static const search::Regex regex(u"(\\[|〔)h(\\d{1,4})(〕|\\])", false);
  return regex;
}

}  // namespace

// ---- texts ----

std::u16string CleanE(std::u16string_view explanation) {
  std::u16string e =
      ReplaceAll(explanation, u"≪翠蔵用語≫としての解説は、次頁をご覧ください。", u"");
  e = ReplaceAll(e, u"(上部ﾎﾞﾀﾝ列の「資料」をｸﾘｯｸする)", u"");
  return ReplaceAll(e, u"／", u"<BR>");
}

std::array<std::u16string, kKanrenCount + 1> RelatedTerms(std::u16string_view cleaned) {
  std::array<std::u16string, kKanrenCount + 1> terms{};
  const std::size_t arrow = cleaned.find(u'⇒');
  if (arrow == std::u16string_view::npos) return terms;
  std::u16string_view tail = cleaned.substr(arrow);
  tail = tail.substr(0, tail.find(u"<BR>"));
  std::u16string list = ReplaceAll(tail, u"⇒", u"");
  if (!list.empty() && list.back() == u'。') list.pop_back();
  const auto parts = text::Split(list, u"。");
  for (std::size_t i = 0; i < parts.size() && i < kKanrenCount; ++i)
    terms[i + 1] = text::TrimSpace(parts[i]);
  return terms;
}

std::u16string LinkDic(std::u16string_view text, bool seeRecord, const corpus::Corpus& corpus,
                       const corpus::Selection& selection) {
  // Pass 1: the numbers, position by position.
  std::u16string linked;
  for (std::size_t i = 0; i < text.size();) {
    std::size_t at = i, length = 0;
    if (text::LooksLike(text, i, u"史料番号####")) {
      at = i + 4, length = 4;
    } else if (text::LooksLike(text, i, u"######")) {
      // Six digits and more are no references.
      linked += text.substr(i, 6);
      i += 6;
      continue;
    } else if (text::LooksLike(text, i, u"#####.#")) {
      length = 7;
    } else if (text::LooksLike(text, i, u"#####")) {
      length = 5;
    }
    const std::u16string_view number = text.substr(at, length);
    const std::u16string target =
        length > 0 ? NumberTarget(number, seeRecord, corpus, selection) : u"";
    if (target.empty()) {
      linked += text[i++];
      continue;
    }
    linked += text.substr(i, at - i);
    linked += Anchor(target, number);
    i = at + length;
  }

  // Pass 2: the sutra's rows. Equal references get equal links, so one pass
  // from left to right does what replacing each in turn would.
  const int hokRows = corpus.table(corpus::TableId::Hok).rows();
  std::u16string out;
  std::size_t copied = 0;
  for (std::size_t from = 0; from <= linked.size();) {
    const auto m = SutraReference().Find(linked, from);
    if (!m) break;
    const std::u16string_view match = std::u16string_view(linked).substr(m->index, m->length);
    const std::size_t digits = match.find(u'h') + 1;
    std::u16string_view n = match.substr(digits);
    n.remove_suffix(1);
    from = m->index + m->length;
    if (text::Val(n) > hokRows) continue;
    out += std::u16string_view(linked).substr(copied, m->index - copied);
    out += Anchor(u"h" + std::u16string(n), u"〔h" + std::u16string(n) + u"〕");
    copied = from;
  }
  out += std::u16string_view(linked).substr(copied);
  return out;
}

// ---- the model ----

Dictionary::Dictionary(const corpus::Corpus& corpus, const corpus::Selection& selection,
                       const corpus::Settings& settings, const DictionaryLookup& lookup)
    : corpus_(corpus), selection_(selection), settings_(settings), lookup_(lookup) {}

int Dictionary::getSr(int i) const {
  return i >= 1 && i <= Srn ? Sr_[static_cast<std::size_t>(i)] : 0;
}

int Dictionary::Row() const {
  if (Dpos < 1 || Dpos > corpus_.DisMaxY) return 0;
  return corpus_.DicOrder[static_cast<std::size_t>(Dpos)];
}

std::u16string Dictionary::HandedWord(std::u16string_view cut) const {
  const int row = Row();
  if (row == 0) return {};
  const std::u16string_view c = DicText(corpus_, row, dic::kHeadWord);
  return std::u16string(c.substr(0, c.find(cut)));
}

DictionaryDisplay Dictionary::Hyouji() {
  DictionaryDisplay v;
  const int row = Row();
  if (row > 0) {
    const std::u16string_view c = DicText(corpus_, row, dic::kHeadWord);
    const std::u16string_view e = DicText(corpus_, row, dic::kExplanation);
    v.Text4 = c;
    v.caption = u"辞書「" + std::u16string(c) + u"」";
    v.Label1 = DicText(corpus_, row, dic::kReading);
    v.Text2 = DicText(corpus_, row, dic::kHeadNo);
    v.Text3 = DicText(corpus_, row, dic::kClassLabel);
    v.Text3Balloon = DictionaryClassBalloon(v.Text3);
    const bool seeRecord = text::Contains(e, kSeeRecord);
    v.Command3Enabled = seeRecord;

    const std::u16string cleaned = CleanE(e);
    kanren_ = RelatedTerms(cleaned);
    v.body = LinkDic(cleaned, seeRecord, corpus_, selection_);
    // The explanation is marked only when it was searched and this entry is a hit.
    const bool hit = std::find(Sr_.begin() + 1, Sr_.end(), Dpos) != Sr_.end();
    if (SrTarget == 1 && hit && Label3Colour == kDictionaryHitColour)
      v.body = reader::MarkWords(v.body, Sw_, Swn, settings_.Itaiji);
  } else {
    kanren_ = {};
  }
  for (int i = 1; i <= kKanrenCount; ++i) {
    const std::u16string& term = kanren_[static_cast<std::size_t>(i)];
    v.Kanren[static_cast<std::size_t>(i)] = {term, !term.empty()};
  }
  v.toStart = true;
  if (frameDue_) {
    v.frame = reader::HorizontalFrame(1);
    v.zoom = reader::ZoomText(dpi_);
    frameDue_ = false;
  }
  v.selDown = SrTarget;
  v.Label3Text = text::IntText(SrnPos) + u"/" + text::IntText(Srn);
  v.Label3Colour = Label3Colour;
  v.Label3Enabled = Label3Enabled;
  return v;
}

// ---- search ----

DictionaryOutcome Dictionary::Kensaku(int mode) {
  if (text::TrimSpace(Combo1).empty()) mode = 1;
  if (mode > 0) Combo1.clear();
  search::RememberSearch(Combo, Combo1);
  Label3Colour = search::kButtonFace;
  Label3Enabled = false;
  if (mode == 2) return {.redraw = true};

  Sr_.assign(1, 0);
  Sw_.clear();
  Srn = SrnPos = Swn = 0;
  if (mode == 0) {
    DicLookupResult found = lookup_.KensakuDic(Combo1, SrTarget);
    Sr_ = std::move(found.Sr);
    if (Sr_.empty()) Sr_.push_back(0);
    Srn = found.Srn;
    SrnPos = found.SrnPos;
    Sw_ = std::move(found.Sw);
    Swn = found.Swn;
  }
  if (Srn > 0) {
    SrnPos = std::clamp(SrnPos, 1, Srn);
    Dpos = Sr_[static_cast<std::size_t>(SrnPos)];
    Label3Colour = kDictionaryHitColour;
  } else if (Row() == 0) {
    Dpos = 1;
  }
  DictionaryOutcome out{.redraw = true};
  if (mode == 0) {
    out.toast = Srn == 0;
    Label3Enabled = Srn != 0;
  }
  return out;
}

DictionaryOutcome Dictionary::SrnBack() {
  if (Srn == 0) return {};
  SrnPos = std::max(SrnPos - 1, 1);
  Dpos = Sr_[static_cast<std::size_t>(SrnPos)];
  return {.redraw = true};
}

DictionaryOutcome Dictionary::SrnNext() {
  if (Srn == 0) return {};
  SrnPos = std::min(SrnPos + 1, Srn);
  Dpos = Sr_[static_cast<std::size_t>(SrnPos)];
  return {.redraw = true};
}

DictionaryOutcome Dictionary::Command1(std::u16string_view selection) {
  if (!selection.empty()) Combo1 = selection;
  return Kensaku(0);
}

DictionaryOutcome Dictionary::SelClick(int i) {
  if (i < 0 || i > 1 || i == SrTarget) return {};
  SrTarget = i;
  if (text::TrimSpace(Combo1).empty()) return {};
  return Kensaku(0);
}

// ---- keys, links, buttons ----

DictionaryOutcome Dictionary::KeyDownAll(int keyCode, int shift) {
  namespace key = reader::key;
  switch (keyCode) {
    case key::kF1:
      return {.openSettings = true};
    case key::kUp:
      if (corpus_.DisMaxY == 0) return {};
      Dpos = std::max(Dpos - 1, 1);
      return {.redraw = true};
    case key::kDown:
      if (corpus_.DisMaxY == 0) return {};
      Dpos = std::min(Dpos + 1, corpus_.DisMaxY);
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

DictionaryOutcome Dictionary::LinkClick(std::u16string_view href) const {
  using Jump = DictionaryOutcome::Jump;
  if (href.starts_with(u"about:")) href.remove_prefix(6);
  if (href.empty() || href == u"blank") return {};
  const std::u16string word = HandedWord(u"(①");
  const auto number = [&](std::u16string_view t) { return text::ValInt(t); };
  switch (href.front()) {
    case u'h':
      return {.jump = Jump::Sutra, .text = word, .lpos = number(href.substr(1))};
    case u'r':
      return {.jump = Jump::Sources, .text = word, .mpos = number(href.substr(1))};
    case u's':
      return {.jump = Jump::Sources, .text = word, .lpos = number(href.substr(1))};
    default:
      break;
  }
  const double n = text::Val(href);
  if (n < 0) {
    const int mpos = WritingsDocument(corpus_, selection_, -n);
    if (mpos == 0) return {};
    return {.jump = Jump::Record, .text = HandedWord(u"("), .mpos = mpos};
  }
  if (n >= 1) return {.jump = Jump::Reader, .text = word, .lpos = static_cast<int>(n)};
  return {};
}

DictionaryOutcome Dictionary::KanrenClick(int i) const {
  if (i < 1 || i > kKanrenCount) return {};
  std::u16string word = kanren_[static_cast<std::size_t>(i)];
  if (word == kNextEntry) {
    if (Dpos + 1 > corpus_.DisMaxY) return {};
    word = DicText(corpus_, corpus_.DicOrder[static_cast<std::size_t>(Dpos + 1)], dic::kHeadWord);
  }
  if (word.empty()) return {};
  return {.jump = DictionaryOutcome::Jump::Dictionary, .text = std::move(word)};
}

DictionaryOutcome Dictionary::Command3() const {
  const int row = Row();
  if (row == 0 || !text::Contains(DicText(corpus_, row, dic::kExplanation), kSeeRecord)) return {};
  // The first document the explanation names, else the record searched by the word.
  const std::u16string body =
      LinkDic(CleanE(DicText(corpus_, row, dic::kExplanation)), true, corpus_, selection_);
  const std::size_t link = body.find(u"<a href='-");
  if (link != std::u16string::npos) {
    const std::size_t start = link + 9;
    return LinkClick(std::u16string_view(body).substr(start, body.find(u'\'', start) - start));
  }
  return {.jump = DictionaryOutcome::Jump::Record, .text = HandedWord(u"(")};
}

// ---- the window ----

DictionaryWindow::DictionaryWindow(const corpus::Corpus& corpus, const corpus::Selection& selection,
                                   const corpus::Settings& settings, const DictionaryLookup& lookup)
    : Hooked(reader::FormKind::Form6), model_(corpus, selection, settings, lookup) {}

void DictionaryWindow::Hyouji() {
  DictionaryDisplay v = model_.Hyouji();
  v.Command4Colour = Command4BackColor;
  v.Command2Caption = Command2Caption;
  if (onView) onView(v);
}

void DictionaryWindow::Kensaku(int mode) {
  toastDue = model_.Kensaku(mode).toast;
  Hyouji();
}

std::u16string DictionaryWindow::Family() const {
  return ParentForm.empty() ? std::u16string(reader::kWritingsFamily) : ParentForm;
}

reader::JumpOutcome DictionaryWindow::Follow(reader::Navigator& navigator,
                                             const DictionaryOutcome& outcome) {
  using Jump = DictionaryOutcome::Jump;
  reader::JumpOutcome out;
  const std::u16string family = Family();
  switch (outcome.jump) {
    case Jump::None:
      if (outcome.redraw) Hyouji();
      return out;
    case Jump::Contents:
    case Jump::Back:
      return out;
    case Jump::Reader:
      out = navigator.GoHonbun(outcome.text, 0, outcome.lpos, search::Method::And, 0, family);
      break;
    case Jump::Sources:
      out = navigator.GoShiryou(outcome.text, outcome.mpos, outcome.lpos, search::Method::And, 0,
                                family);
      break;
    case Jump::Sutra:
      out = navigator.GoKyou(outcome.text, outcome.lpos, family);
      break;
    case Jump::Record:
      out = navigator.GoMok(outcome.text, outcome.mpos, family);
      break;
    case Jump::Dictionary:
      out = navigator.GoJisho(outcome.text, family);
      break;
  }
  if (out.window != nullptr && out.window != this && !Pin) Minimized = true;
  return out;
}

}  // namespace suizo::views
