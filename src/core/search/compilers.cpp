#include "core/search/compilers.h"

#include <algorithm>
#include <stdexcept>

#include "core/search/regex.h"
#include "core/text/like.h"
#include "core/text/sjis.h"
#include "core/text/utf16.h"
#include "core/text/variants.h"

namespace suizo::search {
namespace {

// `KensakuWord`'s frames, by `SrMethod`: each blank of the joined fragments
// becomes the middle.
struct Frame {
  std::u16string_view head, middle, tail;
};
constexpr Frame kFrames[] = {
    {u"^(?=.*", u")(?=.*", u")"},
    {u"^((?=.*", u")|(?=.*", u"))"},
    {u"^(?!.*((?=.*", u")|(?=.*", u")))"},
};

const Frame& FrameOf(Method method) {
  const int m = static_cast<int>(method);
  if (m < 0 || m > 2) throw std::invalid_argument("search method must be AND, OR or NOT");
  return kFrames[m];
}

std::u16string Framed(const std::vector<std::u16string>& fragments, const Frame& frame) {
  std::u16string joined;
  for (std::size_t i = 0; i < fragments.size(); ++i) {
    if (i > 0) joined += u' ';
    joined += fragments[i];
  }
  // The whole joined text, so a blank a fragment came to hold splits it too.
  return std::u16string(frame.head) + text::ReplaceAll(joined, u" ", frame.middle) +
         std::u16string(frame.tail);
}

// The signs the engine reads as operators outside a class.
constexpr std::u16string_view kSigns = u"\\^$.|?*+()[]{}";

// The length of the class "[" row "]" that opens `s`, or 0.
std::size_t ClassLength(std::u16string_view s, int itaiji) {
  const text::ItaijiRows& rows = text::ItaijiTbl();
  const std::size_t limit = itaiji == 1 ? text::kItaijiLastRow : text::kItaijiAlwaysRows;
  const std::u16string_view rest = s.substr(1);
  for (std::size_t r = 1; r <= limit; ++r) {
    const std::u16string& row = rows[r];
    if (!row.empty() && rest.size() > row.size() && rest.substr(0, row.size()) == row &&
        rest[row.size()] == u']') {
      return row.size() + 2;
    }
  }
  return 0;
}

// `KensakuDiv`'s rules of the kanji-only form, by window.
struct Substitution {
  std::u16string_view found, replacement;
};

// Okurigana of a reading to the characters of the Chinese text, in this
// order; "べからず" never fires, since "ず" has gone before it.
constexpr Substitution kSutraSubstitutions[] = {
    {u"より以来", u"以来"}, {u"より已来", u"已来"}, {u"ざ", u"不"},       {u"じ", u"不"},
    {u"ず", u"不"},         {u"ぜ", u"不"},         {u"知ろしめ", u"知"}, {u"をして", u"ε"},
    {u"しめ", u"ε"},        {u"しむ", u"ε"},        {u"より", u"従"},     {u"よって", u"従"},
    {u"べし", u"可"},       {u"べからず", u"不可"}, {u"少なし", u"少"},   {u"られ", u"α"},
    {u"らる", u"α"},        {u"これ", u"β"},        {u"ことな", u"γ"},    {u"とな", u"δ"},
    {u"をな", u"δ"},        {u"なし", u"γ"},        {u"なく", u"γ"},      {u"なき", u"γ"},
};

// Placeholders pass the sutra's kanji limit and only then become classes.
constexpr Substitution kPlaceholders[] = {
    {u"α", u"[見所]"}, {u"β", u"[是之]"}, {u"γ", u"[無莫勿靡]"},
    {u"δ", u"[為作]"}, {u"ε", u"[令使]"},
};

struct WindowRules {
  std::u16string_view deletions;
  bool sutra;
  int kanjiLimit;  // the lowest signed Shift-JIS code the kanji-only form keeps
};

WindowRules RulesOf(SearchWindow window) {
  switch (window) {
    case SearchWindow::Writings:
      return {u"ゝゞ不令従哉", false, -30561};
    case SearchWindow::Sources:
      return {u"ゝゞ不令於之従", false, -30561};
    case SearchWindow::Sutra:
      return {u"ゝゞ々", true, -31809};
  }
  throw std::invalid_argument("unknown search window");
}

std::u16string KanjiOnlyText(std::u16string s, const WindowRules& rules) {
  for (const char16_t c : rules.deletions) std::erase(s, c);
  if (rules.sutra) {
    for (const auto& [found, replacement] : kSutraSubstitutions) {
      s = text::ReplaceAll(s, found, replacement);
    }
  }
  return s;
}

// t of the table.
double RequiredCount(std::size_t distinct, bool sutra) {
  if (distinct < 4) return static_cast<double>(distinct);
  if (distinct < 10 || sutra) return 4;
  return static_cast<double>(distinct) / 2;
}

// The class row 6 makes of "－" and "-". The wildcard operator is given the
// two characters one at a time, so that no range can be read into it.
constexpr std::u16string_view kDashClass = u"[－-]";

// The units that "*" fragment "*" finds when the fragment takes exactly one
// unit, as the wildcard operator reads it; nothing for any other fragment.
std::optional<std::u16string> UnitsOf(std::u16string_view fragment) {
  if (fragment == kDashClass) return std::u16string(u"－-");
  if (fragment.size() == 1) {
    const char16_t c = fragment[0];
    if (c == u'#') return std::u16string(u"0123456789");
    if (c == u'*' || c == u'?' || c == u'[') return std::nullopt;
    return std::u16string(1, c);
  }
  if (fragment.size() < 3 || fragment.front() != u'[' || fragment.back() != u']') {
    return std::nullopt;
  }
  const std::u16string_view list = fragment.substr(1, fragment.size() - 2);
  // A "]" past the first place would close the list early; a "-" before the
  // last would make a range; a leading "!" negates.
  const std::size_t dash = list.find(u'-');
  if (list.front() == u'!' || list.find(u']', 1) != std::u16string_view::npos ||
      (dash != std::u16string_view::npos && dash + 1 != list.size())) {
    return std::nullopt;
  }
  return std::u16string(list);
}

}  // namespace

std::u16string EscapeStrays(std::u16string_view fragment, int itaiji) {
  std::u16string out;
  for (std::size_t i = 0; i < fragment.size();) {
    if (fragment[i] == u'[') {
      if (const std::size_t n = ClassLength(fragment.substr(i), itaiji); n != 0) {
        out += fragment.substr(i, n);
        i += n;
        continue;
      }
    }
    if (kSigns.find(fragment[i]) != std::u16string_view::npos) out += u'\\';
    out += fragment[i++];
  }
  return out;
}

// ---- the word search ----

struct WordQuery::Word {
  Regex regex;
  std::u16string lead;  // empty for the empty word, which is found everywhere

