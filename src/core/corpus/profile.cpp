#include "core/corpus/profile.h"

#include <optional>

#include "core/corpus/errors.h"
#include "core/corpus/file_io.h"
#include "core/text/sjis.h"
#include "core/text/utf16.h"

namespace suizo::corpus {
namespace {

char16_t Lower(char16_t c) {
  return c >= u'A' && c <= u'Z' ? static_cast<char16_t>(c + 32) : c;
}

bool SameName(std::u16string_view a, std::u16string_view b) {
  if (a.size() != b.size()) return false;
  for (std::size_t i = 0; i < a.size(); ++i) {
    if (Lower(a[i]) != Lower(b[i])) return false;
  }
  return true;
}

std::u16string_view Trim(std::u16string_view s) {
  while (!s.empty() && (s.front() == u' ' || s.front() == u'\t')) s.remove_prefix(1);
  while (!s.empty() && (s.back() == u' ' || s.back() == u'\t')) s.remove_suffix(1);
  return s;
}

bool IsSection(std::u16string_view line) {
  line = Trim(line);
  return line.size() >= 2 && line.front() == u'[' && line.find(u']') != std::u16string_view::npos;
}

std::u16string_view SectionName(std::u16string_view line) {
  line = Trim(line);
  return line.substr(1, line.find(u']') - 1);
}

// The key of a "key=value" line, or nothing.
std::optional<std::u16string_view> KeyOf(std::u16string_view line) {
  const auto eq = line.find(u'=');
  if (eq == std::u16string_view::npos || IsSection(line) || Trim(line).starts_with(u";"))
    return std::nullopt;
  return Trim(line.substr(0, eq));
}

}  // namespace

ProfileFile::ProfileFile(std::filesystem::path path) : path_(std::move(path)) {
  if (!std::filesystem::exists(path_)) return;
  const std::u16string text = ReadShiftJisFile(path_);  // the lines are views into it
  for (auto line : text::Split(text, u"\n")) {
    if (!line.empty() && line.back() == u'\r') line.remove_suffix(1);
    lines_.emplace_back(line);
  }
  if (!lines_.empty() && lines_.back().empty()) lines_.pop_back();
}

std::size_t ProfileFile::SectionLine(std::u16string_view section) const {
  for (std::size_t i = 0; i < lines_.size(); ++i) {
    if (IsSection(lines_[i]) && SameName(SectionName(lines_[i]), section)) return i;
  }
  return lines_.size();
}

std::u16string ProfileFile::Read(std::u16string_view section, std::u16string_view key,
                                 std::u16string_view fallback) const {
  std::u16string value(fallback);
  for (std::size_t i = SectionLine(section) + 1; i < lines_.size() && !IsSection(lines_[i]); ++i) {
    const auto k = KeyOf(lines_[i]);
    if (!k || !SameName(*k, key)) continue;
    std::u16string_view v = Trim(std::u16string_view(lines_[i]).substr(lines_[i].find(u'=') + 1));
    if (v.size() >= 2 && (v.front() == u'"' || v.front() == u'\'') && v.back() == v.front()) {
      v = v.substr(1, v.size() - 2);
    }
    value = v;
    break;
  }
  if (const auto zero = value.find(u'\0'); zero != std::u16string::npos) value.resize(zero);
  if (value.size() > kProfileValueLength) value.resize(kProfileValueLength);
  return value;
}

void ProfileFile::Set(std::u16string_view section, std::u16string_view key,
                      std::u16string_view value) {
  const std::u16string line = std::u16string(key) + u"=" + std::u16string(value);
  std::size_t at = SectionLine(section);
  if (at == lines_.size()) {
    lines_.push_back(u"[" + std::u16string(section) + u"]");
    lines_.push_back(line);
    return;
  }
  std::size_t last = at;
  for (std::size_t i = at + 1; i < lines_.size() && !IsSection(lines_[i]); ++i) {
    const auto k = KeyOf(lines_[i]);
    if (k && SameName(*k, key)) {
      lines_[i] = line;
      return;
    }
    if (k) last = i;
  }
  lines_.insert(lines_.begin() + static_cast<std::ptrdiff_t>(last + 1), line);
}

void ProfileFile::Write(std::u16string_view section, std::u16string_view key,
                        std::u16string_view value) {
  Change([&] { Set(section, key, value); });
}

void ProfileFile::Write(std::u16string_view section, const Values& values) {
  Change([&] {
    for (const auto& [key, value] : values) Set(section, key, value);
  });
}

void ProfileFile::Write(const std::vector<std::pair<std::u16string, Values>>& sections) {
  Change([&] {
    for (const auto& [section, values] : sections) {
      for (const auto& [key, value] : values) Set(section, key, value);
    }
  });
}

void ProfileFile::Change(const std::function<void()>& edit) {
  std::vector<std::u16string> before = lines_;
  edit();
  try {
    Save();
  } catch (...) {
    // What is read stays what the file holds.
    lines_ = std::move(before);
    throw;
  }
}

void ProfileFile::Save() const {
  std::u16string text;
  for (const auto& line : lines_) text += line + u"\r\n";
  try {
    WriteFileWhole(path_, text::EncodeSjis(text));
  } catch (const text::SjisEncodeError& e) {
    throw CorpusError({DisplayPath(path_)}, std::string("a value cannot be written: ") + e.what());
  }
}

}  // namespace suizo::corpus
