#include "core/corpus/file_io.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <utility>

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

}  // namespace

std::string DisplayPath(const std::filesystem::path& path) {
  const auto u8 = path.u8string();
  return std::string(u8.begin(), u8.end());
}

void ReadFileInto(const std::filesystem::path& path,
                  const std::function<void*(std::size_t)>& allocate) {
  Fd fd(::open(path.c_str(), O_RDONLY | O_CLOEXEC));
  if (fd.get() < 0) Fail(path, "cannot open the file", errno);
  struct stat info {};
  if (::fstat(fd.get(), &info) != 0) Fail(path, "cannot read the file", errno);
  if (S_ISDIR(info.st_mode)) Fail(path, "cannot read the file", EISDIR);
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

void WriteFileWhole(const std::filesystem::path& path, std::string_view bytes) {
  std::filesystem::path temp = path;
  temp += ".tmp";
  Fd fd(::open(temp.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644));
  if (fd.get() < 0) Fail(temp, "cannot create the file", errno);
  const auto discard = [&](const std::filesystem::path& failed, const char* what, int err) {
    ::close(fd.release());
    ::unlink(temp.c_str());
    Fail(failed, what, err);
  };
  std::size_t done = 0;
  while (done < bytes.size()) {
    const ssize_t n = ::write(fd.get(), bytes.data() + done, bytes.size() - done);
    if (n < 0 && errno == EINTR) continue;
    if (n < 0) discard(temp, "cannot write the file", errno);
    done += static_cast<std::size_t>(n);
  }
  if (::fsync(fd.get()) != 0) discard(temp, "cannot flush the file", errno);
  if (::close(fd.release()) != 0) {
    const int err = errno;
    ::unlink(temp.c_str());
    Fail(temp, "cannot write the file", err);
  }
  if (::rename(temp.c_str(), path.c_str()) != 0) {
    const int err = errno;
    ::unlink(temp.c_str());
    Fail(path, "cannot replace the file", err);
  }
  // The rename itself must reach the disk before the write counts as done.
  const auto folder = path.has_parent_path() ? path.parent_path() : std::filesystem::path(".");
  Fd dir(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (dir.get() >= 0) ::fsync(dir.get());
}

}  // namespace suizo::corpus
