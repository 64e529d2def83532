#include "core/scripture/outline.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "test_support.h"

namespace suizo::scripture {
namespace {

// The rows whose group colour is on, in column 2 and column 0 alike.
std::vector<int> Painted(const OutlineGrid& g) {
  std::vector<int> rows;
  for (int r = 1; r < g.Rows; ++r) {
    if (g.CellBackColor(r, 2) == kGroupBack) {
      EXPECT_EQ(g.CellBackColor(r, 0), kGroupBack) << "row " << r;
      rows.push_back(r);
    }
  }
  return rows;
}

std::vector<int> Span(int first, int last) {
  std::vector<int> rows;
  for (int r = first; r <= last; ++r) rows.push_back(r);
  return rows;
}

// Outlines written by hand: 法華No., 科文 and the three pages of each row.
struct Line {
  std::u16string number, heading = u"", zoukyou = u"", kaiketsu = u"", taiyaku = u"";
};

void Write(corpus::Table& t, const std::array<int, 3>& pages, const std::vector<Line>& lines) {
  int r = 0;
  for (const Line& l : lines) {
    t.Set(++r, outline_field::kNumber, l.number);
    t.Set(r, outline_field::kHeading, l.heading);
    t.Set(r, outline_field::kSutraName, u"妙法蓮華経");
    t.Set(r, outline_field::kChapter, u"序品第一");
    t.Set(r, pages[0], l.zoukyou);
    t.Set(r, pages[1], l.kaiketsu);
    t.Set(r, pages[2], l.taiyaku);
  }
  t.set_rows(r);
}

TEST(OutlineGrids, ShowTheTablesInNineColumns) {
  corpus::Corpus c("/nonexistent");
  Write(c.Kam(), outline_field::kKamPages,
        {{u"1", u"通序", u"999a.99", u"70.1", u"0.5"}, {u"2", u"別序", u"1b.02", u"", u"abc"}});
  Write(c.Sok(), outline_field::kSokPages, {{u"1", u"序分", u"1b.02", u"66.1", u"1.5"}});
  const Outline form(c);
  const OutlineGrid& kam = form.Grid(kKamonGrid);
  EXPECT_EQ(kam.Rows, 3);
  const std::vector<std::u16string_view> header = {
      u"", u"", u"法華No.", u"", u"蔵経頁行", u"", u"開結頁行", u"", u"対訳頁行"};
  for (int c = 0; c < kOutlineCols; ++c) {
    EXPECT_EQ(kam.TextMatrix(0, c), header[static_cast<std::size_t>(c)]);
  }
  // The stored page stays as it is; the two others take "#.00", text left alone.
  EXPECT_EQ(kam.TextMatrix(1, 0), u" 通序");
  EXPECT_EQ(kam.TextMatrix(1, 4), u"999a.99");
  EXPECT_EQ(kam.TextMatrix(1, 6), u"70.10");
  EXPECT_EQ(kam.TextMatrix(1, 8), u".50");
  EXPECT_EQ(kam.TextMatrix(2, 6), u"");
  EXPECT_EQ(kam.TextMatrix(2, 8), u"abc");
  EXPECT_EQ(form.Grid(kSoukaGrid).TextMatrix(1, 4), u"1b.02");
  EXPECT_EQ(form.Grid(kSoukaGrid).TextMatrix(1, 6), u"66.10");
  EXPECT_EQ(form.Grid(kSoukaGrid).TextMatrix(1, 8), u"1.50");

  // Column 0 has a colour of its own only in the fine outline; the rules run
  // from row 1 to the last, under a header in the fixed colour.
  EXPECT_EQ(kam.CellBackColor(1, 0), kKamonColumn0Back);
  EXPECT_EQ(form.Grid(kSoukaGrid).CellBackColor(1, 0), kOutlineBack);
  for (int r = 1; r <= 2; ++r) {
    for (int c : {1, 3, 5, 7}) EXPECT_EQ(kam.CellBackColor(r, c), kRuleBack);
    EXPECT_EQ(kam.CellBackColor(r, 2), kOutlineBack);
  }
  EXPECT_EQ(kam.CellBackColor(0, 1), kFixedBack);
}

TEST(OutlineGrids, WithoutRowsNothingIsSelected) {
  corpus::Corpus c("/nonexistent");
  Outline form(c);
  form.SKflag = 1;
  form.HKno = 10;
  form.InitSub();
  EXPECT_EQ(form.Grid(kKamonGrid).Row, 0);
  EXPECT_EQ(form.Grid(kKamonGrid).Header(), u"");
  form.Command1();
  EXPECT_EQ(form.Caption, kSoukaSwitchCaption);
  EXPECT_FALSE(form.SutraGo());
}

// A row that names no row of the sutra has no scroll label and no place to go.
TEST(OutlineGrids, NumberPastTheSutra) {
  corpus::Corpus c("/nonexistent");
  Write(c.Sok(), outline_field::kSokPages, {{u"5", u"序分"}});
  Outline form(c);
  form.HKno = 5;
  form.InitSub();
  EXPECT_EQ(form.Grid(kSoukaGrid).Header(), u" 妙法蓮華経  序品第一");
  EXPECT_FALSE(form.SutraGo());
}

// Steps over groups of two and three rows.
TEST(OutlineGrids, StepsStopAtTheEnds) {
  corpus::Corpus c("/nonexistent");
  Write(c.Sok(), outline_field::kSokPages, {{u"1"}, {u"1"}, {u"2"}, {u"2"}, {u"2"}});
  Outline form(c);
  form.SelectRow(kSoukaGrid, 3);
  form.RowChange(kSoukaGrid, 4);
  EXPECT_EQ(form.Grid(kSoukaGrid).Row, 5);
  form.SelectRow(kSoukaGrid, 2);
  form.RowChange(kSoukaGrid, 1);
  EXPECT_EQ(form.Grid(kSoukaGrid).Row, 1);
  EXPECT_EQ(Painted(form.Grid(kSoukaGrid)), Span(1, 2));
}

// The bundled sample: `Kam` rows 79 to 93 are one group of fifteen (215),
// rows 14-16 and 17-19 two groups of three, rows 117-118 one of two (295);
// `Sok` has one row per number, row 7 at 212 and row 8 at 296.
class OutlineSample : public ::testing::Test {
 protected:
  OutlineSample() : corpus(testing::SampleStore()) { corpus.ReadData(2); }

