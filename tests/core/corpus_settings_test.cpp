#include <gtest/gtest.h>

#include "core/corpus/bookmarks.h"
#include "core/corpus/errors.h"
#include "core/corpus/import.h"
#include "core/corpus/orders.h"
#include "core/corpus/settings.h"
#include "core/corpus/startup.h"
#include "core/text/sjis.h"
#include "core/text/utf16.h"
#include "test_support.h"

namespace suizo::corpus {
namespace {

using testing::TempDir;

TEST(Settings, DefaultsUntilWrittenAndAfterDeletingAll) {
  MemorySettings store;
  Settings s = ReadSettings(store);
  EXPECT_EQ(s.Itaiji, 1);
  EXPECT_EQ(s.GmL2, 18);
  s.Itaiji = 0;
  s.SmL1 = 22;
  WriteSettings(store, s);
  EXPECT_EQ(ReadSettings(store).Itaiji, 0);
  EXPECT_EQ(ReadSettings(store).SmL1, 22);
  store.Write(kSettingsSection, u"GmL1", u"many");
  EXPECT_THROW(ReadSettings(store), SettingsError);
  store.DeleteAll();
  EXPECT_EQ(ReadSettings(store).SmL1, 16);
}

TEST(Settings, TheFileKeepsThemAcrossRunsAndWindowsKeepTheirPlace) {
  TempDir dir;
  {
    FileSettings file(dir / "sub" / "settings.ini");
    Settings s;
    s.AutoDiv = 0;
    WriteSettings(file, s);
    WriteGeometry(file, u"@本文", {10, 20, 640, 480});
  }
  FileSettings again(dir / "sub" / "settings.ini");
  EXPECT_EQ(ReadSettings(again).AutoDiv, 0);
  const auto g = ReadGeometry(again, u"@本文");
  ASSERT_TRUE(g);
  EXPECT_EQ(g->w, 640);
  EXPECT_EQ(g->y, 20);
  EXPECT_FALSE(ReadGeometry(again, u"@辞書"));  // no width stored: the design size
  again.DeleteAll();
  EXPECT_FALSE(std::filesystem::exists(dir / "sub" / "settings.ini"));
}

TEST(Profile, ReadsAsTheSystemsProfileFunctionsDo) {
  TempDir dir;
  testing::WriteBytes(dir / "s.ini",
                      text::EncodeSjis(u"; bookmarks\r\n[BMark01]\r\nT1 = \"春雨書\" \r\nt2=a\r\n"
                                       u"[Other]\r\nT1=x\r\n"));
  const ProfileFile file(dir / "s.ini");
  EXPECT_EQ(file.Read(u"bmark01", u"T1", u"---"), u"春雨書");
  EXPECT_EQ(file.Read(u"BMark01", u"T2", u"---"), u"a");
  EXPECT_EQ(file.Read(u"BMark01", u"T3", u"---"), u"---");
  EXPECT_EQ(file.Read(u"BMark02", u"T1", u"empty"), u"empty");
}

TEST(Profile, AValueIsCutAtItsZeroAndAfter254Characters) {
  TempDir dir;
  ProfileFile file(dir / "s.ini");
  const std::u16string long_(300, u'法');
  file.Write(u"BMark01", u"T2", long_);
  EXPECT_EQ(ProfileFile(dir / "s.ini").Read(u"BMark01", u"T2", u""), long_.substr(0, 254));
  EXPECT_EQ(file.Read(u"X", u"Y", std::u16string(u"ab\0cd", 5)), u"ab");
}

TEST(Profile, WritingAKeyKeepsTheRestAndCaptionsRoundTripInShiftJis) {
  TempDir dir;
  testing::WriteBytes(dir / "s.ini",
                      text::EncodeSjis(u"; keep me\r\n[BMark01]\r\nGk=22\r\nT1=old\r\n"));
  ProfileFile file(dir / "s.ini");
  const std::u16string caption = u"法\uE000華／経の文\uE757";
  file.Write(u"BMark01", u"T1", caption);
  file.Write(u"BMark01", u"T2", u"新しい行");
  file.Write(u"SMark01", u"Mpos", u"3");
  EXPECT_EQ(testing::ReadBytes(dir / "s.ini"),
            text::EncodeSjis(u"; keep me\r\n[BMark01]\r\nGk=22\r\nT1=" + caption +
                             u"\r\nT2=新しい行\r\n[SMark01]\r\nMpos=3\r\n"));
  EXPECT_EQ(ProfileFile(dir / "s.ini").Read(u"BMark01", u"T1", u""), caption);
  EXPECT_THROW(file.Write(u"BMark01", u"T1", u"\u4E02"), CorpusError);  // no Shift-JIS code
}

// The sample converted and opened as a start does.
class FirstRun : public ::testing::Test {
 protected:
  FirstRun() {
    std::filesystem::copy(std::filesystem::path(SUIZO_SOURCE_DIR) / "data" / "sample", dir.path(),
                          std::filesystem::copy_options::recursive);
    NoOutsideDatabase outside;
    OpenStore(corpus, u"0.1.0", ImportOptionsFor(dir.path()), outside);
    InitialOrders(corpus, selection);
  }
  TempDir dir;
  Corpus corpus{dir.path()};
  Selection selection;
};

TEST_F(FirstRun, WritesThirtySectionsOnceAndNoneLater) {
  ProfileFile file(dir / "suiten.ini");
  EXPECT_TRUE(FillBookmarksOnFirstRun(file, corpus, selection));
  const std::string bytes = testing::ReadBytes(dir / "suiten.ini");
  EXPECT_EQ(std::count(bytes.begin(), bytes.end(), '['), 30);
  const ProfileFile read(dir / "suiten.ini");
  EXPECT_EQ(read.Read(u"BMark07", u"CSel", u""), u"11111111110");
  EXPECT_EQ(read.Read(u"BMark07", u"Lpos", u""),
            corpus.Mok().Get(corpus.MokOrder[1], mok::kPosition));
  EXPECT_EQ(read.Read(u"HMark10", u"Mpos", u""), u"徳行品第一");  // a word, not a number
  EXPECT_EQ(read.Read(u"SMark03", u"T2", u""), u"---");
  // A later start writes nothing, even with one bookmark gone.
  testing::WriteBytes(dir / "suiten.ini", bytes.substr(0, bytes.find("[BMark02]")) +
                                              bytes.substr(bytes.find("[BMark03]")));
  ProfileFile later(dir / "suiten.ini");
  EXPECT_FALSE(FillBookmarksOnFirstRun(later, corpus, selection));
  EXPECT_EQ(later.Read(u"BMark02", u"Gk", u"empty"), u"empty");
}

TEST_F(FirstRun, ABookmarkKeepsItsCollectionAndAnUnsetOneTheFirstPlace) {
  ProfileFile file(dir / "suiten.ini");
  const Bookmark unset = FirstRunBookmark(BookmarkKind::Writings, corpus, selection);
  Bookmark b = ReadBookmark(file, BookmarkKind::Writings, 4, unset);
  EXPECT_EQ(b.T1, u"---");
  EXPECT_EQ(b.Lpos, unset.Lpos);
  b.Gk = u"31";
  b.CSel = u"10101010100";
  b.T2 = u"行の本文／二行目";
  WriteBookmark(file, BookmarkKind::Writings, 4, b);
  const Bookmark back =
      ReadBookmark(ProfileFile(dir / "suiten.ini"), BookmarkKind::Writings, 4, unset);
  EXPECT_EQ(back.T2, u"行の本文／二行目");
  Selection restored;
  ApplyCSelText(back.CSel, restored);
  EXPECT_EQ(restored.CSel[2], 1);
  EXPECT_EQ(restored.CSel[3], 0);
  EXPECT_EQ(CSelText(restored), u"10101010100");
}

}  // namespace
}  // namespace suizo::corpus
