// Per-user settings, by section and key under the application's name. The
// store is an interface: a file for the command-line tool, memory for tests,
// the desktop's own settings in the program.
#pragma once

#include <filesystem>
#include <map>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>

namespace suizo::corpus {

inline constexpr std::u16string_view kApplicationName = u"翠蔵Viewer";
inline constexpr std::u16string_view kSettingsSection = u"@設定";

class SettingsStore {
 public:
  virtual ~SettingsStore() = default;
  virtual std::optional<std::u16string> Read(std::u16string_view section,
                                             std::u16string_view key) const = 0;
  virtual void Write(std::u16string_view section, std::u16string_view key,
                     std::u16string_view value) = 0;
  // Deletes every setting of the application.
  virtual void DeleteAll() = 0;

  std::u16string Get(std::u16string_view section, std::u16string_view key,
                     std::u16string_view fallback) const {
    return Read(section, key).value_or(std::u16string(fallback));
  }
};

class MemorySettings : public SettingsStore {
 public:
  std::optional<std::u16string> Read(std::u16string_view section,
                                     std::u16string_view key) const override;
  void Write(std::u16string_view section, std::u16string_view key,
             std::u16string_view value) override;
  void DeleteAll() override { values_.clear(); }

 private:
  std::map<std::pair<std::u16string, std::u16string>, std::u16string> values_;
};

// A UTF-8 file of "[section]" and "key=value" lines, written whole on each
// change; a missing file holds no settings.
class FileSettings : public SettingsStore {
 public:
  explicit FileSettings(std::filesystem::path path);
  std::optional<std::u16string> Read(std::u16string_view section,
                                     std::u16string_view key) const override;
  void Write(std::u16string_view section, std::u16string_view key,
             std::u16string_view value) override;
  void DeleteAll() override;

  // $XDG_CONFIG_HOME (or ~/.config) / 翠蔵Viewer / settings.ini
  static std::filesystem::path DefaultPath();

 private:
  void Save() const;
  std::filesystem::path path_;
  std::map<std::pair<std::u16string, std::u16string>, std::u16string> all_;
};

// The values of "@設定".
struct Settings {
  int AutoDiv = 1;           // a search that finds nothing tries single characters
  int Itaiji = 1;            // search bridges variant characters
  int Helper = 1;            // balloon help
  int Gcm1 = 0;              // compact display
  int DispN = 0;             // hits a page in the hit list, by index
  int BTFont = 0;            // font size, by index
  int GmL1 = 16, GmL2 = 18;  // vertical writing: characters a column, writings
  int HmL1 = 16, HmL2 = 18;  // the sutra
  int SmL1 = 16, SmL2 = 18;  // the sources
};

// Reads "@設定", each key with its default. A value that is no whole number is
// a SettingsError naming the key.
Settings ReadSettings(const SettingsStore& store);
void WriteSettings(SettingsStore& store, const Settings& settings);

class SettingsError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// The section each window keeps its place in, by form name.
struct WindowSection {
  std::u16string_view form;
  std::u16string_view section;
};
inline constexpr WindowSection kWindowSections[] = {
    {u"Form9", u"@目次"},      {u"Form2", u"@本文"},      {u"Form7", u"@経文"},
    {u"Form16", u"@史料本文"}, {u"Form15", u"@史料目次"}, {u"Form5", u"@資料"},
    {u"Form6", u"@辞書"},      {u"Form12", u"@年表"},     {u"Form14", u"@年設"},
    {u"Form17", u"@しおり"},   {u"Form3", u"@選択"},      {u"Form4", u"@結果"},
    {u"Form8", u"@総科"},      {u"Form13", u"@設定"}};
// The contents windows a reader opens for itself.
inline constexpr std::u16string_view kReaderContentsSection = u"目次@本文";
inline constexpr std::u16string_view kSutraContentsSection = u"目次@経文";

// Where a window stood: its section's keys x, y, w, h. Nothing when no width
// is stored, and the window takes its design size.
struct Geometry {
  int x = 0, y = 0, w = 0, h = 0;
};
std::optional<Geometry> ReadGeometry(const SettingsStore& store, std::u16string_view section);
void WriteGeometry(SettingsStore& store, std::u16string_view section, const Geometry& geometry);

}  // namespace suizo::corpus
