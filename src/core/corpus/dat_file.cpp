#include "core/corpus/dat_file.h"

#include <algorithm>

#include "core/corpus/errors.h"
#include "core/corpus/file_io.h"
#include "core/text/normal_forms.h"
#include "core/text/numbers.h"
#include "core/text/sjis.h"
#include "core/text/utf16.h"

namespace suizo::corpus {
namespace {

bool IsBlank(char16_t c) {
  return c == u' ' || c == u'\t';
}

}  // namespace

DatReader::DatReader(const std::filesystem::path& path, const TableSchema& schema)
    : file_(DisplayPath(path)), schema_(&schema) {
  text_ = ReadShiftJisFile(path);
  // Without a single LF the whole file would read as one header line.
  if (text_.find(u'\n') == std::u16string::npos && text_.find(u'\r') != std::u16string::npos) {
    throw CorpusError({file_, 1}, "the line ends are CR only; an export's lines end in CR LF");
  }
  std::size_t begin = 0;
  std::size_t end = 0;
  if (!NextLine(begin, end)) throw CorpusError({file_, 1}, "the file has no header line");
  ReadHeader(std::u16string_view(text_).substr(begin, end - begin));
}

void DatReader::ReadHeader(std::u16string_view line) {
  const TableSchema& schema = *schema_;
  const auto names = text::Split(line, u",");
  if (names.size() > static_cast<std::size_t>(kMaxDatColumns)) {
    throw CorpusError({file_, 1}, "the header names " + std::to_string(names.size()) +
                                      " columns; at most " + std::to_string(kMaxDatColumns) +
                                      " are allowed");
  }
  if (names.empty()) throw CorpusError({file_, 1}, "the header line is empty");
  bool anyField = false;
  for (std::size_t c = 0; c < names.size(); ++c) {
    const std::u16string_view name = names[c];
    // Names may be quoted; a bare number is a value, never a name.
    if (name.find(u'"') == std::u16string_view::npos && text::IsNumeric(name)) {
      throw CorpusError({file_, 1}, "the header line is missing: line 1 is a record (column " +
                                        std::to_string(c + 1) + " holds the unquoted number " +
                                        text::ToUtf8(name) + ")");
    }
    std::u16string bare;
    std::copy_if(name.begin(), name.end(), std::back_inserter(bare),
                 [](char16_t ch) { return ch != u'"'; });
    int field = 0;
    for (int f = 1; f <= schema.FieldMax(); ++f) {
      if (bare == schema.fields[static_cast<std::size_t>(f)]) field = f;
    }
    anyField = anyField || field > 0;
    columnMap_.push_back(field);
    columnNames_.push_back(std::move(bare));
  }
  if (!anyField) {
    throw CorpusError({file_, 1}, "the header line is missing: line 1 is a record (none of its " +
                                      std::to_string(names.size()) + " values names a column of " +
                                      std::string(schema.name) + ")");
  }
  std::vector<std::string> missing;
  for (const int field : schema.requiredColumns) {
    if (std::find(columnMap_.begin(), columnMap_.end(), field) == columnMap_.end()) {
      missing.push_back(text::ToUtf8(schema.fields[static_cast<std::size_t>(field)]));
    }
  }
  if (missing.size() == 1) {
    throw CorpusError(
        {file_, 1}, "the header lacks the column " + missing.front() + ", which the import needs");
  }
  if (!missing.empty()) {
    std::string list;
    for (const std::string& name : missing) list.append(list.empty() ? "" : ", ").append(name);
    throw CorpusError({file_, 1}, "the header lacks " + std::to_string(missing.size()) +
                                      " columns that the import needs: " + list);
  }
}

void DatReader::Fail(long line, int row, int column, const std::string& detail) const {
  ErrorPlace place{file_, line, row, -1, {}};
  if (column >= 0 && static_cast<std::size_t>(column) < columnNames_.size()) {
    place.field = columnMap_[static_cast<std::size_t>(column)] > 0
                      ? columnMap_[static_cast<std::size_t>(column)]
                      : -1;
    place.fieldName = text::ToUtf8(columnNames_[static_cast<std::size_t>(column)]);
  }
  throw CorpusError(place, detail);
}

// The next line that is not empty, without its line end.
bool DatReader::NextLine(std::size_t& begin, std::size_t& end) {
  while (pos_ < text_.size()) {
    begin = pos_;
    const std::size_t lf = text_.find(u'\n', pos_);
    end = lf == std::u16string::npos ? text_.size() : lf;
    pos_ = lf == std::u16string::npos ? text_.size() : lf + 1;
    ++line_;
    if (end > begin && text_[end - 1] == u'\r') --end;
    if (end > begin) return true;
  }
  return false;
}

bool DatReader::ReadRecord(Table& table, int row) {
  std::size_t begin = 0;
  std::size_t end = 0;
  if (!NextLine(begin, end)) return false;
  const TableSchema& schema = *schema_;
  if (row > schema.rowCapacity) {
    Fail(line_, row, -1,
         "more records than " + std::string(schema.name) + " can hold (" +
             std::to_string(schema.rowCapacity) + ")");
  }
  if (schema.numberedAtImport) {
    table.ClearRow(row);
    table.Set(row, 0, text::IntText(row));
  }

  const int columns = static_cast<int>(columnMap_.size());
  std::size_t pos = begin;
  for (int column = 0; column < columns; ++column) {
    if (column > 0) {
      if (pos >= end) {
        Fail(line_, row, column,
             "the record ends here: it has " + std::to_string(column) +
                 " values where the header names " + std::to_string(columns));
      }
      ++pos;  // the comma
    }
    while (pos < end && IsBlank(text_[pos])) ++pos;
    std::size_t start = pos;
    std::size_t stop = pos;
    bool isText = true;
    if (pos < end && text_[pos] == u'"') {
      const std::size_t close = text_.find(u'"', pos + 1);
      if (close == std::u16string::npos || close >= end) {
        Fail(line_, row, column, "the quoted value is not closed on its line");
      }
      start = pos + 1;
      stop = close;
      pos = close + 1;
      while (pos < end && IsBlank(text_[pos])) ++pos;
      if (pos < end && text_[pos] != u',') {
        Fail(line_, row, column, "text follows the closing quote");
      }
    } else {
      const std::size_t comma = text_.find(u',', pos);
      pos = comma == std::u16string::npos || comma > end ? end : comma;
      stop = pos;
      while (stop > start && IsBlank(text_[stop - 1])) --stop;
      if (const auto number =
              text::ParseNumber(std::u16string_view(text_).substr(start, stop - start))) {
        number_ = text::NumberText(*number);
        isText = false;
      }
    }
    const int field = columnMap_[static_cast<std::size_t>(column)];
    if (field == 0) continue;
    if (!isText) {
      table.Set(row, field, number_);
      continue;
    }
    const std::span<char16_t> value(text_.data() + start, stop - start);
    if (schema.Normalised(field)) text::Normalize(value, *schema.normalForm);
    table.Set(row, field, std::u16string_view(value.data(), value.size()));
  }
  if (pos < end) {
    Fail(line_, row, -1,
         "the record has more values than the header's " + std::to_string(columns) + " columns");
  }
  return true;
}

void ReadDatTable(const std::filesystem::path& path, Table& table) {
  DatReader reader(path, table.schema());
  table.Clear();
  int row = 1;
  while (reader.ReadRecord(table, row)) ++row;
  table.set_cols(table.schema().FieldMax());
  table.set_rows(row - 1);
}

}  // namespace suizo::corpus
