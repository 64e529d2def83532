#include "full_corpus.h"

#include <benchmark/benchmark.h>
#include <unistd.h>

#include "core/corpus/import.h"
#include "modules.h"

namespace suizo::bench {

const std::filesystem::path& FullCorpus() {
  static const std::filesystem::path folder = [] {
    auto path = std::filesystem::temp_directory_path() / ("suizo-bench-" + std::to_string(::getpid()));
    std::filesystem::create_directories(path);
    const auto sizes = gen::SizesOf(gen::Scale::Full);
    gen::Registry registry;
    gen::WriteWritings(sizes, registry, path);
    gen::WriteSources(sizes, registry, path);
    gen::WriteSutra(sizes, registry, path);
    gen::WriteChronology(sizes, registry, path);
    gen::WriteDictionary(sizes, registry, path);
    gen::WriteCorrections(registry, path);
    return path;
  }();
  return folder;
}

void RemoveFullCorpus() { std::filesystem::remove_all(FullCorpus()); }

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
