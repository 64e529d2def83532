#include <cstdlib>
#include <iomanip>
#include <optional>

#include "cli/commands.h"
#include "cli/selection_options.h"
#include "core/corpus/corpus.h"
#include "core/corpus/data_path.h"
#include "core/corpus/file_io.h"
#include "core/corpus/summary.h"
#include "core/text/utf16.h"

namespace suizo::cli {

using corpus::Schemas;
using text::ToUtf8;

int Info(const std::vector<std::string>& args, const Context& context) {
  const auto folder = DataFolderArgument(args, "info", context);
  if (!folder) return kFailed;
  const std::filesystem::path& dataPath = *folder;
  corpus::Corpus store(dataPath);
  const corpus::StoreSummary summary = corpus::LoadAndSummarize(store);

  std::ostream& out = context.out;
  out << "data folder: " << corpus::DisplayPath(dataPath) << "\n\n";
  out << "table  file            fields   rows\n";
  for (const auto& t : summary.tables) {
    const auto& schema = corpus::SchemaOf(t.id);
    PrintStoreName(out, schema);
    if (!t.present) {
      out << "(no file)\n";
      continue;
    }
    out << std::right << std::setw(6) << t.fields << std::setw(7) << t.rows << "\n";
  }
  out << "\norders of Dat (row 0):\n";
  for (const auto& order : summary.datOrders) {
    out << "  " << ToUtf8(order.label) << "  " << (order.count.empty() ? "-" : ToUtf8(order.count))
        << "\n";
  }
  out << "order of SDat (row 0): " << (summary.sdatOrder.empty() ? "-" : ToUtf8(summary.sdatOrder))
      << "\n";
  out << "dictionary entries kept: " << summary.dicEntries << "\n";
  return kOk;
}

}  // namespace suizo::cli
