// Any pattern and text through the wildcard operator, held to a plain
// recursive reading of its rules: "*" any run, "?" any unit, "#" a digit,
// "[...]" a list with ranges, "[!...]" its complement; a list left open or
// a range that runs backwards makes a pattern that matches nothing. The
// first unit says how many of the rest are the pattern.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

#include "core/text/like.h"
#include "fuzz_support.h"

using namespace suizo;

namespace {

struct Reference {
  std::u16string_view p, t;
  std::vector<signed char> memo;  // -1 unknown
  bool valid = true;

  Reference(std::u16string_view pattern, std::u16string_view text)
      : p(pattern), t(text), memo((pattern.size() + 1) * (text.size() + 1), -1) {}

  // The end of the list opening at `i`, or npos when it stays open or a
  // range runs backwards; `hit` tells whether `c` is in it.
  std::size_t List(std::size_t i, char16_t c, bool& hit) const {
    std::size_t k = i + 1;
    bool negate = false;
    if (k < p.size() && p[k] == u'!') {
      negate = true;
      ++k;
    }
    const std::size_t start = k;
    bool in = false;
    for (;;) {
      if (k >= p.size()) return std::u16string_view::npos;
      if (p[k] == u']' && k > start) break;
      if (k + 2 < p.size() && p[k + 1] == u'-' && p[k + 2] != u']') {
        if (p[k + 2] < p[k]) return std::u16string_view::npos;
        in = in || (c >= p[k] && c <= p[k + 2]);
        k += 3;
      } else {
        in = in || c == p[k];
        ++k;
      }
    }
    hit = negate ? !in : in;
    return k + 1;
  }

  bool Valid() const {
    for (std::size_t i = 0; i < p.size();) {
      if (p[i] != u'[') {
        ++i;
        continue;
      }
      bool hit = false;
      const std::size_t end = List(i, 0, hit);
      if (end == std::u16string_view::npos) return false;
      i = end;
    }
    return true;
  }

  bool Match(std::size_t i, std::size_t j) {
    signed char& m = memo[i * (t.size() + 1) + j];
    if (m >= 0) return m != 0;
    bool r = false;
    if (i == p.size()) {
      r = j == t.size();
    } else if (p[i] == u'*') {
      r = Match(i + 1, j) || (j < t.size() && Match(i, j + 1));
    } else if (j < t.size()) {
      if (p[i] == u'?') {
        r = Match(i + 1, j + 1);
      } else if (p[i] == u'#') {
        r = t[j] >= u'0' && t[j] <= u'9' && Match(i + 1, j + 1);
      } else if (p[i] == u'[') {
        bool hit = false;
        const std::size_t end = List(i, t[j], hit);
        r = hit && Match(end, j + 1);
      } else {
        r = p[i] == t[j] && Match(i + 1, j + 1);
      }
    }
    m = r ? 1 : 0;
    return r;
  }
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::u16string units = fuzzing::Units(data, size);
  if (units.empty()) return 0;
  const std::size_t n = std::min<std::size_t>(units[0] % 65, units.size() - 1);
  const std::u16string pattern = units.substr(1, n);
  const std::u16string text = units.substr(1 + n, 256);
  Reference ref(pattern, text);
  const bool expected = ref.Valid() && ref.Match(0, 0);
  const text::LikePattern compiled(pattern);
  if (compiled.Matches(text) != expected) std::abort();
  if (text::Like(text, pattern) != expected) std::abort();
  return 0;
}
