#include <optional>

#include "cli/commands.h"
#include "cli/selection_options.h"
#include "core/corpus/settings.h"
#include "core/text/utf16.h"
#include "core/views/record.h"

namespace suizo::cli {
namespace {

struct RecordOptions {
  std::vector<std::string> folderArgs;
  SelectionOptions selection;
  std::optional<int> mpos;
};

std::optional<RecordOptions> Parse(const std::vector<std::string>& args, std::ostream& err) {
  RecordOptions o;
  const auto usage = [&](const std::string& why) {
    err << "suizo record: " << why << "\n"
        << "usage: suizo record [--data DIR] [--collection LABEL] --mpos N\n";
    return std::nullopt;
  };
  for (std::size_t i = 0; i < args.size(); ++i) {
    const std::string& a = args[i];
    const bool hasValue = i + 1 < args.size();
    if (a == "--collection" && hasValue) {
      bool matched = false;
      if (const auto why = ParseSelectionOption(args, i, o.selection, matched)) return usage(*why);
    } else if (a == "--data" && hasValue) {
      o.folderArgs = {a, args[++i]};
    } else if (a == "--mpos" && hasValue) {
      const std::string& v = args[++i];
      if (v.empty() || v.size() > 6 || v.find_first_not_of("0123456789") != std::string::npos ||
          std::stoi(v) == 0) {
        return usage("--mpos is a place in the list, from 1");
      }
      o.mpos = std::stoi(v);
    } else {
      return usage("unexpected argument \"" + a + "\"");
    }
  }
  if (!o.mpos) return usage("no --mpos N");
  return o;
}

const char* Bool(bool b) {
  return b ? "true" : "false";
}

void Print(std::ostream& out, const views::RecordDisplay& v, int mpos) {
  const auto str = [](std::u16string_view t) { return text::JsonString(t); };
  out << "{\"caption\":" << str(v.caption) << ",\"Mpos\":" << mpos
      << ",\"Bangou\":" << str(v.Bangou) << ",\"Text1\":" << str(v.Text1)
      << ",\"Text2\":" << str(v.Text2) << ",\"Text3\":" << str(v.Text3)
      << ",\"Text4\":" << str(v.Text4) << ",\"Text5\":" << str(v.Text5)
      << ",\"Text6\":" << str(v.Text6) << ",\"Text7\":" << str(v.Text7)
      << ",\"Text8\":" << str(v.Text8) << ",\n\"Page\":{";
  for (std::size_t i = 0; i < v.pages.size(); ++i) {
    out << (i ? "," : "") << "\"" << v.pages[i].box << "\":" << str(v.pages[i].text);
  }
  out << "},\n\"PageTitle\":{";
  for (std::size_t i = 0; i < v.pages.size(); ++i) {
    out << (i ? "," : "") << "\"" << v.pages[i].title
        << "\":{\"caption\":" << str(v.pages[i].caption) << ",\"colour\":" << v.pages[i].titleColour
        << "}";
  }
  out << "},\"Clev\":[";
  for (std::size_t i = 0; i < v.Clev.size(); ++i) out << (i ? "," : "") << v.Clev[i];
  out << "],\n\"Sel\":" << v.selDown << ",\"Label3\":{\"text\":" << str(v.Label3Text)
      << ",\"colour\":" << v.Label3Colour << ",\"enabled\":" << Bool(v.Label3Enabled)
      << "},\"Command4\":" << Bool(v.Command4Enabled) << ",\"Command5\":" << Bool(v.Command5Enabled)
      << ",\"Command7\":" << Bool(v.Command7Enabled)
      << ",\"Text9\":" << (v.Text9Visible ? str(v.Text9) : "null") << ",\"zoom\":" << str(v.zoom)
      << ",\n\"panes\":[";
  for (int p = 1; p <= views::kRecordPanes; ++p) {
    const views::RecordPaneView& pane = v.panes[static_cast<std::size_t>(p)];
    out << (p > 1 ? ",\n" : "\n") << "{\"pane\":" << p
        << ",\"label\":" << str(views::kRecordPaneInfo[static_cast<std::size_t>(p)].label);
    if (pane.frame) out << ",\"frame\":" << str(*pane.frame);
    out << ",\"body\":" << str(pane.body) << "}";
  }
  out << "]}\n";
}

}  // namespace

// The document record of a listed document as the view shows it.
int Record(const std::vector<std::string>& args, const Context& context) {
  const auto options = Parse(args, context.err);
  if (!options) return kFailed;
  const auto folder = DataFolderArgument(options->folderArgs, "record", context);
  if (!folder) return kFailed;
  corpus::Corpus store(*folder);
  for (const int group : {0, 6}) store.ReadData(group);
  corpus::Selection selection = ApplySelectionOptions(store, options->selection);
  if (*options->mpos > store.MosMaxY) {
    context.err << "suizo record: --mpos is 1 to " << store.MosMaxY << " in this list\n";
    return kFailed;
  }
  const corpus::Settings settings;
  views::DocumentRecord record(store, selection, settings);
  record.Mpos = *options->mpos;
  Print(context.out, record.Hyouji(), record.Mpos);
  return kOk;
}

}  // namespace suizo::cli
