#include "core/search/compilers.h"

#include <gtest/gtest.h>

#include <random>

#include "core/search/regex.h"
#include "core/text/like.h"
#include "core/text/utf16.h"
#include "core/text/variants.h"
#include "wildcard_score.h"

namespace suizo::search {
namespace {

using text::ItaijiRows;
using text::ItaijiTbl;
using text::ToUtf8;
constexpr int kOn = 1;
constexpr int kOff = 0;

WordQuery Word(std::u16string_view box, Method method = Method::And, int itaiji = kOff) {
  auto query = WordQuery::Compile(box, method, itaiji);
  EXPECT_TRUE(query) << ToUtf8(box);
  return std::move(*query);
}

std::vector<std::u16string> Entries(std::u16string_view box, int divMode, SearchWindow window,
                                    int itaiji = kOff) {
  const auto query = SplitQuery::Compile(box, divMode, window, itaiji);
  return query ? query->Sw() : std::vector<std::u16string>{};
}

using suizo::testing::WildcardScore;

TEST(Regex, LinesEndAtCrLfOrEitherAlone) {
  const Regex dot(u"a.b"), start(u"^b"), empty(u"^$");
  for (const std::u16string_view end : {u"\n", u"\r", u"\r\n"}) {
    const std::u16string text = u"a" + std::u16string(end) + u"b";
    EXPECT_FALSE(dot.Test(text));
    EXPECT_TRUE(start.Test(text));
    EXPECT_FALSE(empty.Test(text)) << "CR LF is one line end";
    EXPECT_TRUE(empty.Test(u"a" + std::u16string(end))) << "a final line end opens a line";
  }
  EXPECT_FALSE(Regex(u"a").Test(u"A"));
}

TEST(Regex, ReadsCodeUnitsPrivateUseAndLoneSurrogatesIncluded) {
  EXPECT_TRUE(Regex(u"[\uE000\uE335]").Test(u"x\uE335"));
  const std::u16string lone(1, char16_t{0xD800});
  EXPECT_TRUE(Regex(u"[" + lone + u"]a").Test(u"x" + lone + u"a"));
  EXPECT_THROW(Regex(u"(*UTF)a"), RegexError);
}

TEST(Regex, RejectsABadPatternWithItsPlace) {
  try {
    Regex(u"ab[c");
    FAIL();
  } catch (const RegexError& e) {
    EXPECT_EQ(e.offset(), 4u);
    EXPECT_NE(std::string(e.what()).find("regular expression"), std::string::npos);
  }
}

TEST(Regex, InterpreterAgreesWithJitAndFindsWhere) {
  const std::u16string text = u"xx\r\nyab\nz";
  for (const auto* p : {u"^(?=.*a)", u"^(?!.*((?=.*q)|(?=.*z)))", u"^y", u"b$", u"x.y"}) {
    EXPECT_EQ(Regex(p).Test(text), Regex(p, false).Test(text)) << ToUtf8(p);
  }
  const auto m = Regex(u"ab").Find(text);
  ASSERT_TRUE(m);
  EXPECT_EQ(m->index, 5u);
  EXPECT_EQ(m->length, 2u);
}

TEST(Regex, EveryVariantRowIsAClassOfItsMembers) {
  const ItaijiRows& rows = ItaijiTbl();
  for (std::size_t r = 1; r < rows.size(); ++r) {
    if (rows[r].empty()) continue;
    const Regex cls(u"^[" + rows[r] + u"]$");
    for (const char16_t c : rows[r]) EXPECT_TRUE(cls.Test(std::u16string(1, c))) << r;
    EXPECT_FALSE(cls.Test(u"\u0001")) << r;
  }
}

TEST(WordQuery, FramesTheLongerWordFirstByMethod) {
  EXPECT_EQ(ToUtf8(Word(u"a bc", Method::And).pattern()), "^(?=.*bc)(?=.*a)");
  EXPECT_EQ(ToUtf8(Word(u"a bc", Method::Or).pattern()), "^((?=.*bc)|(?=.*a))");
  EXPECT_EQ(ToUtf8(Word(u"a bc", Method::Not).pattern()), "^(?!.*((?=.*bc)|(?=.*a)))");
  EXPECT_EQ(Word(u"a\u3000bcd ef").Sw(), (std::vector<std::u16string>{u"bcd", u"ef", u"a"}));
  EXPECT_EQ(ToUtf8(Word(u"観　経", Method::And, kOn).pattern()),
            "^(?=.*[観觀勧勸])(?=.*[教敎経坙經])");
  EXPECT_FALSE(WordQuery::Compile(u" \r\n ", Method::And, kOn));
  // Ideographic spaces alone are two empty words, true everywhere.
  EXPECT_TRUE(Word(u"\u3000").Matches(u""));
}

TEST(WordQuery, MatchesLineByLine) {
  const WordQuery all = Word(u"a b"), any = Word(u"a b", Method::Or),
                  none = Word(u"a b", Method::Not);
  for (const auto* field : {u"a\nb", u"a\rb", u"a\r\nb"}) {
    EXPECT_FALSE(all.Matches(field)) << "AND words share a line";
    EXPECT_TRUE(any.Matches(field));
    EXPECT_FALSE(none.Matches(field)) << "every line holds a word";
  }
  EXPECT_TRUE(all.Matches(u"x\nb-a"));
  EXPECT_FALSE(any.Matches(u"xyz"));
  EXPECT_TRUE(none.Matches(u"a\nxyz\nb"));
  EXPECT_TRUE(none.Matches(u""));
  EXPECT_TRUE(none.Matches(u"a\n")) << "the line after a final line end is empty";
}

TEST(WordQuery, TypedSignsAreCharacters) {
  for (const std::u16string_view sign : {u".", u"*", u"+", u"?", u"(", u")", u"[", u"]", u"{", u"}",
                                         u"^", u"$", u"|", u"\\", u"/", u"-"}) {
    for (const int itaiji : {kOff, kOn}) {
      const WordQuery q = Word(u"x" + std::u16string(sign) + u"y", Method::And, itaiji);
      EXPECT_TRUE(q.Matches(u"ax" + std::u16string(sign) + u"yb")) << ToUtf8(sign);
      EXPECT_FALSE(q.Matches(u"xy")) << ToUtf8(sign);
      EXPECT_FALSE(q.Matches(u"xay")) << ToUtf8(sign);
    }
  }
  EXPECT_TRUE(Word(u"\\").Matches(u"￥"));
  EXPECT_TRUE(Word(u"-").Matches(u"－"));
  EXPECT_TRUE(Word(u"]").Matches(u"〕"));
}

TEST(WordQuery, IterationMarksThatMakeAStraySignStayCharacters) {
  // "Z" + 1 is "[" and "'" + 1 is "(": read as written, no expression.
  const WordQuery bracket = Word(u"Zゞ x"), paren = Word(u"'ゞ", Method::Not);
  EXPECT_EQ(ToUtf8(bracket.pattern()), "^(?=.*Z\\[)(?=.*x)");
  EXPECT_TRUE(bracket.Matches(u"Z[x"));
  EXPECT_FALSE(paren.Matches(u"'("));
  // A mark after a class reads its bracket, and stays as it is when valid.
  EXPECT_EQ(ToUtf8(Word(u"ほゞ", Method::And, kOn).pattern()), "^(?=.*[おほを]^)");
}

TEST(WordQuery, ABlankThatAnIterationMarkMakesSplitsTheWords) {
  // U+001F + 1 is a blank: the frame splits the word there, and so must
  // every answer (found by the fuzz target).
  const WordQuery any = Word(u"\x1fゞ x", Method::Or), all = Word(u"\x1fゞ x", Method::And);
  EXPECT_EQ(ToUtf8(any.pattern()), "^((?=.*\x1f)|(?=.*)|(?=.*x))");
  EXPECT_TRUE(any.Matches(u""));  // the empty word is found everywhere
  EXPECT_TRUE(all.Matches(u"\x1fx"));
  EXPECT_FALSE(all.Matches(u"x"));
}

TEST(WordQuery, PrivateUseCharactersInClasses) {
  EXPECT_TRUE(Word(u"継", Method::And, kOn).Matches(u"\uE335"));
  EXPECT_TRUE(Word(u"\uE335", Method::And, kOn).Matches(u"鷄"));
  EXPECT_TRUE(Word(u"\uE700").Matches(u"a\uE700"));
  EXPECT_FALSE(Word(u"\uE700").Matches(u"\uE701"));
}

TEST(SplitQuery, RepeatsAndOneVariantGroupCountOnce) {
  EXPECT_EQ(Entries(u"観 觀観", 1, SearchWindow::Writings, kOn).size(), 1u);
  EXPECT_EQ(Entries(u"観 觀観", 1, SearchWindow::Writings, kOff).size(), 2u);
}

TEST(SplitQuery, KanjiOnlyFormDeletesAndWalksByWindow) {
  EXPECT_TRUE(Entries(u"不令", 2, SearchWindow::Writings).empty());
  EXPECT_TRUE(Entries(u"かなカナ、＋", 2, SearchWindow::Writings).empty());
  EXPECT_EQ(Entries(u"AB漢", 2, SearchWindow::Writings),
            (std::vector<std::u16string>{u"A", u"B", u"漢"}));
  EXPECT_EQ(Entries(u"於之哉", 2, SearchWindow::Writings).size(), 2u);
  EXPECT_EQ(Entries(u"於之哉", 2, SearchWindow::Sources), (std::vector<std::u16string>{u"哉"}));
  EXPECT_EQ(Entries(u"不令々", 1, SearchWindow::Writings).size(), 3u);
}

TEST(SplitQuery, SutraReadingsBecomeItsCharacters) {
  EXPECT_EQ(Entries(u"べからず", 2, SearchWindow::Sutra), (std::vector<std::u16string>{u"不"}));
  EXPECT_EQ(
      Entries(u"られこれことなをなしめ", 2, SearchWindow::Sutra),
      (std::vector<std::u16string>{u"[見所]", u"[是之]", u"[無莫勿靡]", u"[為作]", u"[令使]"}));
  EXPECT_EQ(Entries(u"より以来々", 2, SearchWindow::Sutra),
            (std::vector<std::u16string>{u"以", u"来"}));
  EXPECT_EQ(Entries(u"α", 1, SearchWindow::Writings), (std::vector<std::u16string>{u"α"}));
}

TEST(SplitQuery, RequiredCountByNumberAndWindow) {
  const std::u16string_view thirteen = u"一二三四五六七八九十百千万";
  const auto t = [](std::u16string_view box, SearchWindow w) {
    return SplitQuery::Compile(box, 1, w, kOff)->Required();
  };
  EXPECT_EQ(t(thirteen.substr(0, 3), SearchWindow::Writings), 3);
  EXPECT_EQ(t(thirteen.substr(0, 9), SearchWindow::Writings), 4);
  EXPECT_EQ(t(thirteen.substr(0, 12), SearchWindow::Sources), 6);
  EXPECT_EQ(t(thirteen, SearchWindow::Writings), 6.5);
  EXPECT_EQ(t(thirteen, SearchWindow::Sutra), 4);
}

TEST(SplitQuery, DashFindsBothWidthsAndHashADigit) {
  for (const auto* box : {u"-", u"－"}) {
    const auto q = SplitQuery::Compile(box, 1, SearchWindow::Writings, kOff);
    EXPECT_EQ(q->Score(u"a－b", 1), 1);
    EXPECT_EQ(q->Score(u"a-b", 1), 1);
    EXPECT_EQ(q->Score(u"a~b", 1), 0);
  }
  const auto hash = SplitQuery::Compile(u"#", 1, SearchWindow::Writings, kOff);
  EXPECT_EQ(hash->Score(u"x7", 1), 1);
  EXPECT_EQ(hash->Score(u"x７#", 1), 0);
}

TEST(SplitQuery, EarlyStopOutsideTheSutraOnly) {
  const auto writings = SplitQuery::Compile(u"ABCD", 1, SearchWindow::Writings, kOff);
  const auto sutra = SplitQuery::Compile(u"ABCD", 1, SearchWindow::Sutra, kOff);
  EXPECT_EQ(writings->Score(u"D\r\nCB", 4), 0) << "A missing: four can no longer be reached";
  EXPECT_EQ(writings->Score(u"D\r\nCB", 2), 3);
  EXPECT_EQ(writings->Score(u"ABD", 4), 2);
  EXPECT_EQ(sutra->Score(u"D\r\nCB", 4), 3);
}

TEST(SplitQuery, OneUnitEntriesScoreAsTheWildcardDoes) {
  const ItaijiRows& rows = ItaijiTbl();
  for (std::size_t r = 1; r < rows.size(); ++r) {
    for (const char16_t c : rows[r]) {
      const auto q = SplitQuery::Compile(std::u16string(1, c), 1, SearchWindow::Writings, kOn);
      std::u16string probes = rows[r] + u"\uE000\uFFFF";
      for (char16_t u = 0; u < 0x80; ++u) probes += {char16_t(c - 1), char16_t(c + 1), u};
      for (const char16_t u : probes) {
        const std::u16string field(1, u);
        ASSERT_EQ(q->Score(field, 1), WildcardScore(q->Sw(), field, 1, true)) << r;
      }
      break;
    }
  }
}

// Texts from every sign the compilers treat specially, run through both.
TEST(CompilersRandomized, EveryTextCompilesAndScoresAsTheWildcard) {
  const std::u16string alphabet =
      u".*+?()[]{}^$|\\/-－#!'Z z　 \r\n\uE000\uE335\uE757あかゝゞほがや観觀経不令従より"
      u"べからずられこれαε１Ａ［〕＊＾";
  std::mt19937 random(20240611);
  const auto pick = [&](std::size_t maxLength) {
    std::u16string s(random() % (maxLength + 1), u' ');
    for (auto& c : s) c = alphabet[random() % alphabet.size()];
    return s;
  };
  for (int n = 0; n < 2000; ++n) {
    const std::u16string box = pick(10);
    const std::u16string fields[] = {u"", pick(30), pick(30) + box + pick(5)};
    for (const int itaiji : {kOff, kOn}) {
      for (const Method m : {Method::And, Method::Or, Method::Not}) {
        const auto word = WordQuery::Compile(box, m, itaiji);
        if (!word) continue;
        const Regex frame(word->pattern());
        for (const auto& f : fields) {
          ASSERT_EQ(word->Matches(f), frame.Test(f)) << ToUtf8(box) << " / " << ToUtf8(f);
        }
      }
      for (const auto w : {SearchWindow::Writings, SearchWindow::Sutra, SearchWindow::Sources}) {
        for (const int divMode : {1, 2}) {
          const auto split = SplitQuery::Compile(box, divMode, w, itaiji);
          if (!split) continue;
          const double bar = split->Required() + static_cast<double>(random() % 3);
          for (const auto& f : fields) {
            ASSERT_EQ(split->Score(f, bar),
                      WildcardScore(split->Sw(), f, bar, w != SearchWindow::Sutra))
                << ToUtf8(box) << " / " << ToUtf8(f);
          }
        }
      }
    }
  }
}

// The word search finds its words in one pass where it can; its answers must
// be the frame's, over fields of many short lines of every kind of line end.
TEST(CompilersRandomized, WordsFoundAnywhereAnswerAsTheFrame) {
  const std::u16string words = u"あか観觀勧経經教不 　Z";
  const std::u16string fields = u"あか観觀勧経經教不Zz\r\n\n\r";
  std::mt19937 random(71);
  const auto pick = [&](const std::u16string& from, std::size_t maxLength) {
    std::u16string s(random() % (maxLength + 1), u' ');
    for (auto& c : s) c = from[random() % from.size()];
    return s;
  };
  int plainBoxes = 0;
  for (int n = 0; n < 3000; ++n) {
    const std::u16string box = pick(words, 7);
    for (const int itaiji : {kOff, kOn}) {
      for (const Method m : {Method::And, Method::Or, Method::Not}) {
        const auto word = WordQuery::Compile(box, m, itaiji);
        if (!word) continue;
        ++plainBoxes;
        const Regex frame(word->pattern());
        for (int k = 0; k < 8; ++k) {
          const std::u16string f = pick(fields, 14);
          ASSERT_EQ(word->Matches(f), frame.Test(f))
              << ToUtf8(box) << " / " << ToUtf8(f) << " / method " << static_cast<int>(m);
        }
      }
    }
  }
  EXPECT_GT(plainBoxes, 10000);
}

}  // namespace
}  // namespace suizo::search
