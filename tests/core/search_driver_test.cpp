#include "core/search/driver.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "core/text/utf16.h"

namespace suizo::search {
namespace {

using corpus::Corpus;
using search::TextTable;

// A writings order of three documents, lines 1-3, 4-6 and 7-8, with the
// reading order running the table backwards so that a row and its position
// differ. Each line: main text, second main text, autograph, class, 定本 page.
struct Line {
  std::u16string main, main2, autograph;
  int klass;
  std::u16string page;
};

class Driver : public ::testing::Test {
 protected:
  Driver() : corpus("/nonexistent") {
    Lines({{u"◆春の雨", u"◆", u"", 0, u"100.01"},
           {u"法華経を読む", u"", u"法華経を讀む", 0, u"100.02"},
           {u"雨の日に観る", u"", u"", 1, u"100.03"},
           {u"◆秋の月", u"◆", u"", 0, u"101.01"},
           {u"", u"月を観て経を思ふ", u"", 0, u"101.02"},
           {u"山の寺", u"", u"山", 0, u"101.03"},
           {u"◆冬の雪", u"◆", u"", 2, u"102.01"},
           {u"雪の夜に法華経", u"", u"", 0, u"100.04"}});
  }

  void Lines(const std::vector<Line>& lines) {
    auto& dat = corpus.Dat();
    const int n = static_cast<int>(lines.size());
    corpus.DatOrder.assign(static_cast<std::size_t>(n) + 1, 0);
    for (int p = 1; p <= n; ++p) {
      const int row = n + 1 - p;
      const Line& l = lines[static_cast<std::size_t>(p - 1)];
      corpus.DatOrder[static_cast<std::size_t>(p)] = row;
      dat.Set(row, corpus::dat::kSysNo, text::IntText(1000 + p));
      dat.Set(row, corpus::dat::kMain, l.main);
      dat.Set(row, corpus::dat::kMain2, l.main2);
      dat.Set(row, corpus::dat::kAutograph, l.autograph);
      dat.Set(row, corpus::dat::kClass, text::IntText(l.klass));
      dat.Set(row, 22, l.page);
      dat.Set(row, corpus::kPaneCol[1], u"訳：" + l.main);
    }
    dat.set_rows(n);
    corpus.DasMaxY = n;
    corpus.MokOrder = {0};
    int m = 0;
    for (int p = 1; p <= n; ++p) {
      if (!text::Contains(lines[static_cast<std::size_t>(p - 1)].main2, u"◆")) continue;
      ++m;
      corpus.Mok().Set(m, corpus::mok::kPosition, text::IntText(p));
      corpus.MokOrder.push_back(m);
    }
    corpus.Mok().set_rows(m);
    corpus.MosMaxY = m;
  }

  SearchEngine Writings() {
    SearchEngine e(TextTable::Writings(corpus, selection), settings);
    e.pos = {1, 1, {}};
    return e;
  }

  static std::vector<int> Hits(const SearchEngine& e) {
    std::vector<int> lines;
    for (int i = 1; i <= e.Srn; ++i) lines.push_back(e.getSr(i, 1));
    return lines;
  }

  static Outcome Search(SearchEngine& e, std::u16string_view box, Method method = Method::And) {
    e.Combo1 = box;
    e.SrMethod = method;
    return e.Kensaku(0);
  }

