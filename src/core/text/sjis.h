// Shift-JIS as Windows writes it (Windows-31J, code page 932), the encoding of
// the .dat exports and the bookmarks file. The user-defined area F040..F9FC
// maps to U+E000..U+E757, where the corpus keeps its own characters.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

namespace suizo::text {

// A byte sequence that is not Windows-31J. Nothing is substituted: the reader
// names where the bad byte stands.
class SjisDecodeError : public std::runtime_error {
 public:
  SjisDecodeError(std::size_t byteOffset, std::string bytes);
  std::size_t byteOffset() const { return byteOffset_; }

 private:
  std::size_t byteOffset_;
};

// A character that Windows-31J cannot write.
class SjisEncodeError : public std::runtime_error {
 public:
  SjisEncodeError(std::size_t unitIndex, char16_t unit);
  std::size_t unitIndex() const { return unitIndex_; }
  char16_t unit() const { return unit_; }

 private:
  std::size_t unitIndex_;
  char16_t unit_;
};

std::u16string DecodeSjis(std::string_view bytes);
std::string EncodeSjis(std::u16string_view text);

// The code of a character as a signed 16-bit number, the order the kanji and
// kana tests rest on: single bytes are 0..255, a double-byte code is negative
// (あ, 0x829F, is -32097). A character Windows-31J cannot write reads as the
// code of "?" (63), as it does when converted for the ANSI code page.
std::int16_t SjisCode(char16_t c);

// The character of a code, signed or unsigned (-32097 and 0x829F are both あ);
// nothing when no character has that code.
std::optional<char16_t> SjisChar(int code);

}  // namespace suizo::text
