#include "core/reader/reader_base.h"
#include "core/views/contents.h"

#include <gtest/gtest.h>

#include <string>

#include "core/corpus/orders.h"
#include "core/text/numbers.h"
#include "test_support.h"

namespace suizo::views {
namespace {

using corpus::mok::kMark;

class ContentsTest : public ::testing::Test {
 protected:
  ContentsTest() : corpus(testing::SampleStore()) {
    for (const int group : {0, 6}) corpus.ReadData(group);
    corpus::InitialOrders(corpus, selection);
  }
  // What the selection dialog does before the windows follow.
  void Choose(int gk, int kn = 0) {
    selection.MokRedo = gk != selection.Gk ? 1 : 0;
    selection.Gk = gk;
    selection.Kn = kn;
    corpus::ApplySelection(corpus, selection);
  }
  int PlaceOf(std::u16string_view sysNo) const {
    return corpus::FindContentsPlace(corpus, sysNo).Mpos;
  }
  std::u16string SysNoAt(const Contents& c, int m) const {
    return std::u16string(c.Grid().TextMatrix(m, 0));
  }
  void Search(Contents& c, std::u16string_view box, int target = 0) {
    c.SrTarget = target;
    c.Combo1 = box;
    c.Kensaku(0);
  }
  int Mark(std::u16string_view sysNo) const {
    return static_cast<int>(text::Val(corpus.Mok().Get(corpus::MSysNo(corpus, sysNo), kMark)));
  }