  Corpus corpus;
  corpus::Selection selection;
  corpus::Settings settings;
};

using V = std::vector<int>;

TEST_F(Driver, WordSearchFindsLinesInReadingOrderAndStandsOnTheFirst) {
  SearchEngine e = Writings();
  e.pos = {3, 7, {}};
  const Outcome out = Search(e, u"法華経");
  EXPECT_EQ(Hits(e), (V{2, 8}));
  EXPECT_FALSE(out.toast);
  EXPECT_EQ(e.getSr(1, 0), 1);
  EXPECT_EQ(e.getSr(2, 0), 3);
  EXPECT_EQ(e.SrnPos, 1);
  EXPECT_EQ(e.pos.Lpos, 2);
  EXPECT_EQ(e.pos.Mpos, 1);
  EXPECT_EQ(e.HitListPage, 1);
  EXPECT_EQ(e.getSrf(2), 1);
  EXPECT_EQ(e.getSrf(3), 0);
  EXPECT_EQ(e.Label3Colour, kWordColour);
  EXPECT_TRUE(e.Label3Enabled);
  EXPECT_EQ(e.Label3Text(), u"1/2");
  EXPECT_EQ(e.LastKind(), SearchKind::Word);
  EXPECT_EQ(e.Swn, 1);
  EXPECT_TRUE(e.controls.Command14Visible && e.controls.Command14Enabled);
  EXPECT_FALSE(e.controls.Command15Enabled);
}

TEST_F(Driver, PaneZeroTriesTheSecondMainTextAndRecordsTheLineOnce) {
  SearchEngine e = Writings();
  Search(e, u"観");  // line 3 in the main text, line 5 only in the second one
  EXPECT_EQ(Hits(e), (V{3, 5}));
  Search(e, u"◆");  // in both texts of each head line
  EXPECT_EQ(Hits(e), (V{1, 4, 7}));
  // Other panes read their own column alone.
  e.Tab = 1;
  Search(e, u"訳：山");
  EXPECT_EQ(Hits(e), (V{6}));
  EXPECT_EQ(e.Srk, 1);
}

TEST_F(Driver, NotFindsALineWhereEitherMainTextLacksTheWord) {
  SearchEngine e = Writings();
  // Head lines hold the mark in both texts; line 5's main text is empty.
  Search(e, u"◆", Method::Not);
  EXPECT_EQ(Hits(e), (V{2, 3, 5, 6, 8}));
  e.Tab = 1;
  Search(e, u"の", Method::Not);
  EXPECT_EQ(Hits(e), (V{2, 5}));
}

TEST_F(Driver, NothingFoundLeavesThePlaceAndAsksForTheToast) {
  SearchEngine e = Writings();
  settings.AutoDiv = 0;
  e.pos = {2, 5, {}};
  const Outcome out = Search(e, u"海");
  EXPECT_TRUE(out.toast);
  EXPECT_EQ(e.Srn, 0);
  EXPECT_EQ(e.SrnPos, 0);
  EXPECT_EQ(e.pos.Lpos, 5);
  EXPECT_EQ(e.pos.Mpos, 2);
  EXPECT_EQ(e.LastKind(), SearchKind::Word);
  EXPECT_TRUE(e.Label3Enabled);
  EXPECT_TRUE(e.controls.Text6Visible);
  EXPECT_FALSE(e.controls.Command14Visible);
}

TEST_F(Driver, AutomaticSplitOnlyAfterAnAndSearch) {
  SearchEngine e = Writings();
  // No line holds the phrase; the split search finds the line with all three.
  Search(e, u"経雪法");
  EXPECT_EQ(e.LastKind(), SearchKind::Split1);
  EXPECT_EQ(Hits(e), (V{8}));
  EXPECT_EQ(e.Label3Colour, kSplit1Colour);
  EXPECT_EQ(e.Swn, 3);
  EXPECT_EQ(e.DivMode, 0);
  EXPECT_EQ(e.LastDivMode(), 1);

  Outcome out = Search(e, u"経雪法　天", Method::Or);
  EXPECT_EQ(e.LastKind(), SearchKind::Word);
  EXPECT_EQ(e.Srn, 0);
  EXPECT_TRUE(out.toast);
  e.Tab = 1;  // every translation holds the word
  out = Search(e, u"訳", Method::Not);
  EXPECT_EQ(e.LastKind(), SearchKind::Word);
  EXPECT_TRUE(out.toast);
}

TEST_F(Driver, SplitBarRisesAndDropsTheWeakerHits) {
  SearchEngine e = Writings();
  e.DivMode = 1;
  // Four characters: t 4 of the table, but no line has all four.
  Outcome out = Search(e, u"雨日観月");
  EXPECT_TRUE(out.toast);
  EXPECT_EQ(e.Swn, 3);  // the last index, not raised without hits
  // Line 2 reaches four and is recorded; line 8 holds five and drops it.
  e.DivMode = 1;
  Search(e, u"法華経を雪夜");
  EXPECT_EQ(Hits(e), (V{8}));
  EXPECT_EQ(e.getSrf(2), 0);
  // Ten distinct characters need five: lines 2 and 8 hold six each.
  e.DivMode = 1;
  Search(e, u"法華経を読む雪の夜雨");
  EXPECT_EQ(Hits(e), (V{2, 8}));
}

TEST_F(Driver, KanjiOnlySplitIsLightBlueAndCanFindNothing) {
  SearchEngine e = Writings();
  e.DivMode = 2;
  Search(e, u"山のてら");
  EXPECT_EQ(Hits(e), (V{6}));
  EXPECT_EQ(e.Label3Colour, kSplit2Colour);
  EXPECT_EQ(e.LastKind(), SearchKind::Split2);
  e.DivMode = 2;
  const Outcome out = Search(e, u"不令");
  EXPECT_EQ(e.Srn, 0);
  EXPECT_TRUE(out.toast);
}

TEST_F(Driver, LimitKeepsTheScanInTheCurrentDocument) {
  SearchEngine e = Writings();
  e.Limit = true;
  e.pos = {3, 7, {}};
  Search(e, u"法華経");
  EXPECT_EQ(Hits(e), (V{8}));
  e.Limit = false;
  Search(e, u"法華経");
  EXPECT_EQ(Hits(e), (V{2, 8}));
}

TEST_F(Driver, AuthenticScopeKeepsLinesWithAnAutograph) {
  SearchEngine e = Writings();
  selection.CSel[10] = 1;
  Search(e, u"山");
  EXPECT_EQ(Hits(e), (V{6}));
  Search(e, u"法華経");
  EXPECT_EQ(Hits(e), (V{2}));
  selection.CSel[10] = 2;  // no value but 0 and 1 lets a line pass
  settings.AutoDiv = 0;
  Search(e, u"山");
  EXPECT_EQ(e.Srn, 0);
}

TEST_F(Driver, PageSearchNeedsACollectionLabelBeforeThePage) {
  SearchEngine e = Writings();
  settings.AutoDiv = 0;
  selection.CSel[1] = 0;
  Search(e, u"定本P100");
  EXPECT_EQ(e.LastKind(), SearchKind::Page);
  EXPECT_EQ(Hits(e), (V{1, 2, 8}));  // line 3 is of class 1, shown only with it
  EXPECT_EQ(e.Srk, 11);
  EXPECT_EQ(e.SrGk, 22);
  EXPECT_EQ(e.Label3Colour, kWordColour);
  EXPECT_EQ(e.Combo.front(), u"定本P100");
  selection.CSel[1] = 1;
  selection.CSel[0] = 0;
  Search(e, u"定本P100.02");
  EXPECT_EQ(e.Srn, 0);
  selection.CSel[0] = 1;
  Search(e, u"定本P100.02");
  EXPECT_EQ(Hits(e), (V{2}));
  Search(e, u"定本P101");
  EXPECT_EQ(Hits(e), (V{4, 5, 6}));

  for (const std::u16string_view word : {u"P100", u"xP100", u"新P100"}) {
    Search(e, word);
    EXPECT_EQ(e.LastKind(), SearchKind::Word) << text::ToUtf8(word);
    EXPECT_EQ(e.Srk, 0);
  }
  // The system's own numbers: column 0 reads the ｼｽﾃﾑNo.
  Search(e, u"ｼｽﾃﾑP1004");
  EXPECT_EQ(Hits(e), (V{4}));
  EXPECT_EQ(e.SrGk, 0);
  Search(e, u"定本P0");
  EXPECT_EQ(e.Srn, 0);
}

TEST_F(Driver, PageBoxesOfTheWritingsGoThroughTheBoxAndItsHistory) {
  SearchEngine e = Writings();
  e.PageBoxEnter(22, u"101");
  EXPECT_EQ(e.Combo1, u"定本P101");
  EXPECT_EQ(Hits(e), (V{4, 5, 6}));
  EXPECT_EQ(e.Combo.front(), u"定本P101");
  // A box whose collection cannot be searched by page does nothing.
  const Outcome out = e.PageBoxEnter(24, u"100");
  EXPECT_FALSE(out.redraw);
  EXPECT_EQ(e.Combo1, u"定本P101");
}

TEST_F(Driver, WalkStopsAtBothEnds) {
  SearchEngine e = Writings();
  EXPECT_FALSE(e.SrnNext().redraw);  // no hits: nothing to walk
  Search(e, u"の");
  ASSERT_EQ(Hits(e), (V{1, 3, 4, 6, 7, 8}));
  EXPECT_TRUE(e.SrnBack().redraw);
  EXPECT_EQ(e.SrnPos, 1);
  EXPECT_EQ(e.pos.Lpos, 1);
  for (int i = 0; i < 10; ++i) e.SrnNext();
  EXPECT_EQ(e.SrnPos, 6);
  EXPECT_EQ(e.pos.Lpos, 8);
  EXPECT_EQ(e.pos.Mpos, 3);
  e.SrnBack();
  EXPECT_EQ(e.pos.Lpos, 7);
}

TEST_F(Driver, EmptyBoxClearsOrOnlyRedraws) {
  SearchEngine e = Writings();
  Search(e, u"法華経");
  ASSERT_EQ(e.Srn, 2);
  Outcome out = Search(e, u"   ");  // blanks are an empty box: mode 1 clears the hits
  EXPECT_EQ(e.Srn, 0);
  EXPECT_FALSE(out.toast);
  EXPECT_TRUE(e.Combo1.empty());

  Search(e, u"法華経");
  ASSERT_TRUE(e.Command14());
  out = Search(e, u"");  // with a refinement kept: redraw only
  EXPECT_TRUE(out.redraw);
  EXPECT_EQ(e.Srn, 2);
  EXPECT_EQ(e.RefineCount, 1);
  EXPECT_EQ(e.getRefineFlag(8), 1);
}

TEST_F(Driver, HistoryKeepsEachTextOnceNewestFirst) {
  SearchEngine e = Writings();
  Search(e, u"山");
  Search(e, u" 雪 ");
  Search(e, u"山");
  Search(e, u"");
  EXPECT_EQ(e.Combo, (std::vector<std::u16string>{u" 雪 ", u"山"}));
}

TEST_F(Driver, RefinementConfinesLaterSearchesAndReplays) {
  SearchEngine e = Writings();
  Search(e, u"の");
  ASSERT_TRUE(e.Command14());
  EXPECT_EQ(e.RefineCount, 1);
  EXPECT_EQ(e.controls.RefineLevel, u"■－－－－－");
  EXPECT_EQ(e.Label3Colour, kButtonFace);
  EXPECT_FALSE(e.controls.Command14Enabled);
  EXPECT_TRUE(e.Combo1.empty());
  EXPECT_FALSE(e.Command14());  // the label lost its colour: nothing to keep twice

  Search(e, u"雨");
  EXPECT_EQ(Hits(e), (V{1, 3}));
  EXPECT_TRUE(e.controls.Command15Enabled);
  ASSERT_TRUE(e.Command14());
  EXPECT_EQ(e.controls.RefineLevel, u"■■－－－－");
  EXPECT_EQ(e.RefineStack(1).Box, u"雨");

  // Under two levels only lines 1 and 3 can be found; a miss keeps the stack.
  settings.AutoDiv = 0;
  Outcome out = Search(e, u"法華経");
  EXPECT_TRUE(out.toast);
  EXPECT_EQ(e.RefineCount, 2);
  EXPECT_FALSE(e.controls.Command14Enabled);
  EXPECT_TRUE(e.controls.Command15Visible);

  // 解除 drops the last level and searches the box again under the first.
  e.Combo1 = u"法華経";
  out = e.Command15();
  EXPECT_EQ(e.RefineCount, 1);
  EXPECT_EQ(Hits(e), (V{8}));
  EXPECT_EQ(e.controls.RefineLevel, u"■－－－－－");
  EXPECT_EQ(settings.AutoDiv, 0);
  EXPECT_EQ(e.HitQuiet, 0);
  EXPECT_EQ(e.Combo1, u"法華経");

  e.Combo1 = u"月";
  out = e.Command15();
  EXPECT_EQ(e.RefineCount, 0);
  EXPECT_EQ(Hits(e), (V{4, 5}));
  EXPECT_FALSE(e.controls.Command15Enabled);
}

TEST_F(Driver, ReplayRunsEachLevelAsItWasSearched) {
  SearchEngine e = Writings();
  e.Tab = 1;
  Search(e, u"訳：");  // every line with a translation
  ASSERT_TRUE(e.Command14());
  e.Tab = 0;
  e.DivMode = 1;
  Search(e, u"雨の");
  ASSERT_TRUE(e.Command14());
  Search(e, u"定本P100");
  ASSERT_TRUE(e.Command14());
  EXPECT_EQ(e.RefineStack(0).Srk, 1);
  EXPECT_EQ(e.RefineStack(1).DivMode, 1);
  EXPECT_EQ(e.RefineStack(2).Srk, 11);

  e.Combo1 = u"山";
  e.Tab = 3;
  e.SrMethod = Method::Or;
  e.GetBack(0);
  EXPECT_EQ(e.RefineCount, 3);
  EXPECT_EQ(Hits(e), (V{1, 3}));  // the last level again: the page among the split hits
  EXPECT_EQ(e.Tab, 3);
  EXPECT_EQ(e.Combo1, u"山");
  EXPECT_EQ(e.SrMethod, Method::Or);
  EXPECT_EQ(e.RefineStack(1).Box, u"雨の");
}

TEST_F(Driver, LabelClickClearsTheHitsOrReturnsToTheStack) {
  SearchEngine e = Writings();
  EXPECT_FALSE(e.Label3Click().redraw);  // disabled until a search ran
  Search(e, u"法華経");
  Outcome out = e.Label3Click();
  EXPECT_TRUE(out.closeHitList);
  EXPECT_EQ(e.Srn, 0);
  EXPECT_TRUE(e.controls.Text6Visible);

  Search(e, u"の");
  ASSERT_TRUE(e.Command14());
  Search(e, u"雪");
  e.pos = {1, 2, {}};
  e.Label3Enabled = true;
  out = e.Label3Click();
  EXPECT_FALSE(out.closeHitList);
  EXPECT_EQ(e.Srn, 6);  // the kept level's hits, not the last search's
  EXPECT_EQ(e.pos.Lpos, 2);
  EXPECT_TRUE(e.Combo1.empty());
}

TEST_F(Driver, LimitClickReplaysTheStackUnderTheNewScope) {
  SearchEngine e = Writings();
  e.pos = {2, 4, {}};
  Search(e, u"の");
  ASSERT_TRUE(e.Command14());
  e.Combo1 = u"観";
  e.pos = {2, 4, {}};
  e.LimitClick();
  EXPECT_TRUE(e.Limit);
  EXPECT_EQ(e.LimitCaption(), u"×");
  EXPECT_EQ(Hits(e), V{});  // line 5 lacks "の", so the kept level has only 4 and 6
  e.Combo1 = u"山";
  e.Kensaku(0);
  EXPECT_EQ(Hits(e), (V{6}));
}

TEST_F(Driver, TheStackHoldsTwentyOneLevels) {
  SearchEngine e = Writings();
  for (int i = 0; i < kRefineLevels; ++i) {
    Search(e, u"の");
    ASSERT_TRUE(e.Command14()) << i;
  }
  EXPECT_EQ(e.controls.RefineLevel, u"■■■■■■");
  Search(e, u"の");
  EXPECT_FALSE(e.Command14());
  EXPECT_EQ(e.RefineCount, kRefineLevels);
}

TEST_F(Driver, TabClickSearchesTheNewPaneOnlyWithText) {
  SearchEngine e = Writings();
  EXPECT_FALSE(e.TabClick(1).toast);
  EXPECT_EQ(e.Srn, 0);
  e.Combo1 = u"訳：雪";
  e.TabClick(1);
  EXPECT_EQ(Hits(e), (V{8}));
  EXPECT_EQ(e.Srk, 1);
}

TEST_F(Driver, MethodAndCaptionStepTogether) {
  SearchEngine e = Writings();
  EXPECT_EQ(e.Command1Caption(), u"検索");
  e.StepMethod();
  EXPECT_EQ(e.Command1Caption(), u"OR\n検索");
  e.StepMethod();
  EXPECT_EQ(e.Command1Caption(), u"NOT\n検索");
  e.StepMethod();
  EXPECT_EQ(e.SrMethod, Method::And);
}

TEST_F(Driver, AnEmptyListRunsNoScan) {
  corpus.MosMaxY = 0;
  SearchEngine e = Writings();
  settings.AutoDiv = 0;
  const Outcome out = Search(e, u"の");
  EXPECT_EQ(e.Srn, 0);
  EXPECT_TRUE(out.toast);
  EXPECT_EQ(e.Label3Colour, kButtonFace);
}

// The sources: `SDat` through its own order, two works.
TEST_F(Driver, SourcesSearchTheirOwnOrderWithoutTheWritingsFilters) {
  auto& sdat = corpus.SDat();
  const std::vector<std::array<std::u16string_view, 2>> lines = {{u"◆東の国の記", u"東国記"},
                                                                 {u"雨の降る日", u"雨降日"},
                                                                 {u"◆西の寺の記", u"西寺記"},
                                                                 {u"雨やむ", u"雨止"}};
  corpus.SDatOrder = {0};
  for (int p = 1; p <= 4; ++p) {
    sdat.Set(p, corpus::sdat::kReading, lines[static_cast<std::size_t>(p - 1)][0]);
    sdat.Set(p, 10, lines[static_cast<std::size_t>(p - 1)][1]);
    corpus.SDatOrder.push_back(p);
  }
  sdat.set_rows(4);
  corpus.SDasMaxY = 4;
  corpus.SMok().Set(1, corpus::smok::kPosition, u"1");
  corpus.SMok().Set(2, corpus::smok::kPosition, u"3");
  corpus.SMok().set_rows(2);
  corpus.SMokOrder = {0, 1, 2};
  corpus.SMosMaxY = 2;
  selection.CSel[10] = 1;  // the autograph scope is the writings' alone

  SearchEngine e(TextTable::Sources(corpus, selection), settings);
  e.pos = {2, 3, {}};
  Search(e, u"雨");
  EXPECT_EQ(Hits(e), (V{2, 4}));
  EXPECT_EQ(e.getSr(2, 0), 2);
  e.Limit = true;
  e.pos = {2, 3, {}};
  Search(e, u"雨");
  EXPECT_EQ(Hits(e), (V{4}));
  // The second try takes every character, whichever pane is searched.
  e.Limit = false;
  e.Tab = 2;
  Search(e, u"記の東");
  EXPECT_EQ(e.LastKind(), SearchKind::Split1);
  EXPECT_EQ(Hits(e), (V{1}));
  // No page check: a collection label is an ordinary word.
  settings.AutoDiv = 0;
  Search(e, u"定本P100");
  EXPECT_EQ(e.LastKind(), SearchKind::Word);
}

// The sutra: rows of `Hok` in one order, chapters by name.
class SutraDriver : public Driver {
 protected:
  SutraDriver() {
    auto& hok = corpus.Hok();
    const std::vector<std::array<std::u16string_view, 3>> rows = {
        {u"徳行品第一", u"諸の菩薩を見る", u"見諸菩薩"},
        {u"徳行品第一", u"法を説かず", u"不説法"},
        {u"序品第一", u"如是我聞", u"如是我聞"},
        {u"序品第一", u"法を聞かしむ", u"令聞法"},
        {u"方便品第二", u"法を説く", u"説法"}};
    int r = 0;
    for (const auto& row : rows) {
      ++r;
      hok.Set(r, corpus::hok::kChapter, row[0]);
      hok.Set(r, 15, row[1]);
      hok.Set(r, 13, row[2]);
    }
    hok.set_rows(r);
  }
  SearchEngine Sutra(int lpos) {
    SearchEngine e(TextTable::Sutra(corpus, selection), settings);
    e.pos = {0, lpos, std::u16string(corpus.Hok().Get(lpos, corpus::hok::kChapter))};
    return e;
  }
};

TEST_F(SutraDriver, ScansEveryRowOrOneChapterUnderLimit) {
  SearchEngine e = Sutra(4);
  Search(e, u"法");
  EXPECT_EQ(Hits(e), (V{2, 4, 5}));
  EXPECT_EQ(e.Hit(2).chapter, u"序品第一");
  EXPECT_EQ(e.pos.chapter, u"徳行品第一");
  e.pos = {0, 4, u"序品第一"};
  e.Limit = true;
  Search(e, u"法");
  EXPECT_EQ(Hits(e), (V{4}));
  // Ignoring the class and autograph filters of the writings.
  selection.CSel[10] = 1;
  e.Limit = false;
  Search(e, u"法");
  EXPECT_EQ(e.Srn, 3);
}

TEST_F(SutraDriver, SecondTryOnTheChineseTextTranslatesTheReading) {
  SearchEngine e = Sutra(1);
  e.Tab = 2;
  // The reading's negation turns into 不 on the Chinese text.
  Search(e, u"説かず");
  EXPECT_EQ(e.LastKind(), SearchKind::Split2);
  EXPECT_EQ(Hits(e), (V{2}));
  // The causative placeholder becomes its class.
  Search(e, u"聞かしむ");
  EXPECT_EQ(Hits(e), (V{4}));
  e.Tab = 0;
  Search(e, u"説く法");
  EXPECT_EQ(e.LastKind(), SearchKind::Split1);
}

TEST_F(SutraDriver, NoPageCheckInTheBox) {
  SearchEngine e = Sutra(1);
  settings.AutoDiv = 0;
  Search(e, u"定本P100");
  EXPECT_EQ(e.LastKind(), SearchKind::Word);
  // The page boxes read the writings' pages while walking the sutra's rows.
  e.PageBoxEnter(22, u"100");
  EXPECT_EQ(e.LastKind(), SearchKind::Page);
  EXPECT_TRUE(e.Combo1.empty());
  EXPECT_EQ(Hits(e), (V{1, 2, 3}));
  EXPECT_EQ(e.Hit(3).chapter, u"序品第一");
}

}  // namespace
}  // namespace suizo::search
