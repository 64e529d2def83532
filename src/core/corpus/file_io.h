// Whole-file reads and writes. A file is written whole or not at all: to a
// temporary file in the same folder, flushed to disk, then renamed over the
// old one, so that a crash or a full disk never leaves half a file.
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>
#include <string_view>

namespace suizo::corpus {

// Every read and write of a data file refuses, naming it, anything but a
// regular file ("not a regular file: a FIFO", "a folder", "a device", ...)
// at once: a FIFO or a device in a file's place never blocks the program.

// The file's bytes; a CorpusError naming the file when it cannot be read.
std::string ReadFileBytes(const std::filesystem::path& path);

// Reads the file straight into memory that `allocate` gives for its size in
// bytes, with no copy on the way.
void ReadFileInto(const std::filesystem::path& path,
                  const std::function<void*(std::size_t)>& allocate);

// The file decoded from Shift-JIS; a bad byte is a CorpusError naming the
// file and its line.
std::u16string ReadShiftJisFile(const std::filesystem::path& path);

// A CorpusError naming the file when it is missing or not a regular file;
// opens nothing.
void RequireRegularFile(const std::filesystem::path& path);

void WriteFileWhole(const std::filesystem::path& path, std::string_view bytes);

// Appends the bytes to the file, creating it, and flushes them to disk before
// returning. A failure leaves the file as it was.
void AppendFileFlushed(const std::filesystem::path& path, std::string_view bytes);

// Whether the file is what a write cut short by a crash left: a ".tmp"
// beside a store, profile or export file.
bool IsLeftoverTemporary(const std::filesystem::path& path);

// Removes every such file of the folder. Returns how many went.
int RemoveLeftoverTemporaries(const std::filesystem::path& folder);

void TruncateFile(const std::filesystem::path& path, std::uintmax_t size);

// Removes the file if it is there; a CorpusError naming it when it stays.
// The folder is flushed, so that the removal is as lasting as a write.
void RemoveFile(const std::filesystem::path& path);

// Renames a whole file over another in the same folder, then flushes the
// folder; a CorpusError naming both when it cannot.
void ReplaceFile(const std::filesystem::path& from, const std::filesystem::path& to);

// The steps of a write that can fail on a full disk or a denied folder, or
// at which a test may stop the program.
enum class WriteStep { Create, Write, Flush, Rename, Remove };

// Asked before each step of every write with the file the step works on;
// returns the errno the step is to fail with, or 0. A failing Write step
// first writes half of what is left, as a disk filling up does.
using WriteFault = std::function<int(const std::filesystem::path& file, WriteStep step)>;

// Installs a fault for the life of the object, for tests of what a failed
// write leaves behind.
class ScopedWriteFault {
 public:
  explicit ScopedWriteFault(WriteFault fault);
  ~ScopedWriteFault();
  ScopedWriteFault(const ScopedWriteFault&) = delete;
  ScopedWriteFault& operator=(const ScopedWriteFault&) = delete;

 private:
  WriteFault previous_;
};

// Turns off the flushes to disk for the life of the object. Only a crash of
// the machine loses what was written and not flushed; tests that kill the
// program with a signal at every step of a long write need no flush, and
// would spend most of their time waiting for it.
class ScopedFlushOff {
 public:
  ScopedFlushOff();
  ~ScopedFlushOff();
  ScopedFlushOff(const ScopedFlushOff&) = delete;
  ScopedFlushOff& operator=(const ScopedFlushOff&) = delete;

 private:
  bool previous_;
};

// The path as UTF-8, for messages.
std::string DisplayPath(const std::filesystem::path& path);

}  // namespace suizo::corpus
