// The regular-expression engine of the searches: PCRE2's 16-bit library over
// UTF-16 code units. Multi-line: "^" stands at the start of every line, also
// after a line end that closes the text, and "$" at every line end; CR, LF and
// CR LF all end a line and "." stops at each. No case folding. The pattern is
// read as code units, so private-use characters and lone surrogates are plain
// characters.
#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

namespace suizo::search {

// A pattern the engine rejects, or a match the engine could not finish.
class RegexError : public std::runtime_error {
 public:
  RegexError(const std::string& message, std::size_t offset);
  // The pattern unit where compiling failed; 0 for a failed match.
  std::size_t offset() const { return offset_; }

 private:
  std::size_t offset_;
};

// One pattern compiled once (JIT where the platform has it) for many texts.
// Not thread-safe: the match data is kept and reused by every call.
class Regex {
 public:
  // `useJit` false keeps to the interpreter, which tests compare the JIT with.
  explicit Regex(std::u16string_view pattern, bool useJit = true);
  Regex(Regex&&) noexcept;
  Regex& operator=(Regex&&) noexcept;
  ~Regex();

  // Whether the pattern matches anywhere in the text.
  bool Test(std::u16string_view text) const;

  // The first match at or after `start`: its index and length in units.
  struct Match {
    std::size_t index;
    std::size_t length;
  };
  std::optional<Match> Find(std::u16string_view text, std::size_t start = 0) const;

  // Whether matching runs compiled machine code.
  bool jit() const;

 private:
  struct State;
  int Run(std::u16string_view text, std::size_t start) const;
  std::unique_ptr<State> state_;
};

}  // namespace suizo::search
