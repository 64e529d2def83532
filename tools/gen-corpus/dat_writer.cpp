#include "dat_writer.h"

#include <algorithm>
#include <stdexcept>

#include "core/corpus/file_io.h"
#include "core/text/sjis.h"
#include "core/text/utf16.h"

namespace suizo::gen {

std::vector<std::u16string> ExportColumns(corpus::TableId id) {
  const auto& schema = corpus::SchemaOf(id);
  std::vector<std::u16string> names;
  for (int f = 1; f <= schema.FieldMax(); ++f) {
    std::u16string name(schema.fields[static_cast<std::size_t>(f)]);
    if (std::find(names.begin(), names.end(), name) == names.end())
      names.push_back(std::move(name));
  }
  return names;
}

Value Value::Number(long n) {
  return {Kind::Number, text::IntText(n)};
}

DatWriter::DatWriter(std::vector<std::u16string> columns, bool quoteNames)
    : columns_(std::move(columns)), quoteNames_(quoteNames) {}

int DatWriter::Column(std::u16string_view name) const {
  for (std::size_t c = 0; c < columns_.size(); ++c) {
    if (columns_[c] == name) return static_cast<int>(c);
  }
  throw std::logic_error("no column " + text::ToUtf8(name));
}

void DatWriter::Set(std::vector<Value>& record, std::u16string_view column, Value value) const {
  record[static_cast<std::size_t>(Column(column))] = std::move(value);
}

void DatWriter::Add(std::vector<Value> record) {
  if (record.size() != columns_.size()) throw std::logic_error("record of the wrong width");
  records_.push_back(std::move(record));
}

void DatWriter::Write(const std::filesystem::path& path) const {
  std::u16string out;
  for (std::size_t c = 0; c < columns_.size(); ++c) {
    if (c > 0) out += u',';
    out += quoteNames_ ? u"\"" + columns_[c] + u"\"" : columns_[c];
  }
  out += u"\r\n";
  long line = 1;
  for (const auto& record : records_) {
    ++line;
    for (std::size_t c = 0; c < record.size(); ++c) {
      const Value& v = record[c];
      const auto fail = [&](const char* what) {
        throw std::logic_error(corpus::DisplayPath(path) + ": line " + std::to_string(line) +
                               ", column " + text::ToUtf8(columns_[c]) + ": " + what);
      };
      if (v.text.find_first_of(u"\r\n") != std::u16string::npos) fail("a line end in a value");
      if (c > 0) out += u',';
      switch (v.kind) {
        case Value::Kind::Text:
          if (v.text.find(u'"') != std::u16string::npos) fail("a double quote in text");
          out += u'"' + v.text + u'"';
          break;
        case Value::Kind::Number:
          if (v.text.empty() || v.text.find(u',') != std::u16string::npos) fail("not a number");
          out += v.text;
          break;
        case Value::Kind::Empty:
          break;
      }
    }
    out += u"\r\n";
  }
  corpus::WriteFileWhole(path, text::EncodeSjis(out));
}

}  // namespace suizo::gen
