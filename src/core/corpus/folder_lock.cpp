#include "core/corpus/folder_lock.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <charconv>
#include <ctime>
#include <system_error>
#include <utility>

#include "core/corpus/file_io.h"
#include "core/text/utf16.h"

namespace suizo::corpus {
namespace {

namespace fs = std::filesystem;

[[noreturn]] void Fail(const fs::path& folder, const std::string& step, int error) {
  throw CorpusError({DisplayPath(folder)}, step + " the lock file " + std::string(kLockFileName) +
                                               ": " + std::system_category().message(error));
}

std::string Line(std::string_view& text) {
  const std::size_t end = text.find('\n');
  const std::string line(text.substr(0, end));
  text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
  return line;
}

LockHolder ParseHolder(std::string_view text) {
  LockHolder holder;
  holder.program = Line(text);
  const std::string pid = Line(text);
  std::from_chars(pid.data(), pid.data() + pid.size(), holder.pid);
  holder.since = Line(text);
  return holder;
}

// The holder's lines. A holder that has just taken the lock may not have
// written them yet: it is given a moment to.
LockHolder ReadHolder(int fd) {
  LockHolder holder;
  for (int tries = 0; tries < 20; ++tries) {
    char buffer[1024];
    const ssize_t n = ::pread(fd, buffer, sizeof buffer, 0);
    holder = ParseHolder(std::string_view(buffer, n > 0 ? static_cast<std::size_t>(n) : 0));
    if (holder.pid > 0) break;
    const timespec moment{0, 10'000'000};
    ::nanosleep(&moment, nullptr);
  }
  return holder;
}

// Whether `path` still names the file open at `fd`: a holder that lets go
// removes the file, and a lock won on a removed file guards nothing.
bool StillNamed(int fd, const fs::path& path) {
  struct stat held {};
  struct stat named {};
  return ::fstat(fd, &held) == 0 && ::lstat(path.c_str(), &named) == 0 &&
         held.st_dev == named.st_dev && held.st_ino == named.st_ino;
}

std::string Now() {
  const std::time_t now = std::time(nullptr);
  std::tm local{};
  ::localtime_r(&now, &local);
  char text[40];
  return std::string(text, std::strftime(text, sizeof text, "%Y-%m-%dT%H:%M:%S%z", &local));
}

// The lines are for the one refused; the lock holds without them, so a full
// disk does not stop the holder.
void WriteHolder(int fd, std::string_view program) {
  std::string lines(program);
  for (char& c : lines) {
    if (c == '\n' || c == '\r') c = ' ';
  }
  lines += "\n" + std::to_string(::getpid()) + "\n" + Now() + "\n";
  if (::ftruncate(fd, 0) != 0) return;
  std::size_t done = 0;
  while (done < lines.size()) {
    const ssize_t n =
        ::pwrite(fd, lines.data() + done, lines.size() - done, static_cast<off_t>(done));
    if (n < 0 && errno == EINTR) continue;
    if (n <= 0) return;
    done += static_cast<std::size_t>(n);
  }
}

}  // namespace

std::string LockHolder::Text() const {
  if (program.empty() && pid <= 0) return "another program";
  std::string text = program.empty() ? "another program" : program;
  if (pid > 0) text += " (process " + std::to_string(pid) + ")";
  return text;
}

FolderBusyError::FolderBusyError(std::filesystem::path folder, LockHolder holder)
    : CorpusError({DisplayPath(folder)}, "the data folder is in use by " + holder.Text()),
      folder_(std::move(folder)),
      holder_(std::move(holder)) {}

std::optional<DataFolderLock> DataFolderLock::TryAcquire(const std::filesystem::path& folder,
                                                         std::string_view program) {
  try {
    return Acquire(folder, program);
  } catch (const FolderBusyError&) {
    return std::nullopt;
  }
}

DataFolderLock DataFolderLock::Acquire(const std::filesystem::path& folder,
                                       std::string_view program) {
  fs::path path = folder / kLockFileName;
  for (;;) {
    const int fd = ::open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0644);
    if (fd < 0) Fail(folder, "cannot make", errno);
    int locked = 0;
    do {
      locked = ::flock(fd, LOCK_EX | LOCK_NB);
    } while (locked != 0 && errno == EINTR);
    if (locked != 0) {
      const int error = errno;
      if (error != EWOULDBLOCK) {
        ::close(fd);
        Fail(folder, "cannot lock", error);
      }
      LockHolder holder = ReadHolder(fd);
      ::close(fd);
      throw FolderBusyError(folder, std::move(holder));
    }
    if (StillNamed(fd, path)) {
      WriteHolder(fd, program);
      return DataFolderLock(std::move(path), fd);
    }
    ::close(fd);
  }
}

DataFolderLock::DataFolderLock(DataFolderLock&& other) noexcept
    : path_(std::move(other.path_)), fd_(std::exchange(other.fd_, -1)) {}

DataFolderLock& DataFolderLock::operator=(DataFolderLock&& other) noexcept {
  if (this != &other) {
    Release();
    path_ = std::move(other.path_);
    fd_ = std::exchange(other.fd_, -1);
  }
  return *this;
}

DataFolderLock::~DataFolderLock() {
  Release();
}

void DataFolderLock::Release() noexcept {
  if (fd_ < 0) return;
  // Removed while still held, so that no one locks the file on its way out;
  // a file someone put in its place is not ours to remove.
  if (StillNamed(fd_, path_)) ::unlink(path_.c_str());
  ::close(fd_);
  fd_ = -1;
}

std::u16string FolderBusyNotice(const FolderBusyError& error) {
  const LockHolder& holder = error.holder();
  std::u16string who = u"別のプログラム";
  if (!holder.program.empty() || holder.pid > 0) {
    std::u16string name = text::FromUtf8(holder.program);
    if (holder.pid > 0) {
      name += (name.empty() ? u"" : u"、") + std::u16string(u"プロセス ") +
              text::FromUtf8(std::to_string(holder.pid));
    }
    who += u"（" + name + u"）";
  }
  return u"データフォルダ「" + text::FromUtf8(DisplayPath(error.folder())) + u"」は" + who +
         u"が使用中です。そのプログラムを終えてから起動してください。";
}

}  // namespace suizo::corpus
