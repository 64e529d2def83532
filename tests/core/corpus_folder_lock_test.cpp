// The lock of a data folder: one holder at a time, whoever else asks is told
// who holds it, and what a dead holder leaves behind does not keep the folder.
#include "core/corpus/folder_lock.h"

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <functional>
#include <optional>

#include "test_support.h"

namespace suizo::corpus {
namespace {

namespace fs = std::filesystem;
using testing::ReadBytes;
using testing::TempDir;

struct Child {
  pid_t pid;
  std::string answer;
};

// `task` run in a forked child, its answer back through a pipe. The child
// ends with _exit, so that its copies of the parent's locks let nothing go,
// or, when it `stays`, waits to be killed.
Child Fork(const std::function<std::string()>& task, bool stays = false) {
  int pipe[2];
  if (::pipe(pipe) != 0) return {0, "no pipe"};
  const pid_t pid = ::fork();
  if (pid == 0) {
    const std::string answer = task();
    if (::write(pipe[1], answer.data(), answer.size()) > 0 && stays) {
      for (;;) ::pause();
    }
    ::_exit(0);
  }
  ::close(pipe[1]);
  char buffer[512];
  const ssize_t n = ::read(pipe[0], buffer, sizeof buffer);
  ::close(pipe[0]);
  if (!stays) ::waitpid(pid, nullptr, 0);
  return {pid, std::string(buffer, n > 0 ? static_cast<std::size_t>(n) : 0)};
}

// What a second taker meets: the holder the refusal names, or the error.
std::string Attempt(const fs::path& folder) {
  try {
    const DataFolderLock taken = DataFolderLock::Acquire(folder, "second");
    return "taken";
  } catch (const FolderBusyError& e) {
    return e.holder().program + " " + std::to_string(e.holder().pid) + ": " + e.what();
  } catch (const CorpusError& e) {
    return e.what();
  }
}

std::string Held(const fs::path& folder, const std::string& program, pid_t pid) {
  const std::string process = std::to_string(pid);
  return program + " " + process + ": " + DisplayPath(folder) + ": the data folder is in use by " +
         program + " (process " + process + ")";
}

// The holder's lines: program, process, then the time, in this century.
bool Names(const fs::path& file, const std::string& program) {
  return ReadBytes(file).starts_with(program + "\n" + std::to_string(::getpid()) + "\n2");
}

TEST(FolderLock, AHeldFolderIsRefusedWithItsHolderUntilLetGo) {
  TempDir dir;
  const fs::path file = dir / kLockFileName;
  const std::string held = Held(dir.path(), "suizo-viewer", ::getpid());
  {
    DataFolderLock lock = DataFolderLock::Acquire(dir.path(), "suizo-viewer");
    EXPECT_TRUE(Names(file, "suizo-viewer")) << ReadBytes(file);
    // Another lock of this process and one of another process alike.
    EXPECT_EQ(Attempt(dir.path()), held);
    EXPECT_EQ(Fork([&] { return Attempt(dir.path()); }).answer, held);
    EXPECT_FALSE(DataFolderLock::TryAcquire(dir.path(), "second"));
  }
  EXPECT_FALSE(fs::exists(file));

  // A file removed under its holder is made anew by the next taker, and the
  // first holder, letting go, leaves the new one in place.
  std::optional<DataFolderLock> first = DataFolderLock::Acquire(dir.path(), "first");
  fs::remove(file);
  std::optional<DataFolderLock> next = DataFolderLock::TryAcquire(dir.path(), "next");
  ASSERT_TRUE(next);
  first.reset();
  EXPECT_EQ(Attempt(dir.path()), Held(dir.path(), "next", ::getpid()));
}

TEST(FolderLock, AKilledHoldersFileIsTakenOverAndADeniedFolderIsNamed) {
  TempDir dir;
  const Child killed = Fork(
      [&] {
        static std::optional<DataFolderLock> lock;  // kept: the child is killed holding it
        lock = DataFolderLock::Acquire(dir.path(), "killed");
        return std::string("held");
      },
      true);
  ASSERT_EQ(killed.answer, "held");
  EXPECT_EQ(Attempt(dir.path()), Held(dir.path(), "killed", killed.pid));
  ::kill(killed.pid, SIGKILL);
  ::waitpid(killed.pid, nullptr, 0);
  ASSERT_TRUE(fs::exists(dir / kLockFileName));
  std::optional<DataFolderLock> taker = DataFolderLock::TryAcquire(dir.path(), "taker");
  ASSERT_TRUE(taker);
  EXPECT_TRUE(Names(dir / kLockFileName, "taker"));

  // Permissions bind only an ordinary user: as root the child gives up its
  // rights first.
  const fs::path closed = dir / "closed";
  fs::create_directory(closed);
  fs::permissions(closed, fs::perms::owner_write | fs::perms::group_write | fs::perms::others_write,
                  fs::perm_options::remove);
  const Child denied = Fork([&] {
    if (::geteuid() == 0 && (::setgid(65534) != 0 || ::setuid(65534) != 0))
      return std::string("root");
    return Attempt(closed);
  });
  EXPECT_EQ(denied.answer,
            DisplayPath(closed) + ": cannot make the lock file suizo.lock: Permission denied");
}

}  // namespace
}  // namespace suizo::corpus
