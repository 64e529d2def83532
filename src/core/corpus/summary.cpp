#include "core/corpus/summary.h"

#include "core/corpus/dax_file.h"

namespace suizo::corpus {

StoreSummary LoadAndSummarize(Corpus& corpus) {
  for (int group = 0; group < kLoadGroups; ++group) corpus.ReadData(group);
  StoreSummary summary;
  for (const TableSchema& schema : Schemas()) {
    Table& table = corpus.table(schema.id);
    TableSummary entry{schema.id};
    if (schema.loadGroup == kNoLoadGroup) {
      const auto path = corpus.FilePath(schema.id, ".dax");
      entry.present = std::filesystem::exists(path);
      if (entry.present) ReadStore(path, table);
    } else {
      entry.present = true;
    }
    entry.fields = table.cols();
    entry.rows = table.rows();
    summary.tables.push_back(entry);
  }
  for (const Collection& c : kCollections) {
    summary.datOrders.push_back(
        {c.label, std::u16string(corpus.Dat().Get(dat::kOrderRow, c.datOrderColumn))});
  }
  summary.sdatOrder = corpus.SDat().Get(sdat::kOrderRow, sdat::kOrderColumn);
  summary.dicEntries = corpus.DisMaxY;
  return summary;
}

}  // namespace suizo::corpus
