// The converted store: one <stem>.dax file per table. UTF-16 little-endian
// with the byte-order mark FF FE, lines ending in CR LF. Line 1 is the field
// count F; then F lines per row, fields 1 to F, with no row marker: `Dat` and
// `SDat` begin with row 0, the others with row 1. Field 0 is never stored.
#pragma once

#include <filesystem>
#include <string>

#include "core/corpus/table.h"

namespace suizo::corpus {

// Loads the file into the table, replacing what it held; numbers the rows in
// field 0 where the schema says so. A file that is not a store (UTF-8, big-
// endian, no mark), is cut inside a character or a row, does not end in
// CR LF, or has more rows than the table can hold is a CorpusError.
void ReadDax(const std::filesystem::path& path, Table& table);

// A store of the data folder: `ReadDax`, then refused, naming the file and
// its field count, when it is shorter than its table can be read from (see
// `TableSchema::fewestFields`). The fields a shorter store lacks are empty.
void ReadStore(const std::filesystem::path& path, Table& table);

// The bytes of the store of a table, rows from the schema's first row to the
// row counter, fields 1 to the field counter; widened to the last field that
// holds text, so that a note typed where a short store had no field is kept.
std::string EncodeDax(const Table& table);

// Writes the store whole (temporary file, then rename).
void WriteDax(const std::filesystem::path& path, const Table& table);

}  // namespace suizo::corpus
