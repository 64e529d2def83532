#include <iomanip>

#include "cli/commands.h"
#include "cli/selection_options.h"
#include "core/corpus/corpus.h"
#include "core/corpus/orders.h"
#include "core/corpus/settings.h"
#include "core/text/numbers.h"
#include "core/text/utf16.h"
#include "core/views/contents.h"

namespace suizo::cli {
namespace {

using text::ToUtf8;

struct ContentsOptions {
  std::vector<std::string> folderArgs;
  SelectionOptions selection;
  bool sources = false;
  bool json = false;
  std::optional<std::string> search;  // the box text
  std::string target;                 // as given; checked once the list is known
};

struct Line {
  int position;
  int row;
  std::u16string sysNo, number, start, title;
};

void Print(std::ostream& out, const Line& l, bool json) {
  if (json) {
    out << "{\"position\":" << l.position << ",\"row\":" << l.row
        << ",\"sysNo\":" << text::JsonString(l.sysNo)
        << ",\"number\":" << text::JsonString(l.number)
        << ",\"start\":" << text::JsonString(l.start) << ",\"title\":" << text::JsonString(l.title)
        << "}\n";
    return;
  }
  out << std::setw(5) << l.position << std::setw(6) << l.row << "  " << ToUtf8(l.sysNo) << "  "
      << ToUtf8(l.number) << "  " << ToUtf8(l.start) << "  " << ToUtf8(l.title) << "\n";
}

std::optional<ContentsOptions> Parse(const std::vector<std::string>& args, std::ostream& err) {
  ContentsOptions o;
  const auto usage = [&](const std::string& why) {
    err << "suizo contents: " << why << "\n"
        << "usage: suizo contents [--data DIR] " << kSelectionUsage
        << " [--sources] [--search TEXT [--target title|recipient|author]] [--json]\n";
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
    } else if (a == "--sources") {
      o.sources = true;
    } else if (a == "--json") {
      o.json = true;
    } else if (a == "--search" && hasValue) {
      o.search = args[++i];
    } else if (a == "--target" && hasValue) {
      o.target = args[++i];
    } else {
      return usage("unexpected argument \"" + a + "\"");
    }
  }
  if (!o.target.empty() && !o.search) return usage("--target needs --search");
  // The second switch over the header: recipients in the writings, authors in the sources.
  const std::string second = o.sources ? "author" : "recipient";
  if (!o.target.empty() && o.target != "title" && o.target != second) {
    return usage("--target is title or " + second + (o.sources ? " with --sources" : ""));
  }
  return o;
}

}  // namespace

int Contents(const std::vector<std::string>& args, const Context& context) {
  const auto options = Parse(args, context.err);
  if (!options) return kFailed;
  const auto folder = DataFolderArgument(options->folderArgs, "contents", context);
  if (!folder) return kFailed;
  corpus::Corpus store(*folder);
  for (const int group : {0, 6}) store.ReadData(group);
  corpus::Selection selection = ApplySelectionOptions(store, options->selection);
  if (options->sources) {
    selection.SKn = selection.Kn;
    corpus::ApplySourceSelection(store, selection);
  }

  // The list as the window holds it; a search keeps only its hits.
  const corpus::Settings settings;
  views::Contents list(
      options->sources ? views::ContentsKind::Sources : views::ContentsKind::Writings, store,
      selection, settings);
  std::vector<int> kept;
  if (options->search) {
    list.SrTarget = options->target == "title" || options->target.empty() ? 0 : 1;
    list.Combo1 = text::FromUtf8(*options->search);
    list.Kensaku(0);
    for (int i = 1; i <= list.Srn(); ++i) kept.push_back(list.Hit(i).Mpos);
  } else {
    const int count = options->sources ? store.SMosMaxY : store.MosMaxY;
    for (int m = 1; m <= count; ++m) kept.push_back(m);
  }

  const views::ContentsGrid& grid = list.Grid();
  for (const int m : kept) {
    if (options->sources) {
      const int row = store.SMokOrder[static_cast<std::size_t>(m)];
      Print(context.out,
            {m, row, std::u16string(grid.TextMatrix(m, 0)), std::u16string(grid.TextMatrix(m, 1)),
             std::u16string(store.SMok().Get(row, corpus::smok::kDate)),
             std::u16string(store.SMok().Get(row, 4))},
            options->json);
    } else {
      Print(context.out,
            {m, store.MokOrder[static_cast<std::size_t>(m)], std::u16string(grid.TextMatrix(m, 0)),
             std::u16string(grid.TextMatrix(m, 1)), std::u16string(grid.TextMatrix(m, 2)),
             std::u16string(store.Mok().Get(store.MokOrder[static_cast<std::size_t>(m)],
                                            corpus::mok::kTitle))},
            options->json);
    }
  }
  if (options->json) return kOk;
  // The count line: the list against all documents, or the hits against the list.
  const int listed = options->sources ? store.SMosMaxY : store.MosMaxY;
  if (options->search) {
    context.out << list.Srn() << "/" << listed << " documents\n";
  } else if (!options->sources) {
    context.out << listed << "/" << store.MokAllY << " documents\n";
  } else {
    context.out << listed << "/" << store.SMok().rows() << " documents\n";
  }
  return kOk;
}

}  // namespace suizo::cli
