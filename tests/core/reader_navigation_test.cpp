#include "core/reader/navigation.h"

#include <gtest/gtest.h>

#include <numeric>
#include <string>
#include <vector>

#include "core/corpus/orders.h"
#include "core/search/driver.h"
#include "core/text/numbers.h"
#include "test_support.h"

namespace suizo::reader {
namespace {

using search::Method;

// What a fake window was asked, in order.
using Calls = std::vector<std::string>;

// The part every fake shares: the calls, and the navigator whose
// `JumpMethod` a search reads.
struct Recorder {
  Calls calls;
  const Navigator* navigator = nullptr;
  std::vector<Method> methods;  // `JumpMethod` as each `Kensaku` saw it
  void Kensaku(int mode) {
    calls.push_back("Kensaku" + std::to_string(mode));
    if (navigator) methods.push_back(navigator->JumpMethod());
  }
};

template <typename Base>
class Fake : public Base, public Recorder {
 public:
  using Base::Base;
  std::u16string box;
  std::u16string Combo1() const override { return box; }
  void SetCombo1(std::u16string_view text) override {
    box = text;
    calls.push_back("SetCombo1");
  }
  void Hyouji() override { calls.push_back("Hyouji"); }
  void Kensaku(int mode) override { Recorder::Kensaku(mode); }

 protected:
  void OnShow() override { calls.push_back("Show"); }
  void OnRaise() override { calls.push_back("Raise"); }
};

class FakeText : public Fake<TextView> {
 public:
  using Fake::Fake;
  Position place;
  int muki = 0;
  Position Place() const override { return place; }
  void SetPlace(const Position& p) override {
    place = p;
    calls.push_back("SetPlace");
  }
  int Muki1() const override { return muki; }
  void SetMuki1(int m) override { muki = m; }
  void Hyouji2() override { calls.push_back("Hyouji2"); }
};

class FakeRecord : public Fake<RecordView> {
 public:
  using Fake::Fake;
  int mpos = 0;
  int Mpos() const override { return mpos; }
  void SetMpos(int m) override { mpos = m; }
  void ClevWrite() override { calls.push_back("ClevWrite"); }
  void Text4_Click() override { calls.push_back("Text4_Click"); }
};

class FakeChronology : public Fake<ChronologyView> {
 public:
  using Fake::Fake;
  int npos = 1;
  std::vector<int> order{0};
  int Npos() const override { return npos; }
  void SetNpos(int n) override { npos = n; }
  void Hyouji2() override { calls.push_back("Hyouji2"); }
  void ShowEdit() override { calls.push_back("ShowEdit"); }
  std::span<const int> NenOrder() const override { return order; }
};

class FakeDictionary : public Fake<DictionaryView> {
 public:
  using Fake::Fake;
  int dpos = 0;
  int Dpos() const override { return dpos; }
  void SetDpos(int d) override { dpos = d; }
};

class FakeContents : public Fake<ContentsView> {
 public:
  using Fake::Fake;
  void SelectBox() override { calls.push_back("SelectBox"); }
};

class FakeSmall : public OpenWindow, public Recorder {
 public:
  using OpenWindow::OpenWindow;

 protected:
  void OnShow() override { calls.push_back("Show"); }
  void OnRaise() override { calls.push_back("Raise"); }
};

std::unique_ptr<OpenWindow> MakeFake(FormKind kind) {
  switch (kind) {
    case FormKind::Form2:
    case FormKind::Form16:
    case FormKind::Form7:
      return std::make_unique<FakeText>(kind);
    case FormKind::Form5:
      return std::make_unique<FakeRecord>(kind);
    case FormKind::Form12:
      return std::make_unique<FakeChronology>(kind);
    case FormKind::Form6:
      return std::make_unique<FakeDictionary>(kind);
    case FormKind::Form9:
    case FormKind::Form15:
      return std::make_unique<FakeContents>(kind);
    default:
      return std::make_unique<FakeSmall>(kind);
  }
}

class Navigation : public ::testing::Test {
 protected:
  Navigation()
      : corpus(testing::SampleStore()),
        windows([this](FormKind kind) {
          auto w = MakeFake(kind);
          if (auto* r = dynamic_cast<Recorder*>(w.get())) r->navigator = &nav;
          return w;
        }),
        nav(corpus, windows) {
    for (const int group : {0, 2, 3, 6}) corpus.ReadData(group);
    corpus::InitialOrders(corpus, selection);
  }

