#include <cstdlib>

#include "cli/commands.h"
#include "core/corpus/data_path.h"
#include "core/corpus/file_io.h"

namespace suizo::cli {

std::optional<std::filesystem::path> DataFolderArgument(const std::vector<std::string>& args,
                                                        const std::string& command,
                                                        const Context& context) {
  std::optional<std::filesystem::path> data;
  for (std::size_t i = 0; i < args.size(); ++i) {
    if (args[i] == "--data" && i + 1 < args.size()) {
      data = args[++i];
    } else {
      context.err << "suizo " << command << ": unexpected argument \"" << args[i] << "\"\n"
                  << "usage: suizo " << command << " [--data DIR]\n";
      return std::nullopt;
    }
  }
  const corpus::DataPlace place = corpus::FindDataPlace(
      {.commandLine = data,
       .environment = std::getenv("SUIZO_DATA"),
       .programFolder = context.programFolder,
       .userFolder = corpus::UserDataFolder(std::getenv("XDG_DATA_HOME"), std::getenv("HOME")),
       .writable = {}});
  corpus::SeedDataFolder(place);
  const std::filesystem::path& dataPath = place.folder;
  if (!std::filesystem::is_directory(dataPath)) {
    context.err << "suizo " << command << ": no data folder at " << corpus::DisplayPath(dataPath)
                << "\n";
    return std::nullopt;
  }
  return dataPath;
}

}  // namespace suizo::cli
