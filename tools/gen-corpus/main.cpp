// gen-corpus: writes the twelve .dat exports of a corpus, with the class table
// and the corrections list the import reads beside them. Deterministic: the
// same scale gives the same bytes.
#include <cstring>
#include <iostream>
#include <string>

#include "modules.h"

namespace {

constexpr const char* kUsage =
    "usage: gen-corpus --scale sample|full [--part PERCENT] --out DIR\n"
    "  sample  the small corpus bundled with the program\n"
    "  full    every table near its capacity, for benchmarks and scale tests\n"
    "  --part  that percentage (1 to 100) of the writings, dictionary and sources\n";

}  // namespace

int main(int argc, char** argv) {
  using namespace suizo::gen;
  std::string scaleName;
  std::filesystem::path out;
  int percent = 100;
  for (int i = 1; i < argc; ++i) {
    const std::string arg = argv[i];
    if (arg == "--scale" && i + 1 < argc) {
      scaleName = argv[++i];
    } else if (arg == "--part" && i + 1 < argc) {
      const std::string value = argv[++i];
      percent = value.find_first_not_of("0123456789") == std::string::npos && !value.empty() &&
                        value.size() <= 3
                    ? std::stoi(value)
                    : 0;
      if (percent < 1 || percent > 100) {
        std::cerr << "gen-corpus: --part takes a percentage from 1 to 100, not \"" << value
                  << "\"\n";
        return 2;
      }
    } else if (arg == "--out" && i + 1 < argc) {
      out = argv[++i];
    } else if (arg == "--help" || arg == "-h") {
      std::cout << kUsage;
      return 0;
    } else {
      std::cerr << "gen-corpus: unexpected argument \"" << arg << "\"\n" << kUsage;
      return 2;
    }
  }
  if ((scaleName != "sample" && scaleName != "full") || out.empty()) {
    std::cerr << kUsage;
    return 2;
  }
  try {
    std::filesystem::create_directories(out);
    const Sizes sizes =
        PartOf(SizesOf(scaleName == "sample" ? Scale::Sample : Scale::Full), percent);
    Registry registry;
    WriteWritings(sizes, registry, out);
    WriteSources(sizes, registry, out);
    WriteSutra(sizes, registry, out);
    WriteChronology(sizes, registry, out);
    WriteDictionary(sizes, registry, out);
    WriteCorrections(registry, out);
  } catch (const std::exception& e) {
    std::cerr << "gen-corpus: " << e.what() << "\n";
    return 2;
  }
  return 0;
}
