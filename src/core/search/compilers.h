// The two query compilers: what the scan applies to one field of one row.
// The word search compiles the box's words into one regular expression of
// lookaheads; the split search breaks the text into single characters and
// scores a field by how many of them it holds.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace suizo::search {

// `SrMethod`.
enum class Method { And = 0, Or = 1, Not = 2 };

// The three text windows whose split search differs: deletions, the kanji
// limit, the sutra's substitutions, the required count, the early stop.
enum class SearchWindow { Writings, Sutra, Sources };

class Regex;  // the compiled expression, PCRE2 underneath

// `KensakuWord`'s matcher.
class WordQuery {
 public:
  // Nothing when the box holds no word after `SpaceTrim`.
  static std::optional<WordQuery> Compile(std::u16string_view boxText, Method method, int itaiji);

  // Whether a field is a hit: the expression's Test, multi-line, with "."
  // stopping at line ends and "^" at each line start.
  bool Matches(std::u16string_view field) const;

  // `Sw`: the words' pattern fragments in the order `SortSw` left them.
  const std::vector<std::u16string>& Sw() const { return sw_; }
  // Units one of which every field this query matches holds (the first
  // word's possible first units, for AND of plain words); nothing when that
  // cannot be told. A caller can pass over a field without them.
  std::optional<std::u16string_view> NecessaryUnits() const;
  // The expression compiled: the fragments in the frame of the method, or,
  // where that is no valid expression, the same with `EscapeStrays` applied.
  const std::u16string& pattern() const { return pattern_; }

  WordQuery(WordQuery&&) noexcept;
  WordQuery& operator=(WordQuery&&) noexcept;
  ~WordQuery();

 private:
  WordQuery() = default;
  bool SomeLineLacksAll(std::u16string_view field) const;
  std::vector<std::u16string> sw_;
  std::u16string pattern_;
  std::unique_ptr<Regex> regex_;
  // Each word on its own, found anywhere: all of them for OR and NOT, the
  // first (longest) for AND. Kept only when each word is a run of single
  // characters and classes without a line end, so that a word's match lies
  // in one line and the frame's answer follows from where the words stand.
  // One expression per word, and the units it can begin with: the engine
  // scans one unit at a time for a class of kanji, while a field that holds
  // none of a word's first units is passed over eight units at a time.
  struct Word;
  Method method_ = Method::And;
  std::vector<Word> anywhere_;
};

// `KensakuDiv`'s matcher.
class SplitQuery {
 public:
  // `divMode` 1 takes every character, 2 the kanji (and single-byte
  // characters) only, after the window's deletions. Nothing when no
  // character is left.
  static std::optional<SplitQuery> Compile(std::u16string_view boxText, int divMode,
                                           SearchWindow window, int itaiji);

  // `Sw`: one fragment per distinct character, repeats dropped by pattern.
  const std::vector<std::u16string>& Sw() const { return sw_; }
  // The required count t of the table: the count of the entries, or half of
  // ten or more (not rounded) outside the sutra.
  double Required() const { return required_; }

  // How many entries the field holds. With `bar`, the bar the scan has
  // raised so far, the writings and sources windows stop as soon as the
  // entries left can no longer reach it; the count is then below the bar.
  int Score(std::u16string_view field, double bar) const;

  SplitQuery(SplitQuery&&) noexcept;
  SplitQuery& operator=(SplitQuery&&) noexcept;
  ~SplitQuery();

 private:
  SplitQuery() = default;
  struct Entry;
  std::vector<std::u16string> sw_;
  std::vector<Entry> entries_;
  double required_ = 0;
  bool earlyStop_ = true;
  // Entries that are one character or a class, found by a single pass over
  // the field: which units any of them holds, and each unit's entries.
  std::vector<std::uint64_t> unitMask_;
  std::vector<std::pair<char16_t, std::uint32_t>> unitEntries_;
  std::size_t unitEntryCount_ = 0;
  mutable std::vector<unsigned char> found_;  // per entry, reused by every Score
};

// A fragment with every sign outside its classes escaped. The word search
// compiles its fragments so when the pattern as joined is no valid
// expression: a "ゞ" after "'", or with `Itaiji` off after "Z", turns into a
// stray "(" or "[".
std::u16string EscapeStrays(std::u16string_view fragment, int itaiji);

}  // namespace suizo::search
