// Any box text through both query compilers, in every window, mode, method
// and setting: nothing may throw or fail, the split score must be the
// wildcard operator's and the word search's answer the frame's. The input
// is UTF-16 units, little-endian; the first unit says how many of the rest
// are the box text, the others are a field.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "core/search/compilers.h"
#include "core/search/regex.h"
#include "wildcard_score.h"

namespace {

using namespace suizo::search;

// Long enough for every rule, short enough that a NOT over a long line stays quick.
constexpr std::size_t kMaxBox = 128;
constexpr std::size_t kMaxField = 512;

using suizo::testing::WildcardScore;

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::u16string units;
  for (std::size_t i = 0; i + 1 < size; i += 2) {
    units += static_cast<char16_t>(data[i] | (data[i + 1] << 8));
  }
  if (units.empty()) return 0;
  const std::size_t boxLength = std::min<std::size_t>(units[0] % (kMaxBox + 1), units.size() - 1);
  const std::u16string box = units.substr(1, boxLength);
  const std::u16string rest = units.substr(1 + boxLength, kMaxField);
  const std::u16string fields[] = {u"", rest, rest + box};

  for (const int itaiji : {0, 1}) {
    for (const Method method : {Method::And, Method::Or, Method::Not}) {
      if (const auto word = WordQuery::Compile(box, method, itaiji)) {
        // The one-pass answer must be the frame's.
        const Regex frame(word->pattern());
        for (const auto& field : fields) {
          if (word->Matches(field) != frame.Test(field)) std::abort();
        }
      }
    }
    for (const auto window : {SearchWindow::Writings, SearchWindow::Sutra, SearchWindow::Sources}) {
      for (const int divMode : {1, 2}) {
        const auto split = SplitQuery::Compile(box, divMode, window, itaiji);
        if (!split) continue;
        const bool earlyStop = window != SearchWindow::Sutra;
        for (const auto& field : fields) {
          for (const double bar : {split->Required(), split->Required() + 1.5}) {
            if (split->Score(field, bar) != WildcardScore(split->Sw(), field, bar, earlyStop)) {
              std::abort();
            }
          }
        }
      }
    }
  }
  return 0;
}
