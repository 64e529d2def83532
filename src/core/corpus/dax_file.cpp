#include "core/corpus/dax_file.h"

#include <algorithm>
#include <bit>
#include <cstring>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

#include "core/corpus/errors.h"
#include "core/corpus/file_io.h"
#include "core/text/numbers.h"
#include "core/text/utf16.h"

namespace suizo::corpus {
namespace {

constexpr char16_t kBom = 0xFEFF;

// Row numbers written into field 0 at load need at most this many units each.
constexpr std::size_t kRowNumberUnits = 5;

// Calls `onLineEnd(i)` for the index of every LF at or after `from`, in order.
template <typename F>
void ForEachLineFeed(const char16_t* text, std::size_t from, std::size_t size, F&& onLineEnd) {
  std::size_t i = from;
#if defined(__SSE2__)
  const __m128i lf = _mm_set1_epi16(0x000A);
  for (; i + 8 <= size; i += 8) {
    const __m128i units = _mm_loadu_si128(reinterpret_cast<const __m128i*>(text + i));
    // Each matching unit sets two adjacent bits of the mask.
    auto mask = static_cast<unsigned>(_mm_movemask_epi8(_mm_cmpeq_epi16(units, lf)));
    while (mask != 0) {
      onLineEnd(i + static_cast<std::size_t>(__builtin_ctz(mask)) / 2);
      mask &= mask - 1;
      mask &= mask - 1;
    }
  }
#endif
  for (; i < size; ++i) {
    if (text[i] == u'\n') onLineEnd(i);
  }
}

// What is wrong with the end of a store that does not end in CR LF.
std::string LineEndFault(std::span<const char16_t> text) {
  const char16_t last = text.empty() ? u'\0' : text.back();
  return last == u'\r'   ? "the last line ends in a lone CR; a store's lines end in CR LF"
         : last == u'\n' ? "the last line ends in a lone LF; a store's lines end in CR LF"
                         : "the last line has no line end; a store's lines end in CR LF";
}

// A store is UTF-16LE: a file that begins with another byte-order mark, or
// with none, is named for what it is.
void RefuseAnotherEncoding(const std::string& file, const unsigned char* b, std::size_t size) {
  if (size >= 3 && b[0] == 0xEF && b[1] == 0xBB && b[2] == 0xBF) {
    throw CorpusError({file, 1},
                      "the store is UTF-8 (it begins with EF BB BF); a store is UTF-16LE "
                      "beginning with FF FE");
  }
  if (size >= 2 && b[0] == 0xFE && b[1] == 0xFF) {
    throw CorpusError({file, 1},
                      "the store is UTF-16 big-endian (it begins with FE FF); a store is "
                      "UTF-16LE beginning with FF FE");
  }
  if (size < 2 || b[0] != 0xFF || b[1] != 0xFE) {
    throw CorpusError({file, 1},
                      "not a store file: it does not begin with the UTF-16 byte-order mark FF FE");
  }
}

// Writes the row numbers without a string for each.
void NumberRows(Table& table, int firstRow, int lastRow) {
  char16_t digits[12];
  for (int row = firstRow; row <= lastRow; ++row) {
    std::size_t n = 0;
    for (int rest = row; n == 0 || rest > 0; rest /= 10) {
      digits[n++] = static_cast<char16_t>(u'0' + rest % 10);
    }
    std::reverse(digits, digits + n);
    table.Set(row, 0, std::u16string_view(digits, n));
  }
}

// Fills the table from the lines that follow the field count: `fields` lines
// to a row, each cell pointing into the arena.
void FillRows(Table& table, const std::string& file, std::span<const char16_t> text,
              std::size_t bodyStart, int fields) {
  const TableSchema& schema = table.schema();
  const auto stride = static_cast<std::size_t>(schema.FieldMax()) + 1;
  const int firstRow = schema.firstRow;
  const std::size_t bodyUnits = text.size() - bodyStart;
  // Every line takes at least one unit, which bounds the rows the file can hold.
  const auto rowsAtMost = static_cast<long>((bodyUnits + static_cast<std::size_t>(fields) - 1) /
                                            static_cast<std::size_t>(fields));
  const int lastCellRow =
      static_cast<int>(std::min<long>(schema.rowCapacity, firstRow + std::max(rowsAtMost, 1L) - 1));
  Table::Cell* const cells = table.LoadCells(firstRow, std::max(lastCellRow, firstRow));

  int row = firstRow;
  int field = 1;
  Table::Cell* current = cells + static_cast<std::size_t>(row) * stride;
  std::size_t lineBegin = bodyStart;
  const auto lineOf = [&](int r, int f) {
    return 1L + static_cast<long>(r - firstRow) * fields + f;
  };
  const auto endLine = [&](std::size_t stop) {
    if (row > schema.rowCapacity) {
      throw CorpusError({file, lineOf(row, 1), row}, "more rows than " + std::string(schema.name) +
                                                         " can hold (" +
                                                         std::to_string(schema.rowCapacity) + ")");
    }
    current[field] = {static_cast<std::uint32_t>(lineBegin),
                      static_cast<std::uint32_t>(stop - lineBegin)};
    if (field < fields) {
      ++field;
      return;
    }
    current[0] = {0, 0};
    std::fill(current + fields + 1, current + stride, Table::Cell{0, 0});
    current += stride;
    ++row;
    field = 1;
  };
  ForEachLineFeed(text.data(), bodyStart, text.size(), [&](std::size_t lf) {
    endLine(lf > lineBegin && text[lf - 1] == u'\r' ? lf - 1 : lf);
    lineBegin = lf + 1;
  });
  // Text after the last LF is a line cut short: inside a row it is one of
  // the fields missing; as the last field of a row it lost its line end.
  const bool cutLine = lineBegin < text.size();
  const std::string fieldName = text::ToUtf8(schema.fields[static_cast<std::size_t>(field)]);
  if (cutLine ? field < fields : field != 1) {
    throw CorpusError({file, lineOf(row, field), row, field, fieldName},
                      "the file ends inside the row: " + std::to_string(fields - field + 1) +
                          " of its " + std::to_string(fields) + " fields are missing");
  }
  if (cutLine) {
    throw CorpusError({file, lineOf(row, field), row, field, fieldName}, LineEndFault(text));
  }
  if (text.size() > bodyStart && text[text.size() - 2] != u'\r') {
    throw CorpusError({file, lineOf(row - 1, fields), row - 1, fields,
                       text::ToUtf8(schema.fields[static_cast<std::size_t>(fields)])},
                      LineEndFault(text));
  }
  table.KeepRows(row - 1);
  table.set_cols(fields);
  table.set_rows(row - 1);
}

}  // namespace

void ReadDax(const std::filesystem::path& path, Table& table) {
  const TableSchema& schema = table.schema();
  const std::string file = DisplayPath(path);
  const std::size_t numberSpare =
      schema.numberedAtLoad ? (static_cast<std::size_t>(schema.rowCapacity) + 1) * kRowNumberUnits
                            : 0;
  try {
    std::size_t bytes = 0;
    std::span<char16_t> arena;
    ReadFileInto(path, [&](std::size_t size) -> void* {
      bytes = size;
      arena = table.ResetWithArena((size + 1) / 2, numberSpare);
      return arena.data();
    });
    RefuseAnotherEncoding(file, reinterpret_cast<const unsigned char*>(arena.data()), bytes);
    if (bytes % 2 != 0) {
      throw CorpusError({file}, "the file ends inside a UTF-16 character: its " +
                                    std::to_string(bytes) +
                                    " bytes are an odd number, so the last character was cut "
                                    "short");
    }
    if constexpr (std::endian::native == std::endian::big) {
      for (char16_t& c : arena) c = static_cast<char16_t>(c << 8 | c >> 8);
    }
    const std::u16string_view all(arena.data(), arena.size());
    const std::size_t headerEnd = std::min(all.find(u'\n'), all.size());
    std::u16string_view header = all.substr(1, headerEnd - 1);
    if (!header.empty() && header.back() == u'\r') header.remove_suffix(1);
    if (header.empty()) throw CorpusError({file, 1}, "the file has no field count");
    const auto fields = text::ToInt(header);
    if (fields && *fields > schema.FieldMax()) {
      throw CorpusError({file, 1}, "the store has " + std::to_string(*fields) +
                                       " fields, more than the " +
                                       std::to_string(schema.FieldMax()) + " of " +
                                       std::string(schema.name) + " this program knows");
    }
    if (!fields || *fields < 1) {
      throw CorpusError({file, 1}, "the first line should be the field count of " +
                                       std::string(schema.name) + " (1 to " +
                                       std::to_string(schema.FieldMax()) + "), not \"" +
                                       text::ToUtf8(header) + "\"");
    }
    if (headerEnd == all.size()) throw CorpusError({file, 1}, LineEndFault(arena));
    FillRows(table, file, arena, std::min(headerEnd + 1, arena.size()), *fields);
    if (schema.numberedAtLoad) NumberRows(table, schema.firstRow, table.rows());
  } catch (...) {
    table.Clear();
    throw;
  }
}

void ReadStore(const std::filesystem::path& path, Table& table) {
  ReadDax(path, table);
  const TableSchema& schema = table.schema();
  const int fields = table.cols();
  if (fields >= schema.FewestFields()) return;
  table.Clear();
  const int first = fields + 1;
  throw CorpusError({DisplayPath(path), 1, -1, first,
                     text::ToUtf8(schema.fields[static_cast<std::size_t>(first)])},
                    "the store has " + std::to_string(fields) + " fields, and a store of " +
                        std::string(schema.name) + " is read from " +
                        std::to_string(schema.FewestFields()) + " to " +
                        std::to_string(schema.FieldMax()) + ": the fields from " +
                        std::to_string(first) +
                        " on are missing, and the program cannot do without them. Convert the "
                        "folder again from its exports (.dat)");
}

namespace {

// The last field any row fills: a short store widens only as far as its text.
int LastFilledField(const Table& table) {
  const TableSchema& schema = table.schema();
  for (int field = schema.FieldMax(); field > table.cols(); --field) {
    for (int row = schema.firstRow; row <= table.rows(); ++row) {
      if (!table.Get(row, field).empty()) return field;
    }
  }
  return table.cols();
}

}  // namespace

std::string EncodeDax(const Table& table) {
  const TableSchema& schema = table.schema();
  const int fields = LastFilledField(table);
  if (fields < 1 || fields > schema.FieldMax()) {
    throw CorpusError({std::string(schema.stem) + ".dax"},
                      "cannot write a store with " + std::to_string(fields) + " fields");
  }
  std::u16string out;
  out.push_back(kBom);
  out += text::IntText(fields);
  out += u"\r\n";
  for (int row = schema.firstRow; row <= table.rows(); ++row) {
    for (int field = 1; field <= fields; ++field) {
      out += table.Get(row, field);
      out += u"\r\n";
    }
  }
  if constexpr (std::endian::native == std::endian::big) {
    for (char16_t& c : out) c = static_cast<char16_t>(c << 8 | c >> 8);
  }
  std::string bytes(out.size() * 2, '\0');
  std::memcpy(bytes.data(), out.data(), bytes.size());
  return bytes;
}

void WriteDax(const std::filesystem::path& path, const Table& table) {
  WriteFileWhole(path, EncodeDax(table));
}

}  // namespace suizo::corpus
