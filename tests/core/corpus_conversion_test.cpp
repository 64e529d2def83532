// A conversion is one transaction over the data folder: the notes of the
// store cross it, a failure or a kill leaves the old store whole or the new
// one finished, never a mix.
#include "core/corpus/conversion.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <csignal>
#include <functional>
#include <iostream>
#include <map>
#include <optional>
#include <random>
#include <thread>

#include "core/corpus/dax_file.h"
#include "core/corpus/folder_lock.h"
#include "core/corpus/note_journal.h"
#include "core/corpus/startup.h"
#include "core/text/utf16.h"
#include "test_support.h"

namespace suizo::corpus {
namespace {

namespace fs = std::filesystem;
using testing::ReadBytes;
using testing::TempDir;
using testing::WriteBytes;

constexpr std::u16string_view kVersion = u"0.1.0";

fs::path StoreFile(TableId id) {
  return fs::u8path(std::string(SchemaOf(id).stem) + ".dax");
}
fs::path ExportFile(TableId id) {
  return fs::u8path(std::string(SchemaOf(id).stem) + ".dat");
}

// The note of each note column, in a row of its own.
struct Note {
  TableId table;
  int row, field;
  std::u16string_view text;
};
constexpr Note kNotes[] = {{TableId::Dat, 5, 48, u"読み直すこと"},
                           {TableId::Dat, 9, 49, u"第二の覚え"},
                           {TableId::Hok, 12, 36, u"異読あり"},
                           {TableId::SDat, 3, 8, u"翻刻の誤り"}};

// The twelve stores and ver.dax, as bytes.
std::map<std::string, std::string> Stores(const fs::path& dir) {
  std::map<std::string, std::string> out;
  for (const TableSchema& schema : Schemas())
    out[DisplayPath(StoreFile(schema.id))] = ReadBytes(dir / StoreFile(schema.id));
  out["ver.dax"] = ReadBytes(dir / "ver.dax");
  return out;
}

// Names of what a conversion may leave behind when it is cut short.
std::vector<std::string> Leftover(const fs::path& dir) {
  std::vector<std::string> out;
  for (const auto& entry : fs::directory_iterator(dir)) {
    const std::string name = DisplayPath(entry.path().filename());
    if (name.ends_with(".new") || name.ends_with(".tmp") || name == kCommitMark)
      out.push_back(name);
  }
  return out;
}

// A converted sample whose note columns hold notes, with our version.
class Conversion : public ::testing::Test {
 protected:
  Conversion() {
    fs::copy(fs::path(SUIZO_SOURCE_DIR) / "data" / "sample", dir.path(),
             fs::copy_options::recursive);
    Corpus corpus(dir.path());
    NoOutsideDatabase outside;
    OpenStore(corpus, kVersion, ImportOptionsFor(dir.path()), outside);
    for (const Note& n : kNotes) {
      corpus.table(n.table).Set(n.row, n.field, n.text);
      keys.push_back(std::u16string(corpus.table(n.table).Get(n.row, 2)));
    }
    for (const TableId id : {TableId::Dat, TableId::Hok, TableId::SDat})
      WriteDax(dir.path() / StoreFile(id), corpus.table(id));
  }

  // Whether a store read from the folder holds every note, each found by its key.
  bool NotesThere() const {
    Corpus corpus(dir.path());
    for (const int group : {0, 2, 6}) corpus.ReadData(group);
    for (std::size_t i = 0; i < std::size(kNotes); ++i) {
      const Note& n = kNotes[i];
      const int row = n.table == TableId::Dat    ? SysNo(corpus, keys[i])
                      : n.table == TableId::SDat ? SysNoS(corpus, keys[i])
                                                 : n.row;
      if (corpus.table(n.table).Get(row, n.field) != n.text) return false;
    }
    return true;
  }

  // The start as the next program makes it, with every note in what it loaded.
  bool NextStartHasEveryNote() const {
    Corpus corpus(dir.path());
    NoOutsideDatabase outside;
    OpenStore(corpus, kVersion, ImportOptionsFor(dir.path()), outside);
    return NotesThere();
  }

  // Makes each store differ from what converting the exports gives, so that
  // a mix of old and new stores can be told.
  void AgeStores() {
    for (const TableSchema& schema : Schemas()) {
      Table table(schema);
      ReadDax(dir.path() / StoreFile(schema.id), table);
      const int field = IsNoteColumn(schema.id, table.cols()) ? table.cols() - 1 : table.cols();
      table.Set(table.rows(), field, std::u16string(table.Get(table.rows(), field)) + u"旧");
      WriteDax(dir.path() / StoreFile(schema.id), table);
    }
  }

