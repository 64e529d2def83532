// Where the corpus and the user's files live.
#pragma once

#include <filesystem>
#include <functional>
#include <optional>

namespace suizo::corpus {

// What the programs know when they look for the data folder.
struct DataSearch {
  std::optional<std::filesystem::path> commandLine;  // --data
  const char* environment = nullptr;                 // SUIZO_DATA
  std::filesystem::path programFolder;               // where the program's file is
  std::filesystem::path userFolder;                  // the user's own data folder
  // Whether files can be made in a folder; the system's answer by default.
  std::function<bool(const std::filesystem::path&)> writable;
};

struct DataPlace {
  std::filesystem::path folder;
  // What fills `folder` on its first use; empty when it is used as it is.
  std::filesystem::path seed;
};

// `DataPath`: a folder named on the command line wins, then SUIZO_DATA (when
// not empty), then "Data" beside the program while files can be made in it.
// An installed program's folder belongs to the system, so then the user's
// own folder serves, filled on first use from the program's read-only Data
// or, without one, from the sample installed with the program. Without
// either, "Data" beside the program stands, and the start says what it
// lacks.
DataPlace FindDataPlace(const DataSearch& search);

// The sample installed beside the program's folder
// (<prefix>/share/suizo-viewer/sample beside <prefix>/bin).
std::filesystem::path InstalledSample(const std::filesystem::path& programFolder);

// The user's own data folder by the desktop's rules: $XDG_DATA_HOME, else
// ~/.local/share, then 翠蔵Viewer/Data.
std::filesystem::path UserDataFolder(const char* xdgDataHome, const char* home);

// Makes the folder that a seed is to fill, so that the folder can be locked
// before anything is copied in; a folder without a seed is left as it is.
void MakeDataFolder(const DataPlace& place);

// Whether the folder waits for its first filling: it has a seed and holds
// neither a store (ver.dax) nor exports (.dat).
bool AwaitsSeed(const DataPlace& place);

// Fills a folder on its first use: when it holds neither a store (ver.dax)
// nor exports (.dat), every file of the seed is copied in, each whole.
// Returns how many were copied.
int SeedDataFolder(const DataPlace& place);

}  // namespace suizo::corpus
