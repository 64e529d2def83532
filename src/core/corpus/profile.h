// A private profile file, "[section]" and "key=value" lines in Shift-JIS, as
// the bookmarks file suiten.ini is kept, with the reading rules of the
// system's profile functions.
#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace suizo::corpus {

// A value is read into a buffer of 255 characters that holds its closing zero.
inline constexpr std::size_t kProfileValueLength = 254;

class ProfileFile {
 public:
  // Reads the file if it is there; a missing file is an empty one.
  explicit ProfileFile(std::filesystem::path path);

  // The value, or `fallback` when the section or key is absent. Names match
  // without regard to case; blanks around the value and a pair of quotes
  // around it go; the value is cut at its first zero character and after
  // 254 characters.
  std::u16string Read(std::u16string_view section, std::u16string_view key,
                      std::u16string_view fallback) const;

  // Writes one key and saves the file whole; other lines stay as they were.
  // A failed save is a CorpusError that leaves the file and what is read
  // from it as they were.
  void Write(std::u16string_view section, std::u16string_view key, std::u16string_view value);
  // Several keys, saved once.
  using Values = std::vector<std::pair<std::u16string, std::u16string>>;
  void Write(std::u16string_view section, const Values& values);
  // Several sections, saved once.
  void Write(const std::vector<std::pair<std::u16string, Values>>& sections);

  const std::filesystem::path& path() const { return path_; }

 private:
  std::size_t SectionLine(std::u16string_view section) const;  // lines_.size() when absent
  void Set(std::u16string_view section, std::u16string_view key, std::u16string_view value);
  void Save() const;
  void Change(const std::function<void()>& edit);  // edit, then save or undo

  std::filesystem::path path_;
  std::vector<std::u16string> lines_;
};

}  // namespace suizo::corpus