  corpus::Corpus corpus;
  corpus::Selection selection;
  corpus::Settings settings;
};

// ---- the grid ----

using ContentsGridTest = ContentsTest;

TEST_F(ContentsGridTest, SystemOrderHasNoPageColumnAndAOneLineOrderLabel) {
  Contents c(ContentsKind::Writings, corpus, selection, settings);
  EXPECT_EQ(c.Grid().TextMatrix(0, 2), u"翠典頁");
  EXPECT_EQ(c.Grid().TextMatrix(0, 7), u"対　告　者");
  EXPECT_EQ(c.Grid().TextMatrix(1, 2), u"");
  EXPECT_EQ(c.Grid().TextMatrix(1, 3), u"聖愚問答抄 ");  // a blank keeps the text off the rule
  EXPECT_EQ(c.Grid().TextMatrix(1, 4), u"有");
  EXPECT_EQ(c.Screen().Label1, u"ｼｽﾃﾑ並替:No.順");
  EXPECT_EQ(c.Screen().Label5, u"37/37");

  Choose(22, 1);
  c.FollowSelection();
  EXPECT_EQ(c.Screen().Label1, u"定本並替:系年順");
  EXPECT_EQ(c.Screen().Label1Back, reader::kDateOrder);
  Choose(22, 0);
  c.FollowSelection();
  EXPECT_EQ(c.Screen().Label1, u"定本並替:頁行順");
  EXPECT_EQ(c.Screen().Label1Back, reader::kPageOrder);
  EXPECT_EQ(c.Grid().TextMatrix(1, 2), u"1.01");
}

TEST_F(ContentsGridTest, RecipientColumnShowsOnlyTheTextBeforeTheSlash) {
  Contents c(ContentsKind::Writings, corpus, selection, settings);
  // The import classes women behind a "/", and "." marks one as well.
  EXPECT_EQ(corpus.Mok().Get(10, corpus::mok::kRecipient), u"大田殿/女人女性");
  EXPECT_EQ(c.Grid().TextMatrix(PlaceOf(u"12353"), 7), u"大田殿");
  EXPECT_EQ(c.Grid().TextMatrix(PlaceOf(u"10001"), 7), u"妙心尼");

  Search(c, u"女人", 1);
  c.metrics = {3000, 100, 100};
  c.Scroll(4);
  c.Check1Click();  // the second form, cut the same way; list and hits stay
  EXPECT_EQ(c.Grid().TextMatrix(PlaceOf(u"11569"), 7), u"窪の尼");
  EXPECT_EQ(c.Grid().TextMatrix(PlaceOf(u"10001"), 7), u"妙心尼御前");
  EXPECT_EQ(c.Grid().TopRow, 4);
  EXPECT_EQ(c.Srn(), 18);
  EXPECT_EQ(c.Screen().Check1Back, kCheck1On);
}

TEST_F(ContentsGridTest, CurrentRowIsYellowPastTheFixedColumnAndHeaderIsCentredButItsFirstCell) {
  Contents c(ContentsKind::Writings, corpus, selection, settings);
  c.EnterCell(5);
  const ContentsGrid& g = c.Grid();
  EXPECT_EQ(c.Mpos, 5);
  EXPECT_EQ(g.CellBackColor(5, 0), kContentsFixedBack);
  EXPECT_EQ(g.CellBackColor(5, 1), kContentsRowOn);
  EXPECT_EQ(g.CellBackColor(5, 7), kContentsRowOn);
  EXPECT_EQ(g.CellBackColor(4, 3), kContentsRowBack);
  EXPECT_EQ(g.CellBackColor(0, 5), kContentsFixedBack);
  EXPECT_EQ(g.CellAlignment(0, 0), CellAlign::LeftCentre);
  EXPECT_EQ(g.CellAlignment(0, 3), CellAlign::Centre);
  EXPECT_EQ(g.CellAlignment(2, 3), CellAlign::LeftTop);
  c.EnterCell(99);  // past the list: ignored
  EXPECT_EQ(c.Mpos, 5);
}

TEST_F(ContentsGridTest, SelectedRowRestsAboveTheMiddleUnlessATopRowIsKept) {
  Contents c(ContentsKind::Writings, corpus, selection, settings);
  c.metrics = {3000, 100, 100};  // 30 rows in view: 13.04 above the selection
  c.Mpos = 20;
  c.Hyouji2();
  EXPECT_EQ(c.Grid().TopRow, 7);  // 6.96 rounded, not cut
  c.Mpos = 5;
  c.Hyouji2();
  EXPECT_EQ(c.Grid().TopRow, 1);
  c.KeepTop = 9;
  c.Hyouji2();
  EXPECT_EQ(c.Grid().TopRow, 9);
  EXPECT_EQ(c.KeepTop, 0);  // once only
  c.Scale = 1.5;
  c.Hyouji();
  EXPECT_EQ(c.Grid().ColWidth[3], 6450);
  EXPECT_EQ(c.Grid().RowHeight, 450);
  EXPECT_DOUBLE_EQ(c.Grid().FontSize, 16.5);
}

TEST_F(ContentsGridTest, EmptyListKeepsTwoRowsWithTheSecondHidden) {
  Contents c(ContentsKind::Writings, corpus, selection, settings);
  selection.CSel.fill(0);
  corpus::ApplySelection(corpus, selection);
  c.FollowSelection();
  EXPECT_EQ(c.Grid().Rows, 2);
  EXPECT_EQ(c.Grid().RowHeightOf(1), 0);
  EXPECT_EQ(c.Grid().RowHeightOf(0), kContentsRowHeight);
  EXPECT_EQ(c.Mpos, 1);
  EXPECT_EQ(c.Screen().Label5, u"0/37");
  EXPECT_TRUE(c.JumpTitle().empty());
  for (int i = 0; i <= 10; ++i)
    EXPECT_EQ(c.Screen().ClevBack[static_cast<std::size_t>(i)], reader::kClevOff);
}

// ---- the search ----

using ContentsSearchTest = ContentsTest;

TEST_F(ContentsSearchTest, RecipientClassesAreFoundBehindTheSlashButNotInTitles) {
  Contents c(ContentsKind::Writings, corpus, selection, settings);
  c.EnterCell(6);
  EXPECT_TRUE(c.Kensaku(0).redraw);  // empty box: clears, no toast
  Search(c, u"女人");
  EXPECT_EQ(c.Srn(), 0);
  EXPECT_EQ(c.Mpos, 6);  // nothing found leaves the place
  EXPECT_EQ(c.Screen().Label3Back, search::kButtonFace);

  c.SrTarget = 1;
  c.Combo1 = u"女人";
  EXPECT_FALSE(c.Kensaku(0).toast);
  EXPECT_EQ(c.Srn(), 18);
  EXPECT_EQ(c.Mpos, 1);
  EXPECT_EQ(c.Lpos, c.getSr(1, 1));
  EXPECT_EQ(c.Screen().Label3, u"1/18");
  EXPECT_EQ(c.Screen().Label3Back, kHitsShown);
  EXPECT_EQ(c.getSrf(c.Hit(2).Mpos), 1);
  EXPECT_EQ(c.getSrf(3), 0);  // 某殿夫妻: a couple is no woman's class
  EXPECT_EQ(c.Combo, (std::vector<std::u16string>{u"女人"}));  // once in the history
}

TEST_F(ContentsSearchTest, TitleIsFoundByItsReadingAndTheStepsStopAtTheEnds) {
  Contents c(ContentsKind::Writings, corpus, selection, settings);
  Search(c, u"がんしん");  // readings only: no title holds it
  ASSERT_EQ(c.Srn(), 3);
  EXPECT_EQ(SysNoAt(c, c.Hit(1).Mpos), u"10154");
  // The arrow keys walk the hits and stop at the ends.
  namespace key = reader::key;
  EXPECT_TRUE(c.KeyDownAll(key::kLeft, 0).redraw);
  EXPECT_EQ(c.SrnPos(), 1);
  for (int i = 0; i < 3; ++i) c.KeyDownAll(key::kRight, 0);
  EXPECT_EQ(c.SrnPos(), 3);
  EXPECT_EQ(c.Mpos, c.Hit(3).Mpos);
  EXPECT_EQ(c.Grid().Row, c.Hit(3).Mpos);
  // Enter opens the reader, Ctrl+F the box, F1 the settings; the rest is the grid's.
  EXPECT_TRUE(c.KeyDownAll(key::kEnter, 0).openReader);
  EXPECT_TRUE(c.KeyDownAll(key::kF, key::kCtrl).focusBox);
  EXPECT_FALSE(c.KeyDownAll(key::kF, 0).handled);
  EXPECT_TRUE(c.KeyDownAll(key::kF1, 0).openSettings);
  EXPECT_FALSE(c.KeyDownAll(key::kDown, 0).handled);

  // A switch over the header searches the box again on its target.
  c.SelClick(1);
  EXPECT_EQ(c.Srn(), 0);
  EXPECT_TRUE(c.Screen().Sel[1].down);
  EXPECT_EQ(c.Screen().Sel[1].caption, u"対　告　者");
}

// ---- the refinement ----

using ContentsRefineTest = ContentsTest;

TEST_F(ContentsRefineTest, EachLevelNarrowsTheListAndUndoingLiftsOneLevel) {
  Contents c(ContentsKind::Writings, corpus, selection, settings);
  EXPECT_FALSE(c.Command14());  // no hits
  Search(c, u"書");
  ASSERT_EQ(c.Srn(), 11);
  ASSERT_TRUE(c.Command14());
  EXPECT_EQ(corpus.MosMaxY, 11);
  EXPECT_TRUE(c.Combo1.empty());
  EXPECT_EQ(c.Srn(), 0);
  EXPECT_EQ(c.RefineLevel(), u"■－－－－");
  EXPECT_FALSE(c.Screen().refine.Command14Enabled);
  EXPECT_EQ(c.Screen().Label5, u"11/37");

  Search(c, u"白雲");
  ASSERT_EQ(c.Srn(), 2);
  c.Command14();
  EXPECT_EQ(corpus.MosMaxY, 2);
  EXPECT_EQ(Mark(u"17489"), 0);   // 白雲書
  EXPECT_EQ(Mark(u"13243"), -1);  // 山寺書, dropped at the second level
  EXPECT_EQ(Mark(u"10001"), -2);

  c.Command15();
  EXPECT_EQ(corpus.MosMaxY, 11);
  EXPECT_TRUE(c.Screen().refine.Command15Visible);
  c.Command15();
  EXPECT_EQ(corpus.MosMaxY, 37);
  EXPECT_FALSE(c.Screen().refine.Command15Visible);
  EXPECT_EQ(c.RefineLevel(), u"－－－－－");
}

TEST_F(ContentsRefineTest, TheTwentySecondRefinementIsIgnored) {
  Contents c(ContentsKind::Writings, corpus, selection, settings);
  for (int level = 0; level < 21; ++level) {
    Search(c, level == 20 ? u"白雲" : u"書");
    ASSERT_TRUE(c.Command14()) << level;
  }
  EXPECT_EQ(c.RefineCount(), 21);
  EXPECT_EQ(c.RefineLevel(), u"■■■■■");  // full from the fifth on
  Search(c, u"白雲");
  ASSERT_EQ(c.Srn(), 2);
  EXPECT_FALSE(c.Command14());
  EXPECT_EQ(c.RefineCount(), 21);
  EXPECT_EQ(c.Srn(), 2);  // nothing ran: the hits stay
  EXPECT_EQ(Mark(u"13243"), -1);
  EXPECT_EQ(Mark(u"10001"), -21);
  EXPECT_EQ(c.RefineWord(20), u"白雲");
}

TEST_F(ContentsRefineTest, KeptHitsReachClassesHiddenWhenRefining) {
  Contents c(ContentsKind::Writings, corpus, selection, settings);
  selection.CSel[1] = 0;  // 杉原御書 is of class 1
  corpus::ApplySelection(corpus, selection);
  c.FollowSelection();
  Search(c, u"書");
  EXPECT_EQ(c.Srn(), 10);
  c.Command14();
  EXPECT_EQ(corpus.MosMaxY, 10);
  EXPECT_EQ(selection.CSel[1], 0);  // the filter is back as it was
  selection.CSel[1] = 1;
  corpus::ApplySelection(corpus, selection);
  c.FollowSelection();
  EXPECT_EQ(corpus.MosMaxY, 11);
}

TEST_F(ContentsRefineTest, ChangeOfCollectionReplaysTheLevelsAndKeepsTheDocument) {
  ContentsWindow w(ContentsKind::Writings, corpus, selection, settings);
  Contents& c = w.model();
  Search(c, u"書");
  c.Command14();
  c.EnterCell(PlaceOf(u"15015"));  // 杉原御書
  w.Deactivate();
  Choose(22);
  w.PlacementsRebuilt();
  w.FollowSelection();
  EXPECT_EQ(c.RefineCount(), 1);
  EXPECT_EQ(corpus.MosMaxY, 11);
  EXPECT_EQ(SysNoAt(c, c.Mpos), u"15015");
  EXPECT_TRUE(c.Combo1.empty());
  EXPECT_FALSE(w.toastDue);

  // The counter's click replays the levels too, and empties the box.
  c.Combo1 = u"白雲";
  c.Kensaku(0);
  c.Label3Click();
  EXPECT_EQ(c.RefineCount(), 1);
  EXPECT_TRUE(c.Combo1.empty());
  EXPECT_EQ(corpus.MosMaxY, 11);
}

// ---- a change of selection ----

using ContentsSelectionTest = ContentsTest;

TEST_F(ContentsSelectionTest, DocumentIsFoundAgainByItsNumberElseTheFirst) {
  Contents c(ContentsKind::Writings, corpus, selection, settings);
  c.EnterCell(PlaceOf(u"15015"));
  c.KeepPlace();
  Choose(22);
  c.FollowSelection();
  EXPECT_EQ(c.Mpos, 25);
  EXPECT_EQ(c.Grid().Row, 25);
  EXPECT_EQ(c.OldMsys, u"15015");

  Choose(0);
  c.EnterCell(PlaceOf(u"14587"));  // not printed in 新定
  c.KeepPlace();
  Choose(23);
  c.FollowSelection();
  EXPECT_EQ(c.Mpos, 1);
  EXPECT_EQ(c.OldMsys, SysNoAt(c, 1));
}

TEST_F(ContentsSelectionTest, EmptiedListKeepsTheNumberAndASearchRunsAgain) {
  Contents c(ContentsKind::Writings, corpus, selection, settings);
  c.EnterCell(PlaceOf(u"12353"));
  c.KeepPlace();
  selection.CSel.fill(0);
  corpus::ApplySelection(corpus, selection);
  c.FollowSelection();
  selection.CSel.fill(1);
  corpus::ApplySelection(corpus, selection);
  c.FollowSelection();
  EXPECT_EQ(SysNoAt(c, c.Mpos), u"12353");

  Search(c, u"書");
  selection.CSel[9] = 0;  // 蓮池御書 and 白雲御書
  corpus::ApplySelection(corpus, selection);
  c.FollowSelection();
  EXPECT_EQ(c.Srn(), 9);
}

// ---- the sources ----

using ContentsSourcesTest = ContentsTest;

TEST_F(ContentsSourcesTest, OrderLabelSwitchesTheOrderAndKeepsPlaceAndSearch) {
  Contents c(ContentsKind::Sources, corpus, selection, settings);
  EXPECT_EQ(c.Grid().TextMatrix(0, 6), u"×");
  EXPECT_EQ(c.Grid().ColWidth[7], 0);
  EXPECT_EQ(c.Grid().TextMatrix(1, 2), u"荘園目録第1 ");
  EXPECT_EQ(c.Grid().TextMatrix(1, 4), u"慈観");
  EXPECT_EQ(c.Screen().Label1, u"並替:ｼｽﾃﾑ順");
  EXPECT_FALSE(c.Screen().ClevVisible);
  EXPECT_FALSE(c.Screen().Check1Visible);

  Search(c, u"慈観");  // an author is no title
  EXPECT_EQ(c.Srn(), 0);
  Search(c, u"慈観", 1);
  EXPECT_EQ(c.Srn(), 2);

  c.Kensaku(1);
  c.EnterCell(3);  // 寺院縁起第3, of 1274
  EXPECT_FALSE(c.Label1Click());
  EXPECT_EQ(selection.SKn, 1);
  EXPECT_EQ(c.Screen().Label1, u"並替:系年順");
  EXPECT_EQ(c.Screen().Label1Back, reader::kDateOrder);
  EXPECT_EQ(c.Grid().TextMatrix(2, 0), u"50410");  // 1207 follows 1200
  EXPECT_EQ(SysNoAt(c, c.Mpos), u"50082");
  EXPECT_EQ(c.Mpos, 10);

  Search(c, u"はぎつゆ");
  EXPECT_EQ(c.Hit(1).Mpos, 3);  // 国衙文書第4, of 1211
  c.Label1Click();
  EXPECT_EQ(c.Srn(), 2);  // the box was searched again in the new order
  EXPECT_EQ(c.Hit(1).Mpos, 3);
  EXPECT_EQ(SysNoAt(c, c.Hit(2).Mpos), u"50135");
  EXPECT_EQ(c.Screen().Label5, u"12/12");
}

TEST_F(ContentsSourcesTest, RefinementMarksTheSourcesOwnColumn) {
  Contents c(ContentsKind::Sources, corpus, selection, settings);
  Search(c, u"文書");
  ASSERT_EQ(c.Srn(), 2);
  c.Command14();
  EXPECT_EQ(corpus.SMosMaxY, 2);
  EXPECT_EQ(corpus.SMok().Get(1, corpus::smok::kMark), u"-1");
  c.Command15();
  EXPECT_EQ(corpus.SMosMaxY, 12);
}

// ---- the window in the registry ----

class FakeView : public reader::TextView {
 public:
  using TextView::TextView;
  std::u16string box;
  search::Position place;
  std::u16string Combo1() const override { return box; }
  void SetCombo1(std::u16string_view t) override { box = t; }
  void Hyouji() override {}
  void Kensaku(int) override {}
  search::Position Place() const override { return place; }
  void SetPlace(const search::Position& p) override { place = p; }
  int Muki1() const override { return 0; }
  void SetMuki1(int) override {}
  void Hyouji2() override {}

