// The query side of the search's spelling tolerance: the variant table, the
// clean-up of a search box's text, the order of its words and the rewriting of
// a word into bracket classes. The stored text is never folded.
#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace suizo::text {

// Chr(255), the separator of the split search's character list, as a Japanese
// system reads it: code page 932 maps the lone byte 0xFF to U+F8F3. No corpus
// character and nothing a user types is that character.
inline constexpr char16_t kListSeparator = u'\uF8F3';

// Rows 1..36 (quotes, punctuation, metacharacters, digits) are always in force;
// the kana, kanji and Latin rows after them only when `Itaiji` is 1.
inline constexpr std::size_t kItaijiLastRow = 1346;
inline constexpr std::size_t kItaijiAlwaysRows = 36;

using ItaijiRows = std::array<std::u16string, kItaijiLastRow + 1>;

// `ItaijiTbl`, built on first use and read-only from then on. Index 0 and rows
// 37, 47..50 are empty. A character in two rows belongs to the first only.
const ItaijiRows& ItaijiTbl();

// One word without blanks as a pattern: each character with a row becomes
// "[" row "]", then the 人人 and ゝ/ゞ steps. `itaiji` is the setting's value.
std::u16string ItaijiPattern(std::u16string_view word, int itaiji);

// A search box's text with line ends gone, blanks trimmed and each run of
// blanks or ideographic spaces made one blank.
std::u16string SpaceTrim(std::u16string_view text);

// Orders the words by falling length, by the plain exchange sort: the pattern
// and the highlighter take the words in the order it leaves, ties included.
void SortSw(std::vector<std::u16string>& sw);

}  // namespace suizo::text
