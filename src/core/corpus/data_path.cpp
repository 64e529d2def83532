#include "core/corpus/data_path.h"

namespace suizo::corpus {

std::filesystem::path ResolveDataPath(const std::optional<std::filesystem::path>& commandLine,
                                      const char* environment,
                                      const std::filesystem::path& programFolder) {
  if (commandLine) return *commandLine;
  if (environment != nullptr && *environment != '\0') return environment;
  return programFolder / "Data";
}

}  // namespace suizo::corpus