  struct Kills {
    int old = 0, renewed = 0;
  };
  // `whole` runs a conversion to its end and says how many kills to try;
  // `killed(i)` runs it again, cut short by the i-th. Each run starts from
  // the folder as it was. After each kill the next program's clean-up must
  // leave all twelve stores and ver.dax old or all new, nothing staged, and
  // the next start must have every note.
  Kills KillRepeatedly(const std::function<int()>& whole, const std::function<void(int)>& killed) {
    const fs::path saved =
        dir.path().parent_path() / (DisplayPath(dir.path().filename()) + "-saved");
    fs::remove_all(saved);
    fs::copy(dir.path(), saved);
    const auto restore = [&] {
      fs::remove_all(dir.path());
      fs::copy(saved, dir.path());
    };
    const auto before = Stores(dir.path());
    const int count = whole();
    const auto after = Stores(dir.path());
    for (const auto& [name, bytes] : after) {
      EXPECT_TRUE(name == "ver.dax" || bytes != before.at(name)) << name << " is the same";
    }
    Kills kills;
    for (int i = 1; i <= count; ++i) {
      SCOPED_TRACE(i);
      restore();
      killed(i);
      FinishInterruptedConversion(dir.path());
      RemoveLeftoverTemporaries(dir.path());
      const auto now = Stores(dir.path());
      kills.old += now == before ? 1 : 0;
      kills.renewed += now == after ? 1 : 0;
      EXPECT_TRUE(now == before || now == after) << "a mix of old and new stores";
      EXPECT_TRUE(Leftover(dir.path()).empty());
      EXPECT_TRUE(NextStartHasEveryNote());
    }
    restore();
    fs::remove_all(saved);
    return kills;
  }

