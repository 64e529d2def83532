#include "core/text/variants.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "core/text/sjis.h"
#include "core/text/utf16.h"

namespace suizo::text {
namespace {

constexpr std::u16string_view kListedRows[] = {
#include "core/text/variant_rows.inc"
};
static_assert(std::size(kListedRows) == kItaijiLastRow + 1);

// Row 1 has always been filled from these codes rather than written out.
constexpr int kQuoteCodes[] = {0x8165, 0x8166, 0x8167, 0x8168, 34};

// The kana that "ゞ" repeats as they stand; any other kana it voices.
constexpr std::u16string_view kVoicedKana = u"がぎぐげござじずぜぞだぢづでどばびぶべぼ";

// What code page 932 yields for a code that has no character.
constexpr char16_t kNoCharacter = u'・';

ItaijiRows ItaijiInit() {
  ItaijiRows rows;
  for (std::size_t r = 0; r < rows.size(); ++r) rows[r] = kListedRows[r];
  for (const int code : kQuoteCodes) rows[1] += text::SjisChar(code).value();
  return rows;
}

struct Variants {
  ItaijiRows rows;
  // The first row of each character, sorted by character. Later occurrences
  // are left out, so the lookup keeps the first-row-wins order of a walk.
  std::vector<std::pair<char16_t, std::size_t>> firstRow;

  Variants() : rows(ItaijiInit()) {
    for (std::size_t r = 1; r < rows.size(); ++r) {
      for (const char16_t c : rows[r]) firstRow.emplace_back(c, r);
    }
    std::stable_sort(firstRow.begin(), firstRow.end(),
                     [](const auto& a, const auto& b) { return a.first < b.first; });
    firstRow.erase(std::unique(firstRow.begin(), firstRow.end(),
                               [](const auto& a, const auto& b) { return a.first == b.first; }),
                   firstRow.end());
  }

  // 0 when no row holds c.
  std::size_t FirstRow(char16_t c) const {
    const auto it =
        std::lower_bound(firstRow.begin(), firstRow.end(), c,
                         [](const auto& entry, char16_t key) { return entry.first < key; });
    return it != firstRow.end() && it->first == c ? it->second : 0;
  }
};

const Variants& TheVariants() {
  static const Variants variants;
  return variants;
}

char16_t Voiced(char16_t p) {
  if (kVoicedKana.find(p) != std::u16string_view::npos) return p;
  return text::SjisChar(text::SjisCode(p) + 1).value_or(kNoCharacter);
}

// The two passes see the classes already made, so a mark after a class reads
// its closing bracket; that has never been mended. ゝ runs after ゞ.
void ResolveIterationMarks(std::u16string& s) {
  for (std::size_t i = 1; i < s.size(); ++i) {
    if (s[i] == u'ゞ') s[i] = Voiced(s[i - 1]);
  }
  for (std::size_t i = 1; i < s.size(); ++i) {
    if (s[i] == u'ゝ') s[i] = s[i - 1];
  }
}

}  // namespace

const ItaijiRows& ItaijiTbl() {
  return TheVariants().rows;
}

std::u16string ItaijiPattern(std::u16string_view word, int itaiji) {
  const Variants& v = TheVariants();
  const std::size_t limit = itaiji == 1 ? kItaijiLastRow : kItaijiAlwaysRows;
  std::u16string out;
  for (const char16_t c : word) {
    const std::size_t row = v.FirstRow(c);
    if (row != 0 && row <= limit) {
      out += u'[';
      out += v.rows[row];
      out += u']';
    } else {
      out += c;
    }
  }
  // Fires only where 人 stayed literal, that is with Itaiji off.
  out = text::ReplaceAll(out, u"人人", u"人々");
  const char16_t separated[] = {u'人', kListSeparator, u'人'};
  out = text::ReplaceAll(out, std::u16string_view(separated, 3), u"人々");
  ResolveIterationMarks(out);
  return out;
}

std::u16string SpaceTrim(std::u16string_view text) {
  std::u16string joined;
  for (const char16_t c : text) {
    if (c != u'\r' && c != u'\n') joined += c;
  }
  // The trim knows U+0020 only, so ideographic spaces at the ends survive it
  // and become one blank below.
  std::u16string out;
  bool inRun = false;
  for (const char16_t c : text::TrimSpace(joined)) {
    const bool blank = c == u' ' || c == u'\u3000';
    if (!(blank && inRun)) out += blank ? u' ' : c;
    inRun = blank;
  }
  return out;
}

void SortSw(std::vector<std::u16string>& sw) {
  const std::size_t n = sw.size();
  for (std::size_t i = 0; i + 1 < n; ++i) {
    for (std::size_t j = i + 1; j < n; ++j) {
      if (sw[i].size() < sw[j].size()) std::swap(sw[i], sw[j]);
    }
  }
}

}  // namespace suizo::text
