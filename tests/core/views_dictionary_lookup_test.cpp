#include "core/views/dictionary_lookup.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "core/corpus/schema.h"
#include "core/text/utf16.h"
#include "test_support.h"

namespace suizo::views {
namespace {

namespace dic = corpus::dic;
using dic_rules::RuleKind;
using dic_rules::WordRule;

constexpr int kNote = 9;  // 備考

std::string U8(std::u16string_view s) {
  return text::ToUtf8(s);
}

// The sample's dictionary, loaded fresh for each test.
class DictionaryLookupTest : public ::testing::Test {
 protected:
  DictionaryLookupTest() : c(testing::SampleStore()) { c.ReadData(1); }

  // The row of the entry with this head word.
  int Row(std::u16string_view head) const {
    for (int m = 1; m <= c.DisMaxY; ++m) {
      const int row = c.DicOrder[static_cast<std::size_t>(m)];
      if (c.Dic().Get(row, dic::kHeadWord) == head) return row;
    }
    ADD_FAILURE() << "no entry " << U8(head);
    return 1;
  }
  std::u16string HeadAt(int dpos) const {
    return std::u16string(c.Dic().Get(c.DicOrder[static_cast<std::size_t>(dpos)], dic::kHeadWord));
  }
  std::vector<std::u16string> Hits(const DicLookupResult& r) const {
    std::vector<std::u16string> heads;
    for (int h = 1; h <= r.Srn; ++h) heads.push_back(HeadAt(r.Sr[static_cast<std::size_t>(h)]));
    return heads;
  }
  bool Shows(const DicLookupResult& r, std::u16string_view head) const {
    const auto hits = Hits(r);
    return std::find(hits.begin(), hits.end(), head) != hits.end();
  }
  std::u16string Chosen(const DicLookupResult& r) const {
    return r.SrnPos == 0 ? u"" : HeadAt(r.Dpos());
  }
  DicLookupResult Look(std::u16string_view w, int target = kDicTargetHeadword) const {
    return DictionaryLookup(c, 1).KensakuDic(w, target);
  }

