#include <unistd.h>

#include <cstdlib>
#include <iostream>
#include <optional>

#include "cli/commands.h"
#include "core/corpus/conversion.h"
#include "core/corpus/corpus.h"
#include "core/corpus/data_path.h"
#include "core/corpus/file_io.h"
#include "core/corpus/import.h"
#include "core/corpus/settings.h"
#include "core/text/utf16.h"

namespace suizo::cli {
namespace {

// About as many steps as the import takes: one per table, one per order of
// the writings, one per 2,000 events of the chronology.
constexpr int kExpectedSteps = 26;
constexpr int kBarWidth = 30;

class ProgressBar {
 public:
  explicit ProgressBar(std::ostream& out) : out_(out), live_(::isatty(STDERR_FILENO) != 0) {}

  void Step(corpus::TableId table) {
    ++steps_;
    const auto& schema = corpus::SchemaOf(table);
    if (!live_) {
      if (table != last_) out_ << "converted " << schema.stem << ".dat\n";
      last_ = table;
      return;
    }
    const int filled = std::min(kBarWidth, steps_ * kBarWidth / kExpectedSteps);
    out_ << "\r[" << std::string(static_cast<std::size_t>(filled), '#')
         << std::string(static_cast<std::size_t>(kBarWidth - filled), ' ') << "] " << schema.stem
         << "        " << std::flush;
  }

  void Done() {
    if (live_) out_ << "\n";
  }

 private:
  std::ostream& out_;
  bool live_;
  int steps_ = 0;
  std::optional<corpus::TableId> last_;
};

}  // namespace

int Convert(const std::vector<std::string>& args, const Context& context) {
  const auto folder = DataFolderArgument(args, "convert", context);
  if (!folder) return kFailed;
  const std::filesystem::path& dataPath = *folder;
  const auto lock = HoldDataFolder(dataPath, "convert", context);
  if (!lock) return kFailed;
  corpus::ImportOptions options = corpus::ImportOptionsFor(dataPath);
  // The variant setting shapes the dictionary's lookup keys.
  const corpus::FileSettings settings(corpus::FileSettings::DefaultPath());
  options.itaiji = corpus::ReadSettings(settings).Itaiji;
  ProgressBar bar(context.err);
  options.progress = [&](corpus::TableId table) { bar.Step(table); };
  options.message = [&](const std::u16string& m) {
    context.err << "\n" << text::ToUtf8(m) << "\n";
  };
  corpus::Corpus store(dataPath);
  // What a killed conversion left is finished first; a store already there
  // gives its notes to the new one.
  corpus::FinishInterruptedConversion(dataPath);
  corpus::RemoveLeftoverTemporaries(dataPath);
  const corpus::ConversionReport report = corpus::ConvertFolder(store, kVersion, options);
  bar.Done();
  if (report.notesCarried)
    context.err << "notes carried into the new store: " << report.notes << "\n";
  context.out << "converted " << corpus::DisplayPath(dataPath) << " (version "
              << text::ToUtf8(kVersion) << ")\n";
  return kOk;
}

}  // namespace suizo::cli
