#include "cli/selection_options.h"

#include <cstdio>
#include <iomanip>

#include "core/corpus/orders.h"
#include "core/text/utf16.h"

namespace suizo::cli {

std::optional<std::string> ParseSelectionOption(const std::vector<std::string>& args,
                                                std::size_t& i, SelectionOptions& o,
                                                bool& matched) {
  const std::string& a = args[i];
  matched = i + 1 < args.size() && (a == "--collection" || a == "--order" || a == "--classes");
  if (!matched) return std::nullopt;
  const std::string& value = args[++i];
  if (a == "--collection") {
    const std::u16string label = text::FromUtf8(value);
    for (const auto& c : corpus::kCollections) {
      if (label == c.label || label == c.caption) {
        o.gk = c.gk;
        return std::nullopt;
      }
    }
    return "no collection is called \"" + value + "\"";
  }
  if (a == "--order") {
    if (value != "page" && value != "date") return "the order is page or date";
    o.kn = value == "date" ? 1 : 0;
    return std::nullopt;
  }
  o.classes.fill(0);
  for (const char c : value) {
    if (c < '0' || c > '9') return "classes are the digits 0 to 9";
    o.classes[static_cast<std::size_t>(c - '0')] = 1;
  }
  return std::nullopt;
}

corpus::Selection ApplySelectionOptions(corpus::Corpus& store, const SelectionOptions& o) {
  corpus::Selection selection;
  corpus::InitialOrders(store, selection);
  selection.MokRedo = o.gk != selection.Gk ? 1 : 0;
  selection.Gk = o.gk;
  selection.Kn = o.kn;
  selection.CSel = o.classes;
  corpus::ApplySelection(store, selection);
  return selection;
}

std::optional<search::Method> MethodValue(std::string_view v) {
  if (v == "and") return search::Method::And;
  if (v == "or") return search::Method::Or;
  if (v == "not") return search::Method::Not;
  return std::nullopt;
}

std::optional<search::SearchWindow> WindowValue(std::string_view v) {
  if (v == "writings") return search::SearchWindow::Writings;
  if (v == "sutra") return search::SearchWindow::Sutra;
  if (v == "sources") return search::SearchWindow::Sources;
  return std::nullopt;
}

std::optional<int> FlagValue(std::string_view v) {
  if (v == "0" || v == "1") return v == "1" ? 1 : 0;
  return std::nullopt;
}

void PrintStoreName(std::ostream& out, const corpus::TableSchema& schema) {
  const std::string file = std::string(schema.stem) + ".dax";
  // Each kanji takes two columns on a terminal but three bytes in UTF-8.
  const std::size_t width = schema.stem.size() / 3 * 2 + 4;
  out << std::left << std::setw(7) << schema.name << file
      << std::string(width < 16 ? 16 - width : 1, ' ');
}

}  // namespace suizo::cli
