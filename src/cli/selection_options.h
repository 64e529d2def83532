// What the reading commands share: the choice of collection, order and
// classes as the selection dialog would make it, the search options' values,
// JSON text and the columns of a table of stores.
#pragma once

#include <array>
#include <optional>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "core/corpus/corpus.h"
#include "core/corpus/selection.h"
#include "core/search/compilers.h"
#include "core/text/json.h"

namespace suizo::cli {

struct SelectionOptions {
  int gk = 0;
  int kn = 0;
  std::array<int, 11> classes = {1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 0};
};

// Reads "--collection LABEL", "--order page|date" or "--classes DIGITS" at
// args[i], moving i past its value. Nothing when args[i] is none of them; an
// error text when its value is wrong.
std::optional<std::string> ParseSelectionOption(const std::vector<std::string>& args,
                                                std::size_t& i, SelectionOptions& options,
                                                bool& matched);
inline constexpr std::string_view kSelectionUsage =
    "[--collection LABEL] [--order page|date] [--classes 0123456789]";

// The selection a start makes, then the change to `options`, as the
// selection dialog applies it; the writings' tables must be loaded.
corpus::Selection ApplySelectionOptions(corpus::Corpus& store, const SelectionOptions& options);

// The values of the search options: "and", "or", "not"; "writings",
// "sutra", "sources"; "0" and "1". Nothing for any other text.
std::optional<search::Method> MethodValue(std::string_view v);
std::optional<search::SearchWindow> WindowValue(std::string_view v);
std::optional<int> FlagValue(std::string_view v);

// A JSON string, quoted and escaped.
// A table's name and its store's file, padded to one column in a table of
// stores.
void PrintStoreName(std::ostream& out, const corpus::TableSchema& schema);

}  // namespace suizo::cli
