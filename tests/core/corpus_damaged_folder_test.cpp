// Data folders damaged one way at a time: each either loads as the formats
// define or stops with a message naming the file; none crashes, and none
// has a file changed that the start did not mean to write.
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <functional>
#include <iostream>
#include <map>
#include <set>

#include "core/corpus/bookmarks.h"
#include "core/corpus/dax_file.h"
#include "core/corpus/folder_check.h"
#include "core/corpus/orders.h"
#include "core/corpus/profile.h"
#include "core/corpus/settings.h"
#include "core/corpus/startup.h"
#include "core/text/numbers.h"
#include "core/text/utf16.h"
#include "test_support.h"

namespace suizo::corpus {
namespace {

namespace fs = std::filesystem;
using testing::ReadBytes;
using testing::TempDir;
using testing::WriteBytes;

constexpr std::u16string_view kVersion = u"0.1.0";

std::string Dax(TableId id) {
  return std::string(SchemaOf(id).stem) + ".dax";
}
std::string Dat(TableId id) {
  return std::string(SchemaOf(id).stem) + ".dat";
}

// What a start did: nothing to say, or the message it stopped with.
struct Outcome {
  bool loaded = false;
  std::string message;
};

// A whole run as the program makes it, with every store read: the start,
// the settings, the bookmarks, and each load group a window can ask for.
Outcome RunAll(const fs::path& dir) {
  try {
    ReadSettings(FileSettings(dir / "settings.ini"));
    Corpus corpus(dir);
    NoOutsideDatabase outside;
    OpenStore(corpus, kVersion, ImportOptionsFor(dir), outside);
    Selection selection;
    InitialOrders(corpus, selection);
    ProfileFile bookmarks(dir / "suiten.ini");
    FillBookmarksOnFirstRun(bookmarks, corpus, selection);
    for (int group = 0; group < kLoadGroups; ++group) corpus.ReadData(group);
    // Every collection placed once, as the selection dialog can ask.
    for (const Collection& c : kCollections) {
      selection.Gk = c.gk;
      selection.MokRedo = 1;
      ApplySelection(corpus, selection);
    }
    return {true, {}};
  } catch (const CorpusError& e) {
    return {false, e.what()};
  } catch (const SettingsError& e) {
    return {false, e.what()};
  }
}

struct Snapshot {
  std::map<std::string, std::string> bytes;
  std::map<std::string, fs::file_time_type> times;
};

Snapshot Take(const fs::path& dir) {
  Snapshot s;
  for (const auto& entry : fs::directory_iterator(dir)) {
    const std::string name = DisplayPath(entry.path().filename());
    if (!entry.is_regular_file()) continue;
    s.bytes[name] = ReadBytes(entry.path());
    s.times[name] = entry.last_write_time();
  }
  return s;
}

// The files a start may write: the stores and the notes carried over when
// it converts, the bookmarks file on its first use, and the journal.
bool MayWrite(const std::string& name, bool converts) {
  // The journal loses a line a crash cut short.
  if (name == "suiten.ini" || name == "notes.journal") return true;
  if (!converts) return false;
  return name.ends_with(".dax") || name == "notes.pending" ||
         (name.starts_with("memo") && name.ends_with(".dat"));
}

// A converted sample with its version, bookmarks and settings in place, as
// a folder looks after a clean run.
class DamagedFolder : public ::testing::Test {
 protected:
  DamagedFolder() {
    fs::copy(testing::SampleStore(), dir.path(), fs::copy_options::recursive);
    WriteVersion(dir.path(), StoreVersion(kVersion));
    WriteSettings(*std::make_unique<FileSettings>(dir / "settings.ini"), Settings{});
    const Outcome clean = RunAll(dir.path());
    EXPECT_TRUE(clean.loaded) << clean.message;
  }

