// The corpus in memory: the twelve tables, the load flags and the orders
// read back at load. One object, passed by reference to whatever needs it.
#pragma once

#include <array>
#include <filesystem>
#include <string_view>
#include <vector>

#include "core/corpus/schema.h"
#include "core/corpus/table.h"

namespace suizo::corpus {

// A table's file in a data folder: its stem and `extension` (".dax", ".dat").
std::filesystem::path TableFile(const std::filesystem::path& dataPath, TableId id,
                                std::string_view extension);

class Corpus {
 public:
  explicit Corpus(std::filesystem::path dataPath);

  const std::filesystem::path& dataPath() const { return dataPath_; }
  std::filesystem::path FilePath(TableId id, std::string_view extension) const;

  Table& table(TableId id) { return tables_[static_cast<std::size_t>(id)]; }
  const Table& table(TableId id) const { return tables_[static_cast<std::size_t>(id)]; }

  Table& Dat() { return table(TableId::Dat); }
  Table& Mok() { return table(TableId::Mok); }
  Table& Dic() { return table(TableId::Dic); }
  Table& Hok() { return table(TableId::Hok); }
  Table& Sok() { return table(TableId::Sok); }
  Table& Kam() { return table(TableId::Kam); }
  Table& Nen() { return table(TableId::Nen); }
  Table& Nek() { return table(TableId::Nek); }
  Table& Tyu() { return table(TableId::Tyu); }
  Table& Hon() { return table(TableId::Hon); }
  Table& SDat() { return table(TableId::SDat); }
  Table& SMok() { return table(TableId::SMok); }
  const Table& Dat() const { return table(TableId::Dat); }
  const Table& Mok() const { return table(TableId::Mok); }
  const Table& Dic() const { return table(TableId::Dic); }
  const Table& Nen() const { return table(TableId::Nen); }
  const Table& SDat() const { return table(TableId::SDat); }
  const Table& SMok() const { return table(TableId::SMok); }

  // Loads the store files of a load group (0 to 6) unless the group is
  // flagged as loaded, then does what the group needs after reading. The flag
  // is set before reading, so a group that failed is not tried again. A group
  // outside 0 to 6 does nothing.
  void ReadData(int group);

  // `Loaded(0..10)`.
  std::array<int, kLoadGroupFlags> Loaded{};

  // Rows of `Mok` as imported; `MokRows` grows above it with placed rows.
  int MokBaseRows = 0;

  // The dictionary's orders: `DicOrder(m)` is the `Dic` row of the m-th entry
  // kept, `DicYomi(m)` an index into `DicOrder` in reading order; both count
  // from 1 to `DisMaxY`, element 0 unused.
  std::vector<int> DicOrder;
  std::vector<int> DicYomi;
  int DisMaxY = 0;

  // The reading orders of the current selection: element m (from 1) is a row
  // of the table; element 0 is unused.
  std::vector<int> DatOrder{0};
  int DasMaxY = 0;
  std::vector<int> MokOrder{0};
  int MosMaxY = 0;
  int MokAllY = 0;  // documents of the collection before the class filter
  std::vector<int> SDatOrder{0};
  int SDasMaxY = 0;
  std::vector<int> SMokOrder{0};
  int SMosMaxY = 0;

  // `Dat` rows whose head mark the current placement took away or added, so
  // that the next placement can undo it.
  std::vector<int> HeadOff;
  std::vector<int> HeadOn;

  // Set when the user's notes in a table changed: the exit writes its store.
  int DatDirty = 0;
  int HokDirty = 0;
  int SDatDirty = 0;

 private:
  std::filesystem::path dataPath_;
  std::array<Table, kTableCount> tables_;
};

// The first row whose ｼｽﾃﾑNo. is `key`, compared as text; the row after the
// last when there is none. `SysNo` searches `Dat`, `MSysNo` `Mok`, `SysNoS`
// `SDat`.
int SysNo(const Corpus& corpus, std::u16string_view key);
int MSysNo(const Corpus& corpus, std::u16string_view key);
int SysNoS(const Corpus& corpus, std::u16string_view key);
int SysNo(const Corpus& corpus, long key);
int MSysNo(const Corpus& corpus, long key);
int SysNoS(const Corpus& corpus, long key);

}  // namespace suizo::corpus
