#include "core/text/numbers.h"

#include <gtest/gtest.h>

namespace suizo::text {
namespace {

TEST(Val, ReadsTheLeadingNumberAndIgnoresTheRest) {
  EXPECT_DOUBLE_EQ(Val(u"12.5abc"), 12.5);
  EXPECT_DOUBLE_EQ(Val(u""), 0);
  EXPECT_DOUBLE_EQ(Val(u"abc"), 0);
  EXPECT_DOUBLE_EQ(Val(u"0012"), 12);
  EXPECT_DOUBLE_EQ(Val(u"-3.25"), -3.25);
  EXPECT_DOUBLE_EQ(Val(u".5"), 0.5);
  EXPECT_DOUBLE_EQ(Val(u"1.2.3"), 1.2);
  EXPECT_DOUBLE_EQ(Val(u"0.8.1"), 0.8);  // a version string
}

TEST(Val, PassesOverBlanksInsideTheNumber) {
  EXPECT_DOUBLE_EQ(Val(u"  1 2 3"), 123);
  EXPECT_DOUBLE_EQ(Val(u"\t4\n5"), 45);
}

TEST(Val, TakesAnExponentOnlyWhenDigitsFollow) {
  EXPECT_DOUBLE_EQ(Val(u"1e3"), 1000);
  EXPECT_DOUBLE_EQ(Val(u"2D2"), 200);
  EXPECT_DOUBLE_EQ(Val(u"1e"), 1);
  EXPECT_DOUBLE_EQ(Val(u"1ex"), 1);
  EXPECT_DOUBLE_EQ(Val(u"1e-1"), 0.1);
}

TEST(Val, FullWidthDigitsAreNotANumber) {
  EXPECT_DOUBLE_EQ(Val(u"１２"), 0);
}

TEST(Val, AsAWholeNumberIsCutTowardZeroAndBoundedWhateverTheDataHolds) {
  EXPECT_EQ(ValInt(u"12.9"), 12);
  EXPECT_EQ(ValInt(u"-12.9"), -12);
  EXPECT_EQ(ValInt(u"x"), 0);
  EXPECT_EQ(ValInt(u"10154101541015"), 1 << 30);
  EXPECT_EQ(ValInt(u"-1e300"), -(1 << 30));
  EXPECT_EQ(ValInt(u"1e999"), 1 << 30);  // beyond a double: infinity
  EXPECT_EQ(ValWhole(u"10154101541015"), 10154101541015);
  EXPECT_EQ(ValWhole(u"1e300"), std::int64_t{1} << 53);
}

TEST(ParseNumber, AcceptsOnlyAWholeDecimalNumber) {
  EXPECT_EQ(ParseNumber(u"0012.50"), 12.5);
  EXPECT_EQ(ParseNumber(u" 7 "), 7);
  EXPECT_EQ(ParseNumber(u"-.5"), -0.5);
  EXPECT_EQ(ParseNumber(u"1E+3"), 1000);
  EXPECT_FALSE(ParseNumber(u""));
  EXPECT_FALSE(ParseNumber(u"12a"));
  EXPECT_FALSE(ParseNumber(u"1 2"));
  EXPECT_FALSE(ParseNumber(u"."));
  EXPECT_FALSE(ParseNumber(u"1e"));
  EXPECT_FALSE(ParseNumber(u"-"));
}

TEST(ToInt, RoundsHalfToEvenAndRefusesWhatIsNoNumber) {
  EXPECT_EQ(ToInt(u"14611"), 14611);
  EXPECT_EQ(ToInt(u" 53 "), 53);
  EXPECT_EQ(ToInt(u"2.5"), 2);
  EXPECT_EQ(ToInt(u"3.5"), 4);
  EXPECT_EQ(ToInt(u"-2.5"), -2);
  EXPECT_FALSE(ToInt(u""));
  EXPECT_FALSE(ToInt(u"五"));
  EXPECT_FALSE(ToInt(u"12abc"));
  EXPECT_FALSE(ToInt(u"3000000000"));
}

TEST(Format, PadsAndRoundsTheSystemsFormats) {
  EXPECT_EQ(Format(12.5, kPageLineFormat), u"00012.50");
  EXPECT_EQ(Format(12.05, kPageLineBoxFormat), u"0012.05");
  EXPECT_EQ(Format(3.1, kStartPositionFormat), u"00003.100");
  EXPECT_EQ(Format(17, kRowNumberFormat), u"00017");
  EXPECT_EQ(Format(12.3, kShortPageFormat), u"12.30");
  EXPECT_EQ(Format(0.5, kShortPageFormat), u".50");
  EXPECT_EQ(Format(0.0, kShortPageFormat), u".00");
  EXPECT_EQ(Format(0.0, kPageLineFormat), u"00000.00");
}

TEST(Format, RoundsHalfAwayFromZeroOnFifteenDigits) {
  EXPECT_EQ(Format(2.5, kRowNumberFormat), u"00003");
  EXPECT_EQ(Format(3.5, kRowNumberFormat), u"00004");
  EXPECT_EQ(Format(1.005, "0.00"), u"1.01");  // 1.00499999... in binary
  EXPECT_EQ(Format(0.125, "0.00"), u"0.13");
  EXPECT_EQ(Format(9.999, "0.00"), u"10.00");
  EXPECT_EQ(Format(99999.996, kPageLineFormat), u"100000.00");
  EXPECT_EQ(Format(0.004, "0.00"), u"0.00");
}

TEST(Format, WritesALongerIntegerWholeAndKeepsTheSign) {
  EXPECT_EQ(Format(123456, kRowNumberFormat), u"123456");
  EXPECT_EQ(Format(-3.2, kPageLineFormat), u"-00003.20");
  EXPECT_EQ(Format(-0.001, "0.00"), u"0.00");
}

TEST(Format, TextThatIsNoNumberComesBackUnchanged) {
  EXPECT_EQ(Format(u"12.5", kPageLineFormat), u"00012.50");
  EXPECT_EQ(Format(u"", kPageLineFormat), u"");
  EXPECT_EQ(Format(u"付録", kPageLineFormat), u"付録");
}

TEST(Format, RefusesPatternsItDoesNotKnow) {
  EXPECT_THROW(Format(1.0, "0#.00"), std::invalid_argument);
  EXPECT_THROW(Format(1.0, "0.0#"), std::invalid_argument);
  EXPECT_THROW(Format(1.0, "yyyy"), std::invalid_argument);
}

TEST(NumberText, LosesLeadingAndTrailingZeros) {
  EXPECT_EQ(NumberText(*ParseNumber(u"0012.50")), u"12.5");
  EXPECT_EQ(NumberText(14611), u"14611");
  EXPECT_EQ(NumberText(-0.0), u"0");
  EXPECT_EQ(NumberText(0.1), u"0.1");
  EXPECT_EQ(NumberText(123456789012345.0), u"123456789012345");
  EXPECT_EQ(NumberText(1e15), u"1E+15");
}

}  // namespace
}  // namespace suizo::text
