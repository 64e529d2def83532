#include "core/reader/hit_list.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "core/reader/texts.h"
#include "core/text/numbers.h"
#include "core/text/utf16.h"

namespace suizo::reader {
namespace {

using search::Method;
using text::ToUtf8;

struct Line {
  std::u16string main, main2 = u"", page = u"";  // page: 定本, column 22
};

const std::string kGrey =
    "<span style='color:#999999; background-color:transparent; font-weight:normal;'>";

// The hit numbers of the links on a page.
std::vector<int> Links(const HitListPage& page) {
  std::vector<int> hits;
  for (std::size_t at = 0; (at = page.body.find(u"<a href='", at)) != std::u16string::npos;) {
    hits.push_back(static_cast<int>(text::Val(std::u16string_view(page.body).substr(at + 9))));
    at += 9;
  }
  return hits;
}

// Works start at a "◆" in the second main text. The order runs the table
// backwards, so that a row and its position differ.
class HitListWindow : public ::testing::Test {
 protected:
  HitListWindow() : corpus("/nonexistent") {
    Lines({{u"◆聖愚問答抄", u"◆"},
           {u"春の雨に法華経を読む", u"", u"100.02"},
           {u"夏の月", u"", u"100.1"},
           {u"◆秋の風", u"◆", u"101"},
           {u"法華経の山"}});
  }

  void Lines(const std::vector<Line>& lines) {
    auto& dat = corpus.Dat();
    const int n = static_cast<int>(lines.size());
    corpus.DatOrder.assign(static_cast<std::size_t>(n) + 1, 0);
    corpus.MokOrder = {0};
    int works = 0;
    for (int p = 1; p <= n; ++p) {
      const Line& l = lines[static_cast<std::size_t>(p - 1)];
      const int row = n + 1 - p;
      corpus.DatOrder[static_cast<std::size_t>(p)] = row;
      if (text::Contains(l.main2, u"◆")) {
        corpus.Mok().Set(++works, corpus::mok::kPosition, text::IntText(p));
        corpus.MokOrder.push_back(works);
      }
      dat.Set(row, corpus::dat::kSysNo, text::IntText(1000 + p));
      dat.Set(row, 6, works == 1 ? u"聖愚問答抄 (上)" : u"秋 風抄");
      dat.Set(row, corpus::dat::kClass, text::IntText(works - 1));
      dat.Set(row, corpus::dat::kDating, works == 1 ? u"建長五年" : u"");
      dat.Set(row, corpus::dat::kMain, l.main);
      dat.Set(row, corpus::dat::kMain2, l.main2);
      dat.Set(row, 22, l.page);
    }
    dat.set_rows(n);
    corpus.DasMaxY = n;
    corpus.MosMaxY = works;
  }

  void Search(std::u16string_view box, Method method = Method::And) {
    engine.Combo1 = box;
    engine.SrMethod = method;
    engine.Kensaku(0);
  }
  std::string Body() { return ToUtf8(list.Hyouji().body); }
  bool Shows(const std::string& part) { return Body().find(part) != std::string::npos; }

