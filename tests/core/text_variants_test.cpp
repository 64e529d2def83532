#include "core/text/variants.h"

#include <gtest/gtest.h>

#include <map>
#include <set>

#include "core/text/sjis.h"

namespace suizo::text {
namespace {

constexpr int kOn = 1;
constexpr int kOff = 0;

std::u16string Class(std::size_t row) {
  return u"[" + ItaijiTbl()[row] + u"]";
}

TEST(VariantTable, HasTheListedShape) {
  const ItaijiRows& rows = ItaijiTbl();
  std::size_t used = 0, characters = 0, longest = 0;
  std::map<std::size_t, int> byLength;
  for (std::size_t r = 1; r < rows.size(); ++r) {
    if (rows[r].empty()) continue;
    ++used;
    characters += rows[r].size();
    ++byLength[rows[r].size()];
    longest = std::max(longest, rows[r].size());
  }
  EXPECT_EQ(used, 1341u);
  EXPECT_EQ(characters, 3398u);
  EXPECT_EQ(byLength[2], 903);
  EXPECT_EQ(byLength[3], 273);
  EXPECT_EQ(byLength[4], 106);
  EXPECT_EQ(longest, 14u);
  for (const std::size_t r : {0, 37, 47, 48, 49, 50}) EXPECT_TRUE(rows[r].empty()) << r;
}

TEST(VariantTable, RowOneIsTheQuotesOfTheirShiftJisCodes) {
  EXPECT_EQ(text::SjisChar(0x8165), u'‘');
  EXPECT_EQ(text::SjisChar(0x8166), u'’');
  EXPECT_EQ(text::SjisChar(0x8167), u'“');
  EXPECT_EQ(text::SjisChar(0x8168), u'”');
  EXPECT_EQ(text::SjisChar(34), u'"');
  EXPECT_EQ(ItaijiTbl()[1], u"‘’“”\"");
}

TEST(VariantTable, SevenCharactersStandInTwoRows) {
  std::map<char16_t, std::set<std::size_t>> rowsOf;
  const ItaijiRows& rows = ItaijiTbl();
  for (std::size_t r = 1; r < rows.size(); ++r) {
    for (const char16_t c : rows[r]) rowsOf[c].insert(r);
  }
  std::map<char16_t, std::set<std::size_t>> twice;
  for (const auto& [c, in] : rowsOf) {
    if (in.size() > 1) twice[c] = in;
  }
  const std::map<char16_t, std::set<std::size_t>> expected = {
      {u'[', {8, 12}},     {u'［', {8, 12}},    {u'や', {46, 135}},  {u'隠', {169, 207}},
      {u'恵', {138, 351}}, {u'慧', {138, 352}}, {u'瞿', {61, 1136}},
  };
  EXPECT_EQ(twice, expected);
}

TEST(VariantTable, KeepsSignsAndCharactersExactlyAsListed) {
  const ItaijiRows& rows = ItaijiTbl();
  EXPECT_EQ(rows[6], u"－-");  // the hyphen last, so no range arises
  EXPECT_EQ(rows[7], u"\\\\￥");
  EXPECT_EQ(rows[66], u"利梨離哩");
  EXPECT_EQ(rows[116], u"河川巛");
  EXPECT_EQ(rows[1346], u"zZｚＺ");
  // Private-use and compatibility characters, which a folding tool would spoil.
  EXPECT_EQ(rows[55], u"櫟櫪檪\uE336");
  EXPECT_EQ(rows[64], u"魂神\uFA19");
  EXPECT_EQ(rows[1036], u"朗\uF929朖");
}

TEST(ItaijiPattern, EveryCharacterTakesTheFirstRowInForce) {
  const ItaijiRows& rows = ItaijiTbl();
  for (const int setting : {kOff, kOn}) {
    const std::size_t limit = setting == kOn ? 1346 : 36;
    for (std::size_t r = 1; r < rows.size(); ++r) {
      for (const char16_t c : rows[r]) {
        std::size_t first = 1;
        while (first <= limit && rows[first].find(c) == std::u16string::npos) ++first;
        const std::u16string expected = first <= limit ? Class(first) : std::u16string(1, c);
        ASSERT_EQ(ItaijiPattern(std::u16string(1, c), setting), expected)
            << "row " << r << " setting " << setting;
      }
    }
  }
}

TEST(ItaijiPattern, LaterRowsAreNoEntry) {
  EXPECT_EQ(ItaijiPattern(u"［", kOff), Class(8));  // row 12 is dead
  EXPECT_EQ(ItaijiPattern(u"や", kOn), u"[やよ]");
  EXPECT_EQ(ItaijiPattern(u"乎", kOn), u"[乎や]");
  EXPECT_EQ(ItaijiPattern(u"隠", kOn), Class(169));
  EXPECT_EQ(ItaijiPattern(u"穏", kOn), Class(207));
  EXPECT_EQ(ItaijiPattern(u"懼", kOn), u"[懼瞿惧]");
  EXPECT_EQ(ItaijiPattern(u"瞿", kOn), Class(61));
}

TEST(ItaijiPattern, SettingDecidesTheRowsInForce) {
  for (const int setting : {kOff, 2, kOn}) {
    EXPECT_EQ(ItaijiPattern(u"1", setting), u"[1１]");
    EXPECT_EQ(ItaijiPattern(u"０", setting), u"[0０]");
    EXPECT_EQ(ItaijiPattern(u".", setting), u"[．.]");
    EXPECT_EQ(ItaijiPattern(u"」", setting), u"[」｣』]");
  }
  EXPECT_EQ(ItaijiPattern(u"a", kOff), u"a");
  EXPECT_EQ(ItaijiPattern(u"a", 2), u"a");  // only 1 means on
  EXPECT_EQ(ItaijiPattern(u"a", kOn), u"[aAａＡ]");
  EXPECT_EQ(ItaijiPattern(u"観経", kOff), u"観経");
  EXPECT_EQ(ItaijiPattern(u"観経", kOn), u"[観觀勧勸][教敎経坙經]");
  EXPECT_EQ(ItaijiPattern(u"アｱ", kOn), u"アｱ");  // katakana have no rows
  EXPECT_EQ(ItaijiPattern(u"ヶ", kOn), u"[箇ヶ個个]");
  EXPECT_EQ(ItaijiPattern(u"", kOn), u"");
}

TEST(ItaijiPattern, MetacharactersAlwaysEndInsideAClass) {
  for (const char16_t c : std::u16string_view(u".*+?()[]{}^$|\\/-")) {
    const std::u16string pattern = ItaijiPattern(std::u16string(1, c), kOff);
    EXPECT_TRUE(pattern.size() > 2 && pattern.front() == u'[' && pattern.back() == u']') << char(c);
  }
  EXPECT_EQ(ItaijiPattern(u"]", kOff), u"[]］〕]");
  EXPECT_EQ(ItaijiPattern(u"\\", kOff), u"[\\\\￥]");
  EXPECT_EQ(ItaijiPattern(u"-", kOff), u"[－-]");
  EXPECT_EQ(ItaijiPattern(u"#", kOn), u"#");
}

TEST(ItaijiPattern, DoubledPersonTakesTheIterationMark) {
  EXPECT_EQ(ItaijiPattern(u"人人", kOff), u"人々");
  EXPECT_EQ(ItaijiPattern(u"人人人人人", kOff), u"人々人々人");
  EXPECT_EQ(ItaijiPattern(u"人人", kOn), Class(63) + Class(63));
  const std::u16string separated = {u'人', kListSeparator, u'人', kListSeparator};
  EXPECT_EQ(ItaijiPattern(separated, kOff), std::u16string(u"人々") + kListSeparator);
  EXPECT_EQ(ItaijiPattern(separated, kOn), Class(63) + kListSeparator + Class(63) + kListSeparator);
}

TEST(ItaijiPattern, IterationMarksRepeatOrVoiceTheCharacterBefore) {
  for (const int setting : {kOff, kOn}) {
    EXPECT_EQ(ItaijiPattern(u"かゞ", setting), u"かが");
    EXPECT_EQ(ItaijiPattern(u"がゞ", setting), u"がが");
    EXPECT_EQ(ItaijiPattern(u"こゝろ", setting), u"こころ");
    EXPECT_EQ(ItaijiPattern(u"かゝゝ", setting), u"かかか");
    EXPECT_EQ(ItaijiPattern(u"かゞゝ", setting), u"かがが");  // ゝ reads the voiced kana
    EXPECT_EQ(ItaijiPattern(u"ゝか", setting), u"ゝか");
    EXPECT_EQ(ItaijiPattern(u"ゝ", setting), u"ゝ");
    EXPECT_EQ(ItaijiPattern(u"ゞ", setting), u"ゞ");
    EXPECT_EQ(ItaijiPattern(u"々", setting), u"々");
  }
  EXPECT_EQ(ItaijiPattern(u"ほゝ", kOff), u"ほほ");
  EXPECT_EQ(ItaijiPattern(u"ほゞ", kOff), u"ほぼ");
  // After a class the mark reads its closing bracket.
  EXPECT_EQ(ItaijiPattern(u"ほゝ", kOn), u"[おほを]]");
  EXPECT_EQ(ItaijiPattern(u"ほゞ", kOn), u"[おほを]^");
  EXPECT_EQ(ItaijiPattern(u"んゞ", kOff), u"ん・");  // 0x82F2 has no character
}

TEST(SpaceTrim, DropsLineEndsAndMakesEachRunOneBlank) {
  EXPECT_EQ(SpaceTrim(u"観\r\n経"), u"観経");
  EXPECT_EQ(SpaceTrim(u"\r\n 観 \n"), u"観");
  EXPECT_EQ(SpaceTrim(u"観 　 \u3000経  法"), u"観 経 法");
  EXPECT_EQ(SpaceTrim(u"観\t経"), u"観\t経");
  EXPECT_EQ(SpaceTrim(u""), u"");
  EXPECT_EQ(SpaceTrim(u"   "), u"");
}

TEST(SpaceTrim, IdeographicSpacesAtTheEndsSurviveAsOneBlank) {
  EXPECT_EQ(SpaceTrim(u"　　　"), u" ");
  EXPECT_EQ(SpaceTrim(u"　観　"), u" 観 ");
  EXPECT_EQ(SpaceTrim(u" 　観"), u" 観");
  EXPECT_EQ(SpaceTrim(u"　 観"), u" 観");
}

TEST(SortSw, ExchangesByFallingLength) {
  std::vector<std::u16string> words = {u"a", u"bb", u"c", u"dd"};
  SortSw(words);
  EXPECT_EQ(words, (std::vector<std::u16string>{u"bb", u"dd", u"c", u"a"}));
  words = {u"x", u"y", u"zzz", u"w"};
  SortSw(words);  // a stable sort would keep x before y
  EXPECT_EQ(words, (std::vector<std::u16string>{u"zzz", u"y", u"x", u"w"}));
  words = {};
  SortSw(words);
  EXPECT_TRUE(words.empty());
  words = {u"", u"観経"};
  SortSw(words);
  EXPECT_EQ(words, (std::vector<std::u16string>{u"観経", u""}));
}

}  // namespace
}  // namespace suizo::text
