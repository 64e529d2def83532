// Numbers in the corpus are text. These are the conversions the program reads
// and writes them with.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace suizo::text {

// The lenient leading-number reading: blanks, tabs and line feeds are passed
// over anywhere in the number, reading stops at the first character that can
// not continue it, and a text with no number reads as 0. "12.5abc" is 12.5,
// "" and "abc" are 0, "1e3" is 1000. Digits are ASCII only.
double Val(std::u16string_view text);

// `Val` cut toward zero to a whole number for use as a count, a row or a
// class. Damaged data may hold any number: one beyond ±2^30 (±2^53 for the
// wide form) reads as that bound, which leaves room for the little
// arithmetic done on such numbers without overflow.
int ValInt(std::u16string_view text);
std::int64_t ValWhole(std::u16string_view text);

// Whether the text at `at` has the shape of `form`, in which "#" stands
// for an ASCII digit and every other character for itself, as `Like` reads
// "(#####)" or "№#####.#".
bool LooksLike(std::u16string_view text, std::size_t at, std::u16string_view form);

// The whole text as a decimal number, blanks and tabs around it allowed:
// [sign] digits [. digits] [E [sign] digits]. Anything else, the empty text
// included, is not a number.
std::optional<double> ParseNumber(std::u16string_view text);

inline bool IsNumeric(std::u16string_view text) {
  return ParseNumber(text).has_value();
}

// The integer conversion used for counts, order elements and class numbers: a
// number as ParseNumber reads it, rounded half to even. Not a number, or
// outside 32 bits, gives nothing; the caller names what was being read.
std::optional<std::int32_t> ToInt(std::u16string_view text);

// Number formats. A pattern is a run of "#" and "0" for the integer part, then
// optionally "." and "0"s for the fraction: "0" forces a digit, a leading "#"
// lets the integer part vanish when it is 0. Rounding is half away from zero
// on the value taken to 15 significant digits. An integer part longer than
// the pattern is written whole.
inline constexpr std::string_view kPageLineFormat = "00000.00";        // page-and-line sort keys
inline constexpr std::string_view kPageLineBoxFormat = "0000.00";      // page boxes
inline constexpr std::string_view kStartPositionFormat = "00000.000";  // 始位置 sort keys
inline constexpr std::string_view kRowNumberFormat = "00000";          // tie-break row numbers
inline constexpr std::string_view kShortPageFormat = "#.00";           // page columns of the sutra

std::u16string Format(double value, std::string_view pattern);

// A numeric text is formatted as its number; any other text, the empty one
// included, comes back unchanged.
std::u16string Format(std::u16string_view text, std::string_view pattern);

// A number as text with up to 15 significant digits and no trailing zeros, as
// an unquoted value of a .dat file is stored: 12.5, 14611, 1E+15.
std::u16string NumberText(double value);

}  // namespace suizo::text
