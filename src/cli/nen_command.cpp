#include "cli/commands.h"
#include "cli/selection_options.h"
#include "core/corpus/settings.h"
#include "core/text/utf16.h"
#include "core/views/chronology.h"

namespace suizo::cli {
namespace {

struct NenOptions {
  std::vector<std::string> folderArgs;
  SelectionOptions selection;
  bool fold = false;
  views::NenSelection kinds = views::kDefaultNenSel;
  std::optional<std::string> search;
};

std::optional<NenOptions> Parse(const std::vector<std::string>& args, std::ostream& err) {
  NenOptions o;
  const auto usage = [&](const std::string& why) {
    err << "suizo nen: " << why << "\n"
        << "usage: suizo nen [--data DIR] " << kSelectionUsage
        << " [--fold] [--kinds DIGITS] [--search TEXT]\n";
    return std::nullopt;
  };
  for (std::size_t i = 0; i < args.size(); ++i) {
    const std::string& a = args[i];
    const bool hasValue = i + 1 < args.size();
    bool matched = false;
    if (const auto why = ParseSelectionOption(args, i, o.selection, matched)) return usage(*why);
    if (matched) continue;
    if (a == "--data" && hasValue) {
      o.folderArgs = {a, args[++i]};
    } else if (a == "--fold") {
      o.fold = true;
    } else if (a == "--kinds" && hasValue) {
      o.kinds.fill(0);
      for (const char c : args[++i]) {
        if (c < '0' || c > '7') return usage("kinds are the digits 0 to 7");
        o.kinds[static_cast<std::size_t>(c - '0')] = 1;
      }
    } else if (a == "--search" && hasValue) {
      o.search = args[++i];
    } else {
      return usage("unexpected argument \"" + a + "\"");
    }
  }
  return o;
}

// A grid row on one line: its position, then the shown columns, a line
// break within a cell written as "\n".
void PrintRow(std::ostream& out, const views::ChronologyGrid& grid, int row) {
  out << row;
  for (int col = 0; col < views::kNenCols; ++col) {
    if (grid.ColWidth(col) == 0) continue;
    out << "\t" << text::ToUtf8(text::ReplaceAll(grid.TextMatrix(row, col), u"\n", u"\\n"));
  }
  out << "\n";
}

}  // namespace

int Nen(const std::vector<std::string>& args, const Context& context) {
  const auto options = Parse(args, context.err);
  if (!options) return kFailed;
  const auto folder = DataFolderArgument(options->folderArgs, "nen", context);
  if (!folder) return kFailed;
  corpus::Corpus store(*folder);
  for (const int group : {0, 6}) store.ReadData(group);
  const corpus::Selection selection = ApplySelectionOptions(store, options->selection);
  const corpus::Settings settings;

  views::Chronology nen(store, selection, settings);
  if (options->kinds != nen.NenSel) {
    nen.NenSel = options->kinds;
    nen.FilterChanged();
  }
  if (options->fold) nen.Command13();
  const views::ChronologyGrid& grid = nen.Grid();
  if (options->search) {
    nen.Combo1 = text::FromUtf8(*options->search);
    nen.Kensaku(0);
    for (int i = 1; i <= nen.Srn; ++i) PrintRow(context.out, grid, nen.getSr(i, 0));
    context.out << nen.Srn << " hits\n";
    return kOk;
  }
  for (int row = 1; row <= nen.NesMaxY(); ++row) PrintRow(context.out, grid, row);
  context.out << text::ToUtf8(nen.Label5Text()) << " rows\n";
  return kOk;
}

}  // namespace suizo::cli
