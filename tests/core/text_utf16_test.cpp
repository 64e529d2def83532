#include "core/text/utf16.h"

#include <gtest/gtest.h>

namespace suizo::text {
namespace {

TEST(Utf16, ReplaceAllGoesLeftToRightWithoutOverlap) {
  EXPECT_EQ(ReplaceAll(u"aaaa", u"aa", u"b"), u"bb");
  EXPECT_EQ(ReplaceAll(u"aaa", u"aa", u"b"), u"ba");
  EXPECT_EQ(ReplaceAll(u"新加新加", u"新加", u"番号新加"), u"番号新加番号新加");
  EXPECT_EQ(ReplaceAll(u"abc", u"", u"x"), u"abc");
  EXPECT_EQ(ReplaceAll(u"", u"a", u"x"), u"");
}

TEST(Utf16, TrimSpaceTakesOnlyTheAsciiBlank) {
  EXPECT_EQ(TrimSpace(u"  法華  "), u"法華");
  EXPECT_EQ(TrimSpace(u"\u3000法華\u3000"), u"\u3000法華\u3000");
  EXPECT_EQ(TrimSpace(u"\t法華 "), u"\t法華");
  EXPECT_EQ(TrimSpace(u"   "), u"");
  EXPECT_EQ(TrimSpace(u""), u"");
}

TEST(Utf16, SplitKeepsEmptyPartsButAnEmptyTextHasNone) {
  EXPECT_TRUE(Split(u"", u",").empty());
  const auto parts = Split(u"a,,b,", u",");
  ASSERT_EQ(parts.size(), 4u);
  EXPECT_EQ(parts[0], u"a");
  EXPECT_EQ(parts[1], u"");
  EXPECT_EQ(parts[2], u"b");
  EXPECT_EQ(parts[3], u"");
  EXPECT_EQ(Split(u"一二", u",").size(), 1u);
}

TEST(Utf16, Utf8ConversionKeepsPrivateUseAndMarksBrokenInput) {
  const std::u16string text = u"翠蔵\uE000ｼｽﾃﾑ";
  EXPECT_EQ(FromUtf8(ToUtf8(text)), text);
  EXPECT_EQ(ToUtf8(std::u16string(1, char16_t(0xD800))), "\xEF\xBF\xBD");
  EXPECT_EQ(FromUtf8("a\xFF"), u"a\uFFFD");
}

TEST(Utf16, IntText) {
  EXPECT_EQ(IntText(0), u"0");
  EXPECT_EQ(IntText(-14611), u"-14611");
}

}  // namespace
}  // namespace suizo::text
