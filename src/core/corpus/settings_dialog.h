// `Form13`, the one dialog for the options of "@設定": it shows them, stores
// them when confirmed and says what the open windows must then do, and it
// offers to delete every setting of the program.
#pragma once

#include <array>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "core/corpus/settings.h"

namespace suizo::corpus {

inline constexpr std::u16string_view kSettingsDialogCaption = u"設定";
// `Check1` to `Check4`, by the setting each switches.
inline constexpr std::u16string_view kAutoDivCaption = u"自動で単字分割検索する";
inline constexpr std::u16string_view kItaijiCaption = u"異体字等の表記ゆらぎに対応させる";
inline constexpr std::u16string_view kHelperCaption = u"操作説明等をバルーン表示する";
inline constexpr std::u16string_view kCompactCaption = u"コンパクト表示モードを使用する";
// The label of `Combo1`, and `Frame1` of the six vertical values.
inline constexpr std::u16string_view kFontSizeCaption = u"└フォントサイズ";
inline constexpr std::u16string_view kVerticalFrameCaption = u"縦書き文字数増加";
// The rows of the frame: Combo2 and 3, 4 and 5, 6 and 7.
inline constexpr std::array<std::u16string_view, 3> kVerticalRowCaptions = {u"本文", u"法華",
                                                                            u"史料"};
// `Command1`, `Command2`, `Command3`.
inline constexpr std::u16string_view kDeleteAllCaption = u"設定削除";
inline constexpr std::u16string_view kCloseCaption = u"閉じる";
inline constexpr std::u16string_view kConfirmSettingsCaption = u"確定";

// What `Command1` asks before deleting.
inline constexpr std::u16string_view kDeleteAllQuestion =
    u"設定をすべて削除してプログラムを終了します\nよろしいですか?";

// `Combo1`: the font size added to the desktop's, by index; 0 is the
// desktop's own.
std::span<const std::u16string_view> FontSizeList();
// `Combo2` to `Combo7`: characters a column of vertical text.
std::span<const std::u16string_view> VerticalList();

// `Label1`: "翠蔵Viewer" and the major, minor and revision numbers joined by
// ".". Missing or unreadable parts of `version` read as 0.
std::u16string VersionLine(std::u16string_view version);

// The forms whose windows a confirmed change reaches: those that follow the
// compact mode, and the readers that redraw their vertical text.
inline constexpr std::array<std::u16string_view, 4> kCompactForms = {u"Form16", u"Form7", u"Form5",
                                                                     u"Form2"};
inline constexpr std::array<std::u16string_view, 3> kVerticalForms = {u"Form16", u"Form7",
                                                                      u"Form2"};

// What the program does to its open windows after "確定", in this order.
struct SettingsEffects {
  // Each window's balloons set up anew (`Helper` 1), else taken away.
  bool balloons = true;
  // `BTFont` changed: every open window's font is reset.
  bool resetFonts = false;
  // `Gcm1` changed: `Gcm1ModFlag` and `Gcm1Change` on each window of kCompactForms.
  bool gcm1Change = false;
  // `TateModFlag`, `TateInit` and `Hyouji` on each window of kVerticalForms
  // whose `Muki1` is 1.
  bool tateRedraw = true;
};

using AskYesNo = std::function<bool(std::u16string_view question)>;

class SettingsDialog {
 public:
  // Load: the controls from the program's settings, `Gcm1` and `BTFont`
  // kept to see later what changed.
  explicit SettingsDialog(const Settings& current);

  int Check1 = 0;  // AutoDiv
  int Check2 = 0;  // Itaiji
  int Check3 = 0;  // Helper
  int Check4 = 0;  // Gcm1
  // List indexes: Combo1 into FontSizeList, the others into VerticalList.
  int Combo1 = 0;
  int Combo2 = 0, Combo3 = 0;  // GmL1, GmL2
  int Combo4 = 0, Combo5 = 0;  // HmL1, HmL2
  int Combo6 = 0, Combo7 = 0;  // SmL1, SmL2

  // "確定": the controls go into the program's settings and into "@設定".
  SettingsEffects Command3(Settings& settings, SettingsStore& store) const;

  // Asks; on yes every setting of the program is deleted and the exit flag
  // set. Returns the answer.
  bool Command1(SettingsStore& store, const AskYesNo& ask);
  // The program is to end: the contents window unloads everything.
  bool ExitRequested() const { return exit_; }

  int LoadedGcm1() const { return loadedGcm1_; }
  int LoadedBTFont() const { return loadedBTFont_; }

 private:
  int loadedGcm1_;
  int loadedBTFont_;
  bool exit_ = false;
};

// A dialog keeps only its width, under key "w" of its section. Nothing when
// none is stored or it is no positive number.
std::optional<int> StoredWidth(const SettingsStore& store, std::u16string_view section);
void StoreWidth(SettingsStore& store, std::u16string_view section, int width);

}  // namespace suizo::corpus
