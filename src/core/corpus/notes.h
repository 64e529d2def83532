// The user's notes live inside the tables (`Dat` 48 and 49, `Hok` 36, `SDat`
// 8). When the store is rebuilt from new exports they are carried across in
// four files: memo2.dat, memo3.dat, memoh.dat and memos.dat, Shift-JIS, one
// line per non-empty note: its row's key as a number, a comma, the text in
// double quotes.
#pragma once

#include <filesystem>

#include "core/corpus/corpus.h"

namespace suizo::corpus {

// Writes the four files, each whole. Without the sources (a store older than
// 0.8 had no source notes), memos.dat is written empty.
void ExportNotes(const Corpus& corpus, bool withSources);

// Reads the four files back into the tables. A key no row has puts its note
// in the row after the last, where it is not seen. A missing file restores
// nothing. Returns how many notes were read.
int RestoreNotes(Corpus& corpus);

}  // namespace suizo::corpus