  corpus::Corpus corpus;
  corpus::Selection selection;
  corpus::Settings settings;
  int Nok = 0;
  search::SearchEngine engine{TextTable::Writings(corpus, selection), settings};
  Highlighter hl{engine, settings.Itaiji};
  HitList list{engine, hl, corpus, selection, settings, Nok};
};

TEST_F(HitListWindow, FrameSizesAndSection) {
  EXPECT_EQ(ToUtf8(HitListFrame()),
            "<!DOCTYPE html><style>span{ color:black; font-weight: bold; background-color: yellow; "
            "}</style><style>a{ color:blue; text-decoration:none; }</style><body bgcolor='white' "
            "scroll=auto style='width:98%; margin:auto; margin-top:5px; line-height:1.4em; "
            "font-size:14px; font-family:ＭＳ ゴシック;'>");
  EXPECT_EQ(HitPageSize(0), 5);
  EXPECT_EQ(HitPageSize(3), 50);
  EXPECT_EQ(HitPageSize(4), 50);
  EXPECT_EQ(ToUtf8(HitListParent(u"本文「x」", u"42")), "@結果42");
  EXPECT_EQ(ToUtf8(HitListParent(u"目次@本文", u"42")), "@結果");
}

TEST_F(HitListWindow, HitsInFull) {
  Search(u"法華経");
  const HitListPage page = list.Hyouji();
  EXPECT_EQ(ToUtf8(page.Label1), "検索結果2件");
  EXPECT_EQ(ToUtf8(page.Label2), "1/1ページ");
  const std::string head =
      "<span style='color:#0079af; font-weight: bold; background-color:white ;'><a href='";
  const std::string link = "' style='color:#0079af; text-decoration:none;'>●";
  const std::string klass =
      "</a></span><span style='color:#555555; background-color:transparent; "
      "font-weight:normal;'>\u3000〔";
  const std::string place =
      "〕</span></div><div style='float:right; padding-right:10px; color:#777777;'>";
  // The last line of the order has no line after it.
  EXPECT_EQ(ToUtf8(page.body),
            "<div style='float:left;'>1" + head + "1" + link + "聖愚問答抄" + klass +
                "C0・建長五年" + place + "ｼｽﾃﾑNo.1002</div><br>" + kGrey +
                "◆聖愚問答抄</span>春の雨に<span>法華経</span>を読む" + kGrey +
                "夏の月</span><br><br>" + "<div style='float:left;'>2" + head + "2" + link +
                "秋風抄" + klass + "C1・" + place + "ｼｽﾃﾑNo.1005</div><br>" + kGrey +
                "◆秋の風</span><span>法華経</span>の山" + kGrey + "</span><br><br>");
}

TEST_F(HitListWindow, PlaceInTheChosenCollection) {
  selection.Gk = 22;
  Search(u"雨 月 風 山", Method::Or);
  const std::string body = Body();
  for (const char* place :
       {"定本100頁02行目<", "定本100頁10行目<", "定本101頁00行目<", "定本0頁00行目<"}) {
    EXPECT_NE(body.find(place), std::string::npos) << place;
  }
}

TEST_F(HitListWindow, PageSearchShowsThePageAloneWithoutNeighboursOrMarks) {
  Search(u"定本P100");
  ASSERT_EQ(engine.Srn, 2);
  EXPECT_TRUE(Shows("\u3000〔定本 100.02〕</span>"));
  EXPECT_TRUE(Shows("\u3000〔定本 100.10〕</span>"));
  EXPECT_TRUE(Shows("ｼｽﾃﾑNo.1002</div><br><br><br>"));  // its second main text is empty
  EXPECT_FALSE(Shows("#999999"));
  Search(u"ｼｽﾃﾑP1004");
  EXPECT_TRUE(Shows("\u3000〔ｼｽﾃﾑ 1004〕</span>"));
  EXPECT_TRUE(Shows("ｼｽﾃﾑNo.1004</div><br>◆<br><br>"));
  EXPECT_FALSE(Shows("<span>"));
}

TEST_F(HitListWindow, ContextIsCutTo140) {
  const std::u16string hundred(100, u'あ'), forty(40, u'い');
  Lines({{u"◆" + forty, u"◆"}, {hundred + u"雨"}, {forty + u"う"}, {std::u16string(141, u'雨')}});
  Search(u"雨");
  // 101 units leave 39, split to even: 20 a side.
  const std::string side = kGrey + ToUtf8(std::u16string(20, u'い')) + "</span>";
  EXPECT_TRUE(Shows(side + ToUtf8(hundred) + "<span>雨</span>" + side));
  // Over 140 the line stands alone.
  EXPECT_TRUE(Shows("<br>" + kGrey + "</span><span>雨</span>"));
  EXPECT_TRUE(Shows("<span>雨</span>" + kGrey + "</span><br><br>"));
}

TEST_F(HitListWindow, BoxDrawingAndTheMainTextNokChose) {
  Lines({{u"◆┌─┐", u"◆"}, {u"├雨┤", u"風"}, {u"└─┘"}});
  Search(u"雨");
  EXPECT_TRUE(Shows("<br>" + kGrey + "◆┌─┐</span><br>├<span>雨</span>┤<br>" + kGrey + "└─┘"));
  Nok = 1;
  EXPECT_TRUE(Shows("</span>風" + kGrey));
}

TEST_F(HitListWindow, PagingActsOnlyWhenThePageChanges) {
  std::vector<Line> lines{{u"◆", u"◆"}};
  lines.resize(52, {u"雨"});
  Lines(lines);
  Search(u"雨");
  ASSERT_EQ(engine.Srn, 51);
  EXPECT_EQ(Links(list.Opt(3)).size(), 50u);
  EXPECT_EQ(settings.DispN, 3);
  EXPECT_FALSE(list.Command2());
  EXPECT_FALSE(list.Command3());
  const HitListPage last = *list.Command5();
  EXPECT_EQ(ToUtf8(last.Label2), "2/2ページ");
  EXPECT_EQ(Links(last), std::vector<int>{51});
  EXPECT_FALSE(list.Command4());
  EXPECT_FALSE(list.KeyDownAll(39, 0));
  EXPECT_EQ(list.KeyDownAll(37, 0)->PageNo, 1);
  EXPECT_FALSE(list.KeyDownAll(40, 0));
  // A new size, or a new search, starts from the first page.
  list.Command4();
  const HitListPage small = list.Opt(0);
  EXPECT_EQ(small.PageNo, 1);
  EXPECT_EQ(small.PageCount, 11);
  EXPECT_EQ(Links(*list.Command4()), (std::vector<int>{6, 7, 8, 9, 10}));
  Search(u"雨");
  EXPECT_EQ(list.Hyouji().PageNo, 1);
}

TEST_F(HitListWindow, NoHitsShowAnEmptyFirstPage) {
  Search(u"雪");
  engine.HitListPage = 3;
  const HitListPage page = list.Hyouji();
  EXPECT_EQ(ToUtf8(page.Label1 + page.Label2), "検索結果0件1/0ページ");
  EXPECT_TRUE(page.body.empty());
  EXPECT_EQ(list.PageNo(), 1);
  EXPECT_FALSE(list.Command5());
}

TEST_F(HitListWindow, ALinkPutsTheOwnerOnItsHit) {
  Search(u"法華経");
  EXPECT_EQ(list.LinkClick(u"about:2"), 2);
  EXPECT_EQ(engine.SrnPos, 2);
  EXPECT_EQ(engine.pos.Lpos, 5);
  EXPECT_EQ(engine.pos.Mpos, 2);
  for (const auto href : {u"about:blank", u"about:3", u"about:0", u"about:1a", u"about:"}) {
    EXPECT_FALSE(list.LinkClick(href)) << ToUtf8(href);
  }
  EXPECT_EQ(engine.SrnPos, 2);
  EXPECT_EQ(HitOfHref(u"1"), 1);
  EXPECT_EQ(HitOfHref(u"x:y:12"), 12);
  EXPECT_FALSE(HitOfHref(u"about:12345678901"));
}

}  // namespace
}  // namespace suizo::reader
