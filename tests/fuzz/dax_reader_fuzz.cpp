// Any bytes as the store of any table: the reader either loads it or stops
// with the error naming the file, and what it loads writes back to bytes
// that load to the same cells. The first byte chooses the table.
#include <cstddef>
#include <cstdint>
#include <cstdlib>

#include "core/corpus/dax_file.h"
#include "core/corpus/errors.h"
#include "core/corpus/schema.h"
#include "fuzz_support.h"

using namespace suizo;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  const auto id = static_cast<corpus::TableId>(data[0] % corpus::kTableCount);
  const corpus::TableSchema& schema = corpus::SchemaOf(id);
  const auto path = fuzzing::WriteInput(std::string(schema.stem) + ".dax", data + 1, size - 1);
  corpus::Table table(schema);
  try {
    corpus::ReadDax(path, table);
  } catch (const corpus::CorpusError&) {
    // A failed read leaves the table empty.
    if (table.rows() != 0) std::abort();
    return 0;
  }
  const std::string again = corpus::EncodeDax(table);
  const auto copy =
      fuzzing::WriteInput(std::string(schema.stem) + "-again.dax",
                          reinterpret_cast<const std::uint8_t*>(again.data()), again.size());
  corpus::Table reread(schema);
  corpus::ReadDax(copy, reread);
  if (reread.rows() != table.rows() || reread.cols() != table.cols()) std::abort();
  for (int row = 0; row <= table.rows(); ++row) {
    for (int field = 1; field <= table.cols(); ++field) {
      if (reread.Get(row, field) != table.Get(row, field)) std::abort();
    }
  }
  return 0;
}
