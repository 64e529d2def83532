#include "core/text/sorting.h"

#include <stdexcept>
#include <utility>

namespace suizo::text {
namespace {

// Half-width U+FF61..FF9F as full-width, in code order.
constexpr std::u16string_view kHalfKana =
    u"。「」、・ヲァィゥェォャュョッーアイウエオカキクケコサシスセソタチツテトナニヌネノ"
    u"ハヒフヘホマミムメモヤユヨラリルレロワン゛゜";
static_assert(kHalfKana.size() == 0xFF9F - 0xFF61 + 1);

constexpr char16_t kHalfVoiced = 0xFF9E;
constexpr char16_t kHalfSemiVoiced = 0xFF9F;

// The voiced form of a full-width katakana, or 0 when it has none.
char16_t Voiced(char16_t k) {
  if ((k >= u'カ' && k <= u'チ' && (k - u'カ') % 2 == 0) || k == u'ツ' || k == u'テ' ||
      k == u'ト') {
    return static_cast<char16_t>(k + 1);
  }
  if (k >= u'ハ' && k <= u'ホ' && (k - u'ハ') % 3 == 0) return static_cast<char16_t>(k + 1);
  if (k == u'ウ') return u'ヴ';
  if (k == u'ワ') return u'ヷ';
  if (k == u'ヲ') return u'ヺ';
  return 0;
}

char16_t SemiVoiced(char16_t k) {
  if (k >= u'ハ' && k <= u'ホ' && (k - u'ハ') % 3 == 0) return static_cast<char16_t>(k + 2);
  return 0;
}

char16_t FoldCaseAndKana(char16_t c) {
  if (c >= u'A' && c <= u'Z') return static_cast<char16_t>(c + (u'a' - u'A'));
  if (c >= u'ァ' && c <= u'ヶ') return static_cast<char16_t>(c - (u'ァ' - u'ぁ'));
  if (c == u'ヽ' || c == u'ヾ') return static_cast<char16_t>(c - (u'ヽ' - u'ゝ'));
  return c;
}

constexpr char16_t kWideSigns[] = {0x00A2, 0x00A3, 0x00AC, 0x00AF, 0x00A6, 0x00A5, 0x20A9};

// Sorts by `order`, calling `swap_columns` to move every column together.
template <typename SwapColumns>
void HoareSort(const std::vector<std::u16string>& order, const SwapColumns& swap_columns, int low,
               int high) {
  while (low < high) {
    const std::u16string pivot = order[static_cast<std::size_t>((low + high) / 2)];
    int i = low;
    int j = high;
    for (;;) {
      while (order[static_cast<std::size_t>(i)] < pivot) ++i;
      while (pivot < order[static_cast<std::size_t>(j)]) --j;
      if (i >= j) break;
      swap_columns(i, j);
      ++i;
      --j;
    }
    // The two parts are disjoint, so which is sorted first does not change
    // the result; recursing into the smaller bounds the depth.
    if (i - 1 - low < high - (j + 1)) {
      HoareSort(order, swap_columns, low, i - 1);
      low = j + 1;
    } else {
      HoareSort(order, swap_columns, j + 1, high);
      high = i - 1;
    }
  }
}

void CheckRange(const std::vector<int>& elements, const std::vector<std::u16string>& keys, int low,
                int high) {
  if (low >= high) return;
  if (low < 0 || static_cast<std::size_t>(high) >= elements.size() ||
      static_cast<std::size_t>(high) >= keys.size()) {
    throw std::out_of_range("QuickSort: range beyond the columns");
  }
}

}  // namespace

void QuickSort(std::vector<int>& elements, std::vector<std::u16string>& keys, int low, int high) {
  CheckRange(elements, keys, low, high);
  HoareSort(
      keys,
      [&](int i, int j) {
        std::swap(elements[static_cast<std::size_t>(i)], elements[static_cast<std::size_t>(j)]);
        std::swap(keys[static_cast<std::size_t>(i)], keys[static_cast<std::size_t>(j)]);
      },
      low, high);
}

void QuickSort2(std::vector<int>& elements, std::vector<std::u16string>& keys, int low, int high) {
  CheckRange(elements, keys, low, high);
  if (low >= high) return;
  // CompareText is a code comparison of folded texts, so folding each key
  // once and sorting on the folds gives the same permutation.
  std::vector<std::u16string> folded(keys.size());
  for (int k = low; k <= high; ++k) {
    folded[static_cast<std::size_t>(k)] = FoldText(keys[static_cast<std::size_t>(k)]);
  }
  HoareSort(
      folded,
      [&](int i, int j) {
        const auto a = static_cast<std::size_t>(i);
        const auto b = static_cast<std::size_t>(j);
        std::swap(elements[a], elements[b]);
        std::swap(keys[a], keys[b]);
        std::swap(folded[a], folded[b]);
      },
      low, high);
}

std::u16string FoldText(std::u16string_view text) {
  std::u16string out;
  out.reserve(text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    char16_t c = text[i];
    if (c >= 0xFF01 && c <= 0xFF5E) {
      c = static_cast<char16_t>(c - 0xFEE0);
    } else if (c == u'\u3000') {
      c = u' ';
    } else if (c >= 0xFFE0 && c <= 0xFFE6) {
      c = kWideSigns[c - 0xFFE0];
    } else if (c >= 0xFF61 && c <= 0xFF9F) {
      c = kHalfKana[c - 0xFF61];
      if (i + 1 < text.size()) {
        const char16_t mark = text[i + 1];
        const char16_t composed = mark == kHalfVoiced       ? Voiced(c)
                                  : mark == kHalfSemiVoiced ? SemiVoiced(c)
                                                            : 0;
        if (composed != 0) {
          c = composed;
          ++i;
        }
      }
    }
    out += FoldCaseAndKana(c);
  }
  return out;
}

int CompareText(std::u16string_view a, std::u16string_view b) {
  return FoldText(a).compare(FoldText(b));
}

}  // namespace suizo::text
