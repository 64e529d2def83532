// The dictionary's ranked lookup over the full-scale dictionary: a short
// kana selection, a long kanji selection that no entry is as long as, a
// selection of two words, and a search of the explanations. "first" times a
// lookup on a fresh object, whose entries' patterns are not yet compiled;
// the others reuse one object, as the window does.
#include <benchmark/benchmark.h>

#include "core/views/dictionary_lookup.h"
#include "full_corpus.h"

namespace {

using suizo::views::DicLookupResult;
using suizo::views::DictionaryLookup;

struct Query {
  const char16_t* box;
  int target;
  const char* name;
};

constexpr Query kQueries[] = {
    {u"かひ", 0, "kana_2"},      {u"しほ", 0, "kana_2_keep"},
    {u"法華経を", 0, "kanji_4"}, {u"衆生を救ひ給ふべし", 0, "mixed_9"},
    {u"法 経", 0, "two_words"},  {u"浄土", 1, "explanation"},
};

void Report(benchmark::State& state, const DicLookupResult& r, int entries) {
  state.SetLabel(kQueries[state.range(0)].name);
  state.counters["hits"] = r.Srn;
  state.counters["entries"] = entries;
}

void BM_KensakuDic(benchmark::State& state) {
  const suizo::corpus::Corpus& corpus = suizo::bench::ConvertedStore({1});
  const DictionaryLookup lookup(corpus, 1);
  const Query& q = kQueries[state.range(0)];
  DicLookupResult r = lookup.KensakuDic(q.box, q.target);  // the patterns it needs, compiled
  for (auto _ : state) {
    r = lookup.KensakuDic(q.box, q.target);
    benchmark::DoNotOptimize(r.SrnPos);
  }
  Report(state, r, corpus.DisMaxY);
}
BENCHMARK(BM_KensakuDic)->Unit(benchmark::kMillisecond)->DenseRange(0, 5);

void BM_KensakuDicFirst(benchmark::State& state) {
  const suizo::corpus::Corpus& corpus = suizo::bench::ConvertedStore({1});
  const Query& q = kQueries[state.range(0)];
  DicLookupResult r;
  for (auto _ : state) {
    const DictionaryLookup lookup(corpus, 1);
    r = lookup.KensakuDic(q.box, q.target);
    benchmark::DoNotOptimize(r.SrnPos);
  }
  Report(state, r, corpus.DisMaxY);
}
BENCHMARK(BM_KensakuDicFirst)->Unit(benchmark::kMillisecond)->DenseRange(0, 5);

}  // namespace

int main(int argc, char** argv) {
  return suizo::bench::RunBenchmarks(argc, argv);
}
