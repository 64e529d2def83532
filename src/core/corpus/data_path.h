// Where the corpus and the user's files live.
#pragma once

#include <filesystem>
#include <optional>

namespace suizo::corpus {

// `DataPath`: a folder named on the command line wins, then the environment
// variable SUIZO_DATA (its value as given, when not empty), then the folder
// "Data" beside the program.
std::filesystem::path ResolveDataPath(const std::optional<std::filesystem::path>& commandLine,
                                      const char* environment,
                                      const std::filesystem::path& programFolder);

}  // namespace suizo::corpus
