#include "core/reader/highlight.h"

#include <gtest/gtest.h>

#include <string>

#include "core/reader/texts.h"
#include "core/text/utf16.h"

namespace suizo::reader {
namespace {

using search::Method;
using text::ToUtf8;

// One work; each line: main text, second main text (pane 0 searches both).
class Highlight : public ::testing::Test {
 protected:
  Highlight() : corpus("/nonexistent") {
    const std::u16string_view lines[][2] = {{u"法華経と法華", u"◆"},
                                            {u"雨の日に法華経を読む", u""},
                                            {u"月を観る", u"月を観て経を思ふ"},
                                            {u"山の寺\n雨の寺", u""},
                                            {u"Z[x", u""},
                                            {u"風の音", u""}};
    int p = 0;
    for (const auto& [main, main2] : lines) {
      corpus.DatOrder.push_back(++p);
      corpus.Dat().Set(p, corpus::dat::kMain, main);
      corpus.Dat().Set(p, corpus::dat::kMain2, main2);
      corpus.Dat().Set(p, corpus::dat::kClass, u"0");
    }
    corpus.Dat().set_rows(p);
    corpus.DasMaxY = p;
    corpus.Mok().Set(1, corpus::mok::kPosition, u"1");
    corpus.MokOrder = {0, 1};
    corpus.MosMaxY = 1;
  }

  void Search(std::u16string_view box, Method method = Method::And, int tab = 0, int divMode = 0) {
    engine.Combo1 = box;
    engine.SrMethod = method;
    engine.Tab = tab;
    engine.DivMode = divMode;
    engine.Kensaku(0);
  }

  std::string Mark(int lpos, int pane = 0) {
    return ToUtf8(hl.HiLight(corpus.Dat().Get(lpos, corpus::dat::kMain), pane, lpos));
  }
  std::string Mark(std::u16string_view text, int lpos, int pane = 0) {
    return ToUtf8(hl.HiLight(text, pane, lpos));
  }

  corpus::Corpus corpus;
  corpus::Selection selection;
  corpus::Settings settings;
  search::SearchEngine engine{TextTable::Writings(corpus, selection), settings};
  Highlighter hl{engine, settings.Itaiji};
};

TEST_F(Highlight, MarksAreBareSpansOnHitLinesOnly) {
  EXPECT_EQ(Mark(4), "山の寺\n雨の寺");
  EXPECT_EQ(hl.HLflag, -1);
  Search(u"寺");
  EXPECT_EQ(Mark(4), "山の<span>寺</span>\n雨の<span>寺</span>");
  EXPECT_EQ(hl.HLflag, 2);
  EXPECT_EQ(hl.HLerror, 0);
  EXPECT_EQ(Mark(1), "法華経と法華");  // not a hit
  EXPECT_EQ(hl.HLflag, -1);
  EXPECT_EQ(Mark(u"", 4), "");
  // Applied, nothing to mark; and tags are text like any other.
  EXPECT_EQ(Mark(u"風", 4), "風");
  EXPECT_EQ(hl.HLflag, 0);
  EXPECT_EQ(hl.HLerror, 1);
  EXPECT_EQ(Mark(u"<a href='寺'>x</a>", 4), "<a href='<span>寺</span>'>x</a>");
}

TEST_F(Highlight, TheLongerWordIsMarkedWholeAndTheShorterNotInsideIt) {
  Search(u"法華 法華経");
  EXPECT_EQ(Mark(1), "<span>法華経</span>と<span>法華</span>");
  EXPECT_EQ(hl.HLflag, 2);
  Search(u"法華経 華経");
  EXPECT_EQ(Mark(2), "雨の日に<span>法華経</span>を読む");
  EXPECT_EQ(hl.HLerror, 1);
}

TEST_F(Highlight, OnlyThePaneSearchedIsMarked) {
  corpus.Dat().Set(2, corpus::kPaneCol[1], u"訳：雨");
  Search(u"雨", Method::And, 1);
  EXPECT_EQ(Mark(u"訳：雨", 2, 1), "訳：<span>雨</span>");
  EXPECT_EQ(Mark(2), "雨の日に法華経を読む");
  EXPECT_EQ(hl.HLflag, -1);
  // A page search marks no pane.
  corpus.Dat().Set(2, 22, u"100.02");
  Search(u"定本P100");
  ASSERT_EQ(engine.Srk, 11);
  EXPECT_EQ(Mark(2), "雨の日に法華経を読む");
  EXPECT_EQ(hl.HLflag, -1);
}

TEST_F(Highlight, ErrorTellsWhetherTheTextShowsWhatWasAskedFor) {
  // A hit through the second main text: the first lacks one word.
  Search(u"月 経");
  EXPECT_EQ(Mark(3), "<span>月</span>を観る");
  EXPECT_EQ(hl.HLerror, 1);
  Search(u"月 経", Method::Or);
  EXPECT_EQ(Mark(3), "<span>月</span>を観る");
  EXPECT_EQ(hl.HLerror, 0);
  EXPECT_EQ(Mark(u"空", 3), "空");
  EXPECT_EQ(hl.HLerror, 1);
  // NOT: a missing word is what was asked for; a present one is marked.
  Search(u"雨", Method::Not);
  EXPECT_EQ(Mark(4), "山の寺\n<span>雨</span>の寺");
  EXPECT_EQ(hl.HLerror, 0);
  EXPECT_EQ(Mark(6), "風の音");
  EXPECT_EQ(hl.HLflag, 0);
  EXPECT_EQ(hl.HLerror, 0);
}

TEST_F(Highlight, KeptRefinementsMarkAfterTheResultIsCleared) {
  Search(u"法華経");
  ASSERT_TRUE(engine.Command14());
  ASSERT_EQ(engine.Label3Colour, search::kButtonFace);
  EXPECT_EQ(Mark(2), "雨の日に<span>法華経</span>を読む");
  EXPECT_EQ(hl.HLflag, 1);
  // The live search within marks too; the flag counts the last list alone.
  Search(u"読む");
  EXPECT_EQ(Mark(2), "雨の日に<span>法華経</span>を<span>読む</span>");
  EXPECT_EQ(hl.HLflag, 1);
  EXPECT_EQ(Mark(u"法華経を読む", 2, 1), "法華経を読む");
}

TEST_F(Highlight, SplitEntriesAndStraySigns) {
  Search(u"風音", Method::And, 0, 1);
  EXPECT_EQ(engine.Swn, 2);
  EXPECT_EQ(Mark(6), "<span>風</span>の<span>音</span>");
  EXPECT_EQ(hl.HLflag, 2);
  // "Z" + iteration mark is a stray "[": read as the character.
  settings.Itaiji = 0;
  Highlighter plain(engine, 0);
  Search(u"Zゞ x");
  EXPECT_EQ(ToUtf8(plain.HiLight(u"Z[x", 0, 5)), "<span>Z[</span><span>x</span>");
}

}  // namespace
}  // namespace suizo::reader
