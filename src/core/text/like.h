// The wildcard operator `Like` under binary comparison. Text and pattern
// are UTF-16 units (the corpus lies in the basic plane, so a unit is a
// character).
//
// Rules:
// - The whole text must match. Units are compared by code: case matters and
//   full and half width differ.
// - "*" matches any run of units, the empty run included; line ends are
//   ordinary units, so "*" spans them.
// - "?" matches any one unit, a line end included.
// - "#" matches one ASCII digit 0-9. Full-width digits do not count: they
//   are not what the binary comparison calls digits.
// - "[list]" matches one unit in the list, "[!list]" one unit not in it. A
//   list holds members and ranges "a-z" (by code, both ends included).
//   Inside a list "*", "?", "#", "[" and a "!" past the first place are
//   plain members; a "]" right after "[" or "[!" is a member; a "-" that
//   stands first (after any "!") or last is a member.
// - Any other unit, "!" and a lone "]" included, matches itself.
// - A malformed pattern, that is an unclosed list or a range whose ends are
//   reversed ("[z-a]"), matches nothing. The classic operator raises an
//   error there; nothing in the corpus routines relies on that.
#pragma once

#include <string_view>
#include <utility>
#include <vector>

namespace suizo::text {

// A pattern parsed once, for scans that test one pattern against many rows.
class LikePattern {
 public:
  explicit LikePattern(std::u16string_view pattern);

  bool Matches(std::u16string_view text) const;

  // False for a malformed pattern, which matches nothing.
  bool valid() const { return valid_; }

 private:
  enum class Kind : unsigned char { kUnit, kAnyUnit, kDigit, kStar, kList, kNotList };
  struct Token {
    Kind kind;
    char16_t unit;       // kUnit
    unsigned first = 0;  // kList, kNotList: ranges_[first, first + count)
    unsigned count = 0;
  };

  bool TokenMatches(const Token& token, char16_t c) const;
  std::size_t ParseList(std::u16string_view pattern, std::size_t open);

  std::vector<Token> tokens_;
  std::vector<std::pair<char16_t, char16_t>> ranges_;  // a member is a range of one
  bool valid_ = true;
};

// `Like`: text Like pattern.
bool Like(std::u16string_view text, std::u16string_view pattern);

}  // namespace suizo::text
