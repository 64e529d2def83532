#include "core/corpus/corpus.h"

#include <algorithm>
#include <utility>

#include "core/corpus/dax_file.h"
#include "core/corpus/dic_orders.h"
#include "core/text/utf16.h"

namespace suizo::corpus {
namespace {

template <std::size_t... I>
std::array<Table, kTableCount> MakeTables(std::index_sequence<I...>) {
  return {Table(Schemas()[I])...};
}

int FindKey(const Table& table, int field, std::u16string_view key) {
  for (int row = 1; row <= table.rows(); ++row) {
    if (table.Get(row, field) == key) return row;
  }
  return table.rows() + 1;
}

// Lines in the chronology's office columns are kept as "@" in the store.
void RestoreOfficeLines(Table& nen) {
  for (int row = 1; row <= nen.rows(); ++row) {
    for (const int field : nen::kOfficeFields) {
      const std::u16string_view cell = nen.Get(row, field);
      if (cell.find(u'@') == std::u16string_view::npos) continue;
      std::u16string lines(cell);
      std::replace(lines.begin(), lines.end(), u'@', u'\n');
      nen.Set(row, field, lines);
    }
  }
}

}  // namespace

Corpus::Corpus(std::filesystem::path dataPath)
    : dataPath_(std::move(dataPath)),
      tables_(MakeTables(std::make_index_sequence<kTableCount>{})) {}

std::filesystem::path TableFile(const std::filesystem::path& dataPath, TableId id,
                                std::string_view extension) {
  const std::string_view stem = SchemaOf(id).stem;
  std::u8string name(stem.begin(), stem.end());
  name.append(extension.begin(), extension.end());
  return dataPath / name;
}

std::filesystem::path Corpus::FilePath(TableId id, std::string_view extension) const {
  return TableFile(dataPath_, id, extension);
}

void Corpus::ReadData(int group) {
  if (group < 0 || group >= kLoadGroups) return;
  if (Loaded[static_cast<std::size_t>(group)] != 0) return;
  Loaded[static_cast<std::size_t>(group)] = 1;
  for (const TableId id : GroupTables(group)) ReadStore(FilePath(id, ".dax"), table(id));
  switch (group) {
    case 0:
      MokBaseRows = Mok().rows();
      break;
    case 1:
      ConvDic2(*this);
      break;
    case 3:
      RestoreOfficeLines(Nen());
      break;
    default:
      break;
  }
}

int SysNo(const Corpus& corpus, std::u16string_view key) {
  return FindKey(corpus.Dat(), dat::kSysNo, key);
}
int MSysNo(const Corpus& corpus, std::u16string_view key) {
  return FindKey(corpus.Mok(), mok::kSysNo, key);
}
int SysNoS(const Corpus& corpus, std::u16string_view key) {
  return FindKey(corpus.SDat(), sdat::kSysNo, key);
}
int SysNo(const Corpus& corpus, long key) {
  return SysNo(corpus, text::IntText(key));
}
int MSysNo(const Corpus& corpus, long key) {
  return MSysNo(corpus, text::IntText(key));
}
int SysNoS(const Corpus& corpus, long key) {
  return SysNoS(corpus, text::IntText(key));
}

}  // namespace suizo::corpus
