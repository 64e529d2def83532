// Narrowing of full-width characters to their half-width forms.
#pragma once

#include <string>
#include <string_view>

namespace suizo::text {

// Full-width Latin letters, digits and signs become ASCII, the ideographic
// space a blank, katakana and the Japanese punctuation their half-width forms
// (a voiced kana becomes two characters). Hiragana and kanji stay.
std::u16string Narrow(std::u16string_view text);

}  // namespace suizo::text