  // Damages the folder, runs, and checks the outcome: a load, or a stop
  // naming `named`; only files the start means to write may change.
  void Try(const std::string& what, const std::function<void(const fs::path&)>& damage,
           const std::string& named, bool converts = false,
           const std::function<Outcome(const fs::path&)>& run = RunAll) {
    SCOPED_TRACE(what);
    const fs::path copy = dir / "case";
    fs::remove_all(copy);
    fs::create_directory(copy);
    for (const auto& entry : fs::directory_iterator(dir.path())) {
      if (entry.is_regular_file()) fs::copy_file(entry.path(), copy / entry.path().filename());
    }
    damage(copy);
    const Snapshot before = Take(copy);
    ReadOnlyCommandsChangeNothing(copy, before);
    const FolderFindings check = CheckFolder(copy, kVersion);
    const Outcome outcome = run(copy);
    // A folder the check refuses does not start.
    EXPECT_FALSE(check.verdict == FolderVerdict::Refused && outcome.loaded) << check.reason;
    ++verdicts[std::string(VerdictWord(check.verdict))];
    if (named.empty()) {
      EXPECT_TRUE(outcome.loaded) << outcome.message;
    } else {
      EXPECT_FALSE(outcome.loaded);
      EXPECT_NE(outcome.message.find(named), std::string::npos) << outcome.message;
    }
    const Snapshot after = Take(copy);
    for (const auto& [name, bytes] : after.bytes) {
      if (MayWrite(name, converts)) continue;
      const auto was = before.bytes.find(name);
      EXPECT_TRUE(was != before.bytes.end()) << name << " was made";
      if (was == before.bytes.end()) continue;
      EXPECT_EQ(bytes, was->second) << name << " was changed";
      EXPECT_EQ(after.times.at(name), before.times.at(name)) << name << " was written";
    }
    for (const auto& [name, bytes] : before.bytes) {
      EXPECT_TRUE(after.bytes.count(name) == 1) << name << " was removed";
    }
    ++tried;
  }

  // The commands that only read load the damaged folder, or stop naming
  // what is wrong, without waiting and without touching a file.
  static void ReadOnlyCommandsChangeNothing(const fs::path& copy, const Snapshot& before) {
    for (const char* command :
         {"info", "check", "dict 法華経を", "search 題目", "nen --search 地震"}) {
      const std::string line = std::string("timeout 20 ") + SUIZO_CLI + " " + command +
                               " --data '" + DisplayPath(copy) + "' >/dev/null 2>&1";
      const int status = std::system(line.c_str());
      EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) <= 2)
          << command << " ended with " << status;
      const Snapshot now = Take(copy);
      EXPECT_TRUE(now.bytes == before.bytes && now.times == before.times)
          << command << " changed a file";
    }
  }

  // The byte offset after the first `lines` lines of a store.
  static std::size_t AfterLines(const std::string& bytes, long lines) {
    std::size_t at = 2;
    for (long n = 0; n < lines && at < bytes.size(); at += 2) {
      if (bytes[at] == '\n' && bytes[at + 1] == 0) ++n;
    }
    return at;
  }
  static long Lines(const std::string& bytes) {
    long n = 0;
    for (std::size_t at = 2; at + 1 < bytes.size(); at += 2)
      n += bytes[at] == '\n' && bytes[at + 1] == 0 ? 1 : 0;
    return n;
  }
  static long FieldCount(const std::string& bytes) {
    const std::size_t end = AfterLines(bytes, 1);
    std::u16string first;
    for (std::size_t i = 2; i + 1 < end; i += 2) {
      first += static_cast<char16_t>(static_cast<unsigned char>(bytes[i]) |
                                     static_cast<unsigned char>(bytes[i + 1]) << 8);
    }
    return static_cast<long>(text::Val(first));
  }
  static std::function<void(const fs::path&)> Cut(
      const std::string& name, std::function<std::size_t(const std::string&)> at) {
    return [name, at](const fs::path& d) {
      const std::string bytes = ReadBytes(d / fs::u8path(name));
      WriteBytes(d / fs::u8path(name), bytes.substr(0, at(bytes)));
    };
  }
  static std::function<void(const fs::path&)> Replace(const std::string& name, std::string bytes) {
    return [name, bytes](const fs::path& d) { WriteBytes(d / fs::u8path(name), bytes); };
  }

