#include "core/reader/highlight.h"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <vector>

#include "core/search/compilers.h"
#include "core/search/regex.h"

namespace suizo::reader {

namespace {

// Chr(-31600) of the double-byte code page, a Cyrillic letter the corpus
// never holds: a marked stretch keeps its length, so positions stay valid,
// and a later word cannot match it again.
constexpr char16_t kMask = u'\u044E';

bool IsResultColour(std::uint32_t colour) {
  return colour == search::kWordColour || colour == search::kSplit1Colour ||
         colour == search::kSplit2Colour;
}

// One call's working text: the slots of `arr` and the masked text the words
// run over.
class Marker {
 public:
  Marker(std::u16string_view text, int itaiji)
      : original_(text), masked_(text), slot_(text.size(), kOwn), itaiji_(itaiji) {}

  // Marks every match of each fragment in list order; returns how many
  // fragments matched at all and adds the marks to `marks`.
  int MarkList(const std::vector<std::u16string>& words, int count, int& marks) {
    int matched = 0;
    const auto n =
        std::min<std::size_t>(static_cast<std::size_t>(std::max(count, 0)), words.size());
    for (std::size_t w = 0; w < n; ++w) {
      if (MarkWord(words[w], marks)) ++matched;
    }
    return matched;
  }

  // The join of `arr`.
  std::u16string Join() const {
    std::u16string out;
    out.reserve(original_.size() + values_.size() * 13);
    for (std::size_t p = 0; p < slot_.size(); ++p) {
      if (slot_[p] == kOwn) {
        out += original_[p];
      } else if (slot_[p] >= 0) {
        out += values_[static_cast<std::size_t>(slot_[p])];
      }
    }
    return out;
  }

 private:
  static constexpr std::int32_t kOwn = -1;    // still the text's own character
  static constexpr std::int32_t kEmpty = -2;  // swallowed by a mark before it

  // One short text per expression: machine code would cost more than it saves.
  std::optional<search::Regex> Compile(const std::u16string& fragment) const {
    try {
      return search::Regex(fragment, false);
    } catch (const search::RegexError&) {
    }
    // A stray sign from an iteration mark: read it as a character.
    try {
      return search::Regex(search::EscapeStrays(fragment, itaiji_), false);
    } catch (const search::RegexError&) {
      return std::nullopt;
    }
  }

  bool MarkWord(const std::u16string& fragment, int& marks) {
    const auto regex = Compile(fragment);
    if (!regex) return false;
    // All matches over the text as it stands, then the marks: a match never
    // overlaps one of the same word.
    std::vector<search::Regex::Match> found;
    for (std::size_t start = 0; start <= masked_.size();) {
      const auto m = regex->Find(masked_, start);
      if (!m) break;
      // An empty match would mark nothing and swallow a character.
      if (m->length == 0) {
        start = m->index + 1;
        continue;
      }
      found.push_back(*m);
      start = m->index + m->length;
    }
    for (const auto& m : found) {
      values_.push_back(u"<span>" + masked_.substr(m.index, m.length) + u"</span>");
      slot_[m.index] = static_cast<std::int32_t>(values_.size() - 1);
      for (std::size_t q = m.index + 1; q < m.index + m.length; ++q) slot_[q] = kEmpty;
      std::fill_n(masked_.begin() + static_cast<std::ptrdiff_t>(m.index), m.length, kMask);
      ++marks;
    }
    return !found.empty();
  }

  std::u16string_view original_;
  std::u16string masked_;
  std::vector<std::int32_t> slot_;  // per position: kOwn, kEmpty or the index of its mark
  std::vector<std::u16string> values_;
  int itaiji_;
};

// Under AND every word must show, under OR one is enough; under NOT a
// missing word is what was asked for.
bool FallsShort(int matched, int count, search::Method method) {
  return (matched < count && method == search::Method::And) ||
         (matched == 0 && method != search::Method::Not);
}

}  // namespace

std::u16string MarkWords(std::u16string_view text, const std::vector<std::u16string>& words,
                         int count, int itaiji) {
  Marker marker(text, itaiji);
  int marks = 0;
  marker.MarkList(words, count, marks);
  return marker.Join();
}

Highlighter::Highlighter(const search::SearchEngine& engine, int itaiji)
    : engine_(&engine), itaiji_(itaiji) {}

std::u16string Highlighter::HiLight(std::u16string_view text, int pane, int lpos) {
  HLflag = -1;
  HLerror = 0;
  const search::SearchEngine& e = *engine_;
  // A line that is no hit has nothing to mark, in any pane.
  if (e.getSrf(lpos) != 1) return std::u16string(text);

  Marker marker(text, itaiji_);
  // One word list over the text: a level of the stack, or the live search.
  const auto apply = [&](const std::vector<std::u16string>& words, int count,
                         search::Method method) {
    HLflag = 0;
    if (words.empty() || words.front().empty()) {
      HLflag = 1;
      return;
    }
    const int matched = marker.MarkList(words, count, HLflag);
    if (FallsShort(matched, count, method)) HLerror = 1;
  };

  for (int k = 0; k < e.RefineCount; ++k) {
    const search::RefineLevel& level = e.RefineStack(k);
    if (level.Srk == pane) apply(level.Sw, level.Swn, level.SrMethod);
  }
  if (e.Srk == pane && IsResultColour(e.Label3Colour)) apply(e.getSw(), e.Swn, e.SrMethod);
  return marker.Join();
}

}  // namespace suizo::reader
