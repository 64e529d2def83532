#include <gtest/gtest.h>

#include "core/text/normal_forms.h"
#include "core/text/width.h"

namespace suizo::text {
namespace {

TEST(NormalForms, ReplaceBracketsAndHalfWidthPunctuation) {
  EXPECT_EQ(NormA(u"（注）｢法華｣｡､"), u"(注)「法華」。、");
  EXPECT_EQ(NormB(u"（注）｢法華｣｡､"), u"(注)「法華」。、");
}

TEST(NormalForms, OnlyNormANarrowsTheMiddleDot) {
  EXPECT_EQ(NormA(u"如是・我聞"), u"如是･我聞");
  EXPECT_EQ(NormB(u"如是・我聞"), u"如是・我聞");
}

TEST(NormalForms, LeaveEverythingElseAsItIs) {
  const std::u16string text = u"ａｂ()「」。、･\uE000 ＜試訳＞";
  EXPECT_EQ(NormA(text), text);
}

TEST(Narrow, MakesFullWidthSignsAndKatakanaHalfWidth) {
  EXPECT_EQ(Narrow(u"番号４－追Ⅳ"), u"番号4-追Ⅳ");
  EXPECT_EQ(Narrow(u"ＡＢｃ１２　（３）"), u"ABc12 (3)");
  EXPECT_EQ(Narrow(u"ガパー。「」、・"), u"ｶﾞﾊﾟｰ｡｢｣､･");
  EXPECT_EQ(Narrow(u"ひらがな翠蔵\uE000"), u"ひらがな翠蔵\uE000");
}

TEST(Narrow, YenAndOverlineBecomeTheirShiftJisSingleBytes) {
  EXPECT_EQ(Narrow(u"￥￣"), u"\\~");
}

}  // namespace
}  // namespace suizo::text
