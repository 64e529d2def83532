// The import of the full-scale corpus: every .dat read, converted and written
// as the store. Reports the time each table took, and compares the whole with
// the floor of the work, transcoding the same bytes from Shift-JIS.
#include <benchmark/benchmark.h>

#include <chrono>
#include <filesystem>
#include <map>

#include "core/corpus/file_io.h"
#include "core/corpus/import.h"
#include "core/corpus/orders.h"
#include "core/text/sjis.h"
#include "core/text/utf16.h"
#include "full_corpus.h"

namespace {

using Clock = std::chrono::steady_clock;
using suizo::bench::ExportBytes;
using suizo::bench::FullCorpus;
using suizo::corpus::Corpus;
using suizo::corpus::TableId;

void BM_ReadDataFirst(benchmark::State& state) {
  std::map<std::string, double> perTable;
  for (auto _ : state) {
    Corpus corpus(FullCorpus());
    auto options = suizo::corpus::ImportOptionsFor(FullCorpus());
    auto last = Clock::now();
    options.progress = [&](TableId id) {
      const auto now = Clock::now();
      perTable[std::string(suizo::corpus::SchemaOf(id).name)] +=
          std::chrono::duration<double, std::milli>(now - last).count();
      last = now;
    };
    suizo::corpus::ReadDataFirst(corpus, options);
    benchmark::DoNotOptimize(corpus.Dat().rows());
  }
  for (const auto& [table, ms] : perTable) {
    state.counters[table + "_ms"] = ms / static_cast<double>(state.iterations());
  }
  state.SetBytesProcessed(state.iterations() * ExportBytes());
}
BENCHMARK(BM_ReadDataFirst)->Unit(benchmark::kMillisecond)->Iterations(3);

// A change of collection on the full-scale store: the order read back and the
// documents placed, listed and sorted (`ConvDat2` and `ConvMok`).
void BM_PlaceDocuments(benchmark::State& state) {
  Corpus& corpus = suizo::bench::ConvertedStore({0});
  const int gk = static_cast<int>(state.range(0));
  suizo::corpus::Selection selection;
  suizo::corpus::InitialOrders(corpus, selection);
  for (auto _ : state) {
    selection.Gk = gk;
    selection.MokRedo = 1;
    suizo::corpus::ApplySelection(corpus, selection);
    benchmark::DoNotOptimize(corpus.MosMaxY);
  }
  state.SetLabel(suizo::text::ToUtf8(suizo::corpus::FindCollection(gk)->label));
  state.counters["documents"] = corpus.MosMaxY;
}
BENCHMARK(BM_PlaceDocuments)
    ->Unit(benchmark::kMillisecond)
    ->DenseRange(0, 0)
    ->DenseRange(22, 29)
    ->Arg(31)
    ->Arg(35);

// The floor: the same .dat bytes read and transcoded to UTF-16.
void BM_TranscodeExports(benchmark::State& state) {
  for (auto _ : state) {
    for (const auto& entry : std::filesystem::directory_iterator(FullCorpus())) {
      if (entry.path().extension() != ".dat") continue;
      const auto text = suizo::text::DecodeSjis(suizo::corpus::ReadFileBytes(entry.path()));
      benchmark::DoNotOptimize(text.data());
    }
  }
  state.SetBytesProcessed(state.iterations() * ExportBytes());
}
BENCHMARK(BM_TranscodeExports)->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) {
  return suizo::bench::RunBenchmarks(argc, argv);
}
