#include <iomanip>

#include "cli/commands.h"
#include "cli/selection_options.h"
#include "core/corpus/corpus.h"
#include "core/corpus/orders.h"
#include "core/text/numbers.h"
#include "core/text/utf16.h"

namespace suizo::cli {
namespace {

using text::ToUtf8;

struct ContentsOptions {
  std::vector<std::string> folderArgs;
  SelectionOptions selection;
  bool sources = false;
  bool json = false;
};

struct Line {
  int position;
  int row;
  std::u16string sysNo, number, start, title;
};

void Print(std::ostream& out, const Line& l, bool json) {
  if (json) {
    out << "{\"position\":" << l.position << ",\"row\":" << l.row << ",\"sysNo\":" << Json(l.sysNo)
        << ",\"number\":" << Json(l.number) << ",\"start\":" << Json(l.start)
        << ",\"title\":" << Json(l.title) << "}\n";
    return;
  }
  out << std::setw(5) << l.position << std::setw(6) << l.row << "  " << ToUtf8(l.sysNo) << "  "
      << ToUtf8(l.number) << "  " << ToUtf8(l.start) << "  " << ToUtf8(l.title) << "\n";
}

std::optional<ContentsOptions> Parse(const std::vector<std::string>& args, std::ostream& err) {
  ContentsOptions o;
  const auto usage = [&](const std::string& why) {
    err << "suizo contents: " << why << "\n"
        << "usage: suizo contents [--data DIR] " << kSelectionUsage << " [--sources] [--json]\n";
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
    } else {
      return usage("unexpected argument \"" + a + "\"");
    }
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
  const int gk = selection.Gk;

  if (options->sources) {
    selection.SKn = selection.Kn;
    corpus::ApplySourceSelection(store, selection);
    const corpus::Table& smok = store.SMok();
    for (int m = 1; m <= store.SMosMaxY; ++m) {
      const int row = store.SMokOrder[static_cast<std::size_t>(m)];
      Print(context.out,
            {m, row, std::u16string(smok.Get(row, corpus::smok::kSysNo)),
             std::u16string(smok.Get(row, corpus::smok::kNumber)),
             std::u16string(smok.Get(row, corpus::smok::kDate)), std::u16string(smok.Get(row, 4))},
            options->json);
    }
    return kOk;
  }
  const corpus::Table& mok = store.Mok();
  const int start = corpus::FindCollection(gk)->mokStartField;
  for (int m = 1; m <= store.MosMaxY; ++m) {
    const int row = store.MokOrder[static_cast<std::size_t>(m)];
    Print(context.out,
          {m, row, std::u16string(mok.Get(row, corpus::mok::kSysNo)),
           std::u16string(mok.Get(row, corpus::mok::kBangou)),
           gk == 0 ? std::u16string() : text::Format(mok.Get(row, start), text::kShortPageFormat),
           std::u16string(mok.Get(row, corpus::mok::kTitle))},
          options->json);
  }
  if (!options->json) context.out << store.MosMaxY << "/" << store.MokAllY << " documents\n";
  return kOk;
}

}  // namespace suizo::cli
