#include "core/corpus/import.h"

namespace suizo::corpus {

ImportOptions ImportOptionsFor(const std::filesystem::path& dataPath) {
  ImportOptions options;
  const auto corrections = dataPath / "corrections.tsv";
  if (std::filesystem::exists(corrections)) options.corrections = ReadCorrections(corrections);
  const auto classes = dataPath / "add.csv";
  if (std::filesystem::exists(classes)) options.classTable = classes;
  return options;
}

void ReadDataFirst(Corpus& corpus, const ImportOptions& options) {
  ImportWritings(corpus, options);
  ImportDictionary(corpus, options);
  ImportSutra(corpus, options);
  ImportSources(corpus, options);
  ImportChronology(corpus, options);
}

}  // namespace suizo::corpus
