#include <optional>

#include "cli/commands.h"
#include "core/corpus/corpus.h"
#include "core/scripture/outline.h"
#include "core/text/utf16.h"

namespace suizo::cli {
namespace {

struct OutlineOptions {
  std::vector<std::string> folderArgs;
  std::optional<int> hok;
  bool kamon = false;
};

std::optional<OutlineOptions> Parse(const std::vector<std::string>& args, std::ostream& err) {
  OutlineOptions o;
  const auto usage = [&](const std::string& why) {
    err << "suizo outline: " << why << "\n"
        << "usage: suizo outline [--data DIR] --hok ROW [--kamon]\n";
    return std::nullopt;
  };
  for (std::size_t i = 0; i < args.size(); ++i) {
    const std::string& a = args[i];
    const bool hasValue = i + 1 < args.size();
    if (a == "--data" && hasValue) {
      o.folderArgs = {a, args[++i]};
    } else if (a == "--hok" && hasValue) {
      const std::string& v = args[++i];
      if (v.empty() || v.size() > 6 || v.find_first_not_of("0123456789") != std::string::npos ||
          std::stoi(v) == 0) {
        return usage("--hok is a row of the sutra, from 1");
      }
      o.hok = std::stoi(v);
    } else if (a == "--kamon") {
      o.kamon = true;
    } else {
      return usage("unexpected argument \"" + a + "\"");
    }
  }
  if (!o.hok) return usage("no --hok ROW");
  return o;
}

}  // namespace

// The outline as the sutra reader opens it at a row: the selected group, one
// line a row with the columns that hold text, then the header cell.
int Outline(const std::vector<std::string>& args, const Context& context) {
  const auto options = Parse(args, context.err);
  if (!options) return kFailed;
  const auto folder = DataFolderArgument(options->folderArgs, "outline", context);
  if (!folder) return kFailed;
  corpus::Corpus store(*folder);
  store.ReadData(2);
  const int hokRows = store.table(corpus::TableId::Hok).rows();
  if (*options->hok > hokRows) {
    context.err << "suizo outline: the sutra has " << hokRows << " rows\n";
    return kFailed;
  }

  scripture::Outline form(store);
  form.SKflag = options->kamon ? scripture::kKamonGrid : scripture::kSoukaGrid;
  form.HKno = *options->hok;
  form.InitSub();

  const scripture::OutlineGrid& grid = form.Grid(form.ShownGrid());
  std::ostream& out = context.out;
  for (int r = grid.groupFirst; r <= grid.groupLast; ++r) {
    out << r;
    for (const int c : {0, 2, 4, 6, 8}) out << "\t" << text::ToUtf8(grid.TextMatrix(r, c));
    out << "\n";
  }
  out << "header\t" << text::ToUtf8(grid.Header()) << "\n";
  return kOk;
}

}  // namespace suizo::cli
