#include <iomanip>

#include "cli/commands.h"
#include "core/corpus/corpus.h"
#include "core/corpus/orders.h"
#include "core/text/numbers.h"
#include "core/text/utf16.h"

namespace suizo::cli {
namespace {

using text::ToUtf8;

struct ContentsOptions {
  std::vector<std::string> folderArgs;
  std::optional<int> gk;
  int kn = 0;
  std::array<int, 11> classes = {1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 0};
  bool sources = false;
  bool json = false;
};

std::string Json(std::u16string_view text) {
  std::string out = "\"";
  for (const char c : ToUtf8(text)) {
    if (c == '"' || c == '\\') out += '\\';
    if (static_cast<unsigned char>(c) < 0x20) {
      char buffer[8];
      std::snprintf(buffer, sizeof buffer, "\\u%04x", c);
      out += buffer;
      continue;
    }
    out += c;
  }
  return out + "\"";
}

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
        << "usage: suizo contents [--data DIR] [--collection LABEL] [--order page|date] "
           "[--classes 0123456789] [--sources] [--json]\n";
    return std::nullopt;
  };
  for (std::size_t i = 0; i < args.size(); ++i) {
    const std::string& a = args[i];
    const bool hasValue = i + 1 < args.size();
    if (a == "--data" && hasValue) {
      o.folderArgs = {a, args[++i]};
    } else if (a == "--collection" && hasValue) {
      const std::u16string label = text::FromUtf8(args[++i]);
      for (const auto& c : corpus::kCollections) {
        if (label == c.label || label == c.caption) o.gk = c.gk;
      }
      if (!o.gk) return usage("no collection is called \"" + args[i] + "\"");
    } else if (a == "--order" && hasValue) {
      const std::string order = args[++i];
      if (order != "page" && order != "date") return usage("the order is page or date");
      o.kn = order == "date" ? 1 : 0;
    } else if (a == "--classes" && hasValue) {
      o.classes.fill(0);
      for (const char c : args[++i]) {
        if (c < '0' || c > '9') return usage("classes are the digits 0 to 9");
        o.classes[static_cast<std::size_t>(c - '0')] = 1;
      }
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
  // As a start does, then the change the scholar makes in the selection dialog.
  corpus::Selection selection;
  corpus::InitialOrders(store, selection);
  const int gk = options->gk.value_or(0);
  selection.MokRedo = gk != selection.Gk ? 1 : 0;
  selection.Gk = gk;
  selection.Kn = options->kn;
  selection.CSel = options->classes;
  corpus::ApplySelection(store, selection);

  if (options->sources) {
    selection.SKn = options->kn;
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
