// The reading orders and the contents lists of the current selection. Every
// view walks these vectors, never a table: a change of collection, order or
// classes rebuilds them, and each open window then finds its place again by
// the stable ｼｽﾃﾑNo. it remembered.
#pragma once

#include <string_view>

#include "core/corpus/corpus.h"
#include "core/corpus/selection.h"

namespace suizo::corpus {

// `ConvDat2`: `DatOrder` of collection `gk` read from its stored order column
// (any other number than a collection's gives the system order's column).
void ConvDat2(Corpus& corpus, int gk);
// `ConvSDat2`: `SDatOrder` from its column.
void ConvSDat2(Corpus& corpus);

// `ConvMok`: with `MokRedo` 1, places every document in `DatOrder` of the
// collection (start positions, extra rows for documents printed twice and for
// title lines without a record, head marks taken away and put back), then
// lists them through the class filter, fills empty dating from the text and
// sorts; with `MokRedo` 0 only lists and sorts. Clears `MokRedo`.
void ConvMok(Corpus& corpus, Selection& selection);
// `ConvMok2`: the list again, keeping only documents whose 印 is 0.
void ConvMok2(Corpus& corpus, const Selection& selection);
// `ConvSMok`: the sources' positions, list and sort.
void ConvSMok(Corpus& corpus, const Selection& selection);

// The sorts of the contents lists, each by a fixed-width key that ends in the
// element, so that the unstable sort gives one order.
void SortMokSuiten(Corpus& corpus, int gk);
void SortMokKeinen(Corpus& corpus);
void SortMokSiryo(Corpus& corpus);
void SortMokKeinenS(Corpus& corpus);

// The orders a start begins with: the system order, page order, all classes,
// the sources in source order (the loader's own sequence).
void InitialOrders(Corpus& corpus, Selection& selection);

// `ConvSui`'s part in the store: new placements when `MokRedo` is 1, else the
// list through the filter again.
void ApplySelection(Corpus& corpus, Selection& selection);
// `ConvSir`'s part: the sources' list in the order `SKn` asks.
void ApplySourceSelection(Corpus& corpus, const Selection& selection);

// `LineToWork`: the list position of the document a reading position belongs
// to (its nearest head row at or before it), or 0. `SLineToWork` for the sources.
int LineToWork(const Corpus& corpus, int lpos);
int SLineToWork(const Corpus& corpus, int lpos);

// Where a window stands after a change, found again by what it remembered.
struct ContentsPlace {
  int Mpos = 1;
  std::u16string OldMsys;
};
// The contents and record views: the document with that ｼｽﾃﾑNo., else the first.
ContentsPlace FindContentsPlace(const Corpus& corpus, std::u16string_view oldMsys);
// The sources' contents view, over `SMokOrder`.
ContentsPlace FindSourceContentsPlace(const Corpus& corpus, std::u16string_view oldMsys);

struct ReaderPlace {
  int Mpos = 0;
  int Lpos = 0;
  std::u16string OldLsys;  // empty with the list empty
};
// The writings reader: the row with that ｼｽﾃﾑNo. and its document, else the
// first document's first row; everything 0 when no document is listed.
ReaderPlace FindReaderPlace(const Corpus& corpus, std::u16string_view oldLsys);
// The sources reader, over `SDatOrder` and `SMokOrder`.
ReaderPlace FindSourceReaderPlace(const Corpus& corpus, std::u16string_view oldLsys);

// The chronology: the position of the event with 年表No `nno` in `nenOrder`
// (1..`count`), or the one before the first that passes it; 1 at least,
// `count` at most.
int FindChronologyPlace(const Table& nen, const std::vector<int>& nenOrder, int count, double nno);

}  // namespace suizo::corpus
