#include "core/views/dictionary_lookup.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "core/corpus/schema.h"
#include "core/search/compilers.h"
#include "core/search/regex.h"
#include "core/text/sjis.h"
#include "core/text/utf16.h"
#include "core/text/variants.h"

namespace suizo::views {
namespace {

namespace dic = corpus::dic;
constexpr int kNote = 9;  // 備考

constexpr std::size_t npos = std::u16string_view::npos;

bool IsHiragana(char16_t c) {
  const int code = static_cast<std::uint16_t>(text::SjisCode(c));
  return code >= 0x829F && code <= 0x82F1;
}

bool AllHiragana(std::u16string_view s) {
  return !s.empty() && std::all_of(s.begin(), s.end(), IsHiragana);
}

bool IsOpen(char16_t c) {
  return c == u'(' || c == u'（';
}
bool IsClose(char16_t c) {
  return c == u')' || c == u'）';
}

// O: the selection without its bracketed parts, "（" counting as "(". An
// unclosed bracket stays.
std::u16string WithoutParens(std::u16string_view w) {
  std::u16string out;
  for (std::size_t i = 0; i < w.size();) {
    if (IsOpen(w[i])) {
      std::size_t j = i + 1;
      while (j < w.size() && !IsClose(w[j])) ++j;
      if (j < w.size()) {
        i = j + 1;
        continue;
      }
    }
    out += w[i++];
  }
  return out;
}

// A pattern without its classes "[...]" and groups "(...)", each up to the
// first closing sign; an unclosed one stays.
void WithoutBrackets(std::u16string_view p, std::u16string& out) {
  out.clear();
  for (std::size_t i = 0; i < p.size();) {
    if (p[i] == u'[' || p[i] == u'(') {
      const std::size_t close = p.find(p[i] == u'[' ? u']' : u')', i + 1);
      if (close != npos) {
        i = close + 1;
        continue;
      }
    }
    out += p[i++];
  }
}

// The head word the exclusion works on: without a last "･" or "・".
std::u16string_view WithoutLastDot(std::u16string_view c) {
  if (!c.empty() && (c.back() == u'･' || c.back() == u'・')) c.remove_suffix(1);
  return c;
}

// The head word before its "(".
std::u16string_view BeforeParen(std::u16string_view c) {
  const std::size_t at = c.find_first_of(u"(（");
  return at == npos ? c : c.substr(0, at);
}

// The units any match of `p` must begin with: its first element when that
// is a plain character or a plain class, not optional, and no alternation
// stands anywhere. Nothing when that cannot be told. A text holding none of
// them is no match, and its pattern need not be compiled.
std::optional<std::u16string_view> LeadUnits(std::u16string_view p) {
  constexpr std::u16string_view kSigns = u"\\^$.|?*+()[]{}";
  if (p.empty() || p.find(u'|') != npos) return std::nullopt;
  std::u16string_view units;
  std::size_t end = 0;
  if (p[0] == u'[') {
    const std::size_t close = p.find(u']', 2);  // a "]" right after "[" is a member
    if (close == npos) return std::nullopt;
    units = p.substr(1, close - 1);
    if (units[0] == u'^' || units.find_first_of(u"\\-[") != npos) return std::nullopt;
    end = close + 1;
  } else if (kSigns.find(p[0]) != npos) {
    return std::nullopt;
  } else {
    units = p.substr(0, 1);
    end = 1;
  }
  if (end < p.size() && (p[end] == u'?' || p[end] == u'*' || p[end] == u'{')) return std::nullopt;
  return units;
}

// A set of units hashed to 256 bits by their low byte: two sets that share
// no bit share no unit.
using UnitSet = std::array<std::uint64_t, 4>;

void AddUnits(UnitSet& set, std::u16string_view units) {
  for (const char16_t c : units) set[(c >> 6) & 3] |= std::uint64_t{1} << (c & 63);
}

bool Meet(const UnitSet& a, const UnitSet& b) {
  return ((a[0] & b[0]) | (a[1] & b[1]) | (a[2] & b[2]) | (a[3] & b[3])) != 0;
}

constexpr std::u16string_view kPatternNames[] = {u"印", u"印(括弧外)", u"備考", u"備考(括弧外)"};

std::u16string Num(std::int64_t n) {
  return text::IntText(n);
}

}  // namespace

// An entry is a hit of the walk only when the selection's words stand in its
// reading or head word, or, for a single word, when the entry stands in the
// selection: its reading, or one of its patterns, each of which must find
// its first unit in the selection.
struct DictionaryLookup::EntryFilter {
  UnitSet units{};       // of the reading and the head word
  UnitSet leads{};       // the reading's first unit, and those its patterns can begin with
  bool anyLead = false;  // a pattern whose first units cannot be told
};

struct DictionaryLookup::Cached {
  std::u16string source;
  std::unique_ptr<search::Regex> regex;  // null: the pattern does not compile
};

// One call's state: the selection, its patterns, and where the log goes.
struct DictionaryLookup::Lookup {
  std::u16string W, O;
  std::optional<search::WordQuery> PW, PO;
  int swn = 0;
  std::vector<std::u16string>* log = nullptr;
  std::u16string scratch;            // a derived pattern, rebuilt per test
  std::vector<std::uint32_t> noted;  // patterns already logged as faulty
};

namespace {

// The six marks of the walk, 0 meaning unset.
struct Marks {
  int Good = 0;
  int Better = 0;
  int PrefixYomi = 0;
  int PrefixKoumoku = 0;
  int BestYomi = 0;
  int BestKoumoku = 0;
  std::size_t bestLen = 0;
};

}  // namespace

DictionaryLookup::DictionaryLookup(const corpus::Corpus& corpus, int itaiji)
    : corpus_(corpus), itaiji_(itaiji) {}

DictionaryLookup::DictionaryLookup(const corpus::Corpus& corpus, int itaiji,
                                   std::span<const dic_rules::WordRule> rules)
    : corpus_(corpus), itaiji_(itaiji), rules_(rules) {}

DictionaryLookup::~DictionaryLookup() = default;

int DictionaryLookup::RowAt(int dpos) const {
  if (dpos < 1 || static_cast<std::size_t>(dpos) >= corpus_.DicOrder.size()) return 0;
  const int row = corpus_.DicOrder[static_cast<std::size_t>(dpos)];
  return row >= 1 && row <= corpus_.Dic().rows() ? row : 0;
}

bool DictionaryLookup::EntryMatches(int row, PatternKind kind, std::u16string_view text,
                                    Lookup& lk) const {
  const corpus::Table& dic = corpus_.Dic();
  const bool fromKey = kind == PatternKind::Key || kind == PatternKind::BareKey;
  const std::u16string_view field = dic.Get(row, fromKey ? dic::kLookupKey : kNote);
  // An empty field, or nothing left outside the brackets, is no pattern.
  if (field.empty()) return false;
  std::u16string_view pattern = field;
  if (kind == PatternKind::BareKey || kind == PatternKind::BareNote) {
    WithoutBrackets(field, lk.scratch);
    pattern = lk.scratch;
    if (pattern.empty()) return false;
  }
  if (const auto lead = LeadUnits(pattern); lead && text::FindAnyUnit(text, *lead) == npos) {
    return false;
  }

  const auto id = static_cast<std::uint32_t>(row) * 4 + static_cast<std::uint32_t>(kind);
  std::unique_ptr<Cached>& slot = patterns_[id];
  if (!slot || slot->source != pattern) {
    slot = std::make_unique<Cached>();
    slot->source = pattern;
    try {
      // Many small patterns, each tried on a short selection: the
      // interpreter keeps them small.
      slot->regex = std::make_unique<search::Regex>(pattern, false);
    } catch (const search::RegexError&) {
      slot->regex.reset();
    }
  }
  if (!slot->regex) {
    if (std::find(lk.noted.begin(), lk.noted.end(), id) == lk.noted.end()) {
      lk.noted.push_back(id);
      lk.log->push_back(u"パターン不正：" + std::u16string(kPatternNames[static_cast<int>(kind)]) +
                        u" 行" + Num(row) + u" " + std::u16string(pattern));
    }
    return false;
  }
  return slot->regex->Test(text);
}

DicLookupResult DictionaryLookup::KensakuDic(std::u16string_view boxText, int srTarget) const {
  DicLookupResult r;
  Lookup lk;
  lk.log = &r.log;
  lk.W = text::SpaceTrim(boxText);
  // A box of blanks holds no word.
  if (lk.W.find_first_not_of(u' ') == npos) return r;
  if (std::any_of(lk.W.begin(), lk.W.end(), IsOpen)) {
    lk.O = text::SpaceTrim(WithoutParens(lk.W));
    if (lk.O.find_first_not_of(u' ') == npos) lk.O.clear();
  }
  lk.PW = search::WordQuery::Compile(lk.W, search::Method::And, itaiji_);
  if (!lk.PW) return r;
  if (!lk.O.empty()) lk.PO = search::WordQuery::Compile(lk.O, search::Method::And, itaiji_);
  if (!lk.PO) lk.O.clear();
  r.Sw = lk.PW->Sw();
  r.Swn = static_cast<int>(r.Sw.size());
  lk.swn = r.Swn;

  if (srTarget == kDicTargetExplanation) {
    ExplanationSearch(lk, r);
  } else {
    Walk(lk, r);
    Exclude(lk, r);
  }
  if (r.Srn > 0) r.log.push_back(u"Dpos=" + Num(r.Dpos()));
  return r;
}

const std::vector<DictionaryLookup::EntryFilter>& DictionaryLookup::Filters() const {
  const int n = EntryCount();
  if (filters_.size() == static_cast<std::size_t>(n) + 1) return filters_;
  const corpus::Table& dic = corpus_.Dic();
  filters_.assign(static_cast<std::size_t>(n) + 1, EntryFilter{});
  std::u16string scratch;
  for (int i = 1; i <= n; ++i) {
    const int row = RowAt(corpus_.DicYomi[static_cast<std::size_t>(i)]);
    if (row == 0) continue;
    EntryFilter& f = filters_[static_cast<std::size_t>(i)];
    const std::u16string_view Y = dic.Get(row, dic::kReading);
    AddUnits(f.units, Y);
    AddUnits(f.units, dic.Get(row, dic::kHeadWord));
    AddUnits(f.leads, Y.substr(0, 1));
    const auto lead = [&](std::u16string_view pattern) {
      if (pattern.empty()) return;  // no pattern: never a match
      if (const auto units = LeadUnits(pattern)) {
        AddUnits(f.leads, *units);
      } else {
        f.anyLead = true;
      }
    };
    // As `EntryMatches` and `ByBarePattern` read them.
    const std::u16string_view key = dic.Get(row, dic::kLookupKey);
    lead(key);
    if (key.size() > 1 && key.find_first_of(u"[(", 1) != npos) {
      WithoutBrackets(key, scratch);
      lead(scratch);
    }
    const std::u16string_view note = dic.Get(row, kNote);
    if (note.size() > 1 && note.find_first_of(u"[(", 1) != npos) {
      WithoutBrackets(note, scratch);
      lead(scratch);
    }
  }
  return filters_;
}

int DictionaryLookup::EntryCount() const {
  const auto yomi = static_cast<int>(corpus_.DicYomi.size()) - 1;
  return std::max(0, std::min(corpus_.DisMaxY, yomi));
}

void DictionaryLookup::ExplanationSearch(Lookup& lk, DicLookupResult& r) const {
  const corpus::Table& dic = corpus_.Dic();
  for (int i = 1, n = EntryCount(); i <= n; ++i) {
    const int dpos = corpus_.DicYomi[static_cast<std::size_t>(i)];
    const int row = RowAt(dpos);
    if (row == 0 || !lk.PW->Matches(dic.Get(row, dic::kExplanation))) continue;
    r.Sr.push_back(dpos);
    ++r.Srn;
  }
  r.SrnPos = r.Srn > 0 ? 1 : 0;
}

void DictionaryLookup::Walk(Lookup& lk, DicLookupResult& r) const {
  const corpus::Table& dic = corpus_.Dic();
  const std::u16string_view W = lk.W, O = lk.O;
  const bool one = lk.swn == 1;
  Marks m;
  const auto headLenOfHit = [&](int hit, std::u16string_view current) -> std::size_t {
    // Mark 0 reads as an entry without a head word.
    if (hit <= 0) return 0;
    if (hit > r.Srn) return current.size();  // the entry being walked
    return dic.Get(RowAt(r.Sr[static_cast<std::size_t>(hit)]), dic::kHeadWord).size();
  };

  // The units an entry must hold for the words to stand in it, and those of
  // the selection an entry's own patterns must meet.
  UnitSet need{}, selection{};
  bool needAny = !filterEntries;
  for (const std::optional<search::WordQuery>* q : {&lk.PW, &lk.PO}) {
    if (!q->has_value()) continue;
    if (const auto units = (*q)->NecessaryUnits()) {
      AddUnits(need, *units);
    } else {
      needAny = true;
    }
  }
  AddUnits(selection, W);
  AddUnits(selection, O);
  const std::vector<EntryFilter>& filters = Filters();

  for (int i = 1, n = EntryCount(); i <= n; ++i) {
    const EntryFilter& f = filters[static_cast<std::size_t>(i)];
    if (!needAny && !Meet(f.units, need) && !(one && (f.anyLead || Meet(f.leads, selection))))
      continue;
    const int dpos = corpus_.DicYomi[static_cast<std::size_t>(i)];
    const int row = RowAt(dpos);
    if (row == 0) continue;
    const std::u16string_view C = dic.Get(row, dic::kHeadWord);
    const std::u16string_view Y = dic.Get(row, dic::kReading);
    const int hit = r.Srn + 1;
    bool isHit = false;
    const auto set = [hit](int& mark) {
      if (mark == 0) mark = hit;
    };

    // By reading and by head word, the selection within the entry.
    if (W.size() <= Y.size() && lk.PW->Matches(Y)) {
      isHit = true;
      set(m.Good);
      if (one && Y == W) {
        set(m.BestYomi);
      } else if (one && Y.starts_with(W)) {
        set(m.PrefixYomi);
      }
    }
    if (!O.empty() && O.size() <= Y.size() && lk.PO->Matches(Y)) {
      isHit = true;
      set(m.Good);
      if (one && Y == O) {
        set(m.BestYomi);
      } else if (one && Y.starts_with(O)) {
        set(m.PrefixYomi);
      }
    }
    if (W.size() <= C.size() && lk.PW->Matches(C)) {
      isHit = true;
      set(m.Better);
      if (one && C == W) {
        set(m.BestKoumoku);
      } else if (one && lk.PW->Matches(C.substr(0, W.size()))) {
        set(m.PrefixKoumoku);
      }
    }
    if (!O.empty() && O.size() <= C.size() && lk.PO->Matches(C)) {
      isHit = true;
      set(m.Better);
      if (one && C.size() == O.size()) {
        set(m.BestKoumoku);
      } else if (one && lk.PO->Matches(C.substr(0, O.size()))) {
        set(m.PrefixKoumoku);
      }
    }

    // One word only: the entry within the selection.
    if (one) {
      if ((!Y.empty() && Y.size() < W.size() && text::Contains(W, Y)) ||
          (!Y.empty() && Y.size() < O.size() && text::Contains(O, Y))) {
        isHit = true;
        r.log.push_back(u"よみ部分一致：" + std::u16string(C));
        if (Y.size() > m.bestLen) {
          m.bestLen = Y.size();
          m.Good = hit;
        }
      } else if (C.size() < W.size() && EntryMatches(row, PatternKind::Key, W, lk)) {
        isHit = true;
        if (C.size() >= m.bestLen) {
          m.bestLen = C.size();
          m.Good = hit;
          if (!C.empty() && text::Contains(W, C) && headLenOfHit(m.Better, C) < m.bestLen) {
            m.Better = hit;
          }
        }
      } else if (C.size() < O.size() && EntryMatches(row, PatternKind::Key, O, lk)) {
        isHit = true;
        if (C.size() > m.bestLen) {
          m.bestLen = C.size();
          m.Good = hit;
        }
      } else if (ByBarePattern(row, lk)) {
        isHit = true;
        const std::u16string_view T = BeforeParen(C);
        if (T.size() > m.bestLen) {
          m.bestLen = T.size();
          m.Good = hit;
        }
      }
    }

    if (isHit) {
      r.Sr.push_back(dpos);
      ++r.Srn;
    }
  }

  // The choice: the highest mark set.
  int choice = m.Good;
  const std::pair<std::u16string_view, int> marks[] = {
      {u"Good", m.Good},
      {u"Better", m.Better},
      {u"Prefixよみ", m.PrefixYomi},
      {u"Prefix項目", m.PrefixKoumoku},
      {u"Bestよみ", m.BestYomi},
      {u"Best項目", m.BestKoumoku},
  };
  for (const auto& [name, mark] : marks) {
    if (mark == 0) continue;
    choice = mark;
    r.log.push_back(std::u16string(name) + u"=" + Num(mark));
  }
  r.SrnPos = choice;
}

// Step of last resort: the head word's pattern, or else the note's, with its
// bracketed parts taken out, found in the selection.
bool DictionaryLookup::ByBarePattern(int row, Lookup& lk) const {
  const corpus::Table& dic = corpus_.Dic();
  const std::u16string_view key = dic.Get(row, dic::kLookupKey);
  if (key.size() > 1 && key.find_first_of(u"[(", 1) != npos &&
      EntryMatches(row, PatternKind::BareKey, lk.W, lk)) {
    return true;
  }
  const std::u16string_view note = dic.Get(row, kNote);
  return note.size() > 1 && note.find_first_of(u"[(", 1) != npos &&
         EntryMatches(row, PatternKind::BareNote, lk.W, lk);
}

// The general rules on hit `h` of the live list; the number of the rule that
// rejects, or 0.
int DictionaryLookup::GeneralRules(Lookup& lk, const LiveHits& live, int row) const {
  const corpus::Table& dic = corpus_.Dic();
  const std::u16string_view W = lk.W;
  const std::u16string_view C = WithoutLastDot(dic.Get(row, dic::kHeadWord));
  const std::u16string_view Y = dic.Get(row, dic::kReading);
  const bool K = AllHiragana(C);

  // A single character that a longer hit holds, or that its note ties to
  // another single character.
  if (C.size() == 1 && !Y.empty() && Y != W) {
    const bool heldInW = text::Contains(W, C);
    for (const std::span<const int> run : {live.kept, live.rest}) {
      for (const int dpos : run) {
        const int other = RowAt(dpos);
        if (other == 0) continue;
        const std::u16string_view T = dic.Get(other, dic::kHeadWord);
        if (T.size() >= 2 && EntryMatches(row, PatternKind::Key, T, lk)) return 1;
        if (T.size() == 1 && !heldInW && EntryMatches(row, PatternKind::Note, T, lk)) return 1;
      }
    }
  }
  if (!K && C.size() >= 2 && Y.size() == 3 && text::Contains(W, Y) && C != W && Y != W) return 2;
  if (Y != W && Y.size() == 2) {
    // P: what of 印 stands outside its brackets; with nothing there, nothing
    // can be missing from W.
    WithoutBrackets(dic.Get(row, dic::kLookupKey), lk.scratch);
    if (!lk.scratch.empty() && !EntryMatches(row, PatternKind::BareKey, W, lk)) return 3;
  }
  if (Y != W && Y == C && Y.size() == 1) return 4;
  if (Y != W && Y.size() == 1 && !text::Contains(W, C)) return 5;
  if (K && C.size() == 2 && dic.Get(row, dic::kExplanation).starts_with(u"⇒") &&
      !lk.PW->Matches(C)) {
    return 6;
  }
  return 0;
}

void DictionaryLookup::Exclude(Lookup& lk, DicLookupResult& r) const {
  const corpus::Table& dic = corpus_.Dic();
  // The list as it stands while hits go: the hits kept so far, then hit h
  // and the ones after it.
  std::vector<int> kept;
  kept.reserve(static_cast<std::size_t>(r.Srn));
  int pos = r.SrnPos;
  for (int h = 1; h <= r.Srn; ++h) {
    const int dpos = r.Sr[static_cast<std::size_t>(h)];
    const int row = RowAt(dpos);
    const LiveHits live{kept, std::span<const int>(r.Sr).subspan(static_cast<std::size_t>(h))};
    if (row == 0) {
      kept.push_back(dpos);
      continue;
    }
    const std::u16string_view C = WithoutLastDot(dic.Get(row, dic::kHeadWord));
    const std::u16string_view Y = dic.Get(row, dic::kReading);

    int reject = 0;
    if (const int rule = GeneralRules(lk, live, row); rule != 0) {
      reject = 1;
      r.log.push_back((rule == 1 ? u"不要：" : u"不要2：") + std::u16string(C) + u"（" + Num(rule) +
                      u"）");
    }
    std::u16string_view fired;
    const int after = rules_.Apply(C, Y, lk.W, reject, &fired);
    if (after != reject) {
      r.log.push_back((after == 1 ? u"不要3：" : u"Keep：") + std::u16string(C) + u"（" +
                      std::u16string(fired) + u"）");
    }
    if (after == 1) {
      // Hit h goes and the later ones move down: the chosen one moves with
      // them when it lay after h.
      if (static_cast<int>(kept.size()) + 1 < pos) --pos;
    } else {
      kept.push_back(dpos);
    }
  }
  r.Srn = static_cast<int>(kept.size());
  r.Sr.assign(1, 0);
  r.Sr.insert(r.Sr.end(), kept.begin(), kept.end());
  r.SrnPos = r.Srn == 0 ? 0 : std::clamp(pos, 1, r.Srn);
}

}  // namespace suizo::views
