// How large a corpus to write.
#pragma once

#include <algorithm>
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

// A part of a corpus, for measuring how costs grow with size: the
// writings, their cross references, the dictionary, the commentary, the
// mandalas and the sources shrink with `percent`; the sutra, its outlines
// and the chronology, which follow the text of the sutra and the years,
// stay whole.
inline Sizes PartOf(Sizes sizes, int percent) {
  const auto part = [percent](int n) { return std::max(1, n * percent / 100); };
  sizes.documents = part(sizes.documents);
  sizes.crossReferences = part(sizes.crossReferences);
  sizes.dictionaryEntries = part(sizes.dictionaryEntries);
  sizes.tyuRows = part(sizes.tyuRows);
  sizes.honRows = part(sizes.honRows);
  sizes.sources = part(sizes.sources);
  return sizes;
}

}  // namespace suizo::gen
