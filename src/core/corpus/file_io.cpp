#include "core/corpus/file_io.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <utility>
#include <vector>

#include "core/corpus/errors.h"
#include "core/text/sjis.h"

namespace suizo::corpus {
namespace {

[[noreturn]] void Fail(const std::filesystem::path& path, const std::string& what, int err) {
  throw CorpusError({DisplayPath(path)}, what + ": " + std::strerror(err));
}

class Fd {
 public:
  explicit Fd(int fd) : fd_(fd) {}
  Fd(const Fd&) = delete;
  Fd& operator=(const Fd&) = delete;
  ~Fd() {
    if (fd_ >= 0) ::close(fd_);
  }
  int get() const { return fd_; }
  int release() { return std::exchange(fd_, -1); }

 private:
  int fd_;
};

WriteFault& InjectedFault() {
  static WriteFault fault;
  return fault;
}

int FaultAt(const std::filesystem::path& file, WriteStep step) {
  const WriteFault& fault = InjectedFault();
  return fault ? fault(file, step) : 0;
}

// What a file is, for the refusal of anything but a regular one.
const char* KindOf(mode_t mode) {
  if (S_ISDIR(mode)) return "a folder";
  if (S_ISFIFO(mode)) return "a FIFO";
  if (S_ISCHR(mode) || S_ISBLK(mode)) return "a device";
  if (S_ISSOCK(mode)) return "a socket";
  return "a special file";
}

[[noreturn]] void RefuseKind(const std::filesystem::path& path, mode_t mode) {
  throw CorpusError({DisplayPath(path)}, std::string("not a regular file: ") + KindOf(mode));
}

// Opens without ever blocking (a FIFO with no writer or no reader would) and
// refuses anything but a regular file before any byte moves.
int OpenRegular(const std::filesystem::path& path, int flags) {
  struct stat info {};
  const int fd = ::open(path.c_str(), flags | O_NONBLOCK | O_CLOEXEC, 0644);
  if (fd < 0) {
    // A FIFO without a reader or a folder opened for writing fails here.
    const int err = errno;
    if (::stat(path.c_str(), &info) == 0 && !S_ISREG(info.st_mode)) RefuseKind(path, info.st_mode);
    errno = err;
    return -1;
  }
  int err = ::fstat(fd, &info) != 0 ? errno : 0;
  // Regular files ignore the flag; it is taken off all the same.
  if (err == 0 && S_ISREG(info.st_mode) &&
      ::fcntl(fd, F_SETFL, ::fcntl(fd, F_GETFL) & ~O_NONBLOCK) != 0) {
    err = errno;
  }
  if (err == 0 && S_ISREG(info.st_mode)) return fd;
  ::close(fd);
  if (err == 0) RefuseKind(path, info.st_mode);
  errno = err;
  return -1;
}

int OpenForWriting(const std::filesystem::path& path, int mode) {
  if (const int err = FaultAt(path, WriteStep::Create)) {
    errno = err;
    return -1;
  }
  return OpenRegular(path, O_WRONLY | O_CREAT | mode);
}

// Writes every byte; the errno of a failure, or 0.
int WriteAll(int fd, const std::filesystem::path& path, std::string_view bytes) {
  const int fault = FaultAt(path, WriteStep::Write);
  const std::size_t size = fault != 0 ? bytes.size() / 2 : bytes.size();
  std::size_t done = 0;
  while (done < size) {
    const ssize_t n = ::write(fd, bytes.data() + done, size - done);
    if (n < 0 && errno == EINTR) continue;
    if (n < 0) return errno;
    done += static_cast<std::size_t>(n);
  }
  return fault;
}

bool& Flushing() {
  static bool on = true;
  return on;
}

int Flush(int fd, const std::filesystem::path& path) {
  if (const int err = FaultAt(path, WriteStep::Flush)) return err;
  return !Flushing() || ::fsync(fd) == 0 ? 0 : errno;
}

// Makes a rename or removal in the file's folder reach the disk.
void FlushFolderOf(const std::filesystem::path& path) {
  const auto folder = path.has_parent_path() ? path.parent_path() : std::filesystem::path(".");
  if (!Flushing()) return;
  Fd dir(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (dir.get() >= 0) ::fsync(dir.get());
}

}  // namespace

std::string DisplayPath(const std::filesystem::path& path) {
  const auto u8 = path.u8string();
  return std::string(u8.begin(), u8.end());
}

void ReadFileInto(const std::filesystem::path& path,
                  const std::function<void*(std::size_t)>& allocate) {
  Fd fd(OpenRegular(path, O_RDONLY));
  if (fd.get() < 0) Fail(path, "cannot open the file", errno);
  struct stat info {};
  if (::fstat(fd.get(), &info) != 0) Fail(path, "cannot read the file", errno);
  const auto size = static_cast<std::size_t>(info.st_size);
  auto* dest = static_cast<char*>(allocate(size));
  std::size_t done = 0;
  while (done < size) {
    const ssize_t n = ::read(fd.get(), dest + done, size - done);
    if (n < 0 && errno == EINTR) continue;
    if (n < 0) Fail(path, "cannot read the file", errno);
    if (n == 0) throw CorpusError({DisplayPath(path)}, "the file shrank while it was read");
    done += static_cast<std::size_t>(n);
  }
}

std::string ReadFileBytes(const std::filesystem::path& path) {
  std::string bytes;
  ReadFileInto(path, [&](std::size_t size) -> void* {
    bytes.resize(size);
    return bytes.data();
  });
  return bytes;
}

std::u16string ReadShiftJisFile(const std::filesystem::path& path) {
  const std::string bytes = ReadFileBytes(path);
  try {
    return text::DecodeSjis(bytes);
  } catch (const text::SjisDecodeError& e) {
    const auto before = std::string_view(bytes).substr(0, e.byteOffset());
    const long line = static_cast<long>(std::count(before.begin(), before.end(), '\n')) + 1;
    throw CorpusError({DisplayPath(path), line}, e.what());
  }
}

void RequireRegularFile(const std::filesystem::path& path) {
  struct stat info {};
  if (::stat(path.c_str(), &info) != 0) Fail(path, "cannot open the file", errno);
  if (!S_ISREG(info.st_mode)) RefuseKind(path, info.st_mode);
}

ScopedWriteFault::ScopedWriteFault(WriteFault fault) : previous_(std::move(InjectedFault())) {
  InjectedFault() = std::move(fault);
}

ScopedWriteFault::~ScopedWriteFault() {
  InjectedFault() = std::move(previous_);
}

ScopedFlushOff::ScopedFlushOff() : previous_(std::exchange(Flushing(), false)) {}

ScopedFlushOff::~ScopedFlushOff() {
  Flushing() = previous_;
}

void WriteFileWhole(const std::filesystem::path& path, std::string_view bytes) {
  std::filesystem::path temp = path;
  temp += ".tmp";
  Fd fd(OpenForWriting(temp, O_TRUNC));
  if (fd.get() < 0) Fail(temp, "cannot create the file", errno);
  const auto discard = [&](const std::filesystem::path& failed, const char* what, int err) {
    ::close(fd.release());
    ::unlink(temp.c_str());
    Fail(failed, what, err);
  };
  if (const int err = WriteAll(fd.get(), temp, bytes)) discard(temp, "cannot write the file", err);
  if (const int err = Flush(fd.get(), temp)) discard(temp, "cannot flush the file", err);
  if (::close(fd.release()) != 0) {
    const int err = errno;
    ::unlink(temp.c_str());
    Fail(temp, "cannot write the file", err);
  }
  int err = FaultAt(path, WriteStep::Rename);
  if (err == 0 && ::rename(temp.c_str(), path.c_str()) != 0) err = errno;
  if (err != 0) {
    ::unlink(temp.c_str());
    Fail(path, "cannot replace the file", err);
  }
  // The rename itself must reach the disk before the write counts as done.
  FlushFolderOf(path);
}

void AppendFileFlushed(const std::filesystem::path& path, std::string_view bytes) {
  Fd fd(OpenForWriting(path, O_APPEND));
  if (fd.get() < 0) Fail(path, "cannot open the file for writing", errno);
  struct stat info {};
  if (::fstat(fd.get(), &info) != 0) Fail(path, "cannot read the file", errno);
  // A failed append takes back what it wrote, so the next one starts clean.
  const auto undo = [&](const char* what, int err) {
    (void)!::ftruncate(fd.get(), info.st_size);
    Fail(path, what, err);
  };
  if (const int err = WriteAll(fd.get(), path, bytes)) undo("cannot write the file", err);
  if (const int err = Flush(fd.get(), path)) undo("cannot flush the file", err);
}

bool IsLeftoverTemporary(const std::filesystem::path& path) {
  if (path.extension() != ".tmp") return false;
  const auto written = path.stem().extension();
  return written == ".dax" || written == ".ini" || written == ".dat";
}

int RemoveLeftoverTemporaries(const std::filesystem::path& folder) {
  std::error_code error;
  std::vector<std::filesystem::path> left;
  for (const auto& entry : std::filesystem::directory_iterator(folder, error)) {
    if (IsLeftoverTemporary(entry.path()) && entry.is_regular_file(error))
      left.push_back(entry.path());
  }
  int removed = 0;
  for (const auto& path : left) removed += std::filesystem::remove(path, error) ? 1 : 0;
  return removed;
}

void RemoveFile(const std::filesystem::path& path) {
  struct stat info {};
  if (::lstat(path.c_str(), &info) != 0 && errno == ENOENT) return;
  int err = FaultAt(path, WriteStep::Remove);
  if (err == 0 && ::unlink(path.c_str()) != 0) err = errno == ENOENT ? 0 : errno;
  if (err != 0) Fail(path, "cannot remove the file", err);
  FlushFolderOf(path);
}

void ReplaceFile(const std::filesystem::path& from, const std::filesystem::path& to) {
  int err = FaultAt(to, WriteStep::Rename);
  if (err == 0 && ::rename(from.c_str(), to.c_str()) != 0) err = errno;
  if (err != 0) {
    throw CorpusError({DisplayPath(to)}, "cannot put " + DisplayPath(from.filename()) +
                                             " in its place: " + std::strerror(err));
  }
  FlushFolderOf(to);
}

void TruncateFile(const std::filesystem::path& path, std::uintmax_t size) {
  if (::truncate(path.c_str(), static_cast<off_t>(size)) != 0)
    Fail(path, "cannot shorten the file", errno);
}

}  // namespace suizo::corpus
