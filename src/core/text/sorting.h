// The shared sorts of the orders and the dictionary's text comparison.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace suizo::text {

// `クイックソート`: sorts positions low..high (both included, positions in the
// vectors, so callers that fill 1..n pass 1 and n) of two parallel columns,
// moving each element with its key. Keys compare by UTF-16 code.
//
// Hoare partitioning around the key at (low + high) / 2: i climbs from low
// to the first key not below the pivot, j descends from high to the first
// key not above it; once i is not below j the partition ends, otherwise the
// columns at i and j are swapped, both step on and the scans go on. Then
// low..i-1 and j+1..high are sorted the same way. The sort is not stable;
// the permutation is exactly that of this procedure, ties included.
// A range of fewer than two positions is left as it is.
void QuickSort(std::vector<int>& elements, std::vector<std::u16string>& keys, int low, int high);

// `クイックソート2`: the same procedure, comparing keys with CompareText.
void QuickSort2(std::vector<int>& elements, std::vector<std::u16string>& keys, int low, int high);

// The case-, width- and kana-insensitive comparison of the dictionary's
// reading order: <0, 0 or >0 as `a` sorts before, with or after `b`.
// Both texts are folded by FoldText and compared by code.
int CompareText(std::u16string_view a, std::u16string_view b);

// The fold behind CompareText, unit by unit:
// - full-width ASCII (U+FF01..FF5E) becomes ASCII, the ideographic space a
//   blank, the full-width signs U+FFE0..FFE6 their narrow forms;
// - half-width katakana and signs (U+FF61..FF9F) become full-width, and a
//   half-width kana followed by a half-width voiced or semi-voiced mark that
//   it can take becomes the one voiced kana ("ｶﾞ" is "ガ");
// - ASCII capitals become small letters;
// - katakana U+30A1..30F6 and the marks "ヽ", "ヾ" become hiragana. "ヷ".."ヺ"
//   and "ー", which have no hiragana, stay.
// Everything else, kanji included, is compared as it is.
std::u16string FoldText(std::u16string_view text);

}  // namespace suizo::text
