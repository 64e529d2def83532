// UTF-16 string helpers. Corpus text is UTF-16 throughout; positions and
// lengths are UTF-16 units. Searching within a string is std::u16string_view's
// own find, except for one unit over long texts: see FindUnit.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace suizo::text {

inline bool Contains(std::u16string_view text, std::u16string_view part) {
  return text.find(part) != std::u16string_view::npos;
}

// The first place at or after `from` of any of `units`, or npos, eight
// units at a time: a walk through the readers looks for one mark in every
// line it passes, and a search for the few units its words begin with.
std::size_t FindAnyUnit(std::u16string_view text, std::u16string_view units, std::size_t from = 0);
inline std::size_t FindUnit(std::u16string_view text, char16_t unit) {
  return FindAnyUnit(text, std::u16string_view(&unit, 1));
}
inline bool ContainsUnit(std::u16string_view text, char16_t unit) {
  return FindUnit(text, unit) != std::u16string_view::npos;
}

// Every occurrence of `from`, left to right without overlap, becomes `to`.
// An empty `from` leaves the text as it is.
std::u16string ReplaceAll(std::u16string_view text, std::u16string_view from,
                          std::u16string_view to);

// Strips U+0020 from both ends, and nothing else: tabs and the ideographic
// space stay, as the corpus routines expect.
std::u16string_view TrimSpace(std::u16string_view text);

// Splits at each separator. An empty text gives no parts at all; a trailing
// separator gives a trailing empty part. The views point into `text`.
std::vector<std::u16string_view> Split(std::u16string_view text, std::u16string_view separator);

// Conversions for messages, file names and terminal output. Ill-formed input
// (a lone surrogate, bad UTF-8) becomes U+FFFD rather than failing.
std::string ToUtf8(std::u16string_view text);
std::u16string FromUtf8(std::string_view text);

// Decimal text of an integer, as the corpus stores numbers.
std::u16string IntText(std::int64_t value);

}  // namespace suizo::text