 protected:
  void OnShow() override {}
  void OnRaise() override {}
};

class FakeDictionary : public reader::DictionaryView {
 public:
  using DictionaryView::DictionaryView;
  std::u16string box;
  std::u16string Combo1() const override { return box; }
  void SetCombo1(std::u16string_view t) override { box = t; }
  void Hyouji() override {}
  void Kensaku(int) override {}
  int Dpos() const override { return 1; }
  void SetDpos(int) override {}

 protected:
  void OnShow() override {}
  void OnRaise() override {}
};

class ContentsWindowTest : public ContentsTest {
 protected:
  ContentsWindowTest()
      : windows([this](reader::FormKind kind) -> std::unique_ptr<reader::OpenWindow> {
          using reader::FormKind;
          if (kind == FormKind::Form9 || kind == FormKind::Form15) {
            return std::make_unique<ContentsWindow>(
                kind == FormKind::Form9 ? ContentsKind::Writings : ContentsKind::Sources, corpus,
                selection, settings);
          }
          if (kind == FormKind::Form6) return std::make_unique<FakeDictionary>(kind);
          return std::make_unique<FakeView>(kind);
        }),
        nav(corpus, windows) {}
  ContentsWindow& Main() {
    return dynamic_cast<ContentsWindow&>(windows.Single(reader::FormKind::Form9));
  }

