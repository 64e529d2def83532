// The writings reader's render on the full-scale store: a horizontal page
// with hits, and vertical pages: one as the default meter fills it, and two
// with columns so tall that lines are cheap in columns: with the translation
// (whose empty column between lines fills 28 columns first) and of the full
// 35 lines of main text alone.
#include <benchmark/benchmark.h>

#include "core/corpus/orders.h"
#include "core/corpus/settings.h"
#include "core/reader/writings_reader.h"
#include "full_corpus.h"

namespace {

using suizo::reader::WritingsReader;

// Columns so tall that every line takes a fraction of one: the page is
// bounded by its 35 lines, not by its 28 columns.
class TallColumnMeter : public suizo::reader::ColumnMeter {
 public:
  double Columns(std::u16string_view html, int heightPx) const override {
    return base_.Columns(html, heightPx) / 64;
  }

 private:
  suizo::reader::TextColumnMeter base_;
};

struct Reader {
  suizo::corpus::Selection selection;
  suizo::corpus::Settings settings;
  std::unique_ptr<WritingsReader> reader;

  Reader() {
    suizo::corpus::Corpus& corpus = suizo::bench::ConvertedStore({0, 6});
    suizo::corpus::InitialOrders(corpus, selection);
    reader = std::make_unique<WritingsReader>(corpus, selection, settings);
    // A search with hits, standing on its first hit.
    reader->engine().Combo1 = u"題目　功徳";
    reader->Combo1Enter();
  }
};

void BM_RenderHorizontalWithHits(benchmark::State& state) {
  Reader r;
  for (auto _ : state) {
    auto view = r.reader->Hyouji();
    benchmark::DoNotOptimize(view.panes[1].body.data());
  }
  state.counters["hits"] = r.reader->engine().Srn;
}
BENCHMARK(BM_RenderHorizontalWithHits)->Unit(benchmark::kMicrosecond);

void BM_RenderVertical(benchmark::State& state) {
  Reader r;
  if (state.range(0) > 0) {
    r.reader->SetColumnMeter(std::make_shared<TallColumnMeter>());
    // The longest work, from its first line: room for the whole block.
    const auto& corpus = suizo::bench::ConvertedStore({});
    const auto order = suizo::search::LineOrder::Writings(corpus);
    int longest = 1;
    const auto length = [&](int m) { return order.FirstLineOf(m + 1) - order.FirstLineOf(m); };
    for (int m = 2; m < corpus.MosMaxY; ++m) {
      if (length(m) > length(longest)) longest = m;
    }
    r.reader->GoToWork(longest);
    if (state.range(0) == 35) r.reader->TateOne = 1;
  }
  r.reader->TateInit();
  int lines = 0;
  for (auto _ : state) {
    auto view = r.reader->Hyouji();
    lines = view.BlockLines;
    benchmark::DoNotOptimize(view.panes[1].body.data());
  }
  state.counters["lines"] = lines;
  state.SetLabel(state.range(0) == 0    ? "default meter"
                 : state.range(0) == 35 ? "main text only"
                                        : "with translation");
}
BENCHMARK(BM_RenderVertical)->Unit(benchmark::kMicrosecond)->Arg(0)->Arg(24)->Arg(35);

}  // namespace

int main(int argc, char** argv) {
  return suizo::bench::RunBenchmarks(argc, argv);
}