  static void TearDownTestSuite() {
    std::cout << tried << " damaged folders tried; the check said";
    for (const auto& [verdict, count] : verdicts) std::cout << " " << verdict << " " << count;
    std::cout << "\n";
  }

  TempDir dir;
  static inline int tried = 0;
  static inline std::map<std::string, int> verdicts;
};

// The run in a child process, ended by an alarm if it waits for ever, so
// that a read that blocks fails the case instead of hanging the suite. The
// child gives up the rights of root first when asked.
Outcome RunInChild(const fs::path& dir, bool ordinaryUser) {
  int pipe[2];
  if (::pipe(pipe) != 0) return {false, "no pipe"};
  const pid_t child = ::fork();
  if (child == 0) {
    ::close(pipe[0]);
    ::alarm(20);
    if (ordinaryUser && ::geteuid() == 0 && (::setgid(65534) != 0 || ::setuid(65534) != 0)) {
      ::_exit(3);
    }
    const Outcome outcome = RunAll(dir);
    const auto written = ::write(pipe[1], outcome.message.data(), outcome.message.size());
    ::_exit(outcome.loaded ? 0 : written >= 0 ? 1 : 2);
  }
  ::close(pipe[1]);
  Outcome outcome;
  char buffer[4096];
  for (ssize_t n; (n = ::read(pipe[0], buffer, sizeof buffer)) > 0;)
    outcome.message.append(buffer, static_cast<std::size_t>(n));
  ::close(pipe[0]);
  int status = 0;
  ::waitpid(child, &status, 0);
  outcome.loaded = WIFEXITED(status) && WEXITSTATUS(status) == 0;
  if (!WIFEXITED(status) || WEXITSTATUS(status) > 1)
    outcome.message += " (the child failed: " + std::to_string(status) + ")";
  return outcome;
}

// Permissions bind only an ordinary user, and root reads any file.
Outcome RunAsAnOrdinaryUser(const fs::path& dir) {
  return RunInChild(dir, true);
}
Outcome RunWatched(const fs::path& dir) {
  return RunInChild(dir, false);
}

TEST_F(DamagedFolder, AMissingFileIsNamedOrRebuilt) {
  for (const TableSchema& s : Schemas()) {
    const std::string name = Dax(s.id);
    const bool read = s.loadGroup != kNoLoadGroup;
    Try(
        "without " + name, [&](const fs::path& d) { fs::remove(d / fs::u8path(name)); },
        read ? name : "");
  }
  // Without ver.dax the start converts the exports again.
  Try(
      "without ver.dax", [](const fs::path& d) { fs::remove(d / "ver.dax"); }, "", true);
  for (const std::string name : {"suiten.ini", "settings.ini", "notes.journal"}) {
    Try(
        "without " + name, [&](const fs::path& d) { fs::remove(d / name); }, "");
  }
  // The exports are read only when the store is rebuilt from them.
  Try(
      "without any export",
      [](const fs::path& d) {
        for (const TableSchema& s : Schemas()) fs::remove(d / fs::u8path(Dat(s.id)));
      },
      "");
  for (const TableSchema& s : Schemas()) {
    const std::string name = Dat(s.id);
    Try(
        "rebuilding without " + name,
        [&](const fs::path& d) {
          fs::remove(d / fs::u8path(name));
          fs::remove(d / "ver.dax");
        },
        name, true);
  }
}

