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
  // The first use fills the folder, under its lock; a folder already filled
  // is only read, also while the viewer holds it.
  corpus::MakeDataFolder(place);
  if (corpus::AwaitsSeed(place)) {
    const auto lock = HoldDataFolder(place.folder, command, context);
    if (!lock) return std::nullopt;
    corpus::SeedDataFolder(place);
  }
  const std::filesystem::path& dataPath = place.folder;
  if (!std::filesystem::is_directory(dataPath)) {
    context.err << "suizo " << command << ": no data folder at " << corpus::DisplayPath(dataPath)
                << "\n";
    return std::nullopt;
  }
  return dataPath;
}

std::optional<corpus::DataFolderLock> HoldDataFolder(const std::filesystem::path& folder,
                                                     const std::string& command,
                                                     const Context& context) {
  try {
    return corpus::DataFolderLock::Acquire(folder, "suizo " + command);
  } catch (const corpus::FolderBusyError& e) {
    context.err << "suizo " << command << ": the data folder " << corpus::DisplayPath(folder)
                << " is in use by " << e.holder().Text() << "\n";
    return std::nullopt;
  }
}

}  // namespace suizo::cli
