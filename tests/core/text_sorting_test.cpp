#include "core/text/sorting.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "core/text/utf16.h"

namespace suizo::text {
namespace {

// Columns filled from position 1, as the callers fill them; position 0 is
// a sentinel that no sort may touch.
struct Work {
  std::vector<int> elements{-1};
  std::vector<std::u16string> keys{u"\uFFFF"};

  explicit Work(const std::vector<std::u16string>& ks) {
    for (const auto& k : ks) {
      elements.push_back(static_cast<int>(elements.size()));
      keys.push_back(k);
    }
  }
  int n() const { return static_cast<int>(elements.size()) - 1; }
  std::vector<int> Sorted() const { return {elements.begin() + 1, elements.end()}; }
};

TEST(QuickSort, ReproducesTheHoarePartitioningOnTies) {
  // Worked by hand: pivot "b" at 3 swaps 1<->6 and 3<->5, the scans cross at
  // 4/3; then 1..3 (pivot "a") swaps 1<->3 and 4..6 (pivot "b") swaps 4<->6.
  Work w({u"b", u"a", u"b", u"c", u"a", u"b"});
  QuickSort(w.elements, w.keys, 1, w.n());
  EXPECT_EQ(w.Sorted(), (std::vector<int>{5, 2, 6, 1, 3, 4}));
  EXPECT_EQ(w.keys, (std::vector<std::u16string>{u"\uFFFF", u"a", u"a", u"b", u"b", u"b", u"c"}));
  EXPECT_EQ(w.elements[0], -1);
}

TEST(QuickSort, SortsOnlyTheGivenRange) {
  Work w({u"d", u"c", u"b", u"a"});
  QuickSort(w.elements, w.keys, 2, 3);
  EXPECT_EQ(w.Sorted(), (std::vector<int>{1, 3, 2, 4}));
  QuickSort(w.elements, w.keys, 4, 4);
  QuickSort(w.elements, w.keys, 1, 0);  // an empty list
  EXPECT_EQ(w.Sorted(), (std::vector<int>{1, 3, 2, 4}));
  EXPECT_THROW(QuickSort(w.elements, w.keys, 1, 5), std::out_of_range);
}

TEST(QuickSort, OrdersLargeInputsAndKeepsEachElementWithItsKey) {
  // Keys as the contents sorts build them: a number through "00000.000",
  // with many repeats, then the element.
  std::uint32_t seed = 12345;
  std::vector<std::u16string> base;
  for (int e = 1; e <= 3000; ++e) {
    seed = seed * 1103515245u + 12345u;
    base.push_back(FromUtf8(std::to_string(seed % 400)));
  }
  for (const bool presorted : {false, true}) {
    std::vector<std::u16string> keys = base;
    if (presorted) std::sort(keys.begin(), keys.end());
    Work w(keys);
    QuickSort(w.elements, w.keys, 1, w.n());
    EXPECT_TRUE(std::is_sorted(w.keys.begin() + 1, w.keys.end()));
    for (int p = 1; p <= w.n(); ++p) {
      EXPECT_EQ(w.keys[static_cast<std::size_t>(p)],
                keys[static_cast<std::size_t>(w.elements[static_cast<std::size_t>(p)] - 1)]);
    }
  }
  Work same(std::vector<std::u16string>(5000, u"同"));  // all ties: deep partitions
  QuickSort(same.elements, same.keys, 1, same.n());
  EXPECT_EQ(same.keys.size(), 5001u);
}

TEST(QuickSort2, TiesUnderTheTextComparisonFollowThePartitioning) {
  // All three are "か" folded: pivot at 2 swaps 1<->3 and stops. By code the
  // same input goes another way, which shows the comparison decides.
  Work folded({u"カ", u"か", u"ｶ"});
  QuickSort2(folded.elements, folded.keys, 1, 3);
  EXPECT_EQ(folded.Sorted(), (std::vector<int>{3, 2, 1}));
  Work binary({u"カ", u"か", u"ｶ"});
  QuickSort(binary.elements, binary.keys, 1, 3);
  EXPECT_EQ(binary.Sorted(), (std::vector<int>{2, 1, 3}));
}

TEST(QuickSort2, ReadingOrderOfPaddedDictionaryKeys) {
  // Reading padded with blanks to 70, then the 見出No, as the reading order.
  const auto key = [](std::u16string_view reading, std::u16string_view number) {
    std::u16string k(reading);
    k.resize(70, u' ');
    return k + std::u16string(number);
  };
  Work w({key(u"がい", u"00001"), key(u"カイ", u"00002"), key(u"か", u"00003"),
          key(u"かい", u"00004"), key(u"ＡＢ", u"00005"), key(u"ab", u"00006")});
  QuickSort2(w.elements, w.keys, 1, w.n());
  EXPECT_EQ(w.Sorted(), (std::vector<int>{5, 6, 3, 2, 4, 1}));
}

TEST(CompareText, FoldsCaseWidthAndKanaType) {
  const std::pair<std::u16string_view, std::u16string_view> equal[] = {
      {u"ABC", u"abc"},           {u"ＡＢＣ", u"abc"},     {u"ｇａｋｋｏ", u"GAKKO"},
      {u"がっこう", u"ガッコウ"}, {u"ｶﾞｯｺｳ", u"がっこう"}, {u"ﾊﾟﾝ", u"ぱん"},
      {u"ﾊﾞﾝ", u"ばん"},          {u"ｳﾞ", u"ゔ"},          {u"ヴ", u"ゔ"},
      {u"ヽヾ", u"ゝゞ"},         {u"\u3000", u" "},       {u"ｰ｢｣", u"ー「」"},
      {u"ｱﾞ", u"あ゛"},  // "ア" takes no voiced mark: the mark stays
  };
  for (const auto& [a, b] : equal) EXPECT_EQ(CompareText(a, b), 0) << ToUtf8(a);
  const std::pair<std::u16string_view, std::u16string_view> unequal[] = {
      {u"ｱﾞ", u"あ"}, {u"ﾊﾟ", u"ば"}, {u"か", u"が"}, {u"法華", u"法花"}, {u"ー", u"-"},
  };
  for (const auto& [a, b] : unequal) EXPECT_NE(CompareText(a, b), 0) << ToUtf8(a);
}

TEST(CompareText, OrdersByFoldedCode) {
  EXPECT_LT(CompareText(u"a", u"B"), 0);  // by code "B" comes first
  EXPECT_GT(CompareText(u"Z", u"b"), 0);
  EXPECT_LT(CompareText(u"か ", u"かい"), 0);
  EXPECT_LT(CompareText(u"カイ", u"がい"), 0);
  EXPECT_LT(CompareText(u"か", u"かい"), 0);
  EXPECT_GT(CompareText(u"漢", u"かな"), 0);
}

}  // namespace
}  // namespace suizo::text