  Outline Opened(int skflag, int hkno) {
    Outline form(corpus);
    form.SKflag = skflag;
    form.HKno = hkno;
    form.InitSub();
    return form;
  }

  corpus::Corpus corpus;
};

TEST_F(OutlineSample, InitSubPutsBothGridsAtTheRow) {
  const Outline form = Opened(1, 215);
  EXPECT_EQ(form.ShownGrid(), kKamonGrid);
  EXPECT_EQ(form.Label1, u"法　華　経　科　文");
  EXPECT_EQ(form.Label1Colour, kTitleBlue);
  EXPECT_EQ(form.Caption, u"法華経科文");
  EXPECT_EQ(form.Grid(kKamonGrid).Row, 79);
  EXPECT_EQ(form.Grid(kSoukaGrid).Row, 7);
  // The scroll label comes from the sutra's row named by 法華No.
  EXPECT_EQ(form.Grid(kKamonGrid).Header(), u" 妙法蓮華経巻第一  序品第一");
  EXPECT_EQ(form.Grid(kSoukaGrid).Header(), u" 妙法蓮華経巻第一  序品第一");
}

TEST_F(OutlineSample, BelowTheFirstRowNothingIsSelected) {
  const Outline form = Opened(1, 3);  // `Kam` begins at 5
  const OutlineGrid& kam = form.Grid(kKamonGrid);
  EXPECT_EQ(kam.Row, 1);
  EXPECT_EQ(kam.TopRow, 1);
  EXPECT_TRUE(Painted(kam).empty());
  EXPECT_EQ(kam.Header(), u"");
  EXPECT_EQ(form.Grid(kSoukaGrid).Row, 1);
  EXPECT_EQ(Painted(form.Grid(kSoukaGrid)), Span(1, 1));
}

TEST_F(OutlineSample, AGroupIsPaintedThirteenRowsEachWay) {
  Outline form = Opened(1, 215);
  EXPECT_EQ(Painted(form.Grid(kKamonGrid)), Span(79, 92));
  form.RowChange(kKamonGrid, 93);  // a click: the row stays where it was put
  EXPECT_EQ(form.Grid(kKamonGrid).Row, 93);
  EXPECT_EQ(Painted(form.Grid(kKamonGrid)), Span(80, 93));
  // The cleared row gets its own colours back; the rule before column 2 stays.
  EXPECT_EQ(form.Grid(kKamonGrid).CellBackColor(79, 0), kKamonColumn0Back);
  EXPECT_EQ(form.Grid(kKamonGrid).CellBackColor(79, 2), kOutlineBack);
  EXPECT_EQ(form.Grid(kKamonGrid).CellBackColor(79, 1), kRuleBack);
  form.RowChange(kKamonGrid, 86);
  EXPECT_EQ(Painted(form.Grid(kKamonGrid)), Span(79, 93));
}

TEST_F(OutlineSample, StepsMoveByWholeGroups) {
  Outline form(corpus);
  const OutlineGrid& kam = form.Grid(kKamonGrid);
  form.SelectRow(kKamonGrid, 14);
  form.RowChange(kKamonGrid, 15);  // down from inside: the last row of the next group
  EXPECT_EQ(kam.Row, 19);
  EXPECT_EQ(Painted(kam), Span(17, 19));
  form.RowChange(kKamonGrid, 18);  // up: the first row of the group above
  EXPECT_EQ(kam.Row, 14);
  EXPECT_EQ(Painted(kam), Span(14, 16));
  form.SelectRow(kKamonGrid, 16);
  form.RowChange(kKamonGrid, 17);  // down from a group's last row: the next group
  EXPECT_EQ(kam.Row, 19);
}

TEST_F(OutlineSample, TopRowStandsAboveTheMiddle) {
  Outline form(corpus);
  form.metrics = {2300, 100, 150};  // h = 10
  form.SKflag = 1;
  form.SelectRow(kKamonGrid, 79);
  EXPECT_EQ(form.Grid(kKamonGrid).TopRow, 69);
  form.SelectRow(kKamonGrid, 5);
  EXPECT_EQ(form.Grid(kKamonGrid).TopRow, 1);
  // A layout brings the row back only when it is out of view.
  form.Scroll(kKamonGrid, 2);
  form.Layout();
  EXPECT_EQ(form.Grid(kKamonGrid).TopRow, 2);
  form.Scroll(kKamonGrid, 500);
  form.Layout();
  EXPECT_EQ(form.Grid(kKamonGrid).TopRow, 1);
}

TEST_F(OutlineSample, SwitchCaptionsAndTitles) {
  Outline form = Opened(0, 215);
  EXPECT_EQ(form.Caption, u"法華経総科");
  EXPECT_EQ(form.Label1, u"法　華　経　総　科");
  EXPECT_EQ(form.Label1Colour, kTitleBlack);
  form.Command1();
  EXPECT_EQ(form.ShownGrid(), kKamonGrid);
  EXPECT_EQ(form.Caption, u"法華経科文");
  form.Command1();
  EXPECT_EQ(form.ShownGrid(), kSoukaGrid);
  EXPECT_EQ(form.Caption, u"法華経総");
  EXPECT_EQ(form.Label1, u"法　華　経　総　科");
}

TEST_F(OutlineSample, SwitchFollowsThePlaceAndKeepsASelectionThere) {
  Outline form = Opened(1, 296);
  EXPECT_EQ(form.Grid(kKamonGrid).Row, 117);
  EXPECT_EQ(form.Grid(kSoukaGrid).Row, 8);
  form.RowChange(kKamonGrid, 116);
  form.RowChange(kKamonGrid, 117);
  EXPECT_EQ(form.Grid(kKamonGrid).Row, 118);
  form.Command1();  // 295 lies before 296: the broad outline follows
  EXPECT_EQ(form.Grid(kSoukaGrid).Row, 7);
  form.RowChange(kSoukaGrid, 8);
  form.Command1();  // 296 lies in 295's group: its last row stays selected
  EXPECT_EQ(form.Grid(kKamonGrid).Row, 118);
  EXPECT_EQ(Painted(form.Grid(kKamonGrid)), Span(117, 118));
}

TEST_F(OutlineSample, SutraGoGivesTheRowAndItsChapter) {
  Outline form = Opened(1, 215);
  auto place = form.SutraGo();
  ASSERT_TRUE(place);
  EXPECT_EQ(place->Lpos, 215);
  EXPECT_EQ(place->chapter, u"序品第一");
  form.Command1();
  place = form.SutraGo();
  ASSERT_TRUE(place);
  EXPECT_EQ(place->Lpos, 212);
}

}  // namespace
}  // namespace suizo::scripture
