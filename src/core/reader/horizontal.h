// `hyoujiYoko`: one line of the writings in the panes of the horizontal
// layout. Panes 3 and 4 are the reader's own choice of side and form and
// are filled by it; this fills the main text, the translation, the two note
// panes and the quotation index.
#pragma once

#include <array>
#include <string>

#include "core/corpus/corpus.h"
#include "core/reader/highlight.h"
#include "core/reader/texts.h"

namespace suizo::reader {

struct HorizontalPanes {
  std::array<std::u16string, 8> html;  // panes 1, 2, 5, 6, 7; the others empty
  bool KakkoVisible = false;           // the main text shows the second form's hit
};

// `kakkoPressed`: the reader keeps the first text form although the hit
// stands only in the second. `gk` is the collection, `authenticScope`
// `CSel(10)`.
HorizontalPanes HyoujiYoko(const TextTable& table, const corpus::Corpus& corpus, int lpos,
                           Highlighter& highlighter, int srn, bool kakkoPressed, int gk,
                           int authenticScope);

}  // namespace suizo::reader
