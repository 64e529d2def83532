// The raw exports: one <stem>.dat file per table, Shift-JIS text with CR LF,
// a header line of column names (quoted or not) and one record per line.
// A quoted value is text and may hold commas; an unquoted value is read as a
// number where it is one, so "0012.50" is stored as "12.5".
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "core/corpus/table.h"

namespace suizo::corpus {

// The most columns a .dat file may have.
inline constexpr int kMaxDatColumns = 101;

class DatReader {
 public:
  // Reads and decodes the file and builds the column map from its header:
  // each file column goes to the field of the same name (the last of equal
  // field names wins), a column with no such field is read and dropped.
  // Refused, naming the file and line 1: line ends of CR alone, a first line
  // that is a record rather than column names, and a header that lacks one
  // of the schema's required columns (all missing ones are named).
  DatReader(const std::filesystem::path& path, const TableSchema& schema);

  // Reads the next record into `row` and gives its values the table's normal
  // forms; where the schema says so, first clears the row and writes the row
  // number into field 0. False at the end of the file.
  bool ReadRecord(Table& table, int row);

  // Field of each file column; 0 for a column that is dropped.
  const std::vector<int>& columnMap() const { return columnMap_; }
  const std::vector<std::u16string>& columnNames() const { return columnNames_; }

  // The line of the record read last.
  long line() const { return line_; }

 private:
  void ReadHeader(std::u16string_view line);
  [[noreturn]] void Fail(long line, int row, int column, const std::string& detail) const;
  bool NextLine(std::size_t& begin, std::size_t& end);

  std::string file_;
  const TableSchema* schema_;
  std::u16string text_;
  std::size_t pos_ = 0;
  long line_ = 0;
  std::vector<int> columnMap_;
  std::vector<std::u16string> columnNames_;
  std::u16string number_;  // scratch for a value read as a number
};

// Reads a whole .dat file into the table with the steps every table shares:
// rows from 1, the field counter at the schema's highest field, the row
// counter at the last row read. Tables with steps of their own drive
// DatReader themselves.
void ReadDatTable(const std::filesystem::path& path, Table& table);

}  // namespace suizo::corpus
