#include "core/corpus/import.h"

#include "core/corpus/conversion.h"

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
  if (options.stage == nullptr) {
    StagedStore stage(corpus.dataPath());
    ImportOptions staged = options;
    staged.stage = &stage;
    ReadDataFirst(corpus, staged);
    stage.Commit(u"");
    return;
  }
  ImportWritings(corpus, options);
  ImportDictionary(corpus, options);
  ImportSutra(corpus, options);
  ImportSources(corpus, options);
  ImportChronology(corpus, options);
}

}  // namespace suizo::corpus
