// What a loaded store holds, table by table, for reports.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/corpus/corpus.h"

namespace suizo::corpus {

struct TableSummary {
  TableId id;
  bool present = false;  // a table without a load group is read only if its file is there
  int fields = 0;
  int rows = 0;
};

struct OrderCount {
  std::u16string_view label;
  std::u16string count;  // as stored in row 0
};

struct StoreSummary {
  std::vector<TableSummary> tables;
  std::vector<OrderCount> datOrders;  // one per collection, in `Gk` order
  std::u16string sdatOrder;
  int dicEntries = 0;  // `DisMaxY`
};

// Loads every load group and the import-only tables whose files exist, and
// reports what they hold.
StoreSummary LoadAndSummarize(Corpus& corpus);

}  // namespace suizo::corpus