  corpus::Corpus c;
};

// ---- passing over entries ----

TEST_F(DictionaryLookupTest, PassingOverEntriesThatCannotBeHitsChangesNoResult) {
  // Head words and readings inside longer text, pieces of explanations,
  // words with brackets and two words.
  std::vector<std::u16string> selections = {u"法華経を", u"(法華)経を", u"しほ",
                                            u"かひ",     u"法 経",      u"御(書)"};
  for (int m = 1; m <= c.DisMaxY; m += 2) {
    const int row = c.DicOrder[static_cast<std::size_t>(m)];
    selections.push_back(std::u16string(c.Dic().Get(row, dic::kHeadWord)) + u"を");
    selections.push_back(u"の" + std::u16string(c.Dic().Get(row, dic::kReading)));
    const std::u16string_view explanation = c.Dic().Get(row, dic::kExplanation);
    if (explanation.size() > 8) selections.emplace_back(explanation.substr(2, 6));
  }
  const DictionaryLookup filtered(c, 1);
  DictionaryLookup every(c, 1);
  every.filterEntries = false;
  int hits = 0;
  for (const std::u16string& s : selections) {
    const DicLookupResult a = filtered.KensakuDic(s, kDicTargetHeadword);
    const DicLookupResult b = every.KensakuDic(s, kDicTargetHeadword);
    EXPECT_EQ(a.Sr, b.Sr) << U8(s);
    EXPECT_EQ(a.SrnPos, b.SrnPos) << U8(s);
    EXPECT_EQ(a.log, b.log) << U8(s);
    hits += a.Srn;
  }
  EXPECT_GT(hits, 200);  // the selections do find entries
}

// ---- the ranking ----

TEST_F(DictionaryLookupTest, ASelectionLongerThanAnyEntryFindsTheEntryItHolds) {
  // No entry is as long as 法華経を: the head word's pattern found in the
  // selection makes the hit, and the longest such head word is the choice.
  const auto r = Look(u"法華経を");
  EXPECT_EQ(Chosen(r), u"法華経");
  EXPECT_EQ(r.Swn, 1);
  // The single characters it holds are hits the longer one throws out.
  EXPECT_FALSE(Shows(r, u"経"));
  EXPECT_FALSE(Shows(r, u"法"));
  // Alone, the character is kept.
  EXPECT_EQ(Chosen(Look(u"経を")), u"経");
}

TEST_F(DictionaryLookupTest, TheLongestEntryInTheSelectionWins) {
  EXPECT_EQ(Chosen(Look(u"妙法蓮華経を")), u"妙法蓮華経");
  // A reading held whole, over a pattern found only in the text after it.
  EXPECT_EQ(Chosen(Look(u"たにかぜの")), u"たにかぜ");
  // The head word's pattern without its classes reaches further: 香五戒 by
  // its 香, over 経 found whole.
  EXPECT_EQ(Chosen(Look(u"經を香伍")), u"香五戒");
  // Of two as long, the later in reading order...
  EXPECT_EQ(Chosen(Look(u"伊荳伊餘を")), u"伊予");
  // ...unless the earlier stands in the selection as written.
  EXPECT_EQ(Chosen(Look(u"伊豆伊予を")), u"伊豆");
}

TEST_F(DictionaryLookupTest, TheMarksRankFromGoodToBestKoumoku) {
  // A head word that begins with W over one that only holds it.
  EXPECT_EQ(Chosen(Look(u"わる")), u"はるあさいそ");
  // A reading equal to W over a head word that begins with it.
  EXPECT_EQ(Chosen(Look(u"はじ")), u"恥");
  // A reading that begins with W or O over a reading that holds it.
  c.Dic().Set(Row(u"教化"), dic::kReading, u"ごしゅじょう");
  EXPECT_EQ(Chosen(Look(u"しゅじ")), u"衆生");
  EXPECT_EQ(Chosen(Look(u"しゅじ(x)")), u"衆生");
  // A reading equal to O, where the bracket splits it in W, over a head word
  // that begins with O.
  c.Dic().Set(Row(u"経信理"), dic::kHeadWord, u"しゅじょうき");
  EXPECT_EQ(Chosen(Look(u"しゅ(x)じょう")), u"衆生");
  // A head word as long as O over one that begins with O.
  EXPECT_EQ(Chosen(Look(u"法華(経)")), u"法華");
  // A head word that begins with O over an earlier one that holds it.
  const int row = Row(u"教化");
  c.Dic().Set(row, dic::kHeadWord, u"御香五");
  c.Dic().Set(row, dic::kLookupKey, u"御香五");
  EXPECT_EQ(Chosen(Look(u"香(x)五")), u"香五戒");
}

TEST_F(DictionaryLookupTest, AHeadWordWrittenInTheSelectionOutranksALongerReadingInIt) {
  // Three entries in reading order: two head words written in the selection,
  // the second longer, then a reading longer than both.
  corpus::Table& d = c.Dic();
  for (const auto& [entry, head] : {std::pair{u"教化", u"甲乙"}, std::pair{u"経信理", u"甲乙丙"}}) {
    const int row = Row(entry);
    d.Set(row, dic::kHeadWord, head);
    d.Set(row, dic::kLookupKey, head);
  }
  d.Set(Row(u"経事香"), dic::kReading, u"かきけこ");
  const auto r = Look(u"甲乙丙かきけこ");
  EXPECT_EQ(Hits(r), (std::vector<std::u16string>{u"甲乙", u"甲乙丙", u"経事香"}));
  // The reading takes the lowest mark; the longer written head word took the
  // next from the shorter one.
  EXPECT_EQ(Chosen(r), u"甲乙丙");
}

TEST_F(DictionaryLookupTest, AnExactHeadWordBeatsAnEarlierPrefixMatch) {
  const auto r = Look(u"法華");
  const auto hits = Hits(r);
  const auto prefix = std::find(hits.begin(), hits.end(), u"法華経");
  const auto exact = std::find(hits.begin(), hits.end(), u"法華");
  ASSERT_NE(prefix, hits.end());
  ASSERT_NE(exact, hits.end());
  EXPECT_LT(prefix, exact);  // ほけきょう stands before ほっけ
  EXPECT_EQ(Chosen(r), u"法華");
  // The exact reading ranks the same way.
  EXPECT_EQ(Chosen(Look(u"ほっけ")), u"法華");
  EXPECT_EQ(Chosen(Look(u"ほけ")), u"法華経");
}

TEST_F(DictionaryLookupTest, BracketedPartsOfTheSelectionAreTriedWithout) {
  // O is たにかぜ: the longer entry it begins is found, which W alone cannot
  // find, and the entry O equals is the choice. "（" counts as "(".
  for (const std::u16string_view w : {u"たにかぜ（つゆ）", u"たにかぜ(つゆ)"}) {
    const auto r = Look(w);
    EXPECT_TRUE(Shows(r, u"たにかぜつゆ")) << U8(w);
    EXPECT_EQ(Chosen(r), u"たにかぜ") << U8(w);
  }
  EXPECT_EQ(Chosen(Look(u"ほけ(法華経)")), u"法華経");
  // A head word that only the selection without its brackets holds.
  EXPECT_EQ(Chosen(Look(u"供(ぐ)養を")), u"供養");
}

TEST_F(DictionaryLookupTest, TwoWordsSetOnlyGoodAndBetter) {
  // An entry whose head word equals the two words: with one word it would be
  // the best mark; with two, the first hit by head word stands.
  c.Dic().Set(Row(u"本本華"), dic::kHeadWord, u"法 華");
  const auto r = Look(u"法 華");
  EXPECT_EQ(r.Swn, 2);
  EXPECT_EQ(r.Sw.size(), 2u);
  EXPECT_EQ(Hits(r), (std::vector<std::u16string>{u"法華経", u"法 華", u"妙法蓮華経"}));
  EXPECT_EQ(Chosen(r), u"法華経");
  // Nor is the entry looked for within the words.
  EXPECT_EQ(Look(u"法華経を 法華経を").Srn, 0);
}

TEST_F(DictionaryLookupTest, HitsRemovedBeforeTheChoiceMoveItDown) {
  // かい, 甲斐, 戒教, 解題, かう, かひ, ... are found by reading, and かひ, the
  // sixth, is chosen. かい and 甲斐 before it go, ひら and ゐ after it go.
  const auto r = Look(u"かひ");
  EXPECT_EQ(Hits(r), (std::vector<std::u16string>{u"戒教", u"解題", u"かう", u"かひ", u"果坊戒",
                                                  u"香五戒", u"三大信戒", u"身施戒", u"善国法戒"}));
  EXPECT_EQ(r.SrnPos, 4);
  EXPECT_EQ(Chosen(r), u"かひ");
}

TEST_F(DictionaryLookupTest, AChoiceThatIsRemovedPassesToTheNextHit) {
  // Without the word rules かい is chosen for かひなし; its row throws it out,
  // and the hit after it takes its place.
  const std::vector<WordRule> noRules;
  const DictionaryLookup generalOnly(c, 1, noRules);
  auto before = generalOnly.KensakuDic(u"かひなし", 0);
  EXPECT_EQ(Hits(before),
            (std::vector<std::u16string>{u"かい", u"かう", u"かひ", u"しう", u"しほ", u"しゐ"}));
  EXPECT_EQ(Chosen(before), u"かい");
  auto after = Look(u"かひなし");
  EXPECT_EQ(Hits(after), (std::vector<std::u16string>{u"かう", u"しう", u"しほ"}));
  EXPECT_EQ(after.SrnPos, 1);
  // When the chosen one was the last, the new last takes its place.
  before = generalOnly.KensakuDic(u"へいし", 0);
  EXPECT_EQ(Chosen(before), u"ゑい");
  EXPECT_EQ(before.SrnPos, before.Srn);
  after = Look(u"へいし");
  EXPECT_EQ(Hits(after), (std::vector<std::u16string>{u"しう", u"しほ", u"へい"}));
  EXPECT_EQ(after.SrnPos, 3);
  // With every hit thrown out nothing is chosen.
  after = Look(u"もやう");
  EXPECT_EQ(after.Srn, 0);
  EXPECT_EQ(after.SrnPos, 0);
  EXPECT_EQ(after.Dpos(), 0);
}

TEST_F(DictionaryLookupTest, TheExplanationSearchTakesEveryHitAndTheFirst) {
  // かひ's explanation names 甲斐; the headword lookup would throw かひ out.
  const auto r = Look(u"甲斐", kDicTargetExplanation);
  EXPECT_TRUE(Shows(r, u"かひ"));
  EXPECT_EQ(r.SrnPos, 1);
  // Hits stand in reading order.
  for (int h = 2; h <= r.Srn; ++h) {
    const auto yomi = [&](int k) {
      return std::find(c.DicYomi.begin() + 1, c.DicYomi.end(), r.Sr[static_cast<std::size_t>(k)]);
    };
    EXPECT_LT(yomi(h - 1), yomi(h));
  }
  EXPECT_FALSE(Shows(Look(u"甲斐"), u"かひ"));
}

TEST_F(DictionaryLookupTest, NothingToLookUpFindsNothing) {
  for (const std::u16string_view w : {u"", u"   ", u"　", u"\r\n"}) {
    const auto r = Look(w);
    EXPECT_EQ(r.Srn, 0) << U8(w);
    EXPECT_EQ(r.SrnPos, 0) << U8(w);
    EXPECT_EQ(r.Sr.size(), 1u) << U8(w);
  }
  // Signs a user types are characters, never operators.
  for (const std::u16string_view w : {u"(", u"[", u"*", u"\\", u"法華経(", u"ほ)け"}) {
    const auto r = Look(w);
    EXPECT_LE(r.SrnPos, r.Srn) << U8(w);
  }
}

TEST_F(DictionaryLookupTest, AKeyThatDoesNotCompileNeverMatches) {
  c.Dic().Set(Row(u"法華経"), dic::kLookupKey, u"法[華");
  const auto r = Look(u"法華経を");
  EXPECT_FALSE(Shows(r, u"法華経"));
  EXPECT_TRUE(std::any_of(r.log.begin(), r.log.end(), [](const std::u16string& line) {
    return line.find(u"法[華") != std::u16string::npos;
  }));
  // A kept pattern follows the cell when it changes.
  DictionaryLookup lookup(c, 1);
  EXPECT_FALSE(Shows(lookup.KensakuDic(u"法華経を", 0), u"法華経"));
  c.Dic().Set(Row(u"法華経"), dic::kLookupKey, u"法[華花][経經]");
  EXPECT_EQ(Chosen(lookup.KensakuDic(u"法華経を", 0)), u"法華経");
}

TEST_F(DictionaryLookupTest, OrdersThatOutrunTheTableAreWalkedNoFurther) {
  c.DisMaxY += 5;  // beyond the order vectors
  c.DicOrder[3] = 999999;
  EXPECT_EQ(Chosen(Look(u"法華経を")), u"法華経");
}

// ---- the general rules ----

TEST_F(DictionaryLookupTest, ASingleCharacterGoesWhenALongerHitHoldsIt) {
  EXPECT_FALSE(Shows(Look(u"法華経を"), u"経"));
  // ... or when its note ties it to a single character the selection lacks.
  EXPECT_TRUE(Shows(Look(u"佛像"), u"仏"));
  c.Dic().Set(Row(u"仏"), kNote, u"仏");
  EXPECT_FALSE(Shows(Look(u"佛像"), u"仏"));
  EXPECT_TRUE(Shows(Look(u"仏像"), u"仏"));
}

TEST_F(DictionaryLookupTest, AThreeKanaReadingInsideTheSelectionIsNoHit) {
  EXPECT_FALSE(Shows(Look(u"けさんぞ"), u"仮山"));
  EXPECT_TRUE(Shows(Look(u"仮山"), u"仮山"));
}

TEST_F(DictionaryLookupTest, ATwoKanaReadingNeedsTheKeyOutsideItsBrackets) {
  EXPECT_FALSE(Shows(Look(u"あわせ"), u"安房"));
  EXPECT_TRUE(Shows(Look(u"安房の"), u"安房"));
}

TEST_F(DictionaryLookupTest, AOneCharacterReadingNeedsTheHeadWord) {
  // Y equal to C.
  EXPECT_FALSE(Shows(Look(u"ゐの"), u"ゐ"));
  EXPECT_TRUE(Shows(Look(u"ゐ"), u"ゐ"));
  // C not in W.
  EXPECT_FALSE(Shows(Look(u"ちの"), u"痴"));
  EXPECT_TRUE(Shows(Look(u"痴の"), u"痴"));
}

TEST_F(DictionaryLookupTest, AKanaCrossReferenceNeedsItsOwnWord) {
  EXPECT_FALSE(Shows(Look(u"御けさ"), u"けさ"));
  EXPECT_TRUE(Shows(Look(u"けさ"), u"けさ"));
  // The entry it points to is kept by its own rule.
  EXPECT_TRUE(Shows(Look(u"御けさ"), u"袈裟"));
}

// ---- the word rules ----

// A selection W, an entry by head word, and whether the entry is among the
// hits left; `key` names the rows the case is for.
struct RuleCase {
  std::u16string_view key;
  std::u16string_view w;
  std::u16string_view entry;
  bool shown;
};

// clang-format off
constexpr RuleCase kRuleCases[] = {
    // Rejected unless W is the key.
    {u"かひ", u"かひなし", u"かひ", false}, {u"かひ", u"かひ", u"かひ", true},
    {u"もや", u"もやう", u"もや", false}, {u"もや", u"もや", u"もや", true},
    {u"ひけん", u"比肩", u"比肩", false}, {u"ひけん", u"ひけん", u"比肩", true},
    {u"いけん", u"意見", u"意見", false}, {u"いけん", u"いけん", u"意見", true},
    {u"なんと", u"南都", u"南都", false}, {u"なんと", u"なんと", u"南都", true},
    // Needs, by expression.
    {u"あら", u"あらし", u"あら", false}, {u"あら", u"あら不思議", u"あら", true},
    {u"ばし", u"よばし", u"ばし", false}, {u"ばし", u"にばしも", u"ばし", true},
    {u"ひら", u"ひらく", u"ひら", false}, {u"ひら", u"ひら信", u"ひら", true},
    {u"をこ", u"をこと", u"をこ", false}, {u"をこ", u"痴をこ", u"をこ", true},
    {u"がう", u"がうら", u"がう", false}, {u"がう", u"がうなり", u"がう", true},
    {u"しゐ", u"しゐの", u"しゐ", false}, {u"しゐ", u"めしい", u"しゐ", true},
    {u"しゐ", u"しい", u"しゐ", true},
    {u"をとど", u"をとどの", u"をとど", false}, {u"をとど", u"大臣をとど", u"をとど", true},
    {u"はわ", u"はわく", u"はわ", false}, {u"はわ", u"ははに", u"はわ", true},
    {u"はわ", u"はは", u"はわ", true},
    {u"きう", u"きうり", u"きう", false}, {u"きう", u"きうに", u"きう", true},
    // Needs, by plain word.
    {u"わせ", u"わせる", u"わせ", false}, {u"わせ", u"早稲わせ", u"わせ", true},
    {u"はぬ", u"はぬる", u"はぬ", false}, {u"はぬ", u"頸はぬ", u"はぬ", true},
    {u"をと", u"をとこ", u"をと", false}, {u"をと", u"弟をと", u"をと", true},
    {u"ひつ", u"ひつじ", u"ひつ", false}, {u"ひつ", u"櫃ひつ", u"ひつ", true},
    {u"おひて", u"おひては", u"おひて", false}, {u"おひて", u"追風おひて", u"おひて", true},
    {u"はし", u"はしる", u"はし", false}, {u"はし", u"梯はし", u"はし", true},
    {u"ふな", u"ふなで", u"ふな", false}, {u"ふな", u"鮒ふな", u"ふな", true},
    {u"はぢ", u"はぢを", u"はぢ", false}, {u"はぢ", u"恥はぢ", u"はぢ", true},
    {u"はぢ", u"はじ", u"はぢ", true},
    {u"うて", u"うてな", u"うて", false}, {u"うて", u"討手うて", u"うて", true},
    {u"ほた", u"ほたる", u"ほた", false}, {u"ほた", u"保田ほた", u"ほた", true},
    {u"かい", u"かいな", u"かい", false}, {u"かい", u"粥かい", u"かい", true},
    {u"ごとく", u"ごと", u"五徳", false}, {u"ごとく", u"五徳", u"五徳", true},
    {u"しめん", u"しめ", u"四面", false}, {u"しめん", u"四面", u"四面", true},
    {u"むかん", u"むか", u"無官", false}, {u"むかん", u"無官", u"無官", true},
    {u"むかん", u"無鹹", u"無鹹", true},
    {u"ひる", u"ひるね", u"ひる", false}, {u"ひる", u"にらひる", u"ひる", true},
    {u"いと", u"ひと", u"いと", false}, {u"いと", u"いとど", u"いと", true},
    {u"いを", u"いをり", u"いを", false}, {u"いを", u"魚いを", u"いを", true},
    {u"ゑい", u"へい", u"ゑい", false}, {u"ゑい", u"えい", u"ゑい", true},
    {u"ゑい", u"ゑいゑい", u"ゑい", true},
    {u"さえ", u"さえぎる", u"さえ", false}, {u"さえ", u"障さえ", u"さえ", true},
    {u"たて", u"たてる", u"たて", false}, {u"たて", u"館たて", u"たて", true},
    {u"ゑん", u"へん", u"ゑん", false}, {u"ゑん", u"えん", u"ゑん", true},
    {u"ゑん", u"縁ゑん", u"ゑん", true},
    {u"いよ", u"いよいよ", u"いよ", false}, {u"いよ", u"伊予いよ", u"いよ", true},
    {u"はと", u"はとり", u"はと", false}, {u"はと", u"はとわらひ", u"はと", true},
    {u"むこ", u"むこう", u"むこ", false}, {u"むこ", u"蒙古むこ", u"むこ", true},
    {u"ばく", u"ばくち", u"ばく", false}, {u"ばく", u"獏ばく", u"ばく", true},
    {u"すす", u"すすむ", u"すす", false}, {u"すす", u"すすれ", u"すす", true},
    {u"ほれ", u"ほれる", u"ほれ", false}, {u"ほれ", u"とほれ", u"ほれ", true},
    {u"げしき", u"げし", u"外色", false}, {u"げしき", u"外色", u"外色", true},
    {u"たりき", u"たり", u"他力", false}, {u"たりき", u"他力", u"他力", true},
    {u"とき", u"ときに", u"とき", false}, {u"とき", u"斎とき", u"とき", true},
    {u"あか", u"あかし", u"あか", false}, {u"あか", u"あか入", u"あか", true},
    {u"つと", u"つとめ", u"つと", false}, {u"つと", u"つとに", u"つと", true},
    {u"つと", u"一つと", u"つと", true},
    {u"となり", u"とな", u"\uE256那梨", false}, {u"となり", u"\uE256那梨", u"\uE256那梨", true},
    {u"あう", u"あうん", u"あう", false}, {u"あう", u"阿\uE298あう", u"あう", true},
    {u"さる", u"さるく", u"さる", false}, {u"さる", u"さるほど", u"さる", true},
    {u"さる", u"まさるさるほど", u"さる", false},
    // Drop.
    {u"かう", u"むかう", u"かう", false}, {u"かう", u"かうして", u"かう", true},
    {u"やしき", u"屋敷よしき", u"屋敷", false}, {u"やしき", u"屋敷", u"屋敷", true},
    {u"しる", u"汁をそしる", u"汁", false}, {u"しる", u"汁を", u"汁", true},
    {u"とわり", u"ことわり", u"とわり", false}, {u"とわり", u"とわりの", u"とわり", true},
    {u"しけん", u"験しけん", u"験", false}, {u"しけん", u"験", u"験", true},
    {u"かんが", u"鑑かんが", u"鑑", false}, {u"かんが", u"鑑", u"鑑", true},
    {u"いを", u"いをの", u"いを", false},
    {u"しめ", u"のしめ", u"しめ", false}, {u"しめ", u"しめて", u"しめ", true},
    {u"しゐ", u"たましゐ", u"しゐ", false}, {u"しゐ", u"めしいのたましゐ", u"しゐ", false},
    {u"しう", u"にがしう", u"しう", false}, {u"しう", u"しうとめ", u"しう", false},
    {u"しう", u"はにしう", u"しう", false}, {u"しう", u"のしうにしう", u"しう", true},
    {u"しう", u"しうの", u"しう", true},
    {u"すべ", u"にすべ", u"すべ", false}, {u"すべ", u"すべき", u"すべ", false},
    {u"すべ", u"すべて", u"すべ", true},
    {u"のうえ", u"野上のうへ", u"野上", false}, {u"のうえ", u"野上", u"野上", true},
    // Keep: a general rule throws each of these out; the context takes it back.
    {u"をや", u"親をや", u"をや", true}, {u"をや", u"をやま", u"をや", false},
    {u"とが", u"とがめ", u"とが", true}, {u"とが", u"とがり", u"とが", false},
    {u"藍", u"あいの", u"藍", true}, {u"藍", u"あいに", u"藍", false},
    {u"桶", u"一をけ", u"桶", true}, {u"桶", u"をけや", u"桶", false},
    {u"雁", u"かりの", u"雁", true}, {u"雁", u"しかりの", u"雁", false},
    {u"雉", u"きじの", u"雉", true}, {u"雉", u"き", u"雉", false},
    {u"君", u"きみの", u"君", true}, {u"君", u"きみが", u"君", false},
    {u"ぐし", u"ぐしての", u"ぐし", true}, {u"ぐし", u"ぐ", u"ぐし", false},
    {u"袈裟", u"御けさ", u"袈裟", true}, {u"袈裟", u"けさの", u"袈裟", false},
    {u"現", u"げんに", u"現", true}, {u"現", u"ざんげんに", u"現", false},
    {u"功", u"こうを", u"功", true}, {u"功", u"こうの", u"功", false},
    {u"佐渡", u"さどの", u"佐渡", true}, {u"佐渡", u"さどに", u"佐渡", false},
    {u"さば", u"さばの", u"さば", true}, {u"さば", u"さばく", u"さば", false},
    {u"しほ", u"しほを", u"しほ", true}, {u"しほ", u"しほり", u"しほ", false},
    {u"すえ", u"のすえ", u"すえ", true}, {u"すえ", u"すえて", u"すえ", false},
    {u"酸", u"すき物", u"酸", true}, {u"酸", u"すきま", u"酸", false},
    {u"すず", u"すずの", u"すず", true}, {u"すず", u"すずめ", u"すず", false},
    {u"すみ", u"すみを", u"すみ", true}, {u"すみ", u"ぬすみ", u"すみ", false},
    {u"せき", u"にせき", u"せき", true}, {u"せき", u"せきの", u"せき", false},
    {u"そつ", u"そつ等", u"そつ", true}, {u"そつ", u"そつの", u"そつ", false},
    {u"側", u"そばだつ", u"側", true}, {u"側", u"そばに", u"側", false},
    {u"鷹", u"たかに", u"鷹", true}, {u"鷹", u"たかの", u"鷹", false},
    {u"筒", u"一つつ", u"筒", true}, {u"筒", u"つつむ", u"筒", false},
    {u"露", u"つゆの", u"露", true}, {u"露", u"つゆへ", u"露", false},
    {u"でう", u"るでう", u"でう", true}, {u"でう", u"でうの", u"でう", false},
    {u"との", u"とのを", u"との", true}, {u"との", u"とのをり", u"との", false},
    {u"鴟", u"とびの", u"鴟", true}, {u"鴟", u"とびに", u"鴟", false},
    {u"どの", u"どのよう", u"どの", true}, {u"どの", u"ほどの", u"どの", false},
    {u"針", u"はりの", u"針", true}, {u"針", u"はりに", u"針", false},
    {u"稗", u"ひえの", u"稗", true}, {u"稗", u"ひえに", u"稗", false},
    {u"富士", u"ふじの", u"富士", true}, {u"富士", u"ふじに", u"富士", false},
    {u"ふみ", u"ふみて", u"ふみ", true}, {u"ふみ", u"をふみ", u"ふみ", false},
    {u"ふみ", u"をふみを", u"ふみ", true},
    {u"へい", u"一へい", u"へい", true}, {u"へい", u"へいし", u"へい", false},
    {u"べち", u"べちの", u"べち", true}, {u"べち", u"べちに", u"べち", false},
    {u"まろ", u"まろに", u"まろ", true}, {u"まろ", u"まろの", u"まろ", false},
    {u"むぎ", u"むぎの", u"むぎ", true}, {u"むぎ", u"む", u"むぎ", false},
    {u"むま", u"むまの", u"むま", true}, {u"むま", u"むまれ", u"むま", false},
    {u"めこ", u"るめこ", u"めこ", true}, {u"めこ", u"めこの", u"めこ", false},
    {u"もの", u"ものを", u"もの", true}, {u"もの", u"も", u"もの", false},
    {u"やみ", u"のやみ", u"やみ", true}, {u"やみ", u"やみの", u"やみ", false},
    {u"ゆめ", u"ゆめの", u"ゆめ", true}, {u"ゆめ", u"ゆ", u"ゆめ", false},
    {u"よし", u"よしの", u"よし", true}, {u"よし", u"よ", u"よし", false},
    {u"りう", u"りうの", u"りう", true}, {u"りう", u"りうに", u"りう", false},
    {u"障へ", u"にさへら", u"障へ", true}, {u"障へ", u"さへの", u"障へ", false},
};
// clang-format on

// The sample with what the cases above need besides: the kana words kept by
// a row made cross-references (which a general rule throws out), single
// kanji given a key of their own character, an entry すず, the kana entry あう
// that the count displaced from row 1, and single kanji read しけん and かんが.
class DictionaryRules : public DictionaryLookupTest {
 protected:
  DictionaryRules() {
    corpus::Table& d = c.Dic();
    for (const std::u16string_view head :
         {u"をや", u"とが", u"ぐし", u"さば", u"しほ", u"すえ", u"すみ", u"せき",
          u"そつ", u"でう", u"との", u"どの", u"ふみ", u"へい", u"べち", u"まろ",
          u"むぎ", u"むま", u"めこ", u"もの", u"やみ", u"ゆめ", u"よし", u"りう"}) {
      const int row = Row(head);
      d.Set(row, dic::kExplanation, u"⇒" + std::u16string(d.Get(row, dic::kExplanation)));
    }
    for (const std::u16string_view head : {u"雁", u"雉", u"側", u"針", u"鴟"}) {
      d.Set(Row(head), dic::kLookupKey, head);
    }
    const int suzu = Row(u"たにかぜつゆ");
    for (const int field : {dic::kHeadWord, dic::kReading, dic::kLookupKey})
      d.Set(suzu, field, u"すず");
    d.Set(suzu, dic::kExplanation, u"⇒鈴。");
    EXPECT_EQ(d.Get(dic::kCountRow, dic::kReading), u"あう");
    d.Set(dic::kCountRow, dic::kHeadWord, u"あう");
    for (const auto& [from, to] : {std::pair{u"私見", u"験"}, std::pair{u"官衙", u"鑑"}}) {
      const int row = Row(from);
      d.Set(row, dic::kHeadWord, to);
      d.Set(row, dic::kLookupKey, to);
    }
  }

