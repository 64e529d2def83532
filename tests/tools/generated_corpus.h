// The generated corpus as the import's reader sees it: each .dat file read
// into its table with the steps every table shares, nothing more.
#pragma once

#include <gtest/gtest.h>

#include <array>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>

#include "core/corpus/dat_file.h"
#include "core/corpus/schema.h"
#include "core/corpus/table.h"

namespace suizo::testing {

class GeneratedCorpus {
 public:
  explicit GeneratedCorpus(std::filesystem::path folder) : folder_(std::move(folder)) {}

  const std::filesystem::path& folder() const { return folder_; }

  // The table read from <stem>.dat, once.
  const corpus::Table& table(corpus::TableId id) {
    auto& slot = tables_[static_cast<std::size_t>(id)];
    if (!slot) {
      slot = std::make_unique<corpus::Table>(corpus::SchemaOf(id));
      corpus::ReadDatTable(folder_ / (std::string(corpus::SchemaOf(id).stem) + ".dat"), *slot);
    }
    return *slot;
  }

  // The rows 1..rows whose field `field` satisfies `test`.
  template <typename Test>
  int Count(corpus::TableId id, int field, Test test) {
    const corpus::Table& t = table(id);
    int n = 0;
    for (int row = 1; row <= t.rows(); ++row) n += test(t.Get(row, field)) ? 1 : 0;
    return n;
  }

  int CountContaining(corpus::TableId id, int field, std::u16string_view part) {
    return Count(id, field, [&](std::u16string_view v) { return v.find(part) != v.npos; });
  }

 private:
  std::filesystem::path folder_;
  std::array<std::unique_ptr<corpus::Table>, corpus::kTableCount> tables_;
};

// The bundled sample corpus, data/sample, read once for all tests.
inline GeneratedCorpus& Sample() {
  static GeneratedCorpus corpus(std::filesystem::path(SUIZO_SOURCE_DIR) / "data" / "sample");
  return corpus;
}

}  // namespace suizo::testing