  reader::WindowRegistry windows;
  reader::Navigator nav;
};

TEST_F(ContentsWindowTest, ButtonsJumpInTheirFamilyAndTheWindowStepsBackUnlessPinned) {
  ContentsWindow& main = Main();
  main.model().metrics.headerHeight = 20;
  main.model().EnterCell(PlaceOf(u"10695"));  // 秋霧事 上
  const ContentsAction reader = main.Command(4, nav, windows);
  ASSERT_NE(reader.jump.window, nullptr);
  EXPECT_TRUE(reader.minimise);
  EXPECT_EQ(dynamic_cast<FakeView&>(*reader.jump.window).place.Mpos, main.model().Mpos);
  EXPECT_EQ(reader.jump.window->ParentForm, u"翠典");

  main.Pin = true;
  const ContentsAction dictionary = main.Command(8, nav, windows);
  EXPECT_FALSE(dictionary.minimise);
  EXPECT_EQ(dictionary.jump.window->Combo1(), u"秋霧事");               // cut before the blank
  EXPECT_EQ(main.Command(3, nav, windows).jump.window, nullptr);        // 注経 stays inert
  EXPECT_EQ(main.GridDblClick(10, nav, windows).jump.window, nullptr);  // on the header
}

TEST_F(ContentsWindowTest, SourcesContentsSearchWhatAJumpBringsAndLeadBack) {
  const reader::JumpOutcome jump = nav.GoSMok(u"荘園");
  auto& sources = dynamic_cast<ContentsWindow&>(*jump.window);
  EXPECT_EQ(sources.model().Srn(), 2);
  EXPECT_EQ(sources.ParentForm, u"史料元");
  const ContentsAction back = sources.Command(9, nav, windows);
  EXPECT_EQ(back.jump.window, &Main());
  EXPECT_TRUE(Main().Visible);

  selection.CSel.fill(0);  // nothing listed: the writings' buttons do nothing
  corpus::ApplySelection(corpus, selection);
  Main().FollowSelection();
  EXPECT_EQ(Main().Command(4, nav, windows).jump.window, nullptr);
}

}  // namespace
}  // namespace suizo::views
