#include "full_corpus.h"

#include <benchmark/benchmark.h>
#include <unistd.h>

#include "core/corpus/import.h"
#include "modules.h"

namespace suizo::bench {

void WriteCorpus(const std::filesystem::path& folder, int percent) {
  std::filesystem::create_directories(folder);
  const auto sizes = gen::PartOf(gen::SizesOf(gen::Scale::Full), percent);
  gen::Registry registry;
  gen::WriteWritings(sizes, registry, folder);
  gen::WriteSources(sizes, registry, folder);
  gen::WriteSutra(sizes, registry, folder);
  gen::WriteChronology(sizes, registry, folder);
  gen::WriteDictionary(sizes, registry, folder);
  gen::WriteCorrections(registry, folder);
}

const std::filesystem::path& FullCorpus() {
  static const std::filesystem::path folder = [] {
    auto path =
        std::filesystem::temp_directory_path() / ("suizo-bench-" + std::to_string(::getpid()));
    WriteCorpus(path, 100);
    return path;
  }();
  return folder;
}

void RemoveFullCorpus() {
  std::filesystem::remove_all(FullCorpus());
}

int RunBenchmarks(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  FullCorpus();
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  RemoveFullCorpus();
  return 0;
}

std::int64_t ExportBytes() {
  std::int64_t total = 0;
  for (const auto& entry : std::filesystem::directory_iterator(FullCorpus())) {
    if (entry.path().extension() == ".dat") total += static_cast<std::int64_t>(entry.file_size());
  }
  return total;
}

corpus::Corpus& ConvertedStore(std::initializer_list<int> groups) {
  static corpus::Corpus* store = [] {
    corpus::Corpus imported(FullCorpus());
    corpus::ReadDataFirst(imported, corpus::ImportOptionsFor(FullCorpus()));
    return new corpus::Corpus(FullCorpus());
  }();
  for (const int group : groups) store->ReadData(group);
  return *store;
}

}  // namespace suizo::bench
