// The table a text reader shows and searches. The writings, the sutra and the
// sources are read by one reader; this adapter carries what differs between
// them: which table and order, how a position moves, which column a tab
// shows, how many hits a search may keep, which filters apply.
#pragma once

#include <array>
#include <string_view>

#include "core/corpus/corpus.h"
#include "core/corpus/selection.h"
#include "core/search/compilers.h"
#include "core/search/position.h"

namespace suizo::search {

enum class TextKind { Writings, Sutra, Sources };

class TextTable {
 public:
  static TextTable Writings(const corpus::Corpus& corpus, const corpus::Selection& selection);
  static TextTable Sutra(const corpus::Corpus& corpus, const corpus::Selection& selection);
  static TextTable Sources(const corpus::Corpus& corpus, const corpus::Selection& selection);

  TextKind kind() const { return kind_; }
  SearchWindow searchWindow() const;

  // The tabs of the reader, 11 or 4, and the column each shows and searches.
  int Tabs() const { return kind_ == TextKind::Writings ? 11 : 4; }
  int PaneColumn(int tab) const;
  // The column the writings' pane 0 also tries, once the main text failed.
  static constexpr int kSecondMainColumn = corpus::kPaneCol[11];

  // The column whose "◆" marks a work's first line; the sutra has none.
  int HeadColumn() const {
    return kind_ == TextKind::Writings  ? corpus::dat::kMain2
           : kind_ == TextKind::Sources ? corpus::sdat::kReading
                                        : -1;
  }

  // The room of the hit list: 35,000 rows, 3,000 phrases, 38,000 units.
  int HitCapacity() const;
  // The highest position a line can have, to size what is indexed by it.
  int LastLine() const;

  // The writings window looks for a page search in the box; the others never.
  bool HasPageCheck() const { return kind_ == TextKind::Writings; }
  // The split form tried when a word search found nothing: the sutra's
  // Chinese text takes the kanji, everything else every character.
  int AutoDivMode(int tab) const { return kind_ == TextKind::Sutra && tab == 2 ? 2 : 1; }

  // Nothing to read: the scan does not run.
  bool Empty() const;

  // The text of a column at a line position; empty outside the order.
  std::u16string_view Text(int lpos, int column) const;
  // Asks the memory for a line's text ahead of its reading: a scan reads one
  // or two fields of each line, and waiting on each is most of its time.
  // The cell is asked for further ahead than the text, which only its
  // cell can tell where to find.
  void Prefetch(int lpos, int column) const {
    if (lpos < 1 || lpos > LastLine() || column < 0) return;
    const std::u16string_view t = Text(lpos, column);
    __builtin_prefetch(t.data());
  }
  void PrefetchCell(int lpos, int column) const;
  // The authentic-text scope of the writings: with it on, only lines that
  // have the autograph's text; any value but 0 and 1 lets nothing pass.
  bool InScope(int lpos) const;

  void Up(Position& p, bool limit) const;
  void Down(Position& p, bool limit) const;
  // Where a scan begins: the first work (or the current one under `Limit`)
  // at its first line; the sutra's first row, or under `Limit` the first row
  // of the current chapter.
  void ScanStart(Position& p, bool limit) const;

  // The page search reads the writings' lines whichever reader runs it:
  // the first line of the first listed document, and a line's page value
  // and class.
  void PageStart(Position& p) const;
  std::u16string_view PageText(int lpos, int column) const;
  std::u16string_view PageClass(int lpos) const;

  const corpus::Corpus& corpus() const { return *corpus_; }
  const corpus::Selection& selection() const { return *selection_; }

 private:
  TextTable(TextKind kind, const corpus::Corpus& corpus, const corpus::Selection& selection);
  std::u16string_view DatText(int lpos, int column) const;

  TextKind kind_;
  const corpus::Corpus* corpus_;
  const corpus::Selection* selection_;
  LineOrder writings_;
  LineOrder order_;  // the reader's own: the writings or the sources; unused by the sutra
};

}  // namespace suizo::search
