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
