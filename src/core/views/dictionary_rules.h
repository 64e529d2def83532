// The dictionary lookup's word rules: in which surroundings a short kana
// sequence, or an entry known by its reading, is really that word. Each row
// names entries by their head word C (or by their reading Y) and says, from
// the selection W alone, whether such a hit is thrown out or kept.
#pragma once

#include <array>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace suizo::search {
class Regex;
}
namespace suizo::text {
class LikePattern;
}

namespace suizo::views::dic_rules {

enum class RuleKind : unsigned char {
  Always,  // rejected unless W is the key (or one of `equals`)
  Needs,   // rejected unless W holds the context
  Drop,    // rejected when W holds the context
  Keep,    // rejection undone when W holds the context (or always, without one)
};

// What the key is compared with.
enum class RuleOn : unsigned char { Head, Yomi };

// A test on W: true when W holds any of `words`, matches the regular
// expression `pattern`, or is like the wildcard pattern `like`. A test with
// none of them is empty.
struct WTest {
  std::array<std::u16string_view, 4> words{};
  std::u16string_view pattern{};
  std::u16string_view like{};
};

struct WordRule {
  RuleKind kind = RuleKind::Needs;
  std::u16string_view key{};
  RuleOn on = RuleOn::Head;
  // W values that silence the row. A rejecting row is silent for its key as
  // well; a keep row only for these.
  std::array<std::u16string_view, 2> equals{};
  WTest context{};
  WTest unless{};   // the row is silent when W passes this...
  WTest despite{};  // ...unless W passes this too
  WTest also{};     // a needs row rejects also when W passes this
};

// The rows in the order they run: every row that rejects, with the keep rows
// of をや and とが among them, then the other keep rows.
std::span<const WordRule> WordRules();

// The rows with their expressions compiled once.
class RuleSet {
 public:
  // The table's rows, or others (which must outlive the set).
  RuleSet();
  explicit RuleSet(std::span<const WordRule> rows);
  ~RuleSet();
  RuleSet(RuleSet&&) noexcept;
  RuleSet& operator=(RuleSet&&) noexcept;

  // Runs every row that names the hit, in order, on `reject`. `c` is the
  // head word without a last "･" or "・", `y` the reading, `w` the selection.
  // `fired` receives the key of the last row that changed `reject`.
  int Apply(std::u16string_view c, std::u16string_view y, std::u16string_view w, int reject,
            std::u16string_view* fired = nullptr) const;

 private:
  struct CompiledTest;
  struct CompiledRule;
  bool Passes(const CompiledTest& test, std::u16string_view w) const;
  std::vector<CompiledRule> rules_;
  // Row numbers by key, for the head word and for the reading.
  std::unordered_map<std::u16string_view, std::vector<std::size_t>> byHead_, byYomi_;
};

}  // namespace suizo::views::dic_rules