TEST_F(DamagedFolder, ACutStoreStopsInsideARowAndLoadsFewerRowsAtARowEnd) {
  for (const TableSchema& s : Schemas()) {
    if (s.loadGroup == kNoLoadGroup) continue;
    const std::string name = Dax(s.id);
    const std::string bytes = ReadBytes(dir.path() / fs::u8path(name));
    const long fields = FieldCount(bytes);
    ASSERT_GT(fields, 1) << name;
    const long rows = (Lines(bytes) - 1) / fields;
    Try(name + " cut inside a row",
        Cut(name,
            [fields, rows](const std::string& b) {
              return AfterLines(b, 1 + fields * (rows / 2) + fields / 2);
            }),
        name);
    Try(name + " cut inside a line",
        Cut(name, [](const std::string& b) { return b.size() / 2 | 1; }), name);
    // Fewer rows load as such; the writings' records then miss documents
    // that the collections place, which stops the placing with the record.
    // The dictionary's row 1 counts its entries, which must be rows.
    const std::string fewer = s.id == TableId::Dat || s.id == TableId::Mok ? "翠典資料"
                              : s.id == TableId::Dic                       ? name
                                                                           : "";
    Try(name + " cut at a row end",
        Cut(name, [fields,
                   rows](const std::string& b) { return AfterLines(b, 1 + fields * (rows / 2)); }),
        fewer);
    Try(name + " cut after its field count",
        Cut(name, [](const std::string& b) { return AfterLines(b, 1); }),
        s.id == TableId::Mok ? "翠典資料" : "");
    Try(name + " empty", Replace(name, ""), name);
  }
}

TEST_F(DamagedFolder, AStoreThatDoesNotEndInCrLfIsNamed) {
  for (const TableSchema& s : Schemas()) {
    if (s.loadGroup == kNoLoadGroup) continue;
    const std::string name = Dax(s.id);
    Try(name + " ending in a lone CR", Cut(name, [](const std::string& b) { return b.size() - 2; }),
        name);
    Try(name + " without its last line end",
        Cut(name, [](const std::string& b) { return b.size() - 4; }), name);
  }
}

TEST_F(DamagedFolder, AStoreInAnotherEncodingOrShapeIsNamed) {
  const std::string name = Dax(TableId::Hok);
  const std::string bytes = ReadBytes(dir.path() / fs::u8path(name));
  Try("UTF-16 big-endian mark", Replace(name, "\xFE\xFF" + bytes.substr(2)), name);
  Try("UTF-8 mark", Replace(name, "\xEF\xBB\xBF" + bytes.substr(2)),
      name + ": line 1: the store is UTF-8");
  Try("no mark", Replace(name, bytes.substr(2)), name);
  Try("a field count that is no number",
      Replace(name, testing::DaxBytes({u"三十六"}) + bytes.substr(2)), name);
  Try("more fields than the table has", Replace(name, testing::DaxBytes({u"999"})), name);
  // A row beyond the capacity: the last row repeated until it overflows.
  const TableSchema& sok = SchemaOf(TableId::Sok);
  const std::string sokName = Dax(TableId::Sok);
  Try(
      "rows beyond the capacity",
      [&](const fs::path& d) {
        const std::string store = ReadBytes(d / fs::u8path(sokName));
        const long fields = FieldCount(store);
        const std::size_t lastRow = AfterLines(store, Lines(store) - fields);
        std::string grown = store;
        for (int r = 0; r <= sok.rowCapacity; ++r) grown += store.substr(lastRow);
        WriteBytes(d / fs::u8path(sokName), grown);
      },
      sokName);
}

