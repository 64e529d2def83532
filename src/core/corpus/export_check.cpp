#include "core/corpus/export_check.h"

#include <map>
#include <vector>

#include "core/corpus/dat_file.h"
#include "core/corpus/errors.h"
#include "core/corpus/file_io.h"
#include "core/corpus/schema.h"
#include "core/text/utf16.h"

namespace suizo::corpus {
namespace {

void CheckExport(const std::filesystem::path& path, const TableSchema& schema,
                 const MessageSink& warn) {
  std::error_code error;
  if (!std::filesystem::exists(std::filesystem::status(path, error))) {
    throw CorpusError({DisplayPath(path)}, "the export is missing");
  }
  RequireRegularFile(path);
  const DatReader reader(path, schema);
  // Names of fields the header gives more than once, in the order they come.
  std::map<std::u16string_view, int> times;
  std::vector<std::u16string_view> repeated;
  const auto& names = reader.columnNames();
  for (std::size_t c = 0; c < names.size(); ++c) {
    if (reader.columnMap()[c] == 0) continue;
    if (++times[names[c]] == 2) repeated.push_back(names[c]);
  }
  if (!warn) return;
  const std::u16string file = text::FromUtf8(DisplayPath(path));
  for (const std::u16string_view name : repeated) {
    const int n = times[name];
    warn(file + u": line 1: the header names " + std::u16string(name) + u" " +
         (n == 2 ? std::u16string(u"twice") : text::IntText(n) + u" times") +
         u"; the last one is read");
  }
}

}  // namespace

void CheckExports(const std::filesystem::path& dataPath, const MessageSink& warn) {
  std::vector<CorpusError> faults;
  for (const TableSchema& schema : Schemas()) {
    std::u8string name(schema.stem.begin(), schema.stem.end());
    name += u8".dat";
    try {
      CheckExport(dataPath / name, schema, warn);
    } catch (const CorpusError& e) {
      faults.push_back(e);
    }
  }
  if (faults.empty()) return;
  if (faults.size() == 1) throw faults.front();
  std::string list = std::to_string(faults.size()) + " of the twelve exports cannot be converted:";
  for (const CorpusError& fault : faults) list.append("\n  ").append(fault.what());
  throw CorpusError({DisplayPath(dataPath)}, list);
}

}  // namespace suizo::corpus
