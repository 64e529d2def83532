// The outside database product (桐, versions 9 and 10) that a first run asks
// to export the corpus. Its detection, its messages and the command line are
// here; what the machine offers (its processes, its files, running a command)
// is handed in, so the decisions are tested without the product. This
// platform has no such product; the start then converts exports already in the
// data folder.
#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "core/corpus/startup.h"

namespace suizo::corpus {

inline constexpr std::u16string_view kProductRunningMessage =
    u"『桐』が起動中です。終了させてから再度実行してください。";
inline constexpr std::u16string_view kCorpusMissingMessage = u"翠蔵がインストールされていません";

// What the export asks of the machine.
struct MachineAccess {
  std::function<std::vector<std::string>()> processNames;
  std::function<bool(const std::filesystem::path&)> exists;
  std::function<void(const std::filesystem::path&, const std::string&)> writeFile;
  std::function<void(const std::string&)> runHidden;  // runs a command line and waits for it
  std::function<void(const std::filesystem::path&)> removeFile;
};

struct KiriInstall {
  int version = 0;  // 9 or 10; 0 when none is installed
  std::filesystem::path program;
};

// Where the product is looked for, in this order.
KiriInstall FindKiri(const std::function<bool(const std::filesystem::path&)>& exists);

// The command line that runs a command file in batch mode.
std::string KiriCommandLine(const KiriInstall& install, const std::filesystem::path& commandFile);

// The tables in the order of the export, as named in the product's folder.
const std::vector<std::u16string>& KiriExportNames();

class KiriDatabase : public OutsideDatabase {
 public:
  // `commandFiles` are the product's compiled command files for version 9
  // and 10: data of the product, handed in as they are.
  KiriDatabase(MachineAccess machine, std::string commandFile9, std::string commandFile10,
               std::filesystem::path corpusFolder = "C:/K3/Data/翠蔵");

  // Stops the start with the product's messages where they apply; false when
  // the product is not installed.
  bool ExportTo(const std::filesystem::path& dataPath) override;

 private:
  MachineAccess machine_;
  std::string commandFile9_, commandFile10_;
  std::filesystem::path corpus_;
};

}  // namespace suizo::corpus
