#include "core/reader/navigation.h"

#include <algorithm>
#include <stdexcept>

#include "core/corpus/orders.h"
#include "core/corpus/settings.h"
#include "core/search/driver.h"
#include "core/text/numbers.h"
#include "core/text/utf16.h"

namespace suizo::reader {
namespace {

constexpr std::array<std::u16string_view, 13> kFormNames = {
    u"Form2",  u"Form16", u"Form7", u"Form5",  u"Form12", u"Form6", u"Form9",
    u"Form15", u"Form4",  u"Form3", u"Form17", u"Form8",  u"Form14"};

// Boxes are compared as the system compares text: Latin letters, narrow or
// wide, without regard to case.
char16_t Fold(char16_t c) {
  if (c >= u'A' && c <= u'Z') return static_cast<char16_t>(c + 32);
  if (c >= u'Ａ' && c <= u'Ｚ') return static_cast<char16_t>(c + 32);
  return c;
}

bool SameText(std::u16string_view a, std::u16string_view b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](char16_t x, char16_t y) { return Fold(x) == Fold(y); });
}

template <typename View>
View& As(OpenWindow& window) {
  auto* view = dynamic_cast<View*>(&window);
  if (view == nullptr) {
    throw std::logic_error("the window registered for " + text::ToUtf8(FormName(window.kind())) +
                           " lacks what a jump asks of it");
  }
  return *view;
}

const corpus::Table& Hok(const corpus::Corpus& c) {
  return c.table(corpus::TableId::Hok);
}

std::u16string ChapterOf(const corpus::Corpus& c, int row) {
  return std::u16string(Hok(c).Get(row, corpus::hok::kChapter));
}

// What differs between the three readers as a jump sees them.
int WorkCount(const corpus::Corpus& c, FormKind kind) {
  switch (kind) {
    case FormKind::Form2:
      return c.MosMaxY;
    case FormKind::Form16:
      return c.SMosMaxY;
    default:
      return Hok(c).rows();  // the sutra: its rows stand for works
  }
}

int LineCount(const corpus::Corpus& c, FormKind kind) {
  switch (kind) {
    case FormKind::Form2:
      return c.DasMaxY;
    case FormKind::Form16:
      return c.SDasMaxY;
    default:
      return Hok(c).rows();
  }
}

LineOrder OrderOf(const corpus::Corpus& c, FormKind kind) {
  return kind == FormKind::Form16 ? LineOrder::Sources(c) : LineOrder::Writings(c);
}

Position StartPlace(const corpus::Corpus& c, FormKind kind) {
  if (kind == FormKind::Form7) return {0, 1, ChapterOf(c, 1)};
  return {1, OrderOf(c, kind).FirstLineOf(1), {}};
}

Position LinePlace(const corpus::Corpus& c, FormKind kind, int lpos) {
  switch (kind) {
    case FormKind::Form2:
      return {corpus::LineToWork(c, lpos), lpos, {}};
    case FormKind::Form16:
      return {corpus::SLineToWork(c, lpos), lpos, {}};
    default:
      return {0, lpos, ChapterOf(c, lpos)};
  }
}

// The rows of the table: an open window fits when one holds.
bool Fits(const TextView& view, std::u16string_view text, int mpos, int lpos) {
  const Position place = view.Place();
  const bool sameBox = !text.empty() && SameText(text, view.Combo1());
  if (sameBox && lpos > 0 && place.Lpos == lpos) return true;
  if (sameBox && lpos == 0) return true;
  if (text.empty() && lpos > 0 && place.Lpos == lpos) return true;
  return mpos > 0 && place.Mpos == mpos;
}

}  // namespace

std::u16string_view FormName(FormKind kind) {
  return kFormNames[static_cast<std::size_t>(kind)];
}

std::u16string_view DefaultParent(FormKind kind) {
  for (const auto& s : corpus::kWindowSections) {
    if (s.form == FormName(kind)) return s.section;
  }
  return {};
}

// ---- registry ----

OpenWindow& WindowRegistry::Create(FormKind kind) {
  std::unique_ptr<OpenWindow> window = factory_(kind);
  if (!window || window->kind() != kind) {
    throw std::logic_error("the window factory made no " + text::ToUtf8(FormName(kind)));
  }
  windows_.push_back(std::move(window));
  return *windows_.back();
}

