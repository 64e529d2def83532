#include "core/corpus/data_path.h"

#include <unistd.h>

#include <vector>

#include "core/corpus/errors.h"
#include "core/corpus/file_io.h"

#ifndef SUIZO_INSTALLED_SAMPLE
#define SUIZO_INSTALLED_SAMPLE "../share/suizo-viewer/sample"
#endif

namespace suizo::corpus {
namespace {

bool CanWrite(const std::filesystem::path& folder) {
  return ::access(folder.c_str(), W_OK) == 0;
}

bool InUse(const std::filesystem::path& folder) {
  std::error_code error;
  if (std::filesystem::exists(folder / "ver.dax", error)) return true;
  for (const auto& entry : std::filesystem::directory_iterator(folder, error)) {
    if (entry.path().extension() == ".dat") return true;
  }
  return false;
}

}  // namespace

DataPlace FindDataPlace(const DataSearch& search) {
  if (search.commandLine) return {*search.commandLine, {}};
  if (search.environment != nullptr && *search.environment != '\0') return {search.environment, {}};
  const auto writable = search.writable ? search.writable : CanWrite;
  const std::filesystem::path beside = search.programFolder / "Data";
  std::error_code error;
  if (std::filesystem::is_directory(beside, error)) {
    if (writable(beside)) return {beside, {}};
    return {search.userFolder, beside};
  }
  const std::filesystem::path sample = InstalledSample(search.programFolder);
  if (std::filesystem::is_directory(sample, error)) return {search.userFolder, sample};
  return {beside, {}};
}

std::filesystem::path InstalledSample(const std::filesystem::path& programFolder) {
  return (programFolder / SUIZO_INSTALLED_SAMPLE).lexically_normal();
}

std::filesystem::path UserDataFolder(const char* xdgDataHome, const char* home) {
  std::filesystem::path base;
  if (xdgDataHome != nullptr && *xdgDataHome == '/') {
    base = xdgDataHome;
  } else {
    base = std::filesystem::path(home != nullptr ? home : "") / ".local" / "share";
  }
  return base / u8"翠蔵Viewer" / "Data";
}

void MakeDataFolder(const DataPlace& place) {
  if (place.seed.empty()) return;
  std::error_code error;
  std::filesystem::create_directories(place.folder, error);
  if (error)
    throw CorpusError({DisplayPath(place.folder)},
                      "cannot make the data folder: " + error.message());
}

bool AwaitsSeed(const DataPlace& place) {
  return !place.seed.empty() && !InUse(place.folder);
}

int SeedDataFolder(const DataPlace& place) {
  MakeDataFolder(place);
  if (!AwaitsSeed(place)) return 0;
  std::error_code error;
  std::vector<std::filesystem::path> files;
  for (const auto& entry : std::filesystem::directory_iterator(place.seed, error)) {
    if (entry.is_regular_file(error)) files.push_back(entry.path());
  }
  if (error)
    throw CorpusError({DisplayPath(place.seed)}, "cannot read the folder: " + error.message());
  for (const auto& file : files)
    WriteFileWhole(place.folder / file.filename(), ReadFileBytes(file));
  return static_cast<int>(files.size());
}

}  // namespace suizo::corpus