  TempDir dir;
  std::vector<std::u16string> keys;
};

TEST_F(Conversion, ConvertingAFolderWithAStoreCarriesEveryNoteAcross) {
  Corpus corpus(dir.path());
  const ConversionReport report = ConvertFolder(corpus, kVersion, ImportOptionsFor(dir.path()));
  EXPECT_TRUE(report.notesCarried);
  EXPECT_GE(report.notes, static_cast<int>(std::size(kNotes)));
  EXPECT_TRUE(NotesThere());
  EXPECT_EQ(ReadStoredVersion(dir.path()), StoreVersion(kVersion));
  EXPECT_TRUE(Leftover(dir.path()).empty());
  EXPECT_FALSE(fs::exists(dir / kNotesPending));
  // The command-line tool does the same.
  const std::string command = std::string(SUIZO_CLI) + " convert --data '" +
                              DisplayPath(dir.path()) + "' 2>/dev/null >/dev/null";
  ASSERT_EQ(std::system(command.c_str()), 0);
  EXPECT_TRUE(NotesThere());
}

// The versions our stores and others' carry, and whether their source notes
// cross: the program's own next version keeps every note of this one's store.
TEST_F(Conversion, SourceNotesCrossFromEveryStoreOfOursAndFromOthersFromZeroEight) {
  const std::pair<std::u16string_view, bool> versions[] = {
      {u"0.7.5", false}, {u"0.8", true},         {u"2.31", true},        {u"0.1.0", true},
      {u"", false},      {u"0.0.1+suizo", true}, {u"0.1.0+suizo", true}, {u"1.0.0+suizo", true}};
  for (const auto& [stored, carried] : versions) {
    EXPECT_EQ(CarriesSourceNotes(stored), carried) << text::ToUtf8(stored);
  }
  EXPECT_EQ(StoreVersion(u"0.1.0"), u"0.1.0+suizo");
  const fs::path saved = dir.path().parent_path() / (DisplayPath(dir.path().filename()) + "-saved");
  fs::copy(dir.path(), saved);
  const std::pair<std::u16string, std::u16string_view> runs[] = {{StoreVersion(kVersion), u"0.2.0"},
                                                                 {u"0.7.5", kVersion}};
  for (const auto& [stored, program] : runs) {
    SCOPED_TRACE(text::ToUtf8(stored));
    fs::remove_all(dir.path());
    fs::copy(saved, dir.path());
    WriteVersion(dir.path(), stored);
    Corpus corpus(dir.path());
    NoOutsideDatabase outside;
    const StartupReport report = OpenStore(corpus, program, ImportOptionsFor(dir.path()), outside);
    EXPECT_EQ(report.decision.path, StartupPath::Reconvert);
    EXPECT_EQ(corpus.DatDirty + corpus.HokDirty + corpus.SDatDirty,
              3);  // the exit writes them again
    EXPECT_EQ(DecideStartup(dir.path(), program).path, StartupPath::Current);
    // One line per note, among the sample's own.
    EXPECT_NE(
        ReadBytes(dir / "memo2.dat").find(text::EncodeSjis(keys[0] + u",\"読み直すこと\"\r\n")),
        std::string::npos);
    const bool sources = CarriesSourceNotes(stored);
    EXPECT_EQ(ReadBytes(dir / "memos.dat").empty(), !sources);
    EXPECT_EQ(NotesThere(), sources);
    EXPECT_EQ(corpus.Hok().Get(12, 36), u"異読あり");
  }
  fs::remove_all(saved);
}

// A store left without its version keeps its notes, and a missing export is
// named before anything is written.
TEST_F(Conversion, AStoreWithoutItsVersionKeepsItsNotesAndAMissingExportIsNamedFirst) {
  const auto before = Stores(dir.path());
  fs::remove(dir / "ver.dax");
  fs::rename(dir / "法華経科文.dat", dir / "away");
  Corpus corpus(dir.path());
  NoOutsideDatabase outside;
  EXPECT_THROW(
      try {
        OpenStore(corpus, kVersion, ImportOptionsFor(dir.path()), outside);
      } catch (const CorpusError& e) {
        EXPECT_NE(std::string(e.what()).find("法華経科文.dat"), std::string::npos) << e.what();
        throw;
      },
      CorpusError);
  EXPECT_EQ(Stores(dir.path())["翠典本文.dax"], before.at("翠典本文.dax"));
  fs::rename(dir / "away", dir / "法華経科文.dat");
  EXPECT_TRUE(NextStartHasEveryNote());
  EXPECT_EQ(DecideStartup(dir.path(), kVersion).path, StartupPath::Current);
  EXPECT_TRUE(NotesThere());  // stored, not only restored in memory
}

// Each way a conversion can fail part-way: the folder stays as it was, notes
// and all, and once the fault is mended the conversion carries them.
TEST_F(Conversion, AFailureAnywhereLeavesTheOldStoreWithItsNotes) {
  AgeStores();
  const auto before = Stores(dir.path());
  const auto chronology = dir.path() / ExportFile(TableId::Nen);
  const std::string exported = ReadBytes(chronology);
  struct Case {
    const char* what;
    std::function<void()> damage, mend;
    std::optional<std::pair<std::string, WriteStep>> fault;  // a write that fails on a full disk
    const char* named;
  };
  const std::vector<Case> cases = {
      {"the last export cut inside a record",
       [&] { WriteBytes(chronology, exported.substr(0, exported.size() - 7)); },
       [&] { WriteBytes(chronology, exported); }, std::nullopt, "年表.dat"},
      {"a folder in a store's place",
       [&] {
         fs::rename(dir.path() / StoreFile(TableId::Nek), dir / "kept");
         fs::create_directory(dir.path() / StoreFile(TableId::Nek));
       },
       [&] {
         fs::remove(dir.path() / StoreFile(TableId::Nek));
         fs::rename(dir / "kept", dir.path() / StoreFile(TableId::Nek));
       },
       std::nullopt, "年表関連.dax"},
      {"a full disk at the sixth store", [] {}, [] {},
       std::pair{std::string("本尊資料.dax.new.tmp"), WriteStep::Write}, "本尊資料"},
      {"a full disk at the commit mark", [] {}, [] {},
       std::pair{std::string("convert.commit.tmp"), WriteStep::Flush}, "convert.commit"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    c.damage();
    {
      std::optional<ScopedWriteFault> full;
      if (c.fault) {
        full.emplace([&](const fs::path& file, WriteStep step) {
          return DisplayPath(file.filename()) == c.fault->first && step == c.fault->second ? ENOSPC
                                                                                           : 0;
        });
      }
      Corpus corpus(dir.path());
      try {
        ConvertFolder(corpus, kVersion, ImportOptionsFor(dir.path()));
        ADD_FAILURE() << "converted";
      } catch (const CorpusError& e) {
        EXPECT_NE(std::string(e.what()).find(c.named), std::string::npos) << e.what();
      }
    }
    c.mend();
    EXPECT_EQ(Stores(dir.path()), before);
    EXPECT_TRUE(Leftover(dir.path()).empty()) << Leftover(dir.path()).front();
    EXPECT_TRUE(NotesThere());
  }
  Corpus corpus(dir.path());
  ConvertFolder(corpus, kVersion, ImportOptionsFor(dir.path()));
  EXPECT_NE(Stores(dir.path()), before);
  EXPECT_TRUE(NotesThere());
}

// What killed conversions leave is finished by the next program: with the
// commit mark forward, without it back; anything that is not ours is dropped.
TEST_F(Conversion, TheNextProgramFinishesOrUndoesWhatAKilledConversionLeft) {
  const auto before = Stores(dir.path());
  WriteBytes(dir / "翠典本文.dax.new", "half a store");
  WriteBytes(dir / "辞書事典.dax.new.tmp", "cut");
  WriteBytes(dir / "convert.commit.tmp", "");
  WriteBytes(dir / "史料本文.dax.tmp", "cut");
  EXPECT_TRUE(HasConversionLeftovers(dir.path()));
  EXPECT_FALSE(CommitUnderway(dir.path()));
  EXPECT_EQ(FinishInterruptedConversion(dir.path()), Leftovers::RolledBack);
  EXPECT_EQ(RemoveLeftoverTemporaries(dir.path()), 1);
  EXPECT_EQ(Stores(dir.path()), before);
  EXPECT_TRUE(Leftover(dir.path()).empty());

  // A mark names the version to write; the staged stores go into place.
  const std::string staged = ReadBytes(dir.path() / StoreFile(TableId::Hon)) + "";
  WriteBytes(dir / "本尊資料.dax.new", staged);
  WriteBytes(dir / kCommitMark, "9.9.9+suizo\r\n");
  WriteBytes(dir / kNotesPending, "");
  EXPECT_TRUE(CommitUnderway(dir.path()));
  EXPECT_EQ(FinishInterruptedConversion(dir.path()), Leftovers::RolledForward);
  EXPECT_EQ(ReadStoredVersion(dir.path()), u"9.9.9+suizo");
  EXPECT_FALSE(fs::exists(dir / kNotesPending));
  EXPECT_TRUE(Leftover(dir.path()).empty());
  // A mark that is no version line commits nothing.
  WriteBytes(dir / "本尊資料.dax.new", "not a store");
  WriteBytes(dir / kCommitMark, std::string(200, 'x'));
  EXPECT_EQ(FinishInterruptedConversion(dir.path()), Leftovers::RolledBack);
  EXPECT_EQ(ReadBytes(dir.path() / StoreFile(TableId::Hon)), staged);
  EXPECT_EQ(FinishInterruptedConversion(dir.path()), Leftovers::None);
}

// The command-line tool: what a killed conversion left goes at the next
// command, unless another program holds the folder; a conversion there is
// refused naming the holder.
TEST_F(Conversion, CommandsCleanWhatAKilledConversionLeftWhenTheFolderIsFree) {
  const auto run = [&](const std::string& args) {
    const std::string command = std::string(SUIZO_CLI) + " " + args + " --data '" +
                                DisplayPath(dir.path()) + "' >/dev/null 2>" +
                                DisplayPath(dir.path().parent_path() / "stderr");
    const int status = std::system(command.c_str());
    return std::pair{WIFEXITED(status) ? WEXITSTATUS(status) : -1,
                     ReadBytes(dir.path().parent_path() / "stderr")};
  };
  const auto before = Stores(dir.path());
  const auto leave = [&] {
    WriteBytes(dir / "翠典本文.dax.new", "half a store");
    WriteBytes(dir / "史料本文.dax.tmp", "cut");
  };
  leave();
  {
    const DataFolderLock viewer = DataFolderLock::Acquire(dir.path(), "suizo-viewer");
    EXPECT_EQ(run("info").first, 0);  // read beside the holder, nothing touched
    EXPECT_EQ(Leftover(dir.path()).size(), 2U);
    const auto [status, message] = run("convert");
    EXPECT_EQ(status, 2);
    EXPECT_NE(
        message.find("is in use by suizo-viewer (process " + std::to_string(::getpid()) + ")"),
        std::string::npos)
        << message;
    WriteBytes(dir / kCommitMark, "0.1.0+suizo\r\n");
    EXPECT_EQ(run("info").first, 2);  // the stores are a mix until the commit is finished
    fs::remove(dir / kCommitMark);
  }
  EXPECT_EQ(run("info").first, 0);
  EXPECT_TRUE(Leftover(dir.path()).empty());
  EXPECT_EQ(Stores(dir.path())["史料本文.dax"], before.at("史料本文.dax"));
  fs::remove(dir / "stderr");
}

// Runs `convert` in a child killed before write step `k` (never, for 0);
// returns how many steps it took when it ran to the end.
template <typename Run>
int KilledAt(int k, Run run) {
  const pid_t child = ::fork();
  if (child == 0) {
    int count = 0;
    ScopedWriteFault kill([&count, k](const fs::path&, WriteStep) {
      if (++count == k) ::raise(SIGKILL);
      return 0;
    });
    run();
    ::_exit(count < 256 ? count : 255);
  }
  int status = 0;
  ::waitpid(child, &status, 0);
  if (k > 0) {
    EXPECT_TRUE(WIFSIGNALED(status)) << "not killed at step " << k;
  }
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

// Kills a conversion before each of its write steps, from the first memo
// file to the removal of the mark: `suizo convert`'s on a current folder, and
// the start's on a store of another version.
TEST_F(Conversion, KilledAtAnyWriteStepTheFolderHoldsTheOldStoreOrTheNewOne) {
  ScopedFlushOff quick;
  AgeStores();
  const std::function<void()> convert = [&] {
    FinishInterruptedConversion(dir.path());
    Corpus corpus(dir.path());
    ConvertFolder(corpus, kVersion, ImportOptionsFor(dir.path()));
  };
  const std::function<void()> start = [&] {
    Corpus corpus(dir.path());
    NoOutsideDatabase outside;
    OpenStore(corpus, kVersion, ImportOptionsFor(dir.path()), outside);
  };
  for (const auto& pass : {std::pair{"convert", convert}, std::pair{"start", start}}) {
    const char* what = pass.first;
    const std::function<void()>& run = pass.second;
    SCOPED_TRACE(what);
    if (std::string_view(what) == "start") WriteVersion(dir.path(), u"0.9.0");
    int steps = 0;
    const Kills kills = KillRepeatedly(
        [&] {
          steps = KilledAt(0, run);
          EXPECT_GT(steps, 60);
          return steps;
        },
        [&](int k) { KilledAt(k, run); });
    std::cout << what << ": " << steps << " write steps, killed before each: " << kills.old
              << " left the old store, " << kills.renewed << " the new one, 0 a mix\n";
  }
}

// The command-line tool itself, killed with SIGKILL at random moments of its run.
TEST_F(Conversion, TheCommandKilledAtRandomMomentsNeverLeavesAMix) {
  AgeStores();
  const auto runFor = [&](std::optional<std::chrono::microseconds> killAfter) {
    const auto start = std::chrono::steady_clock::now();
    const pid_t child = ::fork();
    if (child == 0) {
      const std::string data = DisplayPath(dir.path());
      const int quiet = ::open("/dev/null", O_WRONLY);
      ::dup2(quiet, STDOUT_FILENO);
      ::dup2(quiet, STDERR_FILENO);
      ::execl(SUIZO_CLI, SUIZO_CLI, "convert", "--data", data.c_str(), static_cast<char*>(nullptr));
      ::_exit(127);
    }
    if (killAfter) {
      std::this_thread::sleep_for(*killAfter);
      ::kill(child, SIGKILL);
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    return std::chrono::duration_cast<std::chrono::microseconds>(std::chrono::steady_clock::now() -
                                                                 start);
  };
  // SUIZO_KILLS asks for a longer run than the one every build makes.
  const char* asked = std::getenv("SUIZO_KILLS");
  const int count = asked != nullptr ? std::atoi(asked) : 20;
  std::mt19937 random(20261124);
  std::chrono::microseconds took{};
  const Kills kills = KillRepeatedly(
      [&] {
        took = runFor(std::nullopt);
        return count;
      },
      [&](int) {
        runFor(std::chrono::microseconds(
            std::uniform_int_distribution<long>(0, took.count())(random)));
      });
  std::cout << "suizo convert took " << took.count() << " us; " << count
            << " random kills: " << kills.old << " old, " << kills.renewed << " new\n";
}

}  // namespace
}  // namespace suizo::corpus
