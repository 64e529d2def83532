// Whole-file reads and writes. A file is written whole or not at all: to a
// temporary file in the same folder, flushed to disk, then renamed over the
// old one, so that a crash or a full disk never leaves half a file.
#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <string_view>

namespace suizo::corpus {

// The file's bytes; a CorpusError naming the file when it cannot be read.
std::string ReadFileBytes(const std::filesystem::path& path);

// Reads the file straight into memory that `allocate` gives for its size in
// bytes, with no copy on the way.
void ReadFileInto(const std::filesystem::path& path,
                  const std::function<void*(std::size_t)>& allocate);

// The file decoded from Shift-JIS; a bad byte is a CorpusError naming the
// file and its line.
std::u16string ReadShiftJisFile(const std::filesystem::path& path);

void WriteFileWhole(const std::filesystem::path& path, std::string_view bytes);

// The path as UTF-8, for messages.
std::string DisplayPath(const std::filesystem::path& path);

}  // namespace suizo::corpus
