#include "core/reader/vertical.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <tuple>
#include <vector>

#include "core/reader/frame.h"
#include "core/text/utf16.h"

namespace suizo::reader {
namespace {

// ---- The default meter ----------------------------------------------------

TEST(ColumnMeter, CountsColumnsAsABrowserLaysOutVerticalText) {
  struct Case {
    std::u16string_view html;
    int heightPx;
    double columns;
  };
  const Case cases[] = {
      {u"", 48, 0},
      {u"<span></span> \n", 48, 0},
      {u"本<BR>", 48, 1},
      {u"<BR>", 48, 1},
      {u"本<br><Br/>本", 48, 3},  // the empty line between keeps its column
      {u"本本本", 48, 1},
      {u"本本本本", 48, 2},
      {u"ｱｲｳｴｵｶ", 48, 1},
      {u"ｱｲｳｴｵｶｷ", 48, 2},
      {u"本\u3000本本", 48, 2},
      {u"\U00020B9F\U00020B9F\U00020B9F", 48, 1},
      {u"本本", 8, 2},  // a column lower than a character still holds one
      {u"<span style='color:#BBBBBB;'>本本</span><a href='12345'>本</a>", 48, 1},
      {u"本&#12354;本本", 48, 2},
      {u"&amp;&lt;&nbsp;ｱｲｳ", 48, 1},
      {u"本 & 本", 56, 1},
      {u"本 & 本", 55, 2},       // blanks are half a character
      {u"  本 \n\t 本", 40, 1},  // ...collapsed, and none at a line's start
      // A closing mark never begins a column, an opening one never ends one.
      {u"本本本。本本", 48, 3},
      {u"本本「本本本", 48, 3},
      // A Latin word moves whole, or overflows its column.
      {u"本本ab", 48, 1},
      {u"本本abc", 48, 2},
      {u"abcdefghij", 48, 1},
      {u"ｱｲｳｴｵｶｷｸｹｺ", 48, 2},
      // ...but breaks after a hyphen or a question mark before a letter.
      {u"abcd-efgh", 48, 2},
      {u"ab?cdefg", 48, 2},
      // Ideographic spaces at a column's end hang past it.
      {u"本本本\u3000", 48, 1},
      {u"本本本\u3000\u3000<BR>本", 48, 2},
      {u"本本本\u3000本本本", 48, 2},
      {u"\u3000\u3000\u3000\u3000", 48, 1},
      {u"\u3000\u3000\u3000本", 48, 2},
      {u"本\u3000。本本", 48, 2},  // ...but not in front of a closing mark
      // Small kana, the long vowel mark, leaders and the signs after a number
      // never begin a column; the signs before one never end it; a quote
      // holds to both sides.
      {u"本本本っ本本", 48, 3},
      {u"本本本ー本本", 48, 3},
      {u"本本本…本本", 48, 3},
      {u"本本本％本本", 48, 3},
      {u"本本本%a本本", 48, 3},
      {u"本本本-a本本", 48, 3},
      {u"本本￥本本本", 48, 3},
      {u"本本a$本本本", 48, 3},
      {u"本本”本本本", 48, 3},
      {u"本本本“本本", 48, 3},
      {u"本本本～本本", 48, 2},  // the full-width tilde is no wave dash
  };
  for (const Case& c : cases) {
    EXPECT_EQ(TextColumnMeter().Columns(c.html, c.heightPx), c.columns)
        << text::ToUtf8(c.html) << " in " << c.heightPx;
  }
}

// ---- The page ----------------------------------------------------------------

// Counts "#" as a column and "+" as half of one, so a case states its widths.
struct HashMeter : ColumnMeter {
  double Columns(std::u16string_view html, int heightPx) const override {
    heights.push_back(heightPx);
    return static_cast<double>(std::count(html.begin(), html.end(), u'#')) +
           0.5 * static_cast<double>(std::count(html.begin(), html.end(), u'+'));
  }
  mutable std::vector<int> heights;
};

using Line = std::pair<std::u16string, std::u16string>;  // main text, translation

std::u16string Br(int n) {
  std::u16string out;
  while (n-- > 0) out += u"<BR>";
  return out;
}
std::u16string Div(int heightPx) {
  return u"<DIV style='height:" + text::IntText(heightPx) + u"px; writing-mode:tb-rl;'>";
}
const std::u16string kH1 = Div(256), kH2 = Div(288);

class Vertical : public ::testing::Test {
 protected:
  // Works one after another, each line with an autograph.
  void Works(const std::vector<std::vector<Line>>& works) {
    corpus.DatOrder = workOf = corpus.MokOrder = {0};
    int row = 0;
    for (int w = 1; w <= static_cast<int>(works.size()); ++w) {
      corpus.Mok().Set(w, corpus::mok::kPosition, text::IntText(row + 1));
      corpus.MokOrder.push_back(w);
      for (const auto& [main, translation] : works[static_cast<std::size_t>(w - 1)]) {
        corpus.Dat().Set(++row, corpus::dat::kMain, main);
        corpus.Dat().Set(row, corpus::dat::kMain2, workOf.back() == w ? u"" : u"◆");
        corpus.Dat().Set(row, corpus::dat::kAutograph, u"有");
        corpus.Dat().Set(row, 15, translation);
        corpus.DatOrder.push_back(row);
        workOf.push_back(w);
      }
    }
    corpus.Dat().set_rows(corpus.DasMaxY = row);
    corpus.Mok().set_rows(corpus.MosMaxY = static_cast<int>(works.size()));
  }

