// One table of the corpus: a grid of UTF-16 texts addressed by row and field.
// All text lives in one arena; each cell is an offset and a length into it,
// so loading a store is one read and one scan for line ends, and writing a
// cell appends to the arena. Rows run from 0 to the schema's capacity; a row
// never written reads as empty fields.
#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string_view>
#include <vector>

#include "core/corpus/schema.h"

namespace suizo::corpus {

// Leaves new elements uninitialised, so that a file can be read into a
// freshly sized arena without first filling it with zeros.
template <typename T>
struct DefaultInitAllocator : std::allocator<T> {
  template <typename U>
  struct rebind {
    using other = DefaultInitAllocator<U>;
  };
  using std::allocator<T>::allocator;
  template <typename U>
  void construct(U* p) noexcept {
    ::new (static_cast<void*>(p)) U;
  }
  template <typename U, typename... Args>
  void construct(U* p, Args&&... args) {
    ::new (static_cast<void*>(p)) U(std::forward<Args>(args)...);
  }
};

class Table {
 public:
  explicit Table(const TableSchema& schema);

  const TableSchema& schema() const { return *schema_; }

  // The text of a cell. The view stays valid until the next Set or load.
  // A row or field outside the schema is a CorpusError naming the table.
  std::u16string_view Get(int row, int field) const;

  // A value that is itself a view into this table's arena is shared, not
  // copied, so copying one field of the table to another is safe and free.
  void Set(int row, int field, std::u16string_view value);

  void ClearRow(int row);

  // Empties every cell and both counters.
  void Clear();

  // The table's counters: its highest field number and its row count.
  int cols() const { return cols_; }
  int rows() const { return rows_; }
  void set_cols(int cols) { cols_ = cols; }
  void set_rows(int rows) {
    rows_ = rows;
    held_.field = -1;
  }

  struct Cell {
    std::uint32_t offset;
    std::uint32_t length;
  };

  // The store reader fills a table in bulk. First it clears the table and
  // takes an arena of `units` uninitialised UTF-16 units to read the file
  // into, with room for `spare` more that later Set calls append without
  // moving the arena.
  std::span<char16_t> ResetWithArena(std::size_t units, std::size_t spare = 0);
  // Then it takes the cells of rows 0 to `lastRow`, row after row with one
  // cell per field of the schema: rows before `firstRow` read empty, the
  // others are uninitialised and the reader writes every cell of them.
  Cell* LoadCells(int firstRow, int lastRow);
  // Last it drops the cells of rows after the last one it filled.
  void KeepRows(int lastRow);

  // Units of text held, live or overwritten; for reports and benchmarks.
  std::size_t arenaUnits() const { return arena_.size(); }

  // Asks the memory for a cell's place ahead of its reading.
  void PrefetchCell(int row, int field) const {
    const std::size_t index =
        static_cast<std::size_t>(row) * stride_ + static_cast<std::size_t>(field);
    if (row >= 0 && index < cells_.size()) __builtin_prefetch(&cells_[index]);
  }

  // Whether a cell holds `unit` anywhere. The answer is kept for every row
  // of one field and unit at a time, so that a scan asking it of each line
  // reads no cell for it twice; any change of the table forgets it.
  bool Holds(int row, int field, char16_t unit) const;

 private:
  [[noreturn]] void OutOfRange(int row, int field) const;
  void CheckPlace(int row, int field) const;
  Cell& CellAt(int row, int field);
  void ReserveRows(int lastRow);

  const TableSchema* schema_;
  std::size_t stride_;
  std::vector<char16_t, DefaultInitAllocator<char16_t>> arena_;
  std::vector<Cell, DefaultInitAllocator<Cell>> cells_;
  int cols_ = 0;
  int rows_ = 0;

  struct HeldUnit {
    int field = -1;  // none kept
    char16_t unit = 0;
    std::vector<std::uint8_t> rows;
  };
  mutable HeldUnit held_;
};

}  // namespace suizo::corpus
