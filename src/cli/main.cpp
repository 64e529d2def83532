// suizo: the command-line tool over the corpus store.
#include <unistd.h>

#include <iostream>
#include <string>
#include <vector>

#include "cli/commands.h"
#include "core/corpus/errors.h"

namespace {

constexpr const char* kUsage =
    "usage: suizo COMMAND [OPTIONS]\n"
    "\n"
    "commands:\n"
    "  convert [--data DIR]  convert the .dat exports into the store (.dax)\n"
    "  info [--data DIR]     load the store and print what each table holds\n"
    "  check [--data DIR] [--json]\n"
    "                        what the data folder holds and what the viewer will do with it:\n"
    "                        opens directly, converts, opens as it is after asking, or refused\n"
    "                        (exit status 1); reads only\n"
    "  contents [--data DIR] [--collection LABEL] [--order page|date] [--classes 0123456789]\n"
    "           [--sources] [--search TEXT [--target title|recipient|author]] [--json]\n"
    "                        the list a contents window shows: position, row, ｼｽﾃﾑNo., 番号,\n"
    "                        start page, title\n"
    "  pattern [--itaiji 0|1] [--method and|or|not] [--split 1|2]\n"
    "          [--window writings|sutra|sources] TEXT\n"
    "                        what a search compiles TEXT into: the word search's expression,\n"
    "                        or the split search's entries and required count t\n"
    "  search [--data DIR] [--window writings|sutra|sources] [--collection LABEL]\n"
    "         [--order page|date] [--classes DIGITS] [--authentic] [--pane N]\n"
    "         [--method and|or|not] [--div 1|2] [--auto-div 0|1] [--itaiji 0|1]\n"
    "         [--limit-doc MPOS] [--refine TEXT]... [--json] TEXT\n"
    "                        the hits a reader's search finds: hit, Mpos, Lpos, ｼｽﾃﾑNo.,\n"
    "                        then the count and the kind (word, split1, split2, page)\n"
    "  render [--data DIR] [--collection LABEL] [--lpos N | --sysno N] [--vertical]\n"
    "         [--search TEXT] [--pane N] [--keys KEY,KEY,...]\n"
    "                        what the writings reader shows there, as JSON: panes, boxes,\n"
    "                        caption; --keys replays keys first (Down,Ctrl+Up,Right,...)\n"
    "  outline [--data DIR] --hok ROW [--kamon]\n"
    "                        the sutra outline opened at a row: the selected group and the\n"
    "                        header text (the broad outline, or the fine one with --kamon)\n"
    "  record [--data DIR] [--collection LABEL] --mpos N\n"
    "                        the document record view of a listed document, as JSON\n"
    "  nen [--data DIR] [--fold] [--kinds DIGITS] [--search TEXT]\n"
    "                        the chronology's rows, folded by era or filtered\n"
    "  dict [--data DIR] [--collection LABEL] [--target headword|explanation] TEXT\n"
    "                        the dictionary's ranked lookup: the hits, the chosen one\n"
    "                        marked with *, then the entry shown\n"
    "\n"
    "The data folder is DIR, else $SUIZO_DATA, else Data/ beside the program; an installed\n"
    "program uses ~/.local/share/翠蔵Viewer/Data, filled with the sample on first use.\n";

std::filesystem::path ProgramFolder() {
  std::error_code ignored;
  const auto self = std::filesystem::read_symlink("/proc/self/exe", ignored);
  return self.empty() ? std::filesystem::current_path() : self.parent_path();
}

}  // namespace

int main(int argc, char** argv) {
  using namespace suizo::cli;
  std::vector<std::string> args(argv + 1, argv + argc);
  if (args.empty()) {
    std::cerr << kUsage;
    return kFailed;
  }
  const std::string command = args.front();
  args.erase(args.begin());
  if (command == "--help" || command == "-h" || command == "help") {
    std::cout << kUsage;
    return kOk;
  }
  if (command == "--version") {
    std::cout << "suizo " << SUIZO_VERSION << "\n";
    return kOk;
  }
  const Context context{ProgramFolder(), std::cout, std::cerr};
  try {
    if (command == "info") return Info(args, context);
    if (command == "check") return Check(args, context);
    if (command == "convert") return Convert(args, context);
    if (command == "contents") return Contents(args, context);
    if (command == "pattern") return Pattern(args, context);
    if (command == "search") return Search(args, context);
    if (command == "render") return Render(args, context);
    if (command == "outline") return Outline(args, context);
    if (command == "record") return Record(args, context);
    if (command == "nen") return Nen(args, context);
    if (command == "dict") return Dict(args, context);
  } catch (const suizo::corpus::CorpusError& e) {
    std::cerr << "suizo " << command << ": " << e.what() << "\n";
    return kFailed;
  } catch (const std::exception& e) {
    std::cerr << "suizo " << command << ": " << e.what() << "\n";
    return kFailed;
  }
  std::cerr << "suizo: unknown command \"" << command << "\"\n" << kUsage;
  return kFailed;
}