  VerticalPage Show(int lpos, int backFill = 0, int tateOne = 0, bool limit = false) {
    pos = {workOf[static_cast<std::size_t>(lpos)], lpos, {}};
    BackFill = backFill;
    const auto hiLight = [this](std::u16string_view t, int pane, int at) {
      lit.emplace_back(pane, at);
      return text::ReplaceAll(t, u"甲", u"<span>甲</span>");
    };
    return HyoujiTate(TextTable::Writings(corpus, selection),
                      {&pos, limit, &BackFill, &BlockLines, tateOne}, settings, gk, scope, hiLight,
                      meter);
  }

  corpus::Corpus corpus{"/nonexistent"};
  corpus::Selection selection;
  std::vector<int> workOf;
  Position pos;
  int BackFill = 0, BlockLines = -1, gk = 0, scope = 0;
  VerticalSettings settings;
  HashMeter meter;
  std::vector<std::pair<int, int>> lit;
};

TEST_F(Vertical, ForwardKeepsTheLinesLevelAndStopsAtTheWorksEnd) {
  Works({{{u"一#", u"訳##"}, {u"二###", u"訳#"}, {u"三#", u"訳#"}}, {{u"四#", u"訳#"}}});
  const VerticalPage page = Show(1);
  // Line 1 is one column short of its translation, line 2 two columns long.
  EXPECT_EQ(page.main, kH1 + u"一#" + Br(3) + u"二###" + Br(2) + u"三#");
  EXPECT_EQ(page.translation, kH2 + u"訳##" + Br(2) + u"訳#" + Br(4) + u"訳#");
  EXPECT_TRUE(page.translationWritten);
  EXPECT_EQ(BlockLines, 3);
  EXPECT_EQ(pos.Lpos, 1);  // the walk forward leaves no trace
  EXPECT_EQ(lit,
            (std::vector<std::pair<int, int>>{{0, 1}, {1, 1}, {0, 2}, {1, 2}, {0, 3}, {1, 3}}));
  EXPECT_EQ(meter.heights, (std::vector<int>{256, 288, 256, 288, 256, 288}));

  // The last line of a work stands alone, the limit or not.
  EXPECT_EQ(Show(3, 0, 0, true).main, kH1 + u"三#");
  EXPECT_EQ(BlockLines, 1);
  EXPECT_EQ(pos.Lpos, 3);
}

TEST_F(Vertical, TwentyEightColumnsEndTheBlockButNeverItsFirstLine) {
  const std::u16string ten(10, u'#');
  Works({{{std::u16string(30, u'#'), u""}, {ten, u""}, {ten, u""}, {ten, u""}}});
  EXPECT_EQ(Show(1).main, kH1 + std::u16string(30, u'#'));
  EXPECT_EQ(BlockLines, 1);
  Show(2);  // 10, gap, 10 is 21; the third line would make 32
  EXPECT_EQ(BlockLines, 2);
}

TEST_F(Vertical, WithTheWholeHeightOneBreakParts35LinesAtMost) {
  Works({std::vector<Line>(40, Line{u"+", u"訳#"})});
  const VerticalPage page = Show(1, 0, 1);
  EXPECT_EQ(BlockLines, 35);  // 17.5 columns: the line count ends it
  EXPECT_EQ(page.main,
            Div(576) + u"+" + text::ReplaceAll(std::u16string(34, u'+'), u"+", u"<BR>+"));
  EXPECT_FALSE(page.translationWritten);
  EXPECT_EQ(page.translation, u"");
  EXPECT_EQ(meter.heights, std::vector<int>(35, 576));
}

TEST_F(Vertical, BackwardEndsOnThePageForwardWouldShowFromItsFirstLine) {
  Works({{{u"一#", u"訳#"}}, {{u"二#", u"訳##"}, {u"三###", u"訳#"}, {u"四#", u"訳#"}}});
  const VerticalPage back = Show(3, 1);
  EXPECT_EQ(pos.Lpos, 2);  // stopped at the head, never over it into work 1
  EXPECT_EQ(pos.Mpos, 2);
  EXPECT_EQ(BackFill, 0);
  EXPECT_EQ(BlockLines, 2);
  EXPECT_EQ(back.main, kH1 + u"二#" + Br(3) + u"三###");
  EXPECT_EQ(back.translation, kH2 + u"訳##" + Br(2) + u"訳#");
  EXPECT_EQ(Show(2).main.substr(0, back.main.size()), back.main);

  // Any other value of the flag fills nothing and moves nothing.
  const VerticalPage none = Show(3, 2);
  EXPECT_EQ(none.main + none.translation, kH1 + kH2);
  EXPECT_EQ(std::tuple(BlockLines, BackFill, pos.Lpos), std::tuple(0, 2, 3));

  // Full before the head: the first line of the page is the last one shown.
  const std::u16string ten(10, u'#');
  Works({{{ten, u""}, {ten, u""}, {ten, u""}}});
  Show(3, 1);
  EXPECT_EQ(BlockLines, 2);
  EXPECT_EQ(pos.Lpos, 2);
}

TEST_F(Vertical, AnEmptyTranslationIsPaddedAndTheCompactOneIs416Pixels) {
  Works({{{u"一##", u""}, {u"二#", u"訳#"}}});
  settings = {20, 30, 1};
  const VerticalPage page = Show(1);
  EXPECT_EQ(page.main, Div(320) + u"一##" + Br(2) + u"二#");
  EXPECT_EQ(page.translation,
            Div(416) + Br(3) + u"訳#");  // its own column, the gap, two of padding
}

TEST_F(Vertical, LineTextsFollowTheCorpusConventions) {
  Works({{{u"  甲 乙／丙／", u"  訳＜一＞ア＜二＞イ＜三＞／"},
          {u"参照／14611に移動", u"訳"},
          {u"丁", u"後＞ロ＜ハ"}}});
  scope = 1;
  corpus.Dat().Set(3, corpus::dat::kAutograph, u"");
  VerticalPage page = Show(1);
  const std::u16string grey(kGreyOpen);
  EXPECT_EQ(page.main, kH1 + u"\u3000<span>甲</span>\u3000乙<BR>丙" + Br(2) +
                           u"参照<BR><a href='14611'>14611</a>に移動" + Br(2) + grey +
                           u"丁</span>");
  // Two notes go, the third stays; a "＞" before the "＜" repeats the text.
  EXPECT_EQ(page.translation, kH2 + u"\u3000訳アイ＜三＞" + Br(2) + u"訳" + Br(2) + grey +
                                  u"後＞ロロロロ＜ハ</span>");
  gk = 1;  // a printed collection keeps only what stands before the pointer
  EXPECT_EQ(Show(2).main, kH1 + u"参照" + Br(2) + grey + u"丁</span>");
}

}  // namespace
}  // namespace suizo::reader
