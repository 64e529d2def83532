// Writes a table as the database export writes it: Shift-JIS, CR LF, a header
// line of column names, then one record a line. Text values are quoted, numbers
// are written bare, and an empty value is nothing between two commas.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "core/corpus/schema.h"

namespace suizo::gen {

struct Value {
  enum class Kind { Text, Number, Empty };
  Kind kind = Kind::Empty;
  std::u16string text;

  static Value Text(std::u16string_view t) { return {Kind::Text, std::u16string(t)}; }
  // A number as the export writes it; trailing zeros of a fraction may stand.
  static Value Number(std::u16string_view digits) { return {Kind::Number, std::u16string(digits)}; }
  static Value Number(long n);
  static Value None() { return {}; }
};

// The columns an export of a table has: its field names from 1 on, each name
// once (a name the table lists twice is one column).
std::vector<std::u16string> ExportColumns(corpus::TableId id);

class DatWriter {
 public:
  // Column names, written quoted or bare as the export does for each.
  explicit DatWriter(std::vector<std::u16string> columns, bool quoteNames = true);

  int Column(std::u16string_view name) const;  // index of a column; throws if absent
  std::size_t columns() const { return columns_.size(); }

  // A record with every column empty, to be filled by name.
  std::vector<Value> Blank() const { return std::vector<Value>(columns_.size()); }
  void Set(std::vector<Value>& record, std::u16string_view column, Value value) const;
  void Add(std::vector<Value> record);

  std::size_t records() const { return records_.size(); }

  // Checks every value (no quote in text, no line end, no comma in a number)
  // and writes the file whole.
  void Write(const std::filesystem::path& path) const;

 private:
  std::vector<std::u16string> columns_;
  bool quoteNames_;
  std::vector<std::vector<Value>> records_;
};

}  // namespace suizo::gen