void WindowRegistry::Unload(const OpenWindow& window) {
  std::erase_if(windows_, [&](const auto& w) { return w.get() == &window; });
}

std::vector<OpenWindow*> WindowRegistry::All() const {
  std::vector<OpenWindow*> out;
  for (const auto& w : windows_) out.push_back(w.get());
  return out;
}

std::vector<OpenWindow*> WindowRegistry::OfKind(FormKind kind) const {
  std::vector<OpenWindow*> out;
  for (const auto& w : windows_) {
    if (w->kind() == kind) out.push_back(w.get());
  }
  return out;
}

OpenWindow* WindowRegistry::First(FormKind kind) const {
  for (const auto& w : windows_) {
    if (w->kind() == kind) return w.get();
  }
  return nullptr;
}

OpenWindow& WindowRegistry::Single(FormKind kind) {
  if (OpenWindow* w = First(kind)) return *w;
  OpenWindow& made = Create(kind);
  made.Parent = DefaultParent(kind);
  return made;
}

// ---- jumps ----

// `Jumping` is 1 from the start of a jump to its end, however it ends, and
// a method handed on never outlives it.
class Navigator::JumpGuard {
 public:
  explicit JumpGuard(Navigator& n) : n_(n) { n_.jumping_ = 1; }
  ~JumpGuard() {
    n_.jumping_ = 0;
    n_.jumpMethod_ = search::Method::And;
  }
  JumpGuard(const JumpGuard&) = delete;
  JumpGuard& operator=(const JumpGuard&) = delete;

 private:
  Navigator& n_;
};

bool Navigator::Begin(std::u16string_view family, bool hasFamily, JumpOutcome& out) {
  if (hasFamily && family.empty()) out.trace = kEmptyFamilyTrace;
  if (jumping_ == 1) {
    out.refused = true;
    return false;
  }
  return true;
}

void Navigator::Pump() {
  if (DoEvents) DoEvents();
}

JumpOutcome Navigator::GoHonbun(std::u16string_view text, int mpos, int lpos, search::Method method,
                                int muki, std::u16string_view family) {
  return GoReader(FormKind::Form2, text, mpos, lpos, method, muki, family);
}

JumpOutcome Navigator::GoShiryou(std::u16string_view text, int mpos, int lpos,
                                 search::Method method, int muki, std::u16string_view family) {
  return GoReader(FormKind::Form16, text, mpos, lpos, method, muki, family);
}

JumpOutcome Navigator::GoKyou(std::u16string_view text, int lpos, std::u16string_view family) {
  return GoReader(FormKind::Form7, text, 0, lpos, search::Method::And, 0, family);
}

JumpOutcome Navigator::GoReader(FormKind kind, std::u16string_view text, int mpos, int lpos,
                                search::Method method, int muki, std::u16string_view family) {
  JumpOutcome out;
  if (!Begin(family, true, out)) return out;
  JumpGuard guard(*this);
  if (WorkCount(corpus_, kind) == 0) return out;
  // A place outside the current lists names nothing.
  if (mpos < 0 || mpos > WorkCount(corpus_, kind)) mpos = 0;
  if (lpos < 0 || lpos > LineCount(corpus_, kind)) lpos = 0;

  TextView* view = nullptr;
  for (OpenWindow* w : windows_.OfKind(kind)) {
    if (Fits(As<TextView>(*w), text, mpos, lpos)) {
      view = &As<TextView>(*w);
      break;
    }
  }
  if (view == nullptr) {
    view = &As<TextView>(windows_.Create(kind));
    out.created = true;
    if (muki == 1) view->SetMuki1(1);
    view->Parent = DefaultParent(kind);
    view->SetPlace(StartPlace(corpus_, kind));
    view->Hyouji();
  } else {
    view->Raise();
  }
  view->ParentForm = family.substr(0, 2);
  view->Show();
  Pump();

  if (mpos > 0 && lpos == 0 && view->Place().Mpos != mpos) {
    view->SetPlace({mpos, OrderOf(corpus_, kind).FirstLineOf(mpos), {}});
    view->Hyouji();
  }
  if (!text.empty() && !SameText(text, view->Combo1())) {
    view->SetCombo1(text);
    jumpMethod_ = method;
    view->Kensaku(0);
    jumpMethod_ = search::Method::And;
  }
  if (mpos == 0 && lpos > 0) {
    view->SetPlace(LinePlace(corpus_, kind, lpos));
    Pump();
    view->Hyouji();
    view->Hyouji2();
  }
  view->CancelOnEsc = true;
  out.window = view;
  return out;
}

