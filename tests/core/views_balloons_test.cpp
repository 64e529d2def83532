#include "core/views/balloons.h"

#include <gtest/gtest.h>

#include <set>
#include <tuple>

#include "core/text/utf16.h"
#include "core/text/variants.h"

namespace suizo::views {
namespace {

std::u16string Text(std::u16string_view form, std::u16string_view control) {
  return BalloonText(form, control).value_or(u"<none>");
}

// Owned, as the texts are temporaries.
std::vector<std::u16string> Lines(std::u16string_view text) {
  std::vector<std::u16string> lines;
  for (const std::u16string_view line : text::Split(text, u"\n")) lines.emplace_back(line);
  return lines;
}

const std::u16string_view kReaders[] = {u"Form2", u"Form7", u"Form16"};

TEST(BalloonTexts, EveryFormOfTheTablesHasItsBalloonsOnceEachAndNoOtherFormHasAny) {
  const std::set<std::u16string_view> forms(BalloonForms().begin(), BalloonForms().end());
  EXPECT_EQ(forms,
            (std::set<std::u16string_view>{u"Form9", u"Form15", u"Form6", u"Form12", u"Form5",
                                           u"Form3", u"Form13", u"Form2", u"Form7", u"Form16"}));
  for (const std::u16string_view form : BalloonForms()) {
    const auto tools = FormBalloons(form);
    EXPECT_FALSE(tools.empty()) << text::ToUtf8(form);
    EXPECT_EQ(tools, FormBalloons(form));  // a stable order
    std::set<std::u16string> controls;
    for (const auto& tool : tools) EXPECT_TRUE(controls.insert(tool.control).second);
  }
  for (const std::u16string_view form : {u"Form4", u"Form8", u"Form14", u"Form17", u""}) {
    EXPECT_TRUE(FormBalloons(form).empty()) << text::ToUtf8(form);
  }
  EXPECT_FALSE(BalloonText(u"Form9", u"combo1"));
  EXPECT_FALSE(BalloonText(u"Form9", u"Combo2"));
}

TEST(BalloonTexts, LinesAreJoinedByLineFeedsAndNoSeparatorIsLeft) {
  for (const std::u16string_view form : BalloonForms()) {
    for (const auto& [control, text] : FormBalloons(form)) {
      const std::string where = text::ToUtf8(form) + " " + text::ToUtf8(control);
      ASSERT_FALSE(text.empty()) << where;
      EXPECT_FALSE(text::Contains(text, u"/") || text::Contains(text, u"\r")) << where;
      EXPECT_TRUE(text.front() != u'\n' && text.back() != u'\n') << where;
      // A blank at a line's edge would be a separator's remains; the
      // ideographic space that indents a line is the text's own.
      for (const std::u16string_view line : Lines(text)) {
        EXPECT_TRUE(line.empty() || (line.front() != u' ' && line.back() != u' ')) << where;
      }
    }
  }
  // An empty element is an empty line; the full-width slash stays in its line.
  EXPECT_EQ(Lines(Text(u"Form9", u"Command1")).at(1), u"");
  EXPECT_EQ(Lines(Text(u"Form9", u"Label3"))[1], u"表示中の位置／検索結果件数");
}

TEST(BalloonTexts, SearchBoxTellsEachViewsOwnWords) {
  const std::u16string writings = Text(u"Form9", u"Combo1");
  EXPECT_EQ(Text(u"Form5", u"Combo1"), writings);
  EXPECT_EQ(
      Text(u"Form15", u"Combo1"),
      text::ReplaceAll(text::ReplaceAll(writings, u"翠典名(または対告者)", u"書名(または著者)"),
                       u"翠典名は", u"書名は"));
  // The chronology's box is the dictionary's without the line on kana input.
  auto dictionary = Lines(Text(u"Form6", u"Combo1"));
  const auto chronology = Lines(Text(u"Form12", u"Combo1"));
  ASSERT_EQ(dictionary.size(), chronology.size() + 1);
  EXPECT_EQ(dictionary[4], u"読みのひらがなでも検索可能");
  dictionary.erase(dictionary.begin() + 4);
  EXPECT_EQ(dictionary, chronology);
}

TEST(BalloonTexts, RefineAndPinSayWhatEachViewDoes) {
  const std::u16string refine = Text(u"Form9", u"Command14");
  EXPECT_EQ(Text(u"Form5", u"Command14"), refine);
  EXPECT_EQ(Text(u"Form15", u"Command14"), text::ReplaceAll(refine, u"翠典", u"史料"));
  EXPECT_TRUE(text::Contains(Text(u"Form12", u"Command14"), u"\n年表の表示を絞り込みます。"));

  const std::u16string automatic = Text(u"Form9", u"Pin");
  EXPECT_EQ(Text(u"Form15", u"Pin"), automatic);
  const std::u16string escOnly = Text(u"Form6", u"Pin");
  EXPECT_NE(escOnly, automatic);
  for (const std::u16string_view form : {u"Form12", u"Form5", u"Form2", u"Form7", u"Form16"}) {
    EXPECT_EQ(Text(form, u"Pin"), escOnly) << text::ToUtf8(form);
  }
}

TEST(BalloonTexts, ReadersShareOneTableInTheirOwnUnitWord) {
  const std::u16string_view units[] = {u"翠典", u"品", u"書"};
  for (const auto& [control, text] : FormBalloons(u"Form2")) {
    if (control == u"Command3" || !BalloonText(u"Form7", control)) continue;
    for (int r = 1; r < 3; ++r) {
      EXPECT_EQ(Text(kReaders[r], control), text::ReplaceAll(text, u"翠典", units[r]))
          << text::ToUtf8(control);
    }
  }
  for (int r = 0; r < 3; ++r) {
    EXPECT_TRUE(Text(kReaders[r], u"Limit").starts_with(std::u16string(units[r]) + u"に限定"));
    EXPECT_TRUE(text::Contains(Text(kReaders[r], u"BTdown"),
                               std::u16string(u"次の") + std::u16string(units[r])));
  }
  // The strip's plain buttons read as in the contents views.
  for (const std::u16string_view control : {u"Command12", u"RefineLevel", u"Command15"}) {
    EXPECT_EQ(Text(u"Form16", control), Text(u"Form9", control));
  }
  EXPECT_NE(Text(u"Form2", u"Label3"), Text(u"Form9", u"Label3"));
}

TEST(BalloonTexts, ReadersKeepTheirOwnExtras) {
  EXPECT_FALSE(BalloonText(u"Form7", u"Bangou"));
  EXPECT_FALSE(BalloonText(u"Form16", u"TagT(0)"));
  EXPECT_NE(Text(u"Form7", u"Check1"), Text(u"Form16", u"Check1"));
  // Both note tabs of the writings and the sources' notes edit alike.
  const auto memo = Lines(Text(u"Form2", u"TagT(8)"));
  EXPECT_EQ(Text(u"Form2", u"TagT(9)"), Text(u"Form2", u"TagT(8)"));
  auto remark = Lines(Text(u"Form16", u"TagT(3)"));
  EXPECT_EQ(remark.front(), u"【備考】");
  EXPECT_EQ(std::vector(remark.begin() + 1, remark.end()),
            std::vector(memo.begin() + 1, memo.end()));
  // Every text tab of the writings says that a click searches it.
  for (int i : {0, 1, 2, 3, 4, 5, 6, 7, 10}) {
    const auto tab = Text(u"Form2", u"TagT(" + text::IntText(i) + u")");
    EXPECT_TRUE(tab.starts_with(u"【") && tab.ends_with(u"\n\nクリック：検索対象に設定")) << i;
  }
}

TEST(BalloonTexts, ClassBalloonsListTheTenClasses) {
  const std::u16string classes = Text(u"Form3", u"Frame2");
  EXPECT_EQ(Text(u"Form5", u"Text5"), classes);
  const auto lines = Lines(classes);
  ASSERT_EQ(lines.size(), 11u);
  EXPECT_EQ(lines[0], u"【部類】");
  for (int c = 0; c < 10; ++c) {
    EXPECT_TRUE(lines[c + 1].starts_with(u"C=" + text::IntText(c) + u"：")) << c;
  }
  EXPECT_EQ(DictionaryClassBalloon(u""), Text(u"Form6", u"Text3"));
  EXPECT_EQ(DictionaryClassBalloon(u"仏具"), u"【分類】\n仏具");
}

// The settings' examples must be spellings the search really bridges.
TEST(BalloonTexts, VariantExamplesAreBridgedByTheVariantTable) {
  const auto& rows = text::ItaijiTbl();
  const auto sameRow = [&](char16_t a, char16_t b) {
    for (const auto& row : rows) {
      if (text::ContainsUnit(row, a) && text::ContainsUnit(row, b)) return true;
    }
    return false;
  };
  int pairs = 0;
  for (const std::u16string_view line : Lines(Text(u"Form13", u"Check2"))) {
    for (std::u16string_view item : text::Split(line, u"、")) {
      const std::size_t arrow = item.find(u'⇔');
      if (arrow == std::u16string_view::npos) continue;
      std::u16string_view left = item.substr(0, arrow);
      left = left.substr(left.find_last_of(u"　）") + 1);
      const std::u16string_view right = item.substr(arrow + 1);
      ASSERT_EQ(left.size(), right.size()) << text::ToUtf8(item);
      for (std::size_t i = 0; i < left.size(); ++i) {
        EXPECT_TRUE(left[i] == right[i] || sameRow(left[i], right[i])) << text::ToUtf8(item);
      }
      ++pairs;
    }
  }
  EXPECT_GE(pairs, 4);
}

// ---- The tool-tip object ----

TEST(BalloonTooltip, StartsWithTheClassDefaultsAndKeepsATitleForTheIcon) {
  Tooltip tip;
  EXPECT_FALSE(tip.Active());
  EXPECT_EQ(std::tuple(tip.Style(), tip.Icon(), tip.DelayTime(), tip.VisibleTime()),
            std::tuple(1, 1, 10, 30000));
  EXPECT_EQ(tip.Title(), u" ");
  EXPECT_EQ(tip.MaxTipWidth(), -1);
  tip.SetTitle(u"");
  EXPECT_EQ(tip.Title(), u" ");
  tip.SetIcon(2);
  EXPECT_EQ(tip.Icon(), 2);
  EXPECT_EQ(tip.Title(), u" ");
  tip.SetTitle(u"説明");
  tip.SetIcon(0);
  EXPECT_EQ(tip.Title(), u"説明");
}

TEST(BalloonTooltip, WidthDelayAndColours) {
  Tooltip tip;
  for (const int width : {0, -5}) {
    tip.SetMaxTipWidth(width);
    EXPECT_EQ(tip.MaxTipWidth(), -1);
  }
  tip.SetMaxTipWidth(1);
  EXPECT_EQ(tip.MaxTipWidth(), 1);

  tip.SetDelayTime(500);
  tip.Create({});
  tip.SetDelayTime(900);
  tip.SetVisibleTime(5000);
  EXPECT_EQ(tip.DelayTime(), 500);
  EXPECT_EQ(tip.VisibleTime(), 5000);

  tip.SetBackColor(0xC0FFFF);
  tip.SetForeColor(0xFF0000);
  EXPECT_EQ(tip.BackColor(), 0xC0FFFFu);
  // Reading the text colour sets it: black from then on.
  EXPECT_EQ(tip.ForeColor(), 0u);
  EXPECT_EQ(tip.ForeColor(), kInfoTextColor);
}

TEST(BalloonTooltip, ToolsAreAddedOnceAndOnlyWhenCreated) {
  Tooltip tip;
  EXPECT_FALSE(tip.AddTool(u"Command1", u"検索"));
  ASSERT_TRUE(tip.Create({}));
  EXPECT_TRUE(tip.AddTool(u"Command1", u"検索"));
  EXPECT_FALSE(tip.AddTool(u"Command1", u"別の説明"));
  EXPECT_EQ(tip.ToolText(u"Command1"), u"検索");
  EXPECT_FALSE(tip.AddTool(u"", u"窓のない部品"));
  EXPECT_TRUE(tip.AddTool(u"Pin"));
  EXPECT_EQ(tip.ToolText(u"Pin"), u"");
  EXPECT_EQ(tip.ToolCount(), 2);
  EXPECT_EQ(tip.MaxTextLen(), 3);

  tip.SetToolText(u"Pin", std::u16string(u"ロック\0残り", 6));
  EXPECT_EQ(tip.ToolText(u"Pin"), u"ロック");
  EXPECT_EQ(tip.MaxTextLen(), 7);
  tip.SetToolText(u"Label3", u"道具のない部品");
  EXPECT_FALSE(tip.HasTool(u"Label3"));

  tip.RemoveTool(u"Command1");
  EXPECT_EQ(tip.ToolCount(), 1);
  EXPECT_EQ(tip.ToolText(u"Command1"), u"");
  EXPECT_TRUE(tip.AddTool(u"Command1", u"検索"));
}

TEST(BalloonTooltip, FontIsTheStatusFontGrownByTheSetting) {
  const StatusFont status{u"Yu Gothic UI", 9};
  const TipFont plain = BalloonFont(status, 0, 96);
  EXPECT_EQ(plain, (TipFont{u"Yu Gothic UI", 9, 12, false, false}));
  EXPECT_EQ(BalloonFont(status, 2, 144), (TipFont{u"Yu Gothic UI", 11, 22, false, false}));
  EXPECT_EQ(BalloonFont(status, 1, 120).pixels, 17);  // 16.67 rounds up
}

// ---- Installing and showing ----

TEST(BalloonInit, InstallsTheFormsBalloonsInOrderAndSkipsMissingControls) {
  std::optional<Tooltip> tip;
  ToolTipInit(tip, u"Form5", {});
  ASSERT_TRUE(tip && tip->Active());
  EXPECT_EQ(tip->MaxTipWidth(), 800);
  const auto tools = FormBalloons(u"Form5");
  ASSERT_EQ(tip->Tools().size(), tools.size());
  for (std::size_t i = 0; i < tools.size(); ++i) {
    EXPECT_EQ(tip->Tools()[i].control, tools[i].control);
    EXPECT_EQ(tip->Tools()[i].text, tools[i].text);
  }

  std::optional<Tooltip> partial;
  ToolTipInit(partial, u"Form5", {}, [](std::u16string_view c) { return c != u"PageTitle(1)"; });
  EXPECT_FALSE(partial->HasTool(u"PageTitle(1)"));
  EXPECT_TRUE(partial->HasTool(u"Label1(7)"));  // the routine went on
  EXPECT_EQ(partial->ToolCount() + 1, tip->ToolCount());
}

struct BalloonHelpTest : ::testing::Test {
  corpus::Settings settings;
  std::set<std::u16string> present{u"Combo1", u"Pin", u"Command3"};
  BalloonHelp help{settings, u"Form2", {u"Status", 9}, 96, [this](std::u16string_view c) {
                     return present.contains(std::u16string(c));
                   }};
};

TEST_F(BalloonHelpTest, HelperOffMakesNoBalloonsAtLoadOrOnMouseMoves) {
  settings.Helper = 0;
  help.Load();
  help.MouseMove();
  help.LayoutChanged();
  EXPECT_FALSE(help.Showing());
}

TEST_F(BalloonHelpTest, AKeyHidesTheBalloonsUntilTheMouseComesBack) {
  help.Load();
  ASSERT_TRUE(help.Showing());
  EXPECT_EQ(help.ToolTip()->ToolCount(), 3);
  help.KeyDown();
  EXPECT_FALSE(help.Showing());
  // The space bar's layout switch does not bring them back.
  help.LayoutChanged();
  EXPECT_FALSE(help.Showing());
  help.MouseMove();
  ASSERT_TRUE(help.Showing());
  EXPECT_EQ(help.ToolTip()->ToolCount(), 3);
}

TEST_F(BalloonHelpTest, ALayoutSwitchAddsTheControlsItBrought) {
  help.Load();
  present.insert(u"Okuri");
  help.LayoutChanged();
  EXPECT_EQ(help.ToolTip()->ToolCount(), 4);
  EXPECT_EQ(help.ToolTip()->ToolText(u"Okuri"), Text(u"Form2", u"Okuri"));
}

TEST_F(BalloonHelpTest, ConfirmedSettingsSetUpAnewOrTakeAway) {
  help.Load();
  EXPECT_EQ(help.ToolTip()->Font().points, 9);
  settings.BTFont = 3;
  help.SettingsChanged();
  EXPECT_EQ(help.ToolTip()->Font().points, 12);
  settings.Helper = 0;
  help.SettingsChanged();
  EXPECT_FALSE(help.Showing());
  help.MouseMove();
  EXPECT_FALSE(help.Showing());
}

}  // namespace
}  // namespace suizo::views
