// Pieces the import's steps share.
#pragma once

#include "core/corpus/conversion.h"
#include "core/corpus/dat_file.h"
#include "core/corpus/dax_file.h"
#include "core/corpus/import.h"

namespace suizo::corpus::import {

inline void Step(const ImportOptions& options, TableId id) {
  if (options.progress) options.progress(id);
}

// Reads a table's export with the steps every table shares, calling
// `each(row)` after each record; `each` returns false to let the next record
// take the same row. The row counter is the next free row less one.
template <typename Each>
void ReadRows(Corpus& corpus, TableId id, Each each) {
  Table& table = corpus.table(id);
  DatReader reader(corpus.FilePath(id, ".dat"), table.schema());
  table.Clear();
  int row = 1;
  while (reader.ReadRecord(table, row)) {
    if (each(row)) ++row;
  }
  table.set_cols(table.schema().FieldMax());
  table.set_rows(row - 1);
}

inline void ReadRows(Corpus& corpus, TableId id) {
  ReadRows(corpus, id, [](int) { return true; });
}

// Into the stage of the conversion; a step run on its own writes its store
// in place.
inline void WriteStore(Corpus& corpus, const ImportOptions& options, TableId id) {
  if (options.stage != nullptr) {
    options.stage->Write(corpus, id);
  } else {
    WriteDax(corpus.FilePath(id, ".dax"), corpus.table(id));
  }
}

}  // namespace suizo::corpus::import
