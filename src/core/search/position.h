// Where a text reader stands, and how it moves a line at a time. The writings
// and the sources stand on a line of a reading order and a work of a list;
// the sutra on a row of its table and the chapter that row belongs to.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "core/corpus/corpus.h"

namespace suizo::search {

struct Position {
  int Mpos = 0;            // place in the work list (the writings, the sources)
  int Lpos = 0;            // place in the line order, or the sutra's row
  std::u16string chapter;  // the sutra's `Mpos`: the chapter's name
};

// A reading order of lines grouped into works: the writings or the sources.
// It points into the corpus, so it follows every change of the selection.
struct LineOrder {
  const corpus::Table* lines;
  int headField;  // a "◆" in it marks a work's first line
  const std::vector<int>* lineOrder;
  const int* lineCountOf;
  const corpus::Table* works;
  const std::vector<int>* workOrder;
  const int* workCountOf;
  int firstLineField;  // the work's 絶対位置

  int lineCount() const { return *lineCountOf; }
  int workCount() const { return *workCountOf; }

  static LineOrder Writings(const corpus::Corpus& corpus);
  static LineOrder Sources(const corpus::Corpus& corpus);

  int FirstLineOf(int mpos) const;
  bool IsHead(int lpos) const;
  int RowAt(int lpos) const { return (*lineOrder)[static_cast<std::size_t>(lpos)]; }
};

// `Up` and `Down` of the writings and sources readers: one line, crossing
// into the next or previous work unless `limit` keeps the reader in its own.
void Up(const LineOrder& order, Position& p, bool limit);
void Down(const LineOrder& order, Position& p, bool limit);

// The sutra's rows and chapters.
inline constexpr std::u16string_view kFirstChapter = u"徳行品第一";
void SutraUp(const corpus::Table& hok, Position& p, bool limit);
void SutraDown(const corpus::Table& hok, Position& p, bool limit);

}  // namespace suizo::search
