// The subcommands of the suizo tool. Each takes its own arguments and
// returns the exit status; faults in the data are thrown to main.
#pragma once

#include <filesystem>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

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

int Info(const std::vector<std::string>& args, const Context& context);
int Convert(const std::vector<std::string>& args, const Context& context);

}  // namespace suizo::cli
