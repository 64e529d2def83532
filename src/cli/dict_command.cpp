#include <iomanip>
#include <optional>

#include "cli/commands.h"
#include "cli/selection_options.h"
#include "core/corpus/orders.h"
#include "core/corpus/schema.h"
#include "core/corpus/settings.h"
#include "core/text/utf16.h"
#include "core/views/dictionary.h"

namespace suizo::cli {
namespace {

using text::ToUtf8;

struct DictOptions {
  std::vector<std::string> folderArgs;
  SelectionOptions selection;
  int target = 0;
  std::optional<std::string> word;
};

std::optional<DictOptions> Parse(const std::vector<std::string>& args, std::ostream& err) {
  DictOptions o;
  const auto usage = [&](const std::string& why) {
    err << "suizo dict: " << why << "\n"
        << "usage: suizo dict [--data DIR] " << kSelectionUsage
        << " [--target headword|explanation] TEXT\n";
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
    } else if (a == "--target" && hasValue) {
      const std::string& v = args[++i];
      if (v != "headword" && v != "explanation")
        return usage("--target is headword or explanation");
      o.target = v == "explanation" ? 1 : 0;
    } else if (a.starts_with("--") || o.word) {
      return usage("unexpected argument \"" + a + "\"");
    } else {
      o.word = a;
    }
  }
  if (!o.word) return usage("no TEXT to look up");
  return o;
}

}  // namespace

// The ranked lookup of a selection: the hits in their order, the chosen one
// marked, then the entry the window shows.
int Dict(const std::vector<std::string>& args, const Context& context) {
  const auto options = Parse(args, context.err);
  if (!options) return kFailed;
  const auto folder = DataFolderArgument(options->folderArgs, "dict", context);
  if (!folder) return kFailed;
  corpus::Corpus store(*folder);
  // The links read the writings and the sources, the sutra references its rows.
  for (const int group : {0, 1, 2, 4, 5, 6}) store.ReadData(group);
  const corpus::Selection selection = ApplySelectionOptions(store, options->selection);
  corpus::ApplySourceSelection(store, selection);
  const corpus::Settings settings;

  const views::DictionaryLookup lookup(store, settings.Itaiji);
  views::Dictionary dictionary(store, selection, settings, lookup);
  dictionary.SrTarget = options->target;
  dictionary.Combo1 = text::FromUtf8(*options->word);
  dictionary.Kensaku(0);

  const corpus::Table& dic = store.Dic();
  const auto row = [&](int dpos) { return store.DicOrder[static_cast<std::size_t>(dpos)]; };
  for (int h = 1; h <= dictionary.Srn; ++h) {
    const int dpos = dictionary.getSr(h);
    context.out << (h == dictionary.SrnPos ? "* " : "  ") << std::setw(3) << h << std::setw(7)
                << dpos << "  " << ToUtf8(dic.Get(row(dpos), corpus::dic::kHeadWord)) << "  "
                << ToUtf8(dic.Get(row(dpos), corpus::dic::kReading)) << "\n";
  }
  context.out << dictionary.Srn << " hits\n";
  if (dictionary.Srn == 0) return kOk;

  const views::DictionaryDisplay v = dictionary.Hyouji();
  context.out << "\nheadword: " << ToUtf8(v.Text4) << "\nreading: " << ToUtf8(v.Label1)
              << "\nclass: " << ToUtf8(v.Text3) << "\nrelated:";
  for (int i = 1; i <= views::kKanrenCount; ++i) {
    if (v.Kanren[static_cast<std::size_t>(i)].enabled)
      context.out << " " << ToUtf8(v.Kanren[static_cast<std::size_t>(i)].caption);
  }
  context.out << "\nexplanation: " << ToUtf8(v.body) << "\n";
  return kOk;
}

}  // namespace suizo::cli