  // The cases whose outcome differs under `lookup`.
  std::vector<const RuleCase*> Failing(const DictionaryLookup& lookup,
                                       std::u16string_view onlyKey = {}) const {
    std::vector<const RuleCase*> failing;
    for (const RuleCase& rc : kRuleCases) {
      if (!onlyKey.empty() && rc.key != onlyKey) continue;
      if (Shows(lookup.KensakuDic(rc.w, 0), rc.entry) != rc.shown) failing.push_back(&rc);
    }
    return failing;
  }
};

TEST_F(DictionaryRules, EachRowDecidesItsCases) {
  const DictionaryLookup lookup(c, 1);
  for (const RuleCase* rc : Failing(lookup)) {
    ADD_FAILURE() << U8(rc->w) << ": " << U8(rc->entry) << (rc->shown ? " not shown" : " shown");
  }
}

TEST_F(DictionaryRules, NoRowCanBeLeftOut) {
  // Without any one row, a case of its key turns out otherwise. The drop row
  // of いを is the exception: its needs row rejects all it would.
  const auto rules = dic_rules::WordRules();
  for (std::size_t i = 0; i < rules.size(); ++i) {
    if (rules[i].kind == RuleKind::Drop && rules[i].key == u"いを") continue;
    std::vector<WordRule> without(rules.begin(), rules.end());
    without.erase(without.begin() + static_cast<std::ptrdiff_t>(i));
    const DictionaryLookup lookup(c, 1, without);
    EXPECT_FALSE(Failing(lookup, rules[i].key).empty()) << "row " << i << " " << U8(rules[i].key);
  }
}

TEST_F(DictionaryRules, TheDropRowOfIwoNeverDecides) {
  const auto rules = dic_rules::WordRules();
  std::vector<WordRule> without;
  for (const WordRule& r : rules) {
    if (!(r.kind == RuleKind::Drop && r.key == u"いを")) without.push_back(r);
  }
  EXPECT_EQ(without.size() + 1, rules.size());
  EXPECT_TRUE(Failing(DictionaryLookup(c, 1, without), u"いを").empty());
}

TEST_F(DictionaryRules, KeepRowsUndoAGeneralRule) {
  // 藍 is thrown out by the rule of the two-kana reading, and taken back.
  EXPECT_TRUE(Shows(Look(u"あいの"), u"藍"));
  const std::vector<WordRule> none;
  EXPECT_FALSE(Shows(DictionaryLookup(c, 1, none).KensakuDic(u"あいの", 0), u"藍"));
}

}  // namespace
}  // namespace suizo::views
