// `KensakuDic`: the dictionary's lookup of a reader's selection. The text is
// a run of old Japanese with no word boundaries, often longer than the word
// meant and in an old spelling, so the lookup ranks the entries it could
// mean, picks one, and throws out the entries that match only by accident
// (the rule table in dictionary_rules.h).
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "core/corpus/corpus.h"
#include "core/views/dictionary_rules.h"

namespace suizo::views {

// `SrTarget`.
inline constexpr int kDicTargetHeadword = 0;
inline constexpr int kDicTargetExplanation = 1;

struct DicLookupResult {
  std::vector<int> Sr{0};  // Sr[h], h from 1 to Srn: the Dpos (a `DicOrder` position) of hit h
  int Srn = 0;
  int SrnPos = 0;                  // the chosen hit after exclusion, at most Srn; 0 when no hit
  std::vector<std::u16string> Sw;  // the words' pattern fragments, for the highlighter
  int Swn = 0;
  std::vector<std::u16string> log;  // the stages of the walk, for diagnostics only

  // The Dpos of the chosen hit; 0 when there is none.
  int Dpos() const {
    return SrnPos > 0 && SrnPos <= Srn ? Sr[static_cast<std::size_t>(SrnPos)] : 0;
  }
};

// Not thread-safe: the entries' patterns are compiled on first use and kept,
// and a compiled pattern reuses its match data.
class DictionaryLookup {
 public:
  // Reads the corpus's `Dic` table, `DicOrder`, `DicYomi` and `DisMaxY`
  // (load group 1) at each lookup; the corpus must outlive the lookup. A
  // pattern kept for an entry is compiled again when its cell has changed.
  DictionaryLookup(const corpus::Corpus& corpus, int itaiji);
  // With word rules of the caller's own, which must outlive the lookup.
  DictionaryLookup(const corpus::Corpus& corpus, int itaiji,
                   std::span<const dic_rules::WordRule> rules);
  ~DictionaryLookup();
  DictionaryLookup(const DictionaryLookup&) = delete;
  DictionaryLookup& operator=(const DictionaryLookup&) = delete;

  // `boxText` the search box's text; `srTarget` 0 headword, 1 explanation.
  DicLookupResult KensakuDic(std::u16string_view boxText, int srTarget) const;

  // Off, the walk reads every entry's cells instead of passing over those
  // that cannot be a hit. The results are the same; tests compare them.
  bool filterEntries = true;

 private:
  // The patterns kept per entry: 印 and 備考, each also without its
  // bracketed parts.
  enum class PatternKind : std::uint8_t { Key, BareKey, Note, BareNote };
  struct Lookup;
  struct Cached;
  // The hit list while hits go: those kept so far, then the one looked at
  // and those after it.
  struct LiveHits {
    std::span<const int> kept, rest;
  };

  // What the walk must know of an entry before it reads its cells, in the
  // walk's order: made at the first lookup, as the dictionary's cells change
  // only at import.
  struct EntryFilter;
  const std::vector<EntryFilter>& Filters() const;

  int EntryCount() const;
  // The `Dic` row at a `DicOrder` position; 0 outside the table.
  int RowAt(int dpos) const;
  // Whether the entry's pattern of that kind matches `text`. An empty field,
  // or a derived pattern with nothing left, is no pattern and matches
  // nothing; a pattern that does not compile never matches and is noted in
  // the log.
  bool EntryMatches(int row, PatternKind kind, std::u16string_view text, Lookup& lk) const;
  bool ByBarePattern(int row, Lookup& lk) const;

  void ExplanationSearch(Lookup& lk, DicLookupResult& r) const;
  void Walk(Lookup& lk, DicLookupResult& r) const;
  int GeneralRules(Lookup& lk, const LiveHits& live, int row) const;
  void Exclude(Lookup& lk, DicLookupResult& r) const;

  const corpus::Corpus& corpus_;
  int itaiji_;
  dic_rules::RuleSet rules_;
  mutable std::unordered_map<std::uint32_t, std::unique_ptr<Cached>> patterns_;
  mutable std::vector<EntryFilter> filters_;
};

}  // namespace suizo::views
