#include "core/text/json.h"
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

// Every length around the eight-unit blocks, the unit at every place, and
// units that share a byte with the one sought.
TEST(Utf16, FindUnitFindsTheFirstAtAnyPlace) {
  for (std::size_t n = 0; n <= 33; ++n) {
    std::u16string text(n, u'\u25C7');  // shares the high byte of the mark
    EXPECT_EQ(FindUnit(text, u'◆'), std::u16string_view::npos) << n;
    for (std::size_t at = 0; at < n; ++at) {
      std::u16string marked = text;
      marked[at] = u'◆';
      if (at + 3 < n) marked[at + 3] = u'◆';
      EXPECT_EQ(FindUnit(marked, u'◆'), at) << n << " " << at;
    }
  }
  EXPECT_EQ(FindUnit(u"\uC625\u26C6", u'◆'), std::u16string_view::npos);
  // A view into a longer text ends where it ends.
  const std::u16string_view cut = std::u16string_view(u"abcdefghijklmnop◆").substr(0, 16);
  EXPECT_FALSE(ContainsUnit(cut, u'◆'));
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

namespace suizo::text {
namespace {

// Every class of code unit, alone and beside others: what comes out is a
// JSON literal that gives back exactly the units that went in.
TEST(JsonString, HoldsEveryCodeUnitExactly) {
  struct Case {
    std::u16string in;
    std::string out;
  };
  const Case cases[] = {
      {u"", "\"\""},
      {u"abc", "\"abc\""},
      {u"\"\\/", "\"\\\"\\\\/\""},
      {u"\n\r\t", "\"\\u000a\\u000d\\u0009\""},
      {std::u16string(1, u'\0') + u"\x1f\x7f", "\"\\u0000\\u001f\x7f\""},
      {u"\u00e9\u6cd5\uE256\uFFFF", "\"\xC3\xA9\xE6\xB3\x95\xEE\x89\x96\xEF\xBF\xBF\""},
      {u"\u2028\u2029", "\"\\u2028\\u2029\""},
      {u"\U0002000B", "\"\xF0\xA0\x80\x8B\""},  // a pair
      {u"a\xD840", "\"a\\ud840\""},             // a high half at the end
      {u"\xDC0B"
       u"b",
       "\"\\udc0bb\""},                         // a low half alone
      {u"\xDC0B\xD840", "\"\\udc0b\\ud840\""},  // halves the wrong way round
      {u"\xD840\xD840\xDC0B", "\"\\ud840\xF0\xA0\x80\x8B\""},
      {u"</script><!--", "\"</script><!--\""},
  };
  for (const Case& c : cases) EXPECT_EQ(JsonString(c.in), c.out) << ToUtf8(c.in);
}

}  // namespace
}  // namespace suizo::text
