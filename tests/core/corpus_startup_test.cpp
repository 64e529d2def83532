#include "core/corpus/startup.h"

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <iostream>

#include "core/corpus/dax_file.h"
#include "core/corpus/errors.h"
#include "core/corpus/file_io.h"
#include "test_support.h"

namespace suizo::corpus {
namespace {

using testing::TempDir;

constexpr std::u16string_view kVersion = u"0.1.0";

std::filesystem::path SampleCorpus() {
  return std::filesystem::path(SUIZO_SOURCE_DIR) / "data" / "sample";
}

TEST(Startup, TheStoredVersionMustMatchToTheLetter) {
  TempDir dir;
  EXPECT_EQ(DecideStartup(dir.path(), kVersion).path, StartupPath::FirstRun);
  WriteVersion(dir.path(), StoreVersion(kVersion));
  EXPECT_EQ(DecideStartup(dir.path(), kVersion).path, StartupPath::Current);
  for (const char* other : {"0.1.0+suizo \r\n", "0.1.0+suizo\n", "0.1.0\r\n", "0.0.9+suizo\r\n"}) {
    testing::WriteBytes(dir / "ver.dax", other);
    EXPECT_EQ(DecideStartup(dir.path(), kVersion).path, StartupPath::Reconvert) << other;
  }
  EXPECT_EQ(VersionString(1, 2, 30), u"1.2.30");
}

TEST(Startup, AFirstRunConvertsTheExportsOrSaysWhatIsMissing) {
  TempDir empty("empty");
  Corpus none(empty.path());
  NoOutsideDatabase outside;
  try {
    OpenStore(none, kVersion, {}, outside);
    FAIL() << "started without a store or exports";
  } catch (const CorpusError& e) {
    EXPECT_NE(std::string(e.what()).find("『桐』がインストールされていません"), std::string::npos);
  }
  TempDir dir;
  std::filesystem::copy(SampleCorpus(), dir.path(), std::filesystem::copy_options::recursive);
  Corpus corpus(dir.path());
  const StartupReport report = OpenStore(corpus, kVersion, ImportOptionsFor(dir.path()), outside);
  EXPECT_EQ(report.decision.path, StartupPath::FirstRun);
  EXPECT_EQ(DecideStartup(dir.path(), kVersion).path, StartupPath::Current);
  EXPECT_EQ(corpus.Loaded[1], 1);
  EXPECT_GT(corpus.DisMaxY, 300);
  EXPECT_EQ(corpus.DatDirty, 0);
}

// A store of an older version with notes in it, and new exports beside it.
class Reconversion : public ::testing::Test {
 protected:
  Reconversion() {
    std::filesystem::copy(SampleCorpus(), dir.path(), std::filesystem::copy_options::recursive);
    Corpus old(dir.path());
    NoOutsideDatabase outside;
    OpenStore(old, kVersion, ImportOptionsFor(dir.path()), outside);
    note2Row = 5;
    old.Dat().Set(note2Row, 48, u"読み直すこと");
    old.Hok().Set(12, 36, u"異読あり");
    old.SDat().Set(3, 8, u"翻刻の誤り");
    key = std::u16string(old.Dat().Get(note2Row, 2));
    sourceKey = std::u16string(old.SDat().Get(3, 2));
    for (const TableId id : {TableId::Dat, TableId::Hok, TableId::SDat})
      WriteDax(old.FilePath(id, ".dax"), old.table(id));
  }
  // The start, and whether it carried the three notes.
  bool NotesKept(StartupPath expected) {
    Corpus corpus(dir.path());
    NoOutsideDatabase outside;
    const StartupReport report = OpenStore(corpus, kVersion, ImportOptionsFor(dir.path()), outside);
    EXPECT_EQ(report.decision.path, expected);
    return corpus.Dat().Get(SysNo(corpus, key), 48) == u"読み直すこと" && corpus.Hok().Get(12, 36) == u"異読あり" &&
           corpus.SDat().Get(SysNoS(corpus, sourceKey), 8) == u"翻刻の誤り";
  }
  TempDir dir;
  int note2Row = 0;
  std::u16string key, sourceKey;
};

TEST_F(Reconversion, NotesSurviveANewImport) {
  WriteVersion(dir.path(), u"0.9.0");
  Corpus corpus(dir.path());
  NoOutsideDatabase outside;
  const StartupReport report = OpenStore(corpus, kVersion, ImportOptionsFor(dir.path()), outside);
  EXPECT_EQ(report.decision.path, StartupPath::Reconvert);
  EXPECT_TRUE(report.notesRestored);
  EXPECT_EQ(corpus.Dat().Get(SysNo(corpus, key), 48), u"読み直すこと");
  EXPECT_EQ(corpus.Hok().Get(12, 36), u"異読あり");
  EXPECT_EQ(corpus.SDat().Get(SysNoS(corpus, sourceKey), 8), u"翻刻の誤り");
  EXPECT_EQ(corpus.DatDirty + corpus.HokDirty + corpus.SDatDirty, 3);
  // One line per note, among the sample's own.
  EXPECT_NE(
      testing::ReadBytes(dir / "memo2.dat").find(text::EncodeSjis(key + u",\"読み直すこと\"\r\n")),
      std::string::npos);
  EXPECT_EQ(DecideStartup(dir.path(), kVersion).path, StartupPath::Current);
}

TEST_F(Reconversion, AStoreWithoutItsVersionKeepsItsNotesAndAMissingExportIsNamedFirst) {
  const std::string dat = testing::ReadBytes(dir / "翠典本文.dax");
  std::filesystem::remove(dir / "ver.dax");
  std::filesystem::rename(dir / "法華経科文.dat", dir / "away");
  Corpus corpus(dir.path());
  NoOutsideDatabase outside;
  try {
    OpenStore(corpus, kVersion, ImportOptionsFor(dir.path()), outside);
    ADD_FAILURE() << "rebuilt without an export";
  } catch (const CorpusError& e) {
    EXPECT_NE(std::string(e.what()).find("法華経科文.dat"), std::string::npos) << e.what();
  }
  EXPECT_EQ(testing::ReadBytes(dir / "翠典本文.dax"), dat);  // nothing written yet
  std::filesystem::rename(dir / "away", dir / "法華経科文.dat");
  EXPECT_TRUE(NotesKept(StartupPath::FirstRun));
  EXPECT_TRUE(NotesKept(StartupPath::Current));  // stored, not only restored in memory
}

TEST_F(Reconversion, AStoreOlderThanZeroEightHasNoSourceNotes) {
  WriteVersion(dir.path(), u"0.7.5");
  Corpus corpus(dir.path());
  NoOutsideDatabase outside;
  OpenStore(corpus, kVersion, ImportOptionsFor(dir.path()), outside);
  EXPECT_EQ(testing::ReadBytes(dir / "memos.dat"), "");
  EXPECT_EQ(corpus.SDat().Get(SysNoS(corpus, sourceKey), 8), u"");
  EXPECT_EQ(corpus.Hok().Get(12, 36), u"異読あり");
}

TEST(K3Dat, QuotationMarksTheReaderCannotTakeBecomeAnAcuteAccent) {
  EXPECT_EQ(K3Line(u"\"a\",\"b\""), u"\"a\",\"b\"");
  EXPECT_EQ(K3Line(u"\"““引用””\""), u"\"´引用´\"");
  EXPECT_EQ(K3Line(u"\"“x”\",\"\""), u"\"´x´\",´");  // an empty quoted value too
  EXPECT_EQ(K3Line(u"\"言ふ\"\"是\"\"と\""), u"\"言ふ´是´と\"");
  TempDir dir;
  testing::WriteBytes(dir / "t.k3", text::EncodeSjis(u"科文\r\n\"“序”\"\r\n"));
  K3Dat(dir / "t.k3", dir / "t.dat");
  EXPECT_EQ(testing::ReadBytes(dir / "t.dat"), text::EncodeSjis(u"科文\r\n\"´序´\"\r\n"));
  testing::WriteBytes(dir / "u.k3x", testing::Utf16le(u"科文\r\n\"“序”\"\r\n"));
  K3Dat(dir / "u.k3x", dir / "u.dat");
  EXPECT_EQ(testing::ReadBytes(dir / "u.dat"), text::EncodeSjis(u"科文\r\n\"´序´\"\r\n"));
}

}  // namespace
}  // namespace suizo::corpus
