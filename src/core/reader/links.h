// The links of the reader's panes. Numbers in the text become links when a
// line is rendered; a click is read back here into where it leads. The
// panes never leave their blank page, so a link is only an href to read.
#pragma once

#include <string>
#include <string_view>

#include "core/corpus/corpus.h"

namespace suizo::reader {

// Each five-digit number, or five digits with one decimal, becomes a link
// to that ｼｽﾃﾑNo.: "<a href='14611'>14611</a>".
std::u16string LinkLines(std::u16string_view text);

// Page references ("123.45", "12.34") become links to the page; then the
// ｼｽﾃﾑNo. references that name a line of the current order become links to
// that line, "<a href='D" position "'>". A volume reference such as
// "大12.34a" and the word "成仏" before a number are passed over.
std::u16string LinkRefs(std::u16string_view text, const corpus::Corpus& corpus);

// Where a clicked href leads.
struct LinkTarget {
  enum class Kind {
    Line,      // a line of the writings, by its position: open it in a reader
    Sutra,     // a row of the sutra, whose page range holds the number
    SysNo,     // a line of this window's order, by ｼｽﾃﾑNo.: only `Lpos` moves
    NotFound,  // nothing; the message, if any, is for a message box
  };
  Kind kind = Kind::NotFound;
  int position = 0;
  // For NotFound: the href and "リンク先が見つかりません"; empty for a sutra
  // page no row holds, on which nothing happens.
  std::u16string message;
};

// `href` is the link's text without the prefix the engine resolved it
// against. The sutra is loaded if a page of it is asked for.
LinkTarget ResolveLink(std::u16string_view href, corpus::Corpus& corpus);

}  // namespace suizo::reader