TEST_F(DamagedFolder, ABadExportHeaderOrSettingOrBookmarksFileIsNamed) {
  const std::string dat = Dat(TableId::Kam);
  const auto rebuildWith = [&](std::u16string_view header) {
    return [&, header = std::u16string(header)](const fs::path& d) {
      testing::WriteDat(d / fs::u8path(dat), {header, u"1,\"x\""});
      fs::remove(d / "ver.dax");
    };
  };
  std::u16string wide = u"科文";
  for (int i = 0; i < 101; ++i) wide += u",列" + text::IntText(i);
  Try("an export header of more than 101 columns", rebuildWith(wide), dat, true);
  Try("an export with no header", Replace(dat, ""), "");  // not read: the store is current
  Try(
      "an empty export, rebuilding",
      [&](const fs::path& d) {
        WriteBytes(d / fs::u8path(dat), "");
        fs::remove(d / "ver.dax");
      },
      dat, true);
  const std::string outline = Dat(TableId::Sok);
  Try(
      "an export without its header line, rebuilding",
      [&](const fs::path& d) {
        const std::string bytes = ReadBytes(d / fs::u8path(outline));
        WriteBytes(d / fs::u8path(outline), bytes.substr(bytes.find('\n') + 1));
        fs::remove(d / "ver.dax");
      },
      outline + ": line 1: the header line is missing", true);
  Try("an export without a required column, rebuilding", rebuildWith(u"經名,科文"),
      dat + ": line 1: the header lacks the column 法華No.", true);
  Try(
      "an export with line ends of CR alone, rebuilding",
      [&](const fs::path& d) {
        std::string bytes = ReadBytes(d / fs::u8path(dat));
        std::erase(bytes, '\n');
        WriteBytes(d / fs::u8path(dat), bytes);
        fs::remove(d / "ver.dax");
      },
      dat + ": line 1: the line ends are CR only", true);
  Try(
      "an export in no Shift-JIS",
      [&](const fs::path& d) {
        WriteBytes(d / fs::u8path(dat), "\x82\x20\xFF\xFF,\r\n");
        fs::remove(d / "ver.dax");
      },
      dat, true);
  Try(
      "a non-numeric integer setting",
      [](const fs::path& d) {
        FileSettings settings(d / "settings.ini");
        settings.Write(u"@設定", u"Itaiji", u"たくさん");
      },
      "Itaiji");
  Try("bookmarks in no Shift-JIS", Replace("suiten.ini", "[BMark01]\r\nT1=\x82\r\n"), "suiten.ini");
  Try("a journal of noise",
      Replace("notes.journal", std::string("\0\xFF\n\t\t\t\nDat\tx\t48\t\\", 17)), "");
  Try("a ver.dax with a trailing blank", Replace("ver.dax", text::EncodeSjis(u"0.1.0 \r\n")), "",
      true);
  Try("a ver.dax of another version", Replace("ver.dax", text::EncodeSjis(u"0.7.2\r\n")), "", true);
}

TEST_F(DamagedFolder, AFileThatCannotBeReadIsNamed) {
  const std::string name = Dax(TableId::Dic);
  Try(
      "a folder in the place of a store",
      [&](const fs::path& d) {
        fs::remove(d / fs::u8path(name));
        fs::create_directory(d / fs::u8path(name));
      },
      name);
  // Permissions bind only an ordinary user: as root the start runs in a
  // child that gives up its rights first.
  Try(
      "a store without read permission",
      [&](const fs::path& d) { fs::permissions(d / fs::u8path(name), fs::perms::none); }, name,
      false, RunAsAnOrdinaryUser);
}

// A FIFO in a file's place is refused at once: the run never waits for a
// writer that does not come. Each run is watched by an alarm.
TEST_F(DamagedFolder, AFifoInAFilesPlaceIsNamedWithoutWaiting) {
  const auto fifo = [](const std::string& name, bool rebuild) {
    return [name, rebuild](const fs::path& d) {
      fs::remove(d / fs::u8path(name));
      ASSERT_EQ(::mkfifo((d / fs::u8path(name)).c_str(), 0644), 0);
      if (rebuild) fs::remove(d / "ver.dax");
    };
  };
  for (const std::string& name :
       {Dax(TableId::Dic), std::string("ver.dax"), std::string("suiten.ini"),
        std::string("settings.ini"), std::string("notes.journal")}) {
    Try("a FIFO for " + name, fifo(name, false), name + ": not a regular file: a FIFO", false,
        RunWatched);
  }
  Try("a FIFO for the unread 年表関連.dax", fifo(Dax(TableId::Nek), false), "", false, RunWatched);
  const std::string dat = Dat(TableId::Hok);
  Try("a FIFO for " + dat + ", rebuilding", fifo(dat, true), dat + ": not a regular file: a FIFO",
      true, RunWatched);
}

}  // namespace
}  // namespace suizo::corpus
