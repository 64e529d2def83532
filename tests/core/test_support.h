// Helpers shared by the core tests.
#pragma once

#include <gtest/gtest.h>

#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <initializer_list>
#include <string>
#include <string_view>

#include "core/corpus/errors.h"
#include "core/corpus/file_io.h"
#include "core/corpus/import.h"
#include "core/corpus/table.h"
#include "core/text/sjis.h"

namespace suizo::testing {

// A fresh folder under the system's temporary folder, removed afterwards.
class TempDir {
 public:
  // `suffix` tells apart two folders of one test.
  explicit TempDir(const std::string& suffix = "") {
    const auto* info = ::testing::UnitTest::GetInstance()->current_test_info();
    path_ = std::filesystem::temp_directory_path() /
            ("suizo-" + std::string(info->test_suite_name()) + "-" + info->name() + "-" +
             std::to_string(::getpid()) + suffix);
    std::filesystem::remove_all(path_);
    std::filesystem::create_directories(path_);
  }
  ~TempDir() { std::filesystem::remove_all(path_); }
  const std::filesystem::path& path() const { return path_; }
  std::filesystem::path operator/(std::string_view name) const { return path_ / name; }

 private:
  std::filesystem::path path_;
};

inline void WriteBytes(const std::filesystem::path& path, std::string_view bytes) {
  std::ofstream(path, std::ios::binary)
      .write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

// The file's bytes; empty when there is no such file.
inline std::string ReadBytes(const std::filesystem::path& path) {
  return std::filesystem::is_regular_file(path) ? corpus::ReadFileBytes(path) : std::string();
}

// UTF-16LE bytes of a text, with the byte-order mark when asked.
inline std::string Utf16le(std::u16string_view text, bool bom = true) {
  std::string out;
  if (bom) out += "\xFF\xFE";
  for (char16_t c : text) {
    out += static_cast<char>(c & 0xFF);
    out += static_cast<char>(c >> 8);
  }
  return out;
}

// Store text from lines, each ended with CR LF.
inline std::string DaxBytes(std::initializer_list<std::u16string_view> lines) {
  std::u16string text;
  for (auto line : lines) {
    text += line;
    text += u"\r\n";
  }
  return Utf16le(text);
}

// A .dat file from lines of text, written in Shift-JIS with CR LF.
inline void WriteDat(const std::filesystem::path& path,
                     std::initializer_list<std::u16string_view> lines) {
  std::u16string text;
  for (auto line : lines) {
    text += line;
    text += u"\r\n";
  }
  WriteBytes(path, text::EncodeSjis(text));
}

// An export's text (CR LF lines, header first) with the columns the table
// requires added to the header where it lacks them, empty in every record:
// for tests about other columns.
inline std::u16string WithRequiredColumns(corpus::TableId id, std::u16string_view text) {
  const corpus::TableSchema& schema = corpus::SchemaOf(id);
  std::size_t end = text.find(u"\r\n");
  if (end == std::u16string_view::npos) end = text.size();
  std::u16string header(text.substr(0, end));
  std::u16string bare;
  for (char16_t c : header) {
    if (c != u'"') bare += c;
  }
  bare = u"," + bare + u",";
  std::u16string added;
  for (const int field : schema.requiredColumns) {
    const std::u16string name(schema.fields[static_cast<std::size_t>(field)]);
    if (bare.find(u"," + name + u",") != std::u16string::npos) continue;
    header += u"," + name;
    added += u",";
  }
  std::u16string out = header;
  for (std::size_t at = end; at < text.size();) {
    std::size_t next = text.find(u"\r\n", at + 2);
    if (next == std::u16string_view::npos) next = text.size();
    const std::u16string_view line = text.substr(at, next - at);  // with its leading CR LF
    out += line;
    if (line.size() > 2) out += added;
    at = next;
  }
  return out;
}

// WriteDat with the columns the table requires completed, as above.
inline void WriteExport(const std::filesystem::path& path, corpus::TableId id,
                        std::initializer_list<std::u16string_view> lines) {
  std::u16string text;
  for (auto line : lines) {
    text += line;
    text += u"\r\n";
  }
  WriteBytes(path, text::EncodeSjis(WithRequiredColumns(id, text)));
}

// The place named by the fault that reading `path` into a table of `id`
// raises through `read` (ReadDax, ReadDatTable); a test failure when none.
template <typename Read>
corpus::ErrorPlace FaultOf(Read read, const std::filesystem::path& path, corpus::TableId id) {
  corpus::Table table(corpus::SchemaOf(id));
  try {
    read(path, table);
  } catch (const corpus::CorpusError& e) {
    EXPECT_NE(std::string(e.what()).find(corpus::DisplayPath(path)), std::string::npos) << e.what();
    return e.place();
  }
  ADD_FAILURE() << "no fault reading " << path;
  return {""};
}

inline std::filesystem::path FixtureStore() {
  return std::filesystem::path(SUIZO_FIXTURES) / "store";
}

// The bundled sample corpus, converted once per test program into a
// temporary folder that is removed when the program ends. Load from it with
// a fresh Corpus per test; a test that writes must copy it first.
inline const std::filesystem::path& SampleStore() {
  static const std::filesystem::path folder = [] {
    const auto path =
        std::filesystem::temp_directory_path() / ("suizo-sample-" + std::to_string(::getpid()));
    std::filesystem::remove_all(path);
    std::filesystem::copy(std::filesystem::path(SUIZO_SOURCE_DIR) / "data" / "sample", path,
                          std::filesystem::copy_options::recursive);
    corpus::Corpus imported(path);
    corpus::ReadDataFirst(imported, corpus::ImportOptionsFor(path));
    std::atexit([] { std::filesystem::remove_all(SampleStore()); });
    return path;
  }();
  return folder;
}

}  // namespace suizo::testing
