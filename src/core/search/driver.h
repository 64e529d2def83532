// The search of a text reader: from the box to the hits, the walk from hit
// to hit, the page search and the stack of kept refinements. It works on the
// reader's position through the table adapter's `Down`, so it runs and is
// tested without a window; what a window would show (the toast, the colour
// of the result label, the refinement gauge) is state it keeps or an outcome
// it returns.
#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/corpus/settings.h"
#include "core/search/compilers.h"
#include "core/search/position.h"
#include "core/search/text_table.h"

namespace suizo::search {

// Colours of `Label3`, as the program's BGR numbers.
inline constexpr std::uint32_t kButtonFace = 0x8000000F;  // the system's button face
inline constexpr std::uint32_t kWordColour = 0xC0FFFF;    // yellow: a word or page search
inline constexpr std::uint32_t kSplit1Colour = 0xC0C0FF;  // pink: every character
inline constexpr std::uint32_t kSplit2Colour = 0xFFFFC0;  // light blue: kanji only

// What the last search was, for the count line of the command-line tool.
enum class SearchKind { None, Word, Split1, Split2, Page };

// One kept refinement: enough to run its search again.
struct RefineLevel {
  std::vector<std::u16string> Sw;  // at most 101 entries
  int Swn = 0;
  std::u16string Box;
  int Srk = 0;
  int DivMode = 0;
  Method SrMethod = Method::And;
};

// The refinement controls: `Command14` "絞込", `Command15` "解除", the gauge
// `RefineLevel`, `Label5` beside it and `Text6`, which stands in their place.
struct RefineControls {
  bool Command14Visible = false;
  bool Command14Enabled = false;
  bool Command15Visible = false;
  bool Command15Enabled = false;
  bool RefineLevelVisible = false;
  bool Label5Visible = false;
  bool Text6Visible = true;
  std::u16string RefineLevel = u"－－－－－－";
};

// What the caller does after a routine: redraw the reader, show the toast
// "** 見つかりません **", close the hit list window.
struct Outcome {
  bool redraw = false;
  bool toast = false;
  bool closeHitList = false;
};

// A search box's history, newest first: a text searched enters it once.
inline void RememberSearch(std::vector<std::u16string>& history, const std::u16string& text) {
  if (!text.empty() && std::find(history.begin(), history.end(), text) == history.end()) {
    history.insert(history.begin(), text);
  }
}

inline constexpr std::u16string_view kNotFound = u"** 見つかりません **";
inline constexpr int kRefineLevels = 21;  // levels 0 to 20
inline constexpr int kKeptSwEntries = 101;

class SearchEngine {
 public:
  // `settings` is shared by every window: `Itaiji`, and `AutoDiv`, which a
  // replay of the stack switches off for its own time.
  SearchEngine(TextTable table, corpus::Settings& settings);

  // --- the window's controls and position, as the window sets them ---
  std::u16string Combo1;              // the box
  std::vector<std::u16string> Combo;  // the history, newest first
  int Tab = 0;                        // the `TagB` tab that is down
  bool Limit = false;                 // searches and moves stay in the work
  Method SrMethod = Method::And;
  int DivMode = 0;      // set by the caller just before `Kensaku`
  Position pos;         // `Mpos` and `Lpos` (and the sutra's chapter)
  int HitListPage = 0;  // the hit list window's `Page`

  // --- routines ---
  // Mode 0 searches, 1 clears the box and the hits, 2 clears the box and
  // only redraws.
  Outcome Kensaku(int mode);
  // The page search on one page-line column of the writings.
  Outcome KensakuPage(int column, std::u16string_view page);
  // Enter in a page box: the writings put the search into the box and its
  // history; the other readers search at once and empty the box.
  Outcome PageBoxEnter(int index, std::u16string_view text);
  Outcome SrnBack();
  Outcome SrnNext();
  // A click on a tab: it goes down, and a box with text is searched anew.
  Outcome TabClick(int tab);
  // Right button on `Command1`: AND, OR, NOT in turn.
  void StepMethod();
  std::u16string Command1Caption() const;

  // The refinement stack.
  // `Command14`: keeps the hits; false when there was nothing to keep or the
  // stack is full, in which case nothing changes.
  bool Command14();
  Outcome Command15();
  void GetBack(int n);
  void ClearHits();
  void ShowRefine();
  Outcome Label3Click();
  Outcome LimitClick();
  std::u16string LimitCaption() const { return Limit ? u"×" : u"◇"; }

  // --- what the hit list, the highlighter and the windows read ---
  const std::vector<std::u16string>& getSw() const { return Sw; }
  int Swn = 0;
  // Hit i (from 1): column 0 `Mpos`, column 1 `Lpos`.
  int getSr(int i, int j) const;
  const Position& Hit(int i) const { return Sr[static_cast<std::size_t>(i)]; }
  int getSrf(int lpos) const;
  int Srn = 0;
  int SrnPos = 0;
  int Srk = 0;
  int SrGk = 0;
  int RefineCount = 0;
  int getRefineFlag(int lpos) const;
  const RefineLevel& RefineStack(int level) const {
    return stack_[static_cast<std::size_t>(level)];
  }
  int HitQuiet = 0;
  std::uint32_t Label3Colour = kButtonFace;
  bool Label3Enabled = false;
  // The label's text whenever the window is redrawn: "SrnPos/Srn".
  std::u16string Label3Text() const;
  RefineControls controls;
  // The expression of the last word search, for the highlighter.
  const std::u16string& Pattern() const { return pattern_; }

  // The last search, kept apart from the live values for the stack.
  SearchKind LastKind() const { return kind_; }
  const std::u16string& LastBox() const { return lastBox_; }
  int LastDivMode() const { return lastDivMode_; }
  Method LastMethod() const { return lastMethod_; }

  const TextTable& table() const { return table_; }

 private:
  void ClearHitList();
  void Record(const Position& p);
  void DropHits();
  void Finish(const Position& remembered);
  void KensakuWord();
  void KensakuDiv();
  // The scan over the rows in reading order; `test` gives a row's verdict
  // and reads the pane's column, and `secondColumn` too when it is one.
  template <typename Test>
  void Scan(Test&& test, int secondColumn = -1);
  void UpdateGauge();

  TextTable table_;
  corpus::Settings* settings_;
  std::vector<std::u16string> Sw;
  std::u16string pattern_;
  std::vector<Position> Sr;       // element 0 unused
  std::vector<std::uint8_t> Srf;  // indexed by `Lpos`
  std::vector<std::uint8_t> refineFlag_;
  std::array<RefineLevel, kRefineLevels> stack_;
  SearchKind kind_ = SearchKind::None;
  std::u16string lastBox_;
  int lastDivMode_ = 0;
  Method lastMethod_ = Method::And;
};

}  // namespace suizo::search
