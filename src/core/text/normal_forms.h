// The normal forms that text columns receive at import: full-width brackets
// become ASCII ones and half-width Japanese punctuation becomes full-width,
// so that the stored text spells each sign one way.
#pragma once

#include <span>
#include <string>
#include <string_view>

namespace suizo::text {

enum class NormalForm {
  A,  // also narrows the middle dot
  B,  // keeps the full-width middle dot (the sutra table)
};

// Every replacement is one UTF-16 unit for one, so text is changed in place.
void Normalize(std::span<char16_t> text, NormalForm form);

std::u16string NormA(std::u16string_view text);
std::u16string NormB(std::u16string_view text);

}  // namespace suizo::text
