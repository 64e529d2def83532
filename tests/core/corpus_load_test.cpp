#include <gtest/gtest.h>

#include "core/corpus/corpus.h"
#include "core/corpus/data_path.h"
#include "core/corpus/dax_file.h"
#include "core/corpus/errors.h"
#include "core/corpus/summary.h"
#include "test_support.h"

namespace suizo::corpus {
namespace {

using testing::TempDir;

// A writable copy of the fixture store.
class LoadTest : public ::testing::Test {
 protected:
  LoadTest() {
    std::filesystem::copy(testing::FixtureStore(), dir.path(),
                          std::filesystem::copy_options::recursive);
  }
  TempDir dir;
};

TEST_F(LoadTest, GroupZeroLoadsTheWritingsAndFixesTheImportedRowsOfMok) {
  Corpus corpus(dir.path());
  corpus.ReadData(0);
  EXPECT_EQ(corpus.Loaded[0], 1);
  EXPECT_EQ(corpus.Dat().rows(), 8);
  EXPECT_EQ(corpus.Dat().cols(), 53);
  EXPECT_EQ(corpus.Dat().Get(0, 5), u"7");  // the order count of 定本
  EXPECT_EQ(corpus.Dat().Get(5, 0), u"5");
  EXPECT_EQ(corpus.Mok().rows(), 2);
  EXPECT_EQ(corpus.MokBaseRows, 2);
  EXPECT_EQ(corpus.Dic().rows(), 0);  // other groups wait
}

TEST_F(LoadTest, GroupOneReadsTheDictionaryOrdersBack) {
  Corpus corpus(dir.path());
  corpus.ReadData(1);
  EXPECT_EQ(corpus.DisMaxY, 3);
  EXPECT_EQ(corpus.Dic().Get(1, 3), u"3");  // the first head word gave way to the count
  EXPECT_EQ(corpus.DicOrder, (std::vector<int>{0, 1, 2, 3}));
  EXPECT_EQ(corpus.DicYomi, (std::vector<int>{0, 3, 2, 1}));
}

TEST_F(LoadTest, GroupThreeTurnsTheMarksOfTheOfficeColumnsIntoLineFeeds) {
  Corpus corpus(dir.path());
  corpus.ReadData(3);
  EXPECT_EQ(corpus.Nen().Get(1, 12), u"後\n嵯\n峨");
  EXPECT_EQ(corpus.Nen().Get(1, 16), u"関)\n二\n条");
  EXPECT_EQ(corpus.Nen().Get(2, 21), u"時\n宗");
  EXPECT_EQ(corpus.Nen().Get(1, 7), u"1260/03/01");  // other fields keep theirs
}

TEST_F(LoadTest, AGroupIsReadOnceAndGroupsWithoutFilesDoNothing) {
  Corpus corpus(dir.path());
  corpus.ReadData(6);
  corpus.SDat().Set(1, 8, u"書き込んだ覚え");
  corpus.ReadData(6);
  EXPECT_EQ(corpus.SDat().Get(1, 8), u"書き込んだ覚え");
  corpus.ReadData(-1);
  corpus.ReadData(7);
  corpus.ReadData(10);
  EXPECT_EQ(corpus.Loaded[7], 0);
}

TEST_F(LoadTest, AFailedGroupIsFlaggedAndNotTriedAgain) {
  std::filesystem::remove(dir / "法華経科文.dax");
  Corpus corpus(dir.path());
  try {
    corpus.ReadData(2);
    FAIL() << "loaded a group with a missing file";
  } catch (const CorpusError& e) {
    EXPECT_NE(std::string(e.what()).find("法華経科文.dax"), std::string::npos) << e.what();
  }
  EXPECT_EQ(corpus.Loaded[2], 1);
  EXPECT_NO_THROW(corpus.ReadData(2));
}

TEST_F(LoadTest, ADictionaryOrderOutOfRangeNamesItsCell) {
  Corpus fixture(dir.path());
  fixture.ReadData(1);
  fixture.Dic().Set(2, 5, u"9");
  WriteDax(dir / "辞書事典.dax", fixture.Dic());
  Corpus corpus(dir.path());
  try {
    corpus.ReadData(1);
    FAIL() << "accepted a reading order beyond the entries";
  } catch (const CorpusError& e) {
    EXPECT_EQ(e.place().row, 2);
    EXPECT_EQ(e.place().field, 5);
  }
}

TEST_F(LoadTest, SystemNumbersAreLookedUpAsText) {
  Corpus corpus(dir.path());
  corpus.ReadData(0);
  corpus.ReadData(6);
  EXPECT_EQ(SysNo(corpus, u"14603"), 3);
  EXPECT_EQ(SysNo(corpus, 14603), 3);
  EXPECT_EQ(SysNo(corpus, u"014603"), 9);  // absent: the row after the last
  EXPECT_EQ(corpus.Dat().Get(SysNo(corpus, 99999), 8), u"");
  EXPECT_EQ(MSysNo(corpus, 14605), 2);
  EXPECT_EQ(MSysNo(corpus, u""), 3);
  EXPECT_EQ(SysNoS(corpus, 30002), 2);
  EXPECT_EQ(SysNoS(corpus, 1), 4);
}

TEST_F(LoadTest, TheSummaryCoversAllTwelveTables) {
  Corpus corpus(dir.path());
  const StoreSummary summary = LoadAndSummarize(corpus);
  ASSERT_EQ(summary.tables.size(), 12u);
  for (const auto& t : summary.tables) EXPECT_TRUE(t.present);
  EXPECT_EQ(summary.tables[static_cast<int>(TableId::Nek)].rows, 1);
  EXPECT_EQ(summary.datOrders[9].label, u"対録");
  EXPECT_EQ(summary.datOrders[9].count, u"6");
  EXPECT_EQ(summary.sdatOrder, u"3");
  EXPECT_EQ(summary.dicEntries, 3);

  std::filesystem::remove(dir / "年表関連.dax");
  Corpus without(dir.path());
  EXPECT_FALSE(LoadAndSummarize(without).tables[static_cast<int>(TableId::Nek)].present);
}

TEST(DataPath, CommandLineThenEnvironmentThenBesideTheProgramThenTheUsersOwn) {
  TempDir dir;
  const auto bin = dir / "bin";
  std::filesystem::create_directories(bin);
  bool writable = true;
  const auto find = [&](std::optional<std::filesystem::path> commandLine, const char* environment) {
    return FindDataPlace({.commandLine = std::move(commandLine),
                          .environment = environment,
                          .programFolder = bin,
                          .userFolder = dir / "home",
                          .writable = [&](const std::filesystem::path&) { return writable; }});
  };
  EXPECT_EQ(find("/x", "/y").folder, "/x");
  EXPECT_EQ(find(std::nullopt, "/y").folder, "/y");
  // Nothing beside the program and no sample installed: the defined place,
  // where the start says what is missing.
  EXPECT_EQ(find(std::nullopt, "").folder, bin / "Data");
  EXPECT_TRUE(find(std::nullopt, nullptr).seed.empty());
  // Installed: the user's own folder, filled from the installed sample.
  const auto sample = dir / "share" / "suizo-viewer" / "sample";
  std::filesystem::create_directories(sample);
  EXPECT_EQ(InstalledSample(bin), sample);
  EXPECT_EQ(find(std::nullopt, nullptr).folder, dir / "home");
  EXPECT_EQ(find(std::nullopt, nullptr).seed, sample);
  // A Data folder beside the program is used while it can be written, and
  // copied into the user's folder when it cannot.
  std::filesystem::create_directories(bin / "Data");
  EXPECT_EQ(find(std::nullopt, nullptr).folder, bin / "Data");
  EXPECT_TRUE(find(std::nullopt, nullptr).seed.empty());
  writable = false;
  EXPECT_EQ(find(std::nullopt, nullptr).folder, dir / "home");
  EXPECT_EQ(find(std::nullopt, nullptr).seed, bin / "Data");
}

TEST(DataPath, TheUsersFolderFollowsTheDesktopsRules) {
  EXPECT_EQ(UserDataFolder("/x/share", "/home/a"),
            std::filesystem::path("/x/share") / u8"翠蔵Viewer" / "Data");
  EXPECT_EQ(UserDataFolder("relative", "/home/a"),
            std::filesystem::path("/home/a/.local/share") / u8"翠蔵Viewer" / "Data");
  EXPECT_EQ(UserDataFolder(nullptr, "/home/a"), UserDataFolder("", "/home/a"));
}

TEST(DataPath, AFolderIsFilledOnItsFirstUseOnly) {
  TempDir dir;
  const auto seed = dir / "sample", folder = dir / "user" / "Data";
  std::filesystem::create_directories(seed);
  testing::WriteBytes(seed / "翠典本文.dat", "exports");
  testing::WriteBytes(seed / "add.csv", "classes");
  EXPECT_EQ(SeedDataFolder({folder, seed}), 2);
  EXPECT_EQ(testing::ReadBytes(folder / "add.csv"), "classes");
  // Once it holds exports or a store, the user's files are left alone.
  testing::WriteBytes(folder / "add.csv", "the user's");
  EXPECT_EQ(SeedDataFolder({folder, seed}), 0);
  std::filesystem::remove(folder / "翠典本文.dat");
  testing::WriteBytes(folder / "ver.dax", "0.1.0\r\n");
  EXPECT_EQ(SeedDataFolder({folder, seed}), 0);
  EXPECT_EQ(testing::ReadBytes(folder / "add.csv"), "the user's");
  EXPECT_EQ(SeedDataFolder({folder, {}}), 0);
}

TEST(Schema, StemsAndGroupsAreThoseOfTheStore) {
  EXPECT_EQ(SchemaOf(TableId::SDat).stem, "史料本文");
  EXPECT_EQ(SchemaOf(TableId::Nen).fields[27], u"尊基礎No");
  EXPECT_EQ(SchemaOf(TableId::Sok).fields[1], u"經名");  // the old form, as exported
  // Names are matched to the export's header to the letter.
  EXPECT_EQ(SchemaOf(TableId::Kam).fields[5], u"法華No.");
  EXPECT_EQ(SchemaOf(TableId::SMok).fields[3], u"ｼｽﾃﾑNo.");
  EXPECT_EQ(SchemaOf(TableId::SDat).fields[14], u"印");
  int tables = 0;
  for (int group = 0; group < kLoadGroups; ++group) {
    for (const TableId id : GroupTables(group)) {
      EXPECT_EQ(SchemaOf(id).loadGroup, group);
      ++tables;
    }
  }
  EXPECT_EQ(tables, 11);  // all but Nek
  EXPECT_EQ(FindCollection(31)->datOrderColumn, 46);
  EXPECT_EQ(FindCollection(30), nullptr);
}

}  // namespace
}  // namespace suizo::corpus
