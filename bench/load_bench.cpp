// Loading the store at start: the groups the program reads before its first
// window (0, 1, 2 and 6), against reading the same bytes into memory.
#include <benchmark/benchmark.h>
#include <unistd.h>

#include <filesystem>
#include <string>
#include <vector>

#include "core/corpus/corpus.h"
#include "core/corpus/file_io.h"
#include "synthetic_store.h"

namespace {

using suizo::corpus::Corpus;
using suizo::corpus::GroupTables;

constexpr int kStartGroups[] = {0, 1, 2, 6};

const std::filesystem::path& Store() {
  static const std::filesystem::path folder = [] {
    auto path =
        std::filesystem::temp_directory_path() / ("suizo-bench-" + std::to_string(::getpid()));
    std::filesystem::create_directories(path);
    suizo::bench::WriteSyntheticStore(path);
    return path;
  }();
  return folder;
}

std::vector<std::filesystem::path> StartFiles() {
  std::vector<std::filesystem::path> files;
  Corpus names(Store());
  for (const int group : kStartGroups) {
    for (const auto id : GroupTables(group)) files.push_back(names.FilePath(id, ".dax"));
  }
  return files;
}

std::int64_t Bytes(const std::vector<std::filesystem::path>& files) {
  std::int64_t total = 0;
  for (const auto& f : files) total += static_cast<std::int64_t>(std::filesystem::file_size(f));
  return total;
}

void BM_ReadBytesOfStartGroups(benchmark::State& state) {
  const auto files = StartFiles();
  for (auto _ : state) {
    for (const auto& f : files) {
      std::string bytes = suizo::corpus::ReadFileBytes(f);
      benchmark::DoNotOptimize(bytes.data());
    }
  }
  state.SetBytesProcessed(state.iterations() * Bytes(files));
}
BENCHMARK(BM_ReadBytesOfStartGroups)->Unit(benchmark::kMillisecond);

void BM_ReadDataStartGroups(benchmark::State& state) {
  const auto files = StartFiles();
  for (auto _ : state) {
    Corpus corpus(Store());
    for (const int group : kStartGroups) corpus.ReadData(group);
    benchmark::DoNotOptimize(corpus.Dat().rows());
  }
  state.SetBytesProcessed(state.iterations() * Bytes(files));
  state.counters["store_MB"] = static_cast<double>(Bytes(files)) / 1e6;
}
BENCHMARK(BM_ReadDataStartGroups)->Unit(benchmark::kMillisecond);

void BM_ReadDataChronology(benchmark::State& state) {
  Corpus names(Store());
  const auto file = names.FilePath(suizo::corpus::TableId::Nen, ".dax");
  for (auto _ : state) {
    Corpus corpus(Store());
    corpus.ReadData(3);
    benchmark::DoNotOptimize(corpus.Nen().rows());
  }
  state.SetBytesProcessed(state.iterations() *
                          static_cast<std::int64_t>(std::filesystem::file_size(file)));
}
BENCHMARK(BM_ReadDataChronology)->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  Store();
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  std::filesystem::remove_all(Store());
  return 0;
}
