#include <cmath>
#include <optional>

#include "cli/commands.h"
#include "cli/selection_options.h"
#include "core/search/compilers.h"
#include "core/text/utf16.h"

namespace suizo::cli {
namespace {

using search::Method;
using search::SearchWindow;
using text::ToUtf8;

struct PatternOptions {
  int itaiji = 1;  // the setting's default
  Method method = Method::And;
  int split = 0;
  SearchWindow window = SearchWindow::Writings;
  std::optional<std::string> text;
};

std::optional<PatternOptions> Parse(const std::vector<std::string>& args, std::ostream& err) {
  PatternOptions o;
  const auto usage = [&](const std::string& why) {
    err << "suizo pattern: " << why << "\n"
        << "usage: suizo pattern [--itaiji 0|1] [--method and|or|not] [--split 1|2] "
           "[--window writings|sutra|sources] TEXT\n";
    return std::nullopt;
  };
  bool optionsEnd = false;
  for (std::size_t i = 0; i < args.size(); ++i) {
    const std::string& a = args[i];
    const bool hasValue = i + 1 < args.size();
    const bool option = !optionsEnd && a.size() > 1 && a.starts_with("--");
    if (!option) {
      if (o.text) return usage("one TEXT only; quote a text with blanks");
      o.text = a;
    } else if (a == "--") {
      optionsEnd = true;
    } else if (a == "--itaiji" && hasValue) {
      const auto v = FlagValue(args[++i]);
      if (!v) return usage("--itaiji is 0 or 1");
      o.itaiji = *v;
    } else if (a == "--method" && hasValue) {
      const auto v = MethodValue(args[++i]);
      if (!v) return usage("--method is and, or or not");
      o.method = *v;
    } else if (a == "--split" && hasValue) {
      const std::string v = args[++i];
      if (v != "1" && v != "2") return usage("--split is 1 or 2");
      o.split = v == "1" ? 1 : 2;
    } else if (a == "--window" && hasValue) {
      const auto v = WindowValue(args[++i]);
      if (!v) return usage("--window is writings, sutra or sources");
      o.window = *v;
    } else {
      return usage("unexpected argument \"" + a + "\"");
    }
  }
  if (!o.text) return usage("no TEXT");
  return o;
}

// t is a whole number or a half.
std::string CountText(double t) {
  const double whole = std::floor(t);
  std::string out = std::to_string(static_cast<long long>(whole));
  return t == whole ? out : out + ".5";
}

}  // namespace

int Pattern(const std::vector<std::string>& args, const Context& context) {
  const auto options = Parse(args, context.err);
  if (!options) return kFailed;
  const std::u16string text = text::FromUtf8(*options->text);
  if (options->split != 0) {
    const auto query =
        search::SplitQuery::Compile(text, options->split, options->window, options->itaiji);
    if (!query) {
      context.err << "suizo pattern: no character is left to search for\n";
      return kOk;
    }
    for (const auto& entry : query->Sw()) context.out << ToUtf8(entry) << "\n";
    context.out << "t=" << CountText(query->Required()) << "\n";
    return kOk;
  }
  const auto query = search::WordQuery::Compile(text, options->method, options->itaiji);
  if (!query) {
    context.err << "suizo pattern: no word to search for\n";
    return kOk;
  }
  context.out << ToUtf8(query->pattern()) << "\n";
  return kOk;
}

}  // namespace suizo::cli
