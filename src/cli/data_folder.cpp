#include <cstdlib>

#include "cli/commands.h"
#include "core/corpus/conversion.h"
#include "core/corpus/data_path.h"
#include "core/corpus/file_io.h"

namespace suizo::cli {

corpus::DataPlace FindCommandDataPlace(const std::optional<std::filesystem::path>& data,
                                       const Context& context) {
  return corpus::FindDataPlace(
      {.commandLine = data,
       .environment = std::getenv("SUIZO_DATA"),
       .programFolder = context.programFolder,
       .userFolder = corpus::UserDataFolder(std::getenv("XDG_DATA_HOME"), std::getenv("HOME")),
       .writable = {}});
}

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
  const corpus::DataPlace place = FindCommandDataPlace(data, context);
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
  // What a killed conversion or write left is cleaned by whoever comes next,
  // when no one is writing; a conversion that is still putting its stores in
  // place is waited for rather than read half-way.
  if (corpus::HasConversionLeftovers(dataPath)) {
    if (const auto lock = corpus::DataFolderLock::TryAcquire(dataPath, "suizo " + command)) {
      corpus::FinishInterruptedConversion(dataPath);
      corpus::RemoveLeftoverTemporaries(dataPath);
    } else if (corpus::CommitUnderway(dataPath)) {
      context.err << "suizo " << command << ": the store in " << corpus::DisplayPath(dataPath)
                  << " is being replaced by a conversion; try again when it has finished\n";
      return std::nullopt;
    }
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
