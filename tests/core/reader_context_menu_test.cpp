#include "core/reader/context_menu.h"

#include <gtest/gtest.h>

#include "core/corpus/orders.h"
#include "test_support.h"

namespace suizo::reader {
namespace {

enum { kJisho = 1, kHonbun, kKyou, kShiryou, kSeparator, kCut, kCopy, kPaste };

std::array<int, kMenuItemCount> Enabled(MenuTarget target, std::u16string_view s,
                                        std::u16string_view c) {
  return MenuShow(target, s, c).MenuEnabled;
}

TEST(ContextMenu, PaneWithoutSelectionGreysTheLookupsAndCopy) {
  EXPECT_EQ(Enabled(MenuTarget::Pane, u"", u"前の内容"), (std::array<int, 9>{}));
}

TEST(ContextMenu, PaneNeverCutsOrPastes) {
  EXPECT_EQ(Enabled(MenuTarget::Pane, u"妙法", u"前の内容"),
            (std::array<int, 9>{0, 1, 1, 1, 1, 0, 0, 1, 0}));
}

TEST(ContextMenu, TextBoxCutsWithASelectionAndPastesWithAClipboard) {
  EXPECT_EQ(Enabled(MenuTarget::TextBox, u"妙法", u""),
            (std::array<int, 9>{0, 1, 1, 1, 1, 0, 1, 1, 0}));
  EXPECT_EQ(Enabled(MenuTarget::TextBox, u"", u"貼る"),
            (std::array<int, 9>{0, 0, 0, 0, 0, 0, 0, 0, 1}));
}

TEST(ContextMenu, LookupsCarryTheTextAndTheOwnersFamily) {
  const MenuState pane = MenuShow(MenuTarget::Pane, u"妙法", u"");
  const MenuOwner sources{FormKind::Form16, u"史料", 1};
  const MenuChoice dict = MenuGo(pane, kJisho, u"妙法", sources);
  EXPECT_EQ(dict.kind, MenuChoice::Kind::Jisho);
  EXPECT_EQ(dict.text, u"妙法");
  EXPECT_EQ(dict.family, u"史料");
  EXPECT_TRUE(dict.clearPaneSelection);
  EXPECT_EQ(MenuGo(pane, kShiryou, u"妙法", sources).muki, 1);
  EXPECT_EQ(MenuGo(pane, kHonbun, u"妙法", sources).muki, 1);
  // From the sutra the writings open in their own layout.
  const MenuOwner sutra{FormKind::Form7, u"翠典", 1};
  EXPECT_EQ(MenuGo(pane, kHonbun, u"妙法", sutra).muki, 0);
  const MenuState box = MenuShow(MenuTarget::TextBox, u"妙法", u"");
  EXPECT_FALSE(MenuGo(box, kKyou, u"妙法", sutra).clearPaneSelection);
}

TEST(ContextMenu, EditsGoToTheBoxOrThePane) {
  const MenuOwner owner{FormKind::Form2, u"翠典", 0};
  const MenuState box = MenuShow(MenuTarget::TextBox, u"abc", u"xyz");
  EXPECT_EQ(MenuGo(box, kCut, u"abc", owner).message, 768);
  EXPECT_EQ(MenuGo(box, kCopy, u"abc", owner).message, 769);
  const MenuChoice paste = MenuGo(box, kPaste, u"abc", owner);
  EXPECT_EQ(paste.message, 770);
  EXPECT_TRUE(paste.caretToEnd);
  const MenuState pane = MenuShow(MenuTarget::Pane, u"abc", u"xyz");
  const MenuChoice copy = MenuGo(pane, kCopy, u"abc", owner);
  EXPECT_EQ(copy.execWB, 12);
  EXPECT_EQ(copy.message, 0);
}

TEST(ContextMenu, GreyedOrMissingItemsDoNothing) {
  const MenuOwner owner{FormKind::Form2, u"翠典", 0};
  const MenuState pane = MenuShow(MenuTarget::Pane, u"abc", u"xyz");
  for (const int n : {0, int{kSeparator}, int{kCut}, int{kPaste}, 9, -1}) {
    EXPECT_EQ(MenuGo(pane, n, u"abc", owner).kind, MenuChoice::Kind::None) << n;
  }
  // A letter closes an open menu and goes no further; Esc goes on.
  EXPECT_TRUE(PaneKeyClosesMenu(65, true));
  EXPECT_FALSE(PaneKeyClosesMenu(27, true));
}

TEST(ContextMenu, LookupRunsThroughTheJumps) {
  corpus::Corpus corpus(testing::SampleStore());
  struct Dictionary : DictionaryView {
    using DictionaryView::DictionaryView;
    std::u16string box;
    int dpos = 0;
    std::u16string Combo1() const override { return box; }
    void SetCombo1(std::u16string_view t) override { box = t; }
    void Hyouji() override {}
    void Kensaku(int) override {}
    int Dpos() const override { return dpos; }
    void SetDpos(int d) override { dpos = d; }
    void OnShow() override {}
    void OnRaise() override {}
  };
  WindowRegistry windows([](FormKind kind) { return std::make_unique<Dictionary>(kind); });
  Navigator nav(corpus, windows);
  const MenuState pane = MenuShow(MenuTarget::Pane, u"妙法", u"");
  const JumpOutcome out =
      RunLookup(nav, MenuGo(pane, kJisho, u"妙法", {FormKind::Form16, u"史料", 0}));
  ASSERT_NE(out.window, nullptr);
  EXPECT_EQ(out.window->Combo1(), u"妙法");
  EXPECT_EQ(out.window->ParentForm, u"史料");
  EXPECT_EQ(RunLookup(nav, MenuGo(pane, kCopy, u"妙法", {})).window, nullptr);
}

TEST(ContextMenu, ToastBlinksFourTimesThenGoes) {
  Toast toast;
  EXPECT_EQ(toast.text(), u"** 見つかりません **");
  std::vector<std::uint32_t> colours;
  for (bool stays = true; stays;) {
    stays = toast.Tick();
    colours.push_back(toast.ComColour());
  }
  EXPECT_EQ(colours,
            (std::vector<std::uint32_t>{65535, search::kButtonFace, 65535, search::kButtonFace}));
}

}  // namespace
}  // namespace suizo::reader