JumpOutcome Navigator::GoMok(std::u16string_view text, int mpos, std::u16string_view family) {
  JumpOutcome out;
  if (!Begin(family, true, out)) return out;
  JumpGuard guard(*this);

  RecordView* view = nullptr;
  for (OpenWindow* w : windows_.OfKind(FormKind::Form5)) {
    auto& record = As<RecordView>(*w);
    if ((!text.empty() && SameText(text, record.Combo1())) || (mpos > 0 && record.Mpos() == mpos)) {
      view = &record;
      break;
    }
  }
  if (view == nullptr) {
    view = &As<RecordView>(windows_.Create(FormKind::Form5));
    out.created = true;
    view->Parent = DefaultParent(FormKind::Form5);
    view->SetMpos(1);
    view->Hyouji();
    view->ClevWrite();
  } else {
    view->Raise();
  }
  view->ParentForm = family.substr(0, 2);
  view->Show();
  Pump();

  if (!text.empty() && !SameText(text, view->Combo1())) {
    view->SetCombo1(text);
    view->Text4_Click();
    view->Kensaku(0);
  }
  if (mpos > 0 && view->Mpos() != mpos) {
    view->SetMpos(mpos);
    view->Hyouji();
  }
  view->CancelOnEsc = true;
  out.window = view;
  return out;
}

JumpOutcome Navigator::GoNen(std::u16string_view text, int mpos, std::u16string_view family) {
  return GoChronology(text, mpos, family, false);
}

JumpOutcome Navigator::GoNenS(std::u16string_view text, int mpos, std::u16string_view family) {
  return GoChronology(text, mpos, family, true);
}

int Navigator::EventOfWork(const ChronologyView& view, int mpos, bool sources) const {
  // A work of the writings is found by its ｼｽﾃﾑNo.; the chronology holds no
  // ｼｽﾃﾑNo. of a source (those lie above 50000), so a source goes by its 史料番号.
  double key = 0;
  int field = 0;
  if (sources) {
    if (mpos > corpus_.SMosMaxY) return 0;
    key = text::Val(corpus_.SMok().Get(corpus_.SMokOrder[static_cast<std::size_t>(mpos)],
                                       corpus::smok::kNumber));
    field = corpus::nen::kSourceNo;
  } else {
    if (mpos > corpus_.MosMaxY) return 0;
    key = text::Val(
        corpus_.Mok().Get(corpus_.MokOrder[static_cast<std::size_t>(mpos)], corpus::mok::kSysNo));
    field = corpus::nen::kSysNo;
  }
  if (key <= 0) return 0;  // an empty number would meet every event without one
  const std::span<const int> order = view.NenOrder();
  for (std::size_t p = 1; p < order.size(); ++p) {
    if (text::Val(corpus_.Nen().Get(order[p], field)) == key) return static_cast<int>(p);
  }
  return 0;
}

JumpOutcome Navigator::GoChronology(std::u16string_view text, int mpos, std::u16string_view family,
                                    bool sources) {
  JumpOutcome out;
  if (!Begin(family, true, out)) return out;
  JumpGuard guard(*this);

  ChronologyView* view = nullptr;
  for (OpenWindow* w : windows_.OfKind(FormKind::Form12)) {
    if (w->Parent == DefaultParent(FormKind::Form12)) {
      view = &As<ChronologyView>(*w);
      break;
    }
  }
  if (view == nullptr) {
    view = &As<ChronologyView>(windows_.Create(FormKind::Form12));
    out.created = true;
    view->Parent = DefaultParent(FormKind::Form12);
  } else {
    view->Raise();
  }
  view->ParentForm = family;
  view->Command2BackColor = sources ? 0xC0E0FF : 0xC0FFFF;
  view->Show();

  if (!text.empty()) {
    view->SetCombo1(text);
    view->Kensaku(sources ? 0 : -1);
  } else {
    view->Hyouji();
  }
  if (mpos > 0) {
    if (const int npos = EventOfWork(*view, mpos, sources); npos > 0) {
      view->SetNpos(npos);
      view->Hyouji2();
    }
    view->ShowEdit();
    view->Kensaku(1);
  }
  view->CancelOnEsc = true;
  out.window = view;
  return out;
}

