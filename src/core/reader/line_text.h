// The text conventions of a line that both layouts apply before display.
#pragma once

#include <string>
#include <string_view>

namespace suizo::reader {

// A line holding this is a stub: from its first "／" on it points elsewhere.
inline constexpr std::u16string_view kStubMark = u"に移動";

// Two leading ASCII blanks are an indent: one ideographic space.
std::u16string Indented(std::u16string_view t);
// A stub under a printed collection shows only what stands before its
// pointer; the pointer's number means nothing in that collection's order.
std::u16string CutStub(std::u16string_view t);
// The first two notes "＜…＞" of a translation leave the display. A "＞" in
// front of the "＜" keeps the text up to the "＜" and again from the "＞" on.
std::u16string WithoutNotes(std::u16string_view t);

}  // namespace suizo::reader
