// The split search's score in its plain form: entry by entry through the
// wildcard operator, with the early stop where the window has it. The tests
// and the fuzz target hold the fast score to it.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "core/text/like.h"

namespace suizo::testing {

inline int WildcardScore(const std::vector<std::u16string>& sw, std::u16string_view field,
                         double bar, bool earlyStop) {
  int count = 0;
  const int last = static_cast<int>(sw.size()) - 1;
  for (int i = 0; i <= last; ++i) {
    const std::u16string& s = sw[static_cast<std::size_t>(i)];
    if (s == u"[－-]" ? text::Like(field, u"*[－]*") || text::Like(field, u"*[-]*")
                      : text::Like(field, u"*" + s + u"*")) {
      ++count;
    }
    if (earlyStop && count < bar - (last - i)) break;
  }
  return count;
}

}  // namespace suizo::testing
