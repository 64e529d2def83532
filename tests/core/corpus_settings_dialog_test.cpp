#include "core/corpus/settings_dialog.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace suizo::corpus {
namespace {

std::u16string Listed(std::span<const std::u16string_view> list, int index) {
  return std::u16string(list[static_cast<std::size_t>(index)]);
}

TEST(SettingsDialog, OpensOnTheProgramsSettings) {
  Settings s;
  s.AutoDiv = 0;
  s.Gcm1 = 1;
  s.BTFont = 2;
  s.GmL1 = 20;
  s.SmL2 = 12;
  const SettingsDialog d(s);
  EXPECT_EQ(d.Check1, 0);
  EXPECT_EQ(d.Check2, 1);
  EXPECT_EQ(d.Check3, 1);
  EXPECT_EQ(d.Check4, 1);
  EXPECT_EQ(Listed(FontSizeList(), d.Combo1), u"+2");
  EXPECT_EQ(Listed(VerticalList(), d.Combo2), u"20");
  EXPECT_EQ(Listed(VerticalList(), d.Combo3), u"18");
  EXPECT_EQ(Listed(VerticalList(), d.Combo4), u"16");
  EXPECT_EQ(Listed(VerticalList(), d.Combo7), u"12");
  EXPECT_EQ(FontSizeList().front(), u"標準");
  EXPECT_EQ(d.LoadedGcm1(), 1);
  EXPECT_EQ(d.LoadedBTFont(), 2);
}

TEST(SettingsDialog, ValuesOutsideTheListsShowTheNearest) {
  Settings s;
  s.BTFont = 99;
  s.GmL1 = 500;
  s.HmL2 = -3;
  s.Helper = 7;  // only 1 is on
  const SettingsDialog d(s);
  EXPECT_EQ(d.Combo1, static_cast<int>(FontSizeList().size()) - 1);
  EXPECT_EQ(d.Combo2, static_cast<int>(VerticalList().size()) - 1);
  EXPECT_EQ(d.Combo5, 0);
  EXPECT_EQ(d.Check3, 0);
}

TEST(SettingsDialog, ConfirmStoresEveryOptionAndLeavesTheHitListsOwn) {
  MemorySettings store;
  store.Write(kSettingsSection, u"DispN", u"3");
  Settings live = ReadSettings(store);
  SettingsDialog d(live);
  d.Check2 = 0;
  d.Combo1 = 3;
  d.Combo2 = 0;
  d.Combo5 = 20;
  d.Combo6 = 7;
  d.Command3(live, store);

  const Settings again = ReadSettings(store);
  EXPECT_EQ(again.Itaiji, 0);
  EXPECT_EQ(again.AutoDiv, 1);
  EXPECT_EQ(again.BTFont, 3);
  EXPECT_EQ(again.GmL1, 10);
  EXPECT_EQ(again.GmL2, 18);
  EXPECT_EQ(again.HmL2, 30);
  EXPECT_EQ(again.SmL1, 17);
  EXPECT_EQ(again.DispN, 3);
  EXPECT_EQ(store.Read(kSettingsSection, u"GmL1"), u"10");
  // The program's own variables follow, as the views read those.
  EXPECT_EQ(live.Itaiji, 0);
  EXPECT_EQ(live.HmL2, 30);
}

TEST(SettingsDialog, ConfirmSaysWhatTheOpenWindowsMustDo) {
  MemorySettings store;
  Settings live;
  // Nothing touched: balloons anew and the vertical readers redrawn, no more.
  SettingsEffects e = SettingsDialog(live).Command3(live, store);
  EXPECT_TRUE(e.balloons);
  EXPECT_TRUE(e.tateRedraw);
  EXPECT_FALSE(e.resetFonts);
  EXPECT_FALSE(e.gcm1Change);

  SettingsDialog d(live);
  d.Check3 = 0;
  d.Check4 = 1;
  d.Combo1 = 1;
  e = d.Command3(live, store);
  EXPECT_FALSE(e.balloons);
  EXPECT_TRUE(e.resetFonts);
  EXPECT_TRUE(e.gcm1Change);
}

TEST(SettingsDialog, DeleteAllAsksAndOnlyYesDeletes) {
  MemorySettings store;
  Settings s;
  s.Helper = 0;
  WriteSettings(store, s);
  store.Write(u"@本文", u"w", u"640");

  std::vector<std::u16string> asked;
  SettingsDialog d(s);
  EXPECT_FALSE(d.Command1(store, [&](std::u16string_view q) {
    asked.emplace_back(q);
    return false;
  }));
  EXPECT_FALSE(d.ExitRequested());
  EXPECT_EQ(ReadSettings(store).Helper, 0);
  ASSERT_EQ(asked.size(), 1u);
  EXPECT_EQ(asked[0], u"設定をすべて削除してプログラムを終了します\nよろしいですか?");

  // No one to ask is no.
  EXPECT_FALSE(d.Command1(store, {}));
  EXPECT_TRUE(store.Read(u"@本文", u"w"));

  EXPECT_TRUE(d.Command1(store, [](std::u16string_view) { return true; }));
  EXPECT_TRUE(d.ExitRequested());
  EXPECT_FALSE(store.Read(u"@本文", u"w"));
  // A new start takes every default.
  EXPECT_EQ(ReadSettings(store).Helper, 1);
}

TEST(SettingsDialog, VersionLineAndStoredWidth) {
  EXPECT_EQ(VersionLine(u"1.4.12"), u"翠蔵Viewer1.4.12");
  EXPECT_EQ(VersionLine(u"2"), u"翠蔵Viewer2.0.0");
  EXPECT_EQ(VersionLine(u"x.-1"), u"翠蔵Viewer0.0.0");

  MemorySettings store;
  EXPECT_FALSE(StoredWidth(store, kSettingsSection));
  StoreWidth(store, kSettingsSection, 420);
  EXPECT_EQ(StoredWidth(store, kSettingsSection), 420);
  StoreWidth(store, kSettingsSection, 0);  // a hidden window's width is not kept
  EXPECT_EQ(StoredWidth(store, kSettingsSection), 420);
  store.Write(u"@選択", u"w", u"wide");
  EXPECT_FALSE(StoredWidth(store, u"@選択"));
  // The dialog's width beside its options reads back as no setting error.
  EXPECT_EQ(ReadSettings(store).GmL1, 16);
}

}  // namespace
}  // namespace suizo::corpus
