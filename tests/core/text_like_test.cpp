#include "core/text/like.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <string>

#include "core/text/utf16.h"

namespace suizo::text {
namespace {

using Texts = std::initializer_list<std::u16string_view>;

// Each text of `yes` matches the pattern and none of `no`, both through the
// operator and through one compiled pattern reused for all of them.
void ExpectLike(std::u16string_view pattern, Texts yes, Texts no) {
  const LikePattern compiled(pattern);
  for (auto text : yes) {
    EXPECT_TRUE(Like(text, pattern)) << ToUtf8(text) << " Like " << ToUtf8(pattern);
    EXPECT_TRUE(compiled.Matches(text)) << ToUtf8(text) << " Like " << ToUtf8(pattern);
  }
  for (auto text : no) {
    EXPECT_FALSE(Like(text, pattern)) << ToUtf8(text) << " Like " << ToUtf8(pattern);
    EXPECT_FALSE(compiled.Matches(text)) << ToUtf8(text) << " Like " << ToUtf8(pattern);
  }
}

TEST(Like, ContinuationHeadWordsOfTheDictionary) {
  ExpectLike(u"*([つづ]づき*)*",
             {u"法華(つづき)", u"法華(づづき２)", u"(つづき)", u"法華(つづき)経"},
             {u"法華続き", u"法華(すづき)", u"法華（つづき）", u"法華(つづき"});
}

TEST(Like, RecipientAndDictionaryTestsFindAMemberAnywhere) {
  ExpectLike(u"*[女尼]*", {u"尼御前", u"妙一女", u"富木殿\r\n及び女房"}, {u"富木常忍", u""});
  ExpectLike(u"*[及並]*", {u"四条金吾並妻"}, {u"四条金吾"});
  ExpectLike(u"*すべ[かきし]*", {u"これをすべからく", u"すべし"}, {u"すべて", u"すべ"});
  ExpectLike(u"*[\uE256那]*", {u"\uE256梨", u"那梨"}, {u"梨"});  // private use
}

TEST(Like, StarAndQuestionMarkSpanLineEnds) {
  ExpectLike(u"一行*二行", {u"一行\r\n二行", u"一行二行"}, {u"一行\r\n二行\r\n"});
  ExpectLike(u"一?二", {u"一\n二", u"一〇二"}, {u"一\r\n二", u"一二"});
  ExpectLike(u"??", {u"\r\n", u"かな"}, {u"か", u"かなた"});
}

TEST(Like, NumberSignIsOneAsciiDigit) {
  ExpectLike(u"第#", {u"第3", u"第0"}, {u"第３", u"第12", u"第a", u"第"});
  ExpectLike(u"*#-#", {u"番号12-3"}, {u"番号12-３"});
}

TEST(Like, ListsWithRangesAndNegation) {
  ExpectLike(u"[a-c]", {u"a", u"b", u"c"}, {u"B", u"d", u"ab", u""});
  ExpectLike(u"[a-cx-z]", {u"x", u"c"}, {u"m"});
  ExpectLike(u"[!ぁ-ん]", {u"ア", u"a", u"\n"}, {u"か", u"ん", u"", u"アア"});
  ExpectLike(u"[!]]", {u"x"}, {u"]"});
  ExpectLike(u"[がぎぐげござじずぜぞだぢづでどばびぶべぼ]", {u"が", u"ぼ"}, {u"か", u"ぱ"});
}

TEST(Like, SignsThatArePlainWhereTheyStand) {
  ExpectLike(u"[*]", {u"*"}, {u"x", u""});
  ExpectLike(u"[[]", {u"["}, {u"x"});
  ExpectLike(u"[?#]", {u"?", u"#"}, {u"1", u"x"});
  ExpectLike(u"[]］〕]", {u"]", u"］", u"〕"}, {u"["});  // "]" first is a member
  ExpectLike(u"[a!]", {u"!", u"a"}, {u"b"});
  ExpectLike(u"a]!", {u"a]!"}, {u"a"});
  // A hyphen first or last is a member, not a range.
  ExpectLike(u"[－-]", {u"-", u"－"}, {u"．", u"."});
  ExpectLike(u"[-a]", {u"-", u"a"}, {u","});
  ExpectLike(u"[!-]", {u"a"}, {u"-"});
}

TEST(Like, EmptyPatternMatchesOnlyEmptyText) {
  ExpectLike(u"", {u""}, {u"a", u"\n"});
  ExpectLike(u"***", {u"", u"a"}, {});
  ExpectLike(u"?", {u"a"}, {u""});
}

TEST(Like, MalformedPatternsMatchNothing) {
  for (auto pattern : {u"[abc", u"*[", u"a*[!", u"[]", u"[!]", u"[z-a]", u"*[z-a]*"}) {
    EXPECT_FALSE(LikePattern(pattern).valid()) << ToUtf8(pattern);
    ExpectLike(pattern, {}, {u"", u"a", u"[abc", u"[", u"z", u"[]"});
  }
}

TEST(Like, StarBacktracksToTheLatestStar) {
  ExpectLike(u"*ab", {u"aab", u"ab"}, {u"aba"});
  ExpectLike(u"*a*b*c", {u"xxaxxbxxbxc", u"abc"}, {u"xxaxxcxxb"});
  ExpectLike(u"a*bc", {u"abcbc", u"abc"}, {u"abcb"});
  ExpectLike(u"*??", {u"いろ", u"いろは"}, {u"い"});
  // Many stars over a long text that almost matches: one restart point at a time.
  const std::u16string long_text(20000, u'a');
  ExpectLike(u"*a*a*a*a*a*b", {long_text + u"b"}, {long_text});
}

}  // namespace
}  // namespace suizo::text
