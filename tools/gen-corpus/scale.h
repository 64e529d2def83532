// How large a corpus to write.
#pragma once

#include <cstdint>

namespace suizo::gen {

enum class Scale { Sample, Full };

struct Sizes {
  int documents;          // writings with a record of their own
  int rowsMin, rowsMax;   // text rows of a document, its title line included
  int crossReferences;    // title lines that point to a document printed elsewhere
  int dictionaryEntries;  // head entries, continuation rows not counted
  int hokRows;            // the sutra, at least 2,600 so that every fascicle starts
  int kamRows;            // fine outline rows (the broad one is fixed by the chapters)
  int tyuRows;            // commentary rows
  int honRows;            // mandala inventory
  int sources;            // source documents
  int sourceRowsMin, sourceRowsMax;
  int firstYear, lastYear;  // the chronology's span, one 年表関連 row a year
  int eventsPerYear;        // on average
  std::uint64_t seed;
};

inline Sizes SizesOf(Scale scale) {
  if (scale == Scale::Sample) {
    return {36, 12, 26, 4, 320, 2760, 900, 240, 40, 12, 14, 30, 1200, 1300, 4, 1};
  }
  return {1000, 20, 48, 40, 36000, 3000, 1330, 3000, 190, 900, 30, 50, 1000, 1699, 10, 2};
}

}  // namespace suizo::gen
