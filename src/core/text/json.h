// String literals for JSON, which the command-line tool writes and the
// panes' scripts read.
#pragma once

#include <string>
#include <string_view>

namespace suizo::text {

// A JSON string literal, in UTF-8, holding every code unit of `text` exactly:
// the quote, the backslash and control characters escaped; the line and
// paragraph separators too, so that it is a JavaScript literal as well; and a
// lone surrogate as its \u escape, since UTF-8 cannot carry one.
std::string JsonString(std::u16string_view text);

}  // namespace suizo::text
