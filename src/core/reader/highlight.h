// `HiLight`: the hit marks of one pane's text at one line, from the search
// of the reader and its kept refinements. A mark is a bare <span>, which
// the frame's style paints yellow. It also tells whether the text shows all
// that the search asked for, so that the reader can show the second text
// form instead.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "core/search/driver.h"

namespace suizo::reader {

// The first `count` words of `words` marked in `text`: every match of each
// word in list order, a marked stretch closed to the words after it.
std::u16string MarkWords(std::u16string_view text, const std::vector<std::u16string>& words,
                         int count, int itaiji);

class Highlighter {
 public:
  // `itaiji` is the setting the search compiled its words with.
  Highlighter(const search::SearchEngine& engine, int itaiji);

  // The text of pane kind `pane` (the tab number, 0 to 10) at line `lpos`
  // with its marks. Sets `HLflag` and `HLerror`.
  std::u16string HiLight(std::u16string_view text, int pane, int lpos);

  // -1: no search applied to this text; 0: one applied and marked nothing;
  // else the number of marks (1 for a search without a word).
  int HLflag = -1;
  // 1 when a search that applied did not find all it asked for here.
  int HLerror = 0;

 private:
  const search::SearchEngine* engine_;
  int itaiji_;
};

}  // namespace suizo::reader
