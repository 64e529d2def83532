#include "core/corpus/settings_dialog.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <utility>

#include "core/text/numbers.h"
#include "core/text/utf16.h"

namespace suizo::corpus {
namespace {

constexpr std::array<std::u16string_view, 9> kFontSizes = {u"標準", u"+1", u"+2", u"+3", u"+4",
                                                           u"+5",   u"+6", u"+7", u"+8"};

constexpr std::array<std::u16string_view, 21> kVertical = {
    u"10", u"11", u"12", u"13", u"14", u"15", u"16", u"17", u"18", u"19", u"20",
    u"21", u"22", u"23", u"24", u"25", u"26", u"27", u"28", u"29", u"30"};

// An index that a window or a caller got wrong reads as the nearest end.
std::u16string_view At(std::span<const std::u16string_view> list, int index) {
  return list[static_cast<std::size_t>(std::clamp(index, 0, static_cast<int>(list.size()) - 1))];
}

// The item nearest to a stored value: a value the list does not have (an
// older list, a hand-edited store) still shows something close.
int NearestIndex(std::span<const std::u16string_view> list, int value) {
  int best = 0;
  long long bestGap = -1;
  for (std::size_t i = 0; i < list.size(); ++i) {
    const long long gap =
        std::llabs(static_cast<long long>(text::Val(list[i])) - static_cast<long long>(value));
    if (bestGap < 0 || gap < bestGap) {
      best = static_cast<int>(i);
      bestGap = gap;
    }
  }
  return best;
}

int VerticalValue(int index) {
  return text::ValInt(At(kVertical, index));
}

}  // namespace

std::span<const std::u16string_view> FontSizeList() {
  return kFontSizes;
}

std::span<const std::u16string_view> VerticalList() {
  return kVertical;
}

std::u16string VersionLine(std::u16string_view version) {
  const auto parts = text::Split(version, u".");
  std::u16string line(kApplicationName);
  for (std::size_t i = 0; i < 3; ++i) {
    if (i > 0) line += u'.';
    const double part = i < parts.size() ? text::Val(parts[i]) : 0;
    line += text::IntText(part >= 0 && part < 1e9 ? static_cast<std::int64_t>(part) : 0);
  }
  return line;
}

SettingsDialog::SettingsDialog(const Settings& current)
    : loadedGcm1_(current.Gcm1), loadedBTFont_(current.BTFont) {
  Check1 = current.AutoDiv == 1 ? 1 : 0;
  Check2 = current.Itaiji == 1 ? 1 : 0;
  Check3 = current.Helper == 1 ? 1 : 0;
  Check4 = current.Gcm1 == 1 ? 1 : 0;
  Combo1 = std::clamp(current.BTFont, 0, static_cast<int>(kFontSizes.size()) - 1);
  Combo2 = NearestIndex(kVertical, current.GmL1);
  Combo3 = NearestIndex(kVertical, current.GmL2);
  Combo4 = NearestIndex(kVertical, current.HmL1);
  Combo5 = NearestIndex(kVertical, current.HmL2);
  Combo6 = NearestIndex(kVertical, current.SmL1);
  Combo7 = NearestIndex(kVertical, current.SmL2);
}

SettingsEffects SettingsDialog::Command3(Settings& settings, SettingsStore& store) const {
  settings.AutoDiv = Check1 == 1 ? 1 : 0;
  settings.Itaiji = Check2 == 1 ? 1 : 0;
  settings.Helper = Check3 == 1 ? 1 : 0;
  settings.Gcm1 = Check4 == 1 ? 1 : 0;
  settings.BTFont = std::clamp(Combo1, 0, static_cast<int>(kFontSizes.size()) - 1);
  settings.GmL1 = VerticalValue(Combo2);
  settings.GmL2 = VerticalValue(Combo3);
  settings.HmL1 = VerticalValue(Combo4);
  settings.HmL2 = VerticalValue(Combo5);
  settings.SmL1 = VerticalValue(Combo6);
  settings.SmL2 = VerticalValue(Combo7);

  // `DispN` belongs to the hit list, which writes it itself.
  const std::pair<std::u16string_view, int> keys[] = {
      {u"AutoDiv", settings.AutoDiv}, {u"Itaiji", settings.Itaiji}, {u"Helper", settings.Helper},
      {u"Gcm1", settings.Gcm1},       {u"BTFont", settings.BTFont}, {u"GmL1", settings.GmL1},
      {u"GmL2", settings.GmL2},       {u"HmL1", settings.HmL1},     {u"HmL2", settings.HmL2},
      {u"SmL1", settings.SmL1},       {u"SmL2", settings.SmL2}};
  for (const auto& [key, value] : keys) store.Write(kSettingsSection, key, text::IntText(value));

  SettingsEffects effects;
  effects.balloons = settings.Helper == 1;
  effects.resetFonts = settings.BTFont != loadedBTFont_;
  effects.gcm1Change = settings.Gcm1 != loadedGcm1_;
  return effects;
}

bool SettingsDialog::Command1(SettingsStore& store, const AskYesNo& ask) {
  if (!ask || !ask(kDeleteAllQuestion)) return false;
  store.DeleteAll();
  exit_ = true;
  return true;
}

std::optional<int> StoredWidth(const SettingsStore& store, std::u16string_view section) {
  const auto text = store.Read(section, u"w");
  if (!text) return std::nullopt;
  const auto width = text::ToInt(*text);
  if (!width || *width <= 0) return std::nullopt;
  return *width;
}

void StoreWidth(SettingsStore& store, std::u16string_view section, int width) {
  if (width > 0) store.Write(section, u"w", text::IntText(width));
}

}  // namespace suizo::corpus
