// Any bytes as a .dat export of any table: the reader either fills the table
// or stops with the error that names the file, line, row and field. The first
// byte chooses the table.
#include <cstddef>
#include <cstdint>

#include "core/corpus/dat_file.h"
#include "core/corpus/errors.h"
#include "core/corpus/schema.h"
#include "fuzz_support.h"

using namespace suizo;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  const auto id = static_cast<corpus::TableId>(data[0] % corpus::kTableCount);
  const corpus::TableSchema& schema = corpus::SchemaOf(id);
  const auto path = fuzzing::WriteInput(std::string(schema.stem) + ".dat", data + 1, size - 1);
  corpus::Table table(schema);
  try {
    corpus::ReadDatTable(path, table);
  } catch (const corpus::CorpusError&) {
    return 0;  // the defined failure
  }
  // What was read reads back from every cell.
  if (table.rows() > schema.rowCapacity) std::abort();
  for (int row = 0; row <= table.rows(); ++row) {
    for (int field = 0; field < static_cast<int>(schema.fields.size()); ++field)
      (void)table.Get(row, field);
  }
  return 0;
}
