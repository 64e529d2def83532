#include <optional>

#include "cli/commands.h"
#include "cli/selection_options.h"
#include "core/corpus/orders.h"
#include "core/corpus/settings.h"
#include "core/search/driver.h"
#include "core/text/numbers.h"
#include "core/text/utf16.h"

namespace suizo::cli {
namespace {

using search::Method;
using search::TextKind;
using text::ToUtf8;

struct SearchOptions {
  std::vector<std::string> folderArgs;
  SelectionOptions selection;
  search::SearchWindow window = search::SearchWindow::Writings;
  bool authentic = false;
  int pane = 0;
  Method method = Method::And;
  int div = 0;
  int autoDiv = 1;
  int itaiji = 1;
  std::optional<int> limitDoc;
  std::vector<std::string> refine;
  bool json = false;
  std::optional<std::string> text;
};

std::optional<int> SmallNumber(const std::string& v) {
  if (v.empty() || v.size() > 6 || v.find_first_not_of("0123456789") != std::string::npos)
    return std::nullopt;
  return std::stoi(v);
}

std::optional<SearchOptions> Parse(const std::vector<std::string>& args, std::ostream& err) {
  SearchOptions o;
  const auto usage = [&](const std::string& why) {
    err << "suizo search: " << why << "\n"
        << "usage: suizo search [--data DIR] [--window writings|sutra|sources] " << kSelectionUsage
        << " [--authentic] [--pane N] [--method and|or|not] [--div 1|2] [--auto-div 0|1] [--itaiji "
           "0|1]"
           " [--limit-doc MPOS] [--refine TEXT]... [--json] TEXT\n";
    return std::nullopt;
  };
  bool optionsEnd = false;
  for (std::size_t i = 0; i < args.size(); ++i) {
    const std::string& a = args[i];
    const bool hasValue = i + 1 < args.size();
    if (optionsEnd || !a.starts_with("--")) {
      if (o.text) return usage("one TEXT only; quote a text with blanks");
      o.text = a;
      continue;
    }
    bool matched = false;
    if (const auto why = ParseSelectionOption(args, i, o.selection, matched)) return usage(*why);
    if (matched) continue;
    if (a == "--") {
      optionsEnd = true;
    } else if (a == "--data" && hasValue) {
      o.folderArgs = {a, args[++i]};
    } else if (a == "--window" && hasValue) {
      const auto v = WindowValue(args[++i]);
      if (!v) return usage("--window is writings, sutra or sources");
      o.window = *v;
    } else if (a == "--authentic") {
      o.authentic = true;
    } else if (a == "--pane" && hasValue) {
      const auto n = SmallNumber(args[++i]);
      if (!n) return usage("--pane is a tab number");
      o.pane = *n;
    } else if (a == "--method" && hasValue) {
      const auto v = MethodValue(args[++i]);
      if (!v) return usage("--method is and, or or not");
      o.method = *v;
    } else if (a == "--div" && hasValue) {
      const std::string v = args[++i];
      if (v != "1" && v != "2") return usage("--div is 1 or 2");
      o.div = v == "1" ? 1 : 2;
    } else if ((a == "--auto-div" || a == "--itaiji") && hasValue) {
      const auto v = FlagValue(args[++i]);
      if (!v) return usage(a + " is 0 or 1");
      (a == "--auto-div" ? o.autoDiv : o.itaiji) = *v;
    } else if (a == "--limit-doc" && hasValue) {
      const auto n = SmallNumber(args[++i]);
      if (!n || *n == 0) return usage("--limit-doc is a position in the list, from 1");
      o.limitDoc = *n;
    } else if (a == "--refine" && hasValue) {
      o.refine.push_back(args[++i]);
    } else if (a == "--json") {
      o.json = true;
    } else {
      return usage("unexpected argument \"" + a + "\"");
    }
  }
  if (!o.text) return usage("no TEXT");
  const int tabs = o.window == search::SearchWindow::Writings ? 11 : 4;
  if (o.pane >= tabs) return usage("--pane of this window is 0 to " + std::to_string(tabs - 1));
  return o;
}

const char* KindName(search::SearchKind kind) {
  switch (kind) {
    case search::SearchKind::Word:
      return "word";
    case search::SearchKind::Split1:
      return "split1";
    case search::SearchKind::Split2:
      return "split2";
    case search::SearchKind::Page:
      return "page";
    case search::SearchKind::None:
      break;
  }
  return "none";
}

// Where the reader opens, and under --limit-doc the document it stays in:
// a work of the list, or for the sutra a row and its chapter.
std::optional<search::Position> StartPosition(const corpus::Corpus& store, const SearchOptions& o,
                                              std::ostream& err) {
  const corpus::Table& hok = store.table(corpus::TableId::Hok);
  if (o.window == search::SearchWindow::Sutra) {
    const int row = o.limitDoc.value_or(1);
    if (row > hok.rows()) {
      err << "suizo search: the sutra has " << hok.rows() << " rows\n";
      return std::nullopt;
    }
    return search::Position{0, row, std::u16string(hok.Get(row, corpus::hok::kChapter))};
  }
  const bool sources = o.window == search::SearchWindow::Sources;
  const int works = sources ? store.SMosMaxY : store.MosMaxY;
  if (!o.limitDoc) {
    const corpus::ReaderPlace place =
        sources ? corpus::FindSourceReaderPlace(store, u"") : corpus::FindReaderPlace(store, u"");
    return search::Position{place.Mpos, place.Lpos, {}};
  }
  if (*o.limitDoc > works) {
    err << "suizo search: the list holds " << works << " documents\n";
    return std::nullopt;
  }
  const search::LineOrder order =
      sources ? search::LineOrder::Sources(store) : search::LineOrder::Writings(store);
  return search::Position{*o.limitDoc, order.FirstLineOf(*o.limitDoc), {}};
}

}  // namespace

int Search(const std::vector<std::string>& args, const Context& context) {
  const auto options = Parse(args, context.err);
  if (!options) return kFailed;
  const auto folder = DataFolderArgument(options->folderArgs, "search", context);
  if (!folder) return kFailed;
  corpus::Corpus store(*folder);
  for (const int group : {0, 6}) store.ReadData(group);
  if (options->window == search::SearchWindow::Sutra) store.ReadData(2);
  corpus::Selection selection = ApplySelectionOptions(store, options->selection);
  selection.CSel[10] = options->authentic ? 1 : 0;

  corpus::Settings settings;
  settings.AutoDiv = options->autoDiv;
  settings.Itaiji = options->itaiji;
  const search::TextTable table = options->window == search::SearchWindow::Sutra
                                      ? search::TextTable::Sutra(store, selection)
                                  : options->window == search::SearchWindow::Sources
                                      ? search::TextTable::Sources(store, selection)
                                      : search::TextTable::Writings(store, selection);
  search::SearchEngine engine(table, settings);
  const auto start = StartPosition(store, *options, context.err);
  if (!start) return kFailed;
  engine.pos = *start;
  engine.Limit = options->limitDoc.has_value();
  engine.Tab = options->pane;

  for (const std::string& refine : options->refine) {
    engine.Combo1 = text::FromUtf8(refine);
    engine.Kensaku(0);
    if (!engine.Command14()) {
      context.err << "suizo search: \"" << refine << "\" finds nothing; it confines nothing\n";
    }
  }
  engine.Combo1 = text::FromUtf8(*options->text);
  engine.SrMethod = options->method;
  engine.DivMode = options->div;
  engine.Kensaku(0);

  const auto sysNo = [&](const search::Position& p) -> std::u16string {
    switch (table.kind()) {
      case TextKind::Writings:
        return std::u16string(table.Text(p.Lpos, corpus::dat::kSysNo));
      case TextKind::Sutra:
        return std::u16string(table.Text(p.Lpos, corpus::hok::kNumber));
      case TextKind::Sources:
        return std::u16string(table.Text(p.Lpos, corpus::sdat::kSysNo));
    }
    return {};
  };
  std::ostream& out = context.out;
  for (int i = 1; i <= engine.Srn; ++i) {
    const search::Position& p = engine.Hit(i);
    const std::u16string mpos = table.kind() == TextKind::Sutra ? p.chapter : text::IntText(p.Mpos);
    if (options->json) {
      out << "{\"hit\":" << i << ",\"Mpos\":"
          << (table.kind() == TextKind::Sutra ? text::JsonString(mpos) : ToUtf8(mpos))
          << ",\"Lpos\":" << p.Lpos << ",\"sysNo\":" << text::JsonString(sysNo(p)) << "}\n";
    } else {
      out << i << "\t" << ToUtf8(mpos) << "\t" << p.Lpos << "\t" << ToUtf8(sysNo(p)) << "\n";
    }
  }
  const char* kind = KindName(engine.LastKind());
  if (options->json) {
    out << "{\"count\":" << engine.Srn << ",\"kind\":\"" << kind << "\"}\n";
  } else {
    out << engine.Srn << " hits (" << kind << ")\n";
  }
  return kOk;
}

}  // namespace suizo::cli
