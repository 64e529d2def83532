#include "core/corpus/settings.h"

#include <array>
#include <cstdlib>

#include "core/corpus/file_io.h"
#include "core/text/numbers.h"
#include "core/text/utf16.h"

namespace suizo::corpus {
namespace {

struct Key {
  std::u16string_view name;
  int Settings::*value;
};

constexpr std::array<Key, 12> kKeys = {{{u"AutoDiv", &Settings::AutoDiv},
                                        {u"Itaiji", &Settings::Itaiji},
                                        {u"Helper", &Settings::Helper},
                                        {u"Gcm1", &Settings::Gcm1},
                                        {u"DispN", &Settings::DispN},
                                        {u"BTFont", &Settings::BTFont},
                                        {u"GmL1", &Settings::GmL1},
                                        {u"GmL2", &Settings::GmL2},
                                        {u"HmL1", &Settings::HmL1},
                                        {u"HmL2", &Settings::HmL2},
                                        {u"SmL1", &Settings::SmL1},
                                        {u"SmL2", &Settings::SmL2}}};

int IntSetting(const SettingsStore& store, std::u16string_view section, std::u16string_view key,
               int fallback) {
  const auto text = store.Read(section, key);
  if (!text) return fallback;
  const auto value = text::ToInt(*text);
  if (!value) {
    throw SettingsError("the setting " + text::ToUtf8(key) + " of " + text::ToUtf8(section) +
                        " is not a whole number: \"" + text::ToUtf8(*text) + "\"");
  }
  return *value;
}

}  // namespace

std::optional<std::u16string> MemorySettings::Read(std::u16string_view section,
                                                   std::u16string_view key) const {
  const auto it = values_.find({std::u16string(section), std::u16string(key)});
  if (it == values_.end()) return std::nullopt;
  return it->second;
}

void MemorySettings::Write(std::u16string_view section, std::u16string_view key,
                           std::u16string_view value) {
  values_[{std::u16string(section), std::u16string(key)}] = value;
}

FileSettings::FileSettings(std::filesystem::path path) : path_(std::move(path)) {
  if (!std::filesystem::exists(path_)) return;
  std::u16string section;
  const std::u16string text = text::FromUtf8(ReadFileBytes(path_));  // the lines are views into it
  for (auto line : text::Split(text, u"\n")) {
    if (!line.empty() && line.back() == u'\r') line.remove_suffix(1);
    if (line.size() >= 2 && line.front() == u'[' && line.back() == u']') {
      section = line.substr(1, line.size() - 2);
    } else if (const auto eq = line.find(u'='); eq != std::u16string_view::npos) {
      all_[{section, std::u16string(line.substr(0, eq))}] = line.substr(eq + 1);
    }
  }
}

std::optional<std::u16string> FileSettings::Read(std::u16string_view section,
                                                 std::u16string_view key) const {
  const auto it = all_.find({std::u16string(section), std::u16string(key)});
  if (it == all_.end()) return std::nullopt;
  return it->second;
}

void FileSettings::Write(std::u16string_view section, std::u16string_view key,
                         std::u16string_view value) {
  all_[{std::u16string(section), std::u16string(key)}] = value;
  Save();
}

void FileSettings::DeleteAll() {
  all_.clear();
  std::error_code ignored;
  std::filesystem::remove(path_, ignored);
}

void FileSettings::Save() const {
  std::u16string out;
  std::u16string section;
  bool first = true;
  for (const auto& [where, value] : all_) {
    if (first || where.first != section) {
      section = where.first;
      out += u"[" + section + u"]\n";
      first = false;
    }
    out += where.second + u"=" + value + u"\n";
  }
  if (path_.has_parent_path()) std::filesystem::create_directories(path_.parent_path());
  WriteFileWhole(path_, text::ToUtf8(out));
}

std::filesystem::path FileSettings::DefaultPath() {
  const char* config = std::getenv("XDG_CONFIG_HOME");
  const char* home = std::getenv("HOME");
  std::filesystem::path base = config != nullptr && *config != '\0' ? std::filesystem::path(config)
                               : home != nullptr ? std::filesystem::path(home) / ".config"
                                                 : std::filesystem::path(".");
  const std::string name = text::ToUtf8(kApplicationName);
  return base / std::u8string(name.begin(), name.end()) / "settings.ini";
}

Settings ReadSettings(const SettingsStore& store) {
  Settings settings;
  for (const Key& k : kKeys)
    settings.*k.value = IntSetting(store, kSettingsSection, k.name, settings.*k.value);
  return settings;
}

void WriteSettings(SettingsStore& store, const Settings& settings) {
  for (const Key& k : kKeys)
    store.Write(kSettingsSection, k.name, text::IntText(settings.*k.value));
}

std::optional<Geometry> ReadGeometry(const SettingsStore& store, std::u16string_view section) {
  if (!store.Read(section, u"w")) return std::nullopt;
  return Geometry{IntSetting(store, section, u"x", 0), IntSetting(store, section, u"y", 0),
                  IntSetting(store, section, u"w", 0), IntSetting(store, section, u"h", 0)};
}

void WriteGeometry(SettingsStore& store, std::u16string_view section, const Geometry& g) {
  store.Write(section, u"x", text::IntText(g.x));
  store.Write(section, u"y", text::IntText(g.y));
  store.Write(section, u"w", text::IntText(g.w));
  store.Write(section, u"h", text::IntText(g.h));
}

}  // namespace suizo::corpus
