// The dictionary's orders, computed at import and kept in the store.
#pragma once

#include "core/corpus/corpus.h"

namespace suizo::corpus {

// Reads the orders back at load: `DisMaxY` from row 1 field 3, then
// `DicOrder` and `DicYomi` from fields 4 and 5 of rows 1 to `DisMaxY`. A
// count or element that is not a number in range is a CorpusError naming the
// cell.
void ConvDic2(Corpus& corpus);

}  // namespace suizo::corpus