  template <typename T = FakeText>
  T& At(std::size_t i) {
    return dynamic_cast<T&>(*windows.All().at(i));
  }
  FakeText& Reader(FormKind kind, int mpos, int lpos) {
    auto& r = dynamic_cast<FakeText&>(windows.Create(kind));
    r.place = {mpos, lpos, {}};
    r.Visible = true;
    return r;
  }
  int FirstLine(int mpos) const { return LineOrder::Writings(corpus).FirstLineOf(mpos); }
  // The list place of the work with this ｼｽﾃﾑNo.
  int WorkOf(std::u16string_view sysNo) const {
    for (int m = 1; m <= corpus.MosMaxY; ++m) {
      if (corpus.Mok().Get(corpus.MokOrder[static_cast<std::size_t>(m)], corpus::mok::kSysNo) ==
          sysNo)
        return m;
    }
    return 0;
  }

  corpus::Corpus corpus;
  corpus::Selection selection;
  WindowRegistry windows;
  Navigator nav;
};

// ---- the text readers ----

TEST_F(Navigation, NewReaderStartsAtTheFirstWorkAndTakesTheFamily) {
  const JumpOutcome out = nav.GoHonbun(u"", 0, 0, Method::And, 1, u"翠典元");
  ASSERT_NE(out.window, nullptr);
  EXPECT_TRUE(out.created);
  EXPECT_TRUE(out.trace.empty());
  auto& r = At(0);
  EXPECT_EQ(r.Parent, u"@本文");
  EXPECT_EQ(r.ParentForm, u"翠典");  // two characters kept
  EXPECT_EQ(r.muki, 1);
  EXPECT_EQ(r.place.Mpos, 1);
  EXPECT_EQ(r.place.Lpos, FirstLine(1));
  EXPECT_TRUE(r.Visible);
  EXPECT_TRUE(r.CancelOnEsc);
  EXPECT_EQ(r.calls, (Calls{"SetPlace", "Hyouji", "Show"}));
  EXPECT_EQ(nav.Jumping(), 0);
}

TEST_F(Navigation, LinkToAShownLineRaisesThatWindow) {
  Reader(FormKind::Form2, 1, FirstLine(1));
  auto& shows = Reader(FormKind::Form2, 2, FirstLine(2) + 1);
  const JumpOutcome out = nav.GoHonbun(u"", 0, FirstLine(2) + 1, Method::And, 0, u"翠典");
  EXPECT_EQ(out.window, &shows);
  EXPECT_FALSE(out.created);
  EXPECT_EQ(windows.size(), 2u);
  EXPECT_EQ(shows.calls.front(), "Raise");
  EXPECT_EQ(shows.place.Mpos, 2);
}

TEST_F(Navigation, JumpByWorkLandsInTheFirstOfTwoWindowsOnIt) {
  auto& first = Reader(FormKind::Form2, 3, FirstLine(3));
  Reader(FormKind::Form2, 3, FirstLine(3) + 2);
  const JumpOutcome out = nav.GoHonbun(u"", 3, 0, Method::And, 0, u"翠典");
  EXPECT_EQ(out.window, &first);
  EXPECT_EQ(first.place.Lpos, FirstLine(3));  // the same work: the line stays
}

TEST_F(Navigation, JumpByWorkMovesAReusedWindowToTheWorksFirstLine) {
  auto& r = Reader(FormKind::Form2, 1, FirstLine(1));
  r.box = u"法華";
  nav.GoHonbun(u"法華", 4, 0, Method::And, 0, u"翠典");
  EXPECT_EQ(windows.size(), 1u);
  EXPECT_EQ(r.place.Mpos, 4);
  EXPECT_EQ(r.place.Lpos, FirstLine(4));
  EXPECT_EQ(std::count(r.calls.begin(), r.calls.end(), "Kensaku0"), 0);  // same box: no search
}

TEST_F(Navigation, JumpToALineFindsItsWorkAndRedrawsTheCounter) {
  int pumps = 0;
  nav.DoEvents = [&] { ++pumps; };
  const int line = FirstLine(5) + 1;
  nav.GoHonbun(u"", 0, line, Method::And, 0, u"翠典");
  auto& r = At(0);
  EXPECT_EQ(r.place.Lpos, line);
  EXPECT_EQ(r.place.Mpos, 5);
  EXPECT_EQ(pumps, 2);
  EXPECT_EQ(r.calls.back(), "Hyouji2");
}

TEST_F(Navigation, SearchHandsOnItsMethodOnlyWhileItRuns) {
  auto& r = Reader(FormKind::Form2, 1, FirstLine(1));
  r.box = u"abc";
  nav.GoHonbun(u"ABC", 0, 0, Method::Or, 0, u"翠典");  // same box, regardless of case
  EXPECT_TRUE(r.methods.empty());
  nav.GoHonbun(u"仏", 0, 0, Method::Not, 0, u"翠典");  // fits no window: a new one searches
  auto& made = At(1);
  EXPECT_EQ(made.box, u"仏");
  EXPECT_EQ(made.methods, (std::vector<Method>{Method::Not}));
  EXPECT_EQ(nav.JumpMethod(), Method::And);
}

TEST_F(Navigation, NestedJumpIsRefusedAndTheFlagClearsAfter) {
  JumpOutcome inner;
  nav.DoEvents = [&] { inner = nav.GoJisho(u"仏", u"翠典"); };
  nav.GoHonbun(u"", 0, 0, Method::And, 0, u"翠典");
  EXPECT_TRUE(inner.refused);
  EXPECT_EQ(inner.window, nullptr);
  EXPECT_EQ(windows.First(FormKind::Form6), nullptr);
  nav.DoEvents = nullptr;
  EXPECT_EQ(nav.Jumping(), 0);
  EXPECT_NE(nav.GoJisho(u"仏", u"翠典").window, nullptr);
}

TEST_F(Navigation, EmptyFamilyIsTracedAndTheJumpGoesOn) {
  const JumpOutcome out = nav.GoMok(u"", 2, u"");
  EXPECT_EQ(out.trace, u"empty!!");
  ASSERT_NE(out.window, nullptr);
  EXPECT_EQ(At<FakeRecord>(0).mpos, 2);
}

TEST_F(Navigation, NothingListedOpensNothing) {
  selection.CSel.fill(0);
  corpus::ApplySelection(corpus, selection);
  ASSERT_EQ(corpus.MosMaxY, 0);
  const JumpOutcome out = nav.GoHonbun(u"", 1, 0, Method::And, 0, u"翠典");
  EXPECT_EQ(out.window, nullptr);
  EXPECT_EQ(windows.size(), 0u);
  EXPECT_EQ(nav.Jumping(), 0);
}

TEST_F(Navigation, SutraAndSourcesPlaceALineByTheirOwnTables) {
  const corpus::Table& hok = corpus.table(corpus::TableId::Hok);
  nav.GoKyou(u"", 0, u"翠典");
  EXPECT_EQ(At(0).Parent, u"@経文");
  EXPECT_EQ(At(0).place.Lpos, 1);
  const int row = hok.rows() - 1;
  nav.GoKyou(u"", row, u"翠典");
  ASSERT_EQ(windows.size(), 2u);  // row 1 is not the row asked for
  EXPECT_EQ(At(1).place.chapter, hok.Get(row, corpus::hok::kChapter));

  const int line = LineOrder::Sources(corpus).FirstLineOf(3) + 1;
  nav.GoShiryou(u"", 0, line, Method::And, 0, u"史料");
  EXPECT_EQ(At(2).Parent, u"@史料本文");
  EXPECT_EQ(At(2).place.Mpos, 3);
  EXPECT_EQ(At(2).place.Lpos, line);
}

// ---- the other views ----

TEST_F(Navigation, RecordViewSearchesThroughItsTargetThenMoves) {
  nav.GoMok(u"", 0, u"翠典");
  auto& r = At<FakeRecord>(0);
  EXPECT_EQ(r.calls, (Calls{"Hyouji", "ClevWrite", "Show"}));
  r.calls.clear();
  nav.GoMok(u"聖愚", 3, u"翠典");  // no fit by box or work: a second view
  auto& second = At<FakeRecord>(1);
  EXPECT_EQ(second.mpos, 3);
  EXPECT_EQ(second.calls, (Calls{"Hyouji", "ClevWrite", "Show", "SetCombo1", "Text4_Click",
                                 "Kensaku0", "Hyouji"}));
  EXPECT_EQ(nav.GoMok(u"", 3, u"翠典").window, &second);
}

TEST_F(Navigation, ChronologyIsOneWindowColouredByFamily) {
  nav.GoNen(u"正治", 0, u"翠典");
  auto& c = At<FakeChronology>(0);
  EXPECT_EQ(c.Parent, u"@年表");
  EXPECT_EQ(c.Command2BackColor, 0xC0FFFFu);
  EXPECT_EQ(c.box, u"正治");
  EXPECT_EQ(c.calls.back(), "Kensaku-1");
  nav.GoNenS(u"嘉禎", 0, u"史料");
  EXPECT_EQ(windows.size(), 1u);
  EXPECT_EQ(c.ParentForm, u"史料");
  EXPECT_EQ(c.Command2BackColor, 0xC0E0FFu);
  EXPECT_EQ(c.calls.back(), "Kensaku0");
}

TEST_F(Navigation, ChronologyGoesToTheFirstEventOfTheWorkInItsOrder) {
  auto& c = dynamic_cast<FakeChronology&>(windows.Single(FormKind::Form12));
  const corpus::Table& nen = corpus.Nen();
  for (int row = nen.rows(); row >= 1; --row) c.order.push_back(row);  // latest first
  const int work = WorkOf(u"10695");                                   // two events name it
  ASSERT_GT(work, 0);
  nav.GoNen(u"", work, u"翠典");
  ASSERT_GT(c.npos, 1);
  const int row = c.order[static_cast<std::size_t>(c.npos)];
  EXPECT_EQ(nen.Get(row, corpus::nen::kSysNo), u"10695");
  for (int p = 1; p < c.npos; ++p) {
    EXPECT_NE(nen.Get(c.order[static_cast<std::size_t>(p)], corpus::nen::kSysNo), u"10695");
  }
  EXPECT_EQ(c.calls, (Calls{"Raise", "Show", "Hyouji", "Hyouji2", "ShowEdit", "Kensaku1"}));
}

TEST_F(Navigation, ChronologyFromASourceFindsItsNumberAndElseStays) {
  auto& c = dynamic_cast<FakeChronology&>(windows.Single(FormKind::Form12));
  c.order.resize(corpus.Nen().rows() + 1);
  std::iota(c.order.begin() + 1, c.order.end(), 1);
  int source = 0;  // the list place of 史料番号 1
  for (int m = 1; m <= corpus.SMosMaxY; ++m) {
    if (corpus.SMok().Get(corpus.SMokOrder[static_cast<std::size_t>(m)], corpus::smok::kNumber) ==
        u"1")
      source = m;
  }
  ASSERT_GT(source, 0);
  nav.GoNenS(u"", source, u"史料");
  EXPECT_EQ(corpus.Nen().Get(c.order[static_cast<std::size_t>(c.npos)], corpus::nen::kSourceNo),
            u"1");

  c.npos = 7;
  c.order.resize(3);  // the source's event filtered out
  nav.GoNenS(u"", source, u"史料");
  EXPECT_EQ(c.npos, 7);
}

TEST_F(Navigation, DictionaryIsReusedByItsWordAndMarkedWithTheFamily) {
  nav.GoJisho(u"『法華』", u"史料");
  auto& d = At<FakeDictionary>(0);
  EXPECT_EQ(d.box, u"「法華」");
  EXPECT_EQ(d.dpos, 1);
  EXPECT_EQ(d.Parent, u"@辞書");
  EXPECT_EQ(d.ParentForm, u"史料");
  EXPECT_EQ(d.Command4BackColor, 0xC0E0FFu);
  EXPECT_EQ(d.Command2Caption, u"史料");
  nav.GoJisho(u"「法華」", u"翠典");
  EXPECT_EQ(windows.size(), 1u);
  EXPECT_EQ(d.Command2Caption, u"翠典");
  EXPECT_EQ(d.Command4BackColor, 0xC0FFFFu);
  nav.GoJisho(u"仏", u"翠典");
  EXPECT_EQ(windows.size(), 2u);
}

TEST_F(Navigation, SourcesContentsExistOnceAndSelectTheirBox) {
  nav.GoSMok(u"");
  nav.GoSMok(u"荘園");
  ASSERT_EQ(windows.size(), 1u);
  auto& c = At<FakeContents>(0);
  EXPECT_EQ(c.Parent, u"@史料目次");
  EXPECT_EQ(c.ParentForm, u"史料元");
  EXPECT_EQ(c.box, u"荘園");
  EXPECT_EQ(c.calls.back(), "SelectBox");
}

// ---- the return ----

TEST_F(Navigation, ReturnGoesToTheLastOpenWindowOfTheFamily) {
  auto& a = Reader(FormKind::Form2, 1, 1);
  auto& b = Reader(FormKind::Form2, 1, 1);
  auto& hidden = Reader(FormKind::Form2, 1, 1);
  auto& small = Reader(FormKind::Form2, 1, 1);
  for (auto* w : {&a, &b, &hidden, &small}) w->ParentForm = u"翠典";
  hidden.Visible = false;
  small.Minimized = true;
  EXPECT_EQ(&nav.BackToParent(u"翠典"), &b);
  b.Pin = true;
  EXPECT_EQ(&nav.BackToParent(u"翠典"), &a);  // a pinned window only as a last resort
  a.Pin = true;
  EXPECT_EQ(&nav.BackToParent(u"翠典"), &b);
}

TEST_F(Navigation, ClosingTheLastReaderShowsTheFamilysContents) {
  OpenWindow& writings = nav.BackToParent(u"翠典");
  EXPECT_EQ(writings.kind(), FormKind::Form9);
  EXPECT_TRUE(writings.Visible);
  OpenWindow& sources = nav.BackToParent(u"史料");
  EXPECT_EQ(sources.kind(), FormKind::Form15);
  EXPECT_EQ(sources.Parent, u"@史料目次");
  EXPECT_EQ(&nav.BackToParent(u"史料元"), &writings);  // reached from the writings
  EXPECT_EQ(windows.size(), 2u);
}

TEST_F(Navigation, DictionaryOpenedFromTheSourcesReturnsThere) {
  nav.GoHonbun(u"", 0, 0, Method::And, 0, u"翠典");
  nav.GoShiryou(u"", 0, 0, Method::And, 0, u"史料");
  OpenWindow& sources = *windows.All().back();
  OpenWindow* dictionary = nav.GoJisho(u"仏", sources.ParentForm).window;
  dictionary->Visible = false;  // closed
  EXPECT_EQ(&nav.BackToParent(dictionary->ParentForm), &sources);
}

// ---- registry and colours ----

TEST_F(Navigation, RegistryKeepsCreationOrderAndRefusesAWrongModel) {
  OpenWindow& a = windows.Create(FormKind::Form4);
  OpenWindow& b = windows.Create(FormKind::Form2);
  OpenWindow& c = windows.Create(FormKind::Form4);
  windows.Unload(b);
  EXPECT_EQ(windows.All(), (std::vector<OpenWindow*>{&a, &c}));

  WindowRegistry wrong([](FormKind) { return std::make_unique<FakeSmall>(FormKind::Form4); });
  EXPECT_THROW(wrong.Create(FormKind::Form2), std::logic_error);
  WindowRegistry plain([](FormKind kind) { return std::make_unique<FakeSmall>(kind); });
  Navigator n(corpus, plain);
  EXPECT_THROW(n.GoJisho(u"仏", u"翠典"), std::logic_error);
  EXPECT_EQ(n.Jumping(), 0);
}

TEST_F(Navigation, ClevColoursFollowTheSelection) {
  selection.CSel = {1, 0, 1, 1, 1, 1, 1, 1, 1, 0, 1};
  selection.Gk = 22;
  selection.Kn = 0;
  ClevColours c = ClevWriteColours(selection);
  EXPECT_EQ(c.Clev[0], 65535u);
  EXPECT_EQ(c.Clev[1], 0x808080u);
  EXPECT_EQ(c.Clev[10], 65535u);
  EXPECT_EQ(c.PageTitle[22], 0xFFFFC0u);
  EXPECT_EQ(c.PageTitle[0], search::kButtonFace);
  selection.Kn = 1;
  EXPECT_EQ(ClevWriteColours(selection).PageTitle[22], 14538751u);
}

}  // namespace
}  // namespace suizo::reader
