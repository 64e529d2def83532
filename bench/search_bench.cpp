// Searches over the whole writings order of the full-scale store, pane 0,
// as the reader runs them: the word search with AND, OR and NOT, and the
// split search of ten characters.
#include <benchmark/benchmark.h>

#include "core/corpus/orders.h"
#include "core/corpus/settings.h"
#include "core/search/driver.h"
#include "full_corpus.h"

namespace {

using suizo::search::Method;
using suizo::search::SearchEngine;

struct Query {
  const char16_t* box;
  Method method;
  int divMode;
};

constexpr Query kQueries[] = {
    {u"題目　功徳", Method::And, 0},
    {u"浄土　弥陀　宝塔", Method::Or, 0},
    {u"候", Method::Not, 0},
    {u"読誦の功徳をよろこび", Method::And, 1},  // ten distinct characters
    {u"功徳莫大", Method::And, 1},
};
constexpr const char* kNames[] = {"and_2_words", "or_3_words", "not_1_word", "split_10_chars",
                                  "split_4_chars"};

void BM_SearchWritings(benchmark::State& state) {
  suizo::corpus::Corpus& corpus = suizo::bench::ConvertedStore({0, 6});
  suizo::corpus::Selection selection;
  suizo::corpus::InitialOrders(corpus, selection);
  suizo::corpus::Settings settings;
  settings.AutoDiv = 0;  // each query measures one kind of search
  SearchEngine engine(suizo::search::TextTable::Writings(corpus, selection), settings);
  const Query& q = kQueries[state.range(0)];
  for (auto _ : state) {
    engine.pos = {1, 1, {}};
    engine.Combo1 = q.box;
    engine.SrMethod = q.method;
    engine.DivMode = q.divMode;
    engine.Kensaku(0);
    benchmark::DoNotOptimize(engine.Srn);
  }
  state.SetLabel(kNames[state.range(0)]);
  state.counters["hits"] = engine.Srn;
  state.counters["lines"] = corpus.DasMaxY;
}
BENCHMARK(BM_SearchWritings)->Unit(benchmark::kMillisecond)->DenseRange(0, 4);

// The floor of a scan: every line walked with `Down` and its main texts read.
void BM_WalkWritings(benchmark::State& state) {
  suizo::corpus::Corpus& corpus = suizo::bench::ConvertedStore({0, 6});
  suizo::corpus::Selection selection;
  suizo::corpus::InitialOrders(corpus, selection);
  const auto table = suizo::search::TextTable::Writings(corpus, selection);
  std::size_t units = 0;
  for (auto _ : state) {
    suizo::search::Position p{1, 1, {}};
    table.ScanStart(p, false);
    units = 0;
    for (;;) {
      units += table.Text(p.Lpos, 8).size() + table.Text(p.Lpos, 9).size();
      const int before = p.Lpos;
      table.Down(p, false);
      if (p.Lpos == before) break;
    }
    benchmark::DoNotOptimize(units);
  }
  state.counters["units"] = static_cast<double>(units);
}
BENCHMARK(BM_WalkWritings)->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) {
  return suizo::bench::RunBenchmarks(argc, argv);
}