  // The first match starting at or after `start`, or npos.
  std::size_t Find(std::u16string_view field, std::size_t start) const {
    if (!lead.empty()) {
      start = text::FindAnyUnit(field, lead, start);
      if (start == std::u16string_view::npos) return start;
    }
    const auto found = regex.Find(field, start);
    return found ? found->index : std::u16string_view::npos;
  }
};

WordQuery::WordQuery(WordQuery&&) noexcept = default;
WordQuery& WordQuery::operator=(WordQuery&&) noexcept = default;
WordQuery::~WordQuery() = default;

namespace {

// The units a plain word can begin with: its first character or the members
// of its first class (a class's escapes add a backslash, which costs nothing).
std::u16string LeadUnits(std::u16string_view fragment, int itaiji) {
  if (fragment.empty()) return {};
  if (fragment[0] != u'[') return std::u16string(1, fragment[0]);
  const std::size_t n = ClassLength(fragment, itaiji);
  return std::u16string(fragment.substr(1, n - 2));
}

// A word made of characters that are no sign and of the table's classes:
// each piece matches one unit, and none a line end. A blank is no such
// character: the frame splits the joined words at every blank, also one that
// an iteration mark brought into a word.
bool IsPlain(std::u16string_view fragment, int itaiji) {
  for (std::size_t i = 0; i < fragment.size();) {
    const char16_t c = fragment[i];
    if (c == u'[') {
      const std::size_t n = ClassLength(fragment.substr(i), itaiji);
      if (n == 0) return false;
      i += n;
      continue;
    }
    if (c == u'\r' || c == u'\n' || c == u' ' || kSigns.find(c) != std::u16string_view::npos)
      return false;
    ++i;
  }
  return true;
}

}  // namespace

std::optional<WordQuery> WordQuery::Compile(std::u16string_view boxText, Method method,
                                            int itaiji) {
  const Frame& frame = FrameOf(method);
  const std::u16string trimmed = text::SpaceTrim(boxText);
  const auto words = text::Split(trimmed, u" ");
  if (words.empty()) return std::nullopt;

  WordQuery query;
  query.sw_.assign(words.begin(), words.end());
  text::SortSw(query.sw_);
  for (auto& word : query.sw_) word = text::ItaijiPattern(word, itaiji);

  query.pattern_ = Framed(query.sw_, frame);
  try {
    query.regex_ = std::make_unique<Regex>(query.pattern_);
  } catch (const RegexError&) {
    // The iteration marks can turn into a stray "(" or "[", which the engine
    // the searches were made for refused as well; read them as characters.
    std::vector<std::u16string> escaped;
    for (const auto& f : query.sw_) escaped.push_back(EscapeStrays(f, itaiji));
    query.pattern_ = Framed(escaped, frame);
    query.regex_ = std::make_unique<Regex>(query.pattern_);
  }

  // The frame tries every line start and, from each, every place of the
  // line; the words alone are found in one pass with the engine's own
  // start-character scan.
  query.method_ = method;
  const bool plain = std::all_of(query.sw_.begin(), query.sw_.end(),
                                 [itaiji](const std::u16string& f) { return IsPlain(f, itaiji); });
  if (plain) {
    const std::size_t n = method == Method::And ? 1 : query.sw_.size();
    for (std::size_t i = 0; i < n; ++i) {
      query.anywhere_.push_back({Regex(query.sw_[i]), LeadUnits(query.sw_[i], itaiji)});
    }
  }
  return query;
}

// NOT: true as soon as one line holds none of the words. Lines end at CR,
// LF or CR LF, and a line end that closes the field opens an empty line.
bool WordQuery::SomeLineLacksAll(std::u16string_view field) const {
  std::size_t start = 0;
  for (;;) {
    std::size_t end = start;
    while (end < field.size() && field[end] != u'\r' && field[end] != u'\n') ++end;
    // The line holds a word if one is found starting in it.
    const bool holds = std::any_of(anywhere_.begin(), anywhere_.end(), [&](const Word& word) {
      const std::size_t found = word.Find(field, start);
      return found != std::u16string_view::npos && found <= end;
    });
    if (!holds) return true;
    if (end == field.size()) return false;
    start =
        end + (field[end] == u'\r' && end + 1 < field.size() && field[end + 1] == u'\n' ? 2 : 1);
  }
}

std::optional<std::u16string_view> WordQuery::NecessaryUnits() const {
  if (method_ != Method::And || anywhere_.empty() || anywhere_.front().lead.empty())
    return std::nullopt;
  return anywhere_.front().lead;
}

bool WordQuery::Matches(std::u16string_view field) const {
  if (anywhere_.empty()) return regex_->Test(field);
  switch (method_) {
    case Method::And:
      return anywhere_.front().Find(field, 0) != std::u16string_view::npos && regex_->Test(field);
    case Method::Or:
      return std::any_of(anywhere_.begin(), anywhere_.end(), [&](const Word& word) {
        return word.Find(field, 0) != std::u16string_view::npos;
      });
    case Method::Not:
      return SomeLineLacksAll(field);
  }
  return regex_->Test(field);
}

// ---- the split search ----

struct SplitQuery::Entry {
  // Set when the fragment is more than one character or class: the general
  // wildcard test, "*" fragment "*".
  std::optional<text::LikePattern> like;
};

SplitQuery::SplitQuery(SplitQuery&&) noexcept = default;
SplitQuery& SplitQuery::operator=(SplitQuery&&) noexcept = default;
SplitQuery::~SplitQuery() = default;

std::optional<SplitQuery> SplitQuery::Compile(std::u16string_view boxText, int divMode,
                                              SearchWindow window, int itaiji) {
  if (divMode != 1 && divMode != 2) throw std::invalid_argument("split mode must be 1 or 2");
  const WindowRules rules = RulesOf(window);
  std::u16string s = text::SpaceTrim(boxText);
  std::erase(s, u' ');
  if (divMode == 2) s = KanjiOnlyText(std::move(s), rules);

  std::vector<std::u16string> sw;
  for (const char16_t c : s) {
    if (divMode == 1 || text::SjisCode(c) >= rules.kanjiLimit) sw.emplace_back(1, c);
  }
  if (sw.empty()) return std::nullopt;

  SplitQuery query;
  for (auto& entry : sw) {
    entry = text::ItaijiPattern(entry, itaiji);
    if (rules.sutra) {
      for (const auto& [placeholder, cls] : kPlaceholders) {
        if (entry == placeholder) entry = cls;
      }
    }
    // Repeats go by pattern, so two members of one variant group are one.
    if (std::find(query.sw_.begin(), query.sw_.end(), entry) == query.sw_.end()) {
      query.sw_.push_back(std::move(entry));
    }
  }
  query.required_ = RequiredCount(query.sw_.size(), rules.sutra);
  query.earlyStop_ = !rules.sutra;

  query.unitMask_.assign(65536 / 64, 0);
  for (std::uint32_t i = 0; i < query.sw_.size(); ++i) {
    Entry entry;
    if (const auto units = UnitsOf(query.sw_[i])) {
      for (const char16_t c : *units) {
        query.unitMask_[c >> 6] |= std::uint64_t{1} << (c & 63);
        query.unitEntries_.emplace_back(c, i);
      }
      ++query.unitEntryCount_;
    } else {
      entry.like.emplace(u"*" + query.sw_[i] + u"*");
    }
    query.entries_.push_back(std::move(entry));
  }
  std::sort(query.unitEntries_.begin(), query.unitEntries_.end());
  return query;
}

int SplitQuery::Score(std::u16string_view field, double bar) const {
  // One pass over the field finds every one-unit entry at once; what it
  // finds is what "*" fragment "*" would.
  found_.assign(entries_.size(), 0);
  std::size_t missing = unitEntryCount_;
  for (std::size_t k = 0; k < field.size() && missing > 0; ++k) {
    const char16_t c = field[k];
    if (((unitMask_[c >> 6] >> (c & 63)) & 1) == 0) continue;
    auto it = std::lower_bound(unitEntries_.begin(), unitEntries_.end(),
                               std::pair<char16_t, std::uint32_t>(c, 0));
    for (; it != unitEntries_.end() && it->first == c; ++it) {
      if (found_[it->second] == 0) {
        found_[it->second] = 1;
        --missing;
      }
    }
  }

  int count = 0;
  const int last = static_cast<int>(entries_.size()) - 1;
  for (int i = 0; i <= last; ++i) {
    const Entry& entry = entries_[static_cast<std::size_t>(i)];
    if (entry.like ? entry.like->Matches(field) : found_[static_cast<std::size_t>(i)] != 0) {
      ++count;
    }
    // The entries left can no longer lift the count to the bar.
    if (earlyStop_ && count < bar - (last - i)) break;
  }
  return count;
}

}  // namespace suizo::search
