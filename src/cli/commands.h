// The subcommands of the suizo tool. Each takes its own arguments and
// returns the exit status; faults in the data are thrown to main.
#pragma once

#include <filesystem>
#include <optional>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "core/corpus/data_path.h"
#include "core/corpus/folder_lock.h"

namespace suizo::cli {

struct Context {
  std::filesystem::path programFolder;
  std::ostream& out;
  std::ostream& err;
};

// Exit statuses.
inline constexpr int kOk = 0;
inline constexpr int kFailed = 2;  // bad arguments or bad data

// The program's version as the store records it.
inline constexpr std::u16string_view kVersion = u"" SUIZO_VERSION_U16;

// Where the data folder is: "--data DIR" when given, else as below.
corpus::DataPlace FindCommandDataPlace(const std::optional<std::filesystem::path>& data,
                                       const Context& context);

// The data folder a command works on: "--data DIR", else $SUIZO_DATA, else
// Data/ beside the program, or the user's own folder when the program is
// installed (filled on first use as the viewer fills it). Nothing when the
// arguments are wrong or the folder is not there; the reason has gone to the
// error stream.
std::optional<std::filesystem::path> DataFolderArgument(const std::vector<std::string>& args,
                                                        const std::string& command,
                                                        const Context& context);

// Holds the data folder while a command writes it, against the viewer and
// other commands. Nothing when another program holds it: who that is has gone
// to the error stream, and the command ends with kFailed. A folder where the
// lock file cannot be made is a CorpusError.
[[nodiscard]] std::optional<corpus::DataFolderLock> HoldDataFolder(
    const std::filesystem::path& folder, const std::string& command, const Context& context);

int Info(const std::vector<std::string>& args, const Context& context);
int Check(const std::vector<std::string>& args, const Context& context);
int Convert(const std::vector<std::string>& args, const Context& context);
int Contents(const std::vector<std::string>& args, const Context& context);
int Pattern(const std::vector<std::string>& args, const Context& context);
int Search(const std::vector<std::string>& args, const Context& context);
int Render(const std::vector<std::string>& args, const Context& context);
int Outline(const std::vector<std::string>& args, const Context& context);
int Record(const std::vector<std::string>& args, const Context& context);
int Nen(const std::vector<std::string>& args, const Context& context);
int Dict(const std::vector<std::string>& args, const Context& context);

}  // namespace suizo::cli
