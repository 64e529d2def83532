// One writer per data folder: a program that writes the folder holds the
// lock file "suizo.lock" in it for as long as it may write. The lock is an
// flock on that file, so the kernel gives it up when the holder dies and a
// file left behind by a killed program is simply taken over. The file names
// the holder, so that the one refused can say who is in the way.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "core/corpus/errors.h"

namespace suizo::corpus {

inline constexpr std::string_view kLockFileName = "suizo.lock";

// Who holds a folder, as its lock file says; empty fields when it did not say.
struct LockHolder {
  std::string program;
  long pid = 0;
  std::string since;  // local time of the start, ISO 8601

  // "suizo-viewer (process 1234)", or "another program" when unnamed.
  std::string Text() const;
};

// The folder is held by another program (or by another lock of this one).
class FolderBusyError : public CorpusError {
 public:
  FolderBusyError(std::filesystem::path folder, LockHolder holder);
  const std::filesystem::path& folder() const { return folder_; }
  const LockHolder& holder() const { return holder_; }

 private:
  std::filesystem::path folder_;
  LockHolder holder_;
};

class DataFolderLock {
 public:
  // Takes the folder's lock for `program` and writes the holder's lines.
  // Throws FolderBusyError when it is held, and CorpusError naming the
  // folder when the lock file cannot be made (a read-only or denied folder).
  [[nodiscard]] static DataFolderLock Acquire(const std::filesystem::path& folder,
                                              std::string_view program);
  // The same, but empty when the folder is held.
  [[nodiscard]] static std::optional<DataFolderLock> TryAcquire(const std::filesystem::path& folder,
                                                                std::string_view program);

  DataFolderLock(DataFolderLock&& other) noexcept;
  DataFolderLock& operator=(DataFolderLock&& other) noexcept;
  DataFolderLock(const DataFolderLock&) = delete;
  DataFolderLock& operator=(const DataFolderLock&) = delete;
  // Removes the lock file, then lets the lock go.
  ~DataFolderLock();

  const std::filesystem::path& path() const { return path_; }

 private:
  DataFolderLock(std::filesystem::path path, int fd) : path_(std::move(path)), fd_(fd) {}
  void Release() noexcept;

  std::filesystem::path path_;
  int fd_ = -1;
};

// The viewer's message for a folder it cannot open because another program
// holds it.
std::u16string FolderBusyNotice(const FolderBusyError& error);

}  // namespace suizo::corpus
