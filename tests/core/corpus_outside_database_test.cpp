#include "core/corpus/outside_database.h"

#include <gtest/gtest.h>

#include <set>

#include "core/corpus/errors.h"
#include "core/text/sjis.h"
#include "core/text/utf16.h"
#include "test_support.h"

namespace suizo::corpus {
namespace {

using testing::TempDir;

// A machine with the files and processes a test says it has; commands are
// recorded, and the product's export is the sample's .dat renamed.
struct FakeMachine {
  std::set<std::string> files;
  std::vector<std::string> processes;
  std::vector<std::string> commands;
  std::vector<std::string> removed;

  MachineAccess Access() {
    return {[this] { return processes; },
            [this](const std::filesystem::path& p) { return files.count(DisplayPath(p)) > 0; },
            [this](const std::filesystem::path& p, const std::string&) {
              files.insert(DisplayPath(p));
            },
            [this](const std::string& line) { commands.push_back(line); },
            [this](const std::filesystem::path& p) { removed.push_back(DisplayPath(p)); }};
  }
};

TEST(Kiri, FoundInTheThreePlacesInOrder) {
  FakeMachine m;
  m.files = {"C:/Program Files (x86)/K3/Kiri10/System/KIRI10.EXE", "C:/K3/KIRIV9/System/KIRI9.EXE"};
  const KiriInstall found = FindKiri(m.Access().exists);
  EXPECT_EQ(found.version, 10);
  EXPECT_EQ(KiriCommandLine(found, "C:/K3/Data/翠蔵/K3.cmx"),
            "\"C:/Program Files (x86)/K3/Kiri10/System/KIRI10.EXE\" -R \"C:/K3/Data/翠蔵/K3.cmx\"");
  m.files = {"C:/K3/KIRIV9/System/KIRI9.EXE"};
  EXPECT_EQ(FindKiri(m.Access().exists).version, 9);
  m.files.clear();
  EXPECT_EQ(FindKiri(m.Access().exists).version, 0);
}

TEST(Kiri, RunningOrWithoutItsCorpusTheStartStopsWithTheProductsMessage) {
  TempDir dir;
  FakeMachine m;
  m.files = {"C:/Program Files/K3/Kiri10/System/KIRI10.EXE", "C:/K3/Data/翠蔵/翠典資料.TBL"};
  m.processes = {"explorer.exe", "kiri10.exe"};
  KiriDatabase running(m.Access(), "", "");
  try {
    running.ExportTo(dir.path());
    FAIL();
  } catch (const CorpusError& e) {
    EXPECT_NE(std::string(e.what()).find("起動中"), std::string::npos);
  }
  EXPECT_TRUE(m.commands.empty());  // nothing written, nothing run
  m.processes.clear();
  KiriDatabase wrongData(m.Access(), "", "");  // version 10 needs the .TBX tables
  EXPECT_THROW(wrongData.ExportTo(dir.path()), CorpusError);
  m.files.clear();
  KiriDatabase absent(m.Access(), "", "");
  EXPECT_FALSE(absent.ExportTo(dir.path()));
}

TEST(Kiri, ExportsEveryTableAndMakesItsDat) {
  TempDir product("product"), data("data");
  FakeMachine m;
  m.files = {"C:/K3/KIRIV9/System/KIRI9.EXE", DisplayPath(product.path() / u8"翠典資料.TBL")};
  std::filesystem::create_directories(product.path() / u8"史料ｼｽﾃﾑ");
  for (const auto& name : KiriExportNames()) {
    const std::string utf8 = text::ToUtf8(name);
    testing::WriteBytes(product.path() / std::u8string(utf8.begin(), utf8.end()) += ".k3",
                        text::EncodeSjis(u"科文\r\n\"“序”\"\r\n"));
  }
  std::filesystem::create_directories(product.path() / "plates_bmp");
  testing::WriteBytes(product.path() / "plates_bmp" / "1.bmp", "BM");
  KiriDatabase kiri(m.Access(), "commands", "", product.path());
  EXPECT_TRUE(kiri.ExportTo(data.path()));
  ASSERT_EQ(m.commands.size(), 1u);
  EXPECT_NE(m.commands[0].find(" -R \""), std::string::npos);
  EXPECT_EQ(testing::ReadBytes(data / "史料目次.dat"), text::EncodeSjis(u"科文\r\n\"´序´\"\r\n"));
  EXPECT_EQ(m.removed.size(), 13u);  // the command file and each export
  EXPECT_EQ(testing::ReadBytes(data / "plates_bmp" / "1.bmp"), "BM");
}

}  // namespace
}  // namespace suizo::corpus