JumpOutcome Navigator::GoJisho(std::u16string_view text, std::u16string_view family) {
  JumpOutcome out;
  if (!Begin(family, true, out)) return out;
  JumpGuard guard(*this);
  const std::u16string word = text::ReplaceAll(text::ReplaceAll(text, u"『", u"「"), u"』", u"」");

  DictionaryView* view = nullptr;
  for (OpenWindow* w : windows_.OfKind(FormKind::Form6)) {
    if (As<DictionaryView>(*w).Combo1() == word) {
      view = &As<DictionaryView>(*w);
      break;
    }
  }
  const bool fromSources = family.substr(0, 2) == kSourcesFamily;
  const auto markFamily = [&] {
    view->ParentForm = family;
    view->Command4BackColor = fromSources ? 0xC0E0FF : 0xC0FFFF;
    view->Command2Caption = fromSources ? kSourcesFamily : kWritingsFamily;
  };
  if (view != nullptr) {
    markFamily();
    view->Show();
    view->Raise();
    view->Kensaku(0);
  } else {
    view = &As<DictionaryView>(windows_.Create(FormKind::Form6));
    out.created = true;
    view->Parent = DefaultParent(FormKind::Form6);
    markFamily();
    view->SetDpos(1);
    view->SetCombo1(word);
    view->Kensaku(0);
    view->Show();
  }
  view->CancelOnEsc = true;
  out.window = view;
  return out;
}

JumpOutcome Navigator::GoSMok(std::u16string_view text) {
  JumpOutcome out;
  if (!Begin({}, false, out)) return out;
  JumpGuard guard(*this);
  const bool created = windows_.First(FormKind::Form15) == nullptr;
  auto& view = As<ContentsView>(windows_.Single(FormKind::Form15));
  out.created = created;
  if (!text.empty()) {
    view.SetCombo1(text);
    view.Kensaku(0);
  }
  view.Parent = DefaultParent(FormKind::Form15);
  view.ParentForm = kFromSourcesContents;
  view.Show();
  view.Raise();
  view.SelectBox();
  out.window = &view;
  return out;
}

// ---- return ----

OpenWindow& Navigator::BackToParent(std::u16string_view family) {
  // A view reached from the other family's contents goes back to where it
  // came from.
  if (family == kFromSourcesContents) {
    family = kWritingsFamily;
  } else if (family == kFromWritingsContents) {
    family = kSourcesFamily;
  }
  const auto pick = [&](bool pinUpOnly) -> OpenWindow* {
    OpenWindow* last = nullptr;
    for (OpenWindow* w : windows_.All()) {
      if (w->Visible && !w->Minimized && w->ParentForm == family && !(pinUpOnly && w->Pin))
        last = w;
    }
    return last;
  };
  OpenWindow* target = pick(true);
  if (target == nullptr) target = pick(false);
  if (target != nullptr) {
    target->Raise();
    return *target;
  }
  const FormKind contents = family == kSourcesFamily ? FormKind::Form15 : FormKind::Form9;
  const bool created = windows_.First(contents) == nullptr;
  OpenWindow& window = windows_.Single(contents);
  if (created && contents == FormKind::Form15) window.ParentForm = kFromSourcesContents;
  window.Show();
  return window;
}

// ---- collection state ----

ClevColours ClevWriteColours(const corpus::Selection& selection) {
  ClevColours out;
  for (std::size_t i = 0; i < out.Clev.size(); ++i) {
    out.Clev[i] = selection.CSel[i] == 1 ? kClevOn : kClevOff;
  }
  for (std::size_t i = 0; i < out.PageTitle.size(); ++i) {
    if (static_cast<int>(i) != selection.Gk) {
      out.PageTitle[i] = search::kButtonFace;
    } else {
      out.PageTitle[i] = selection.Kn == 0 ? kPageOrder : kDateOrder;
    }
  }
  return out;
}

}  // namespace suizo::reader
