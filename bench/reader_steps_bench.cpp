// Key steps through vertical pages in the reader window on the full-scale
// corpus: each is timed from the key to both panes holding the new page and
// laid out. Run headless: xvfb-run -a build/release/bench/reader_steps_bench
#include <benchmark/benchmark.h>
#include <QApplication>
#include <QElapsedTimer>
#include <QKeyEvent>
#include <cstdio>

#include "app/corpus/program.h"
#include "app/platform/web_engine_setup.h"
#include "app/views/writings_form.h"
#include "core/corpus/settings.h"
#include "full_corpus.h"

namespace {

suizo::app::WritingsForm* reader = nullptr;

// Until both text panes have run what was sent before this call: a layout
// read forces the new body to be laid out.
void WaitForPanes(suizo::app::WritingsForm& form) {
  int pending = 2;
  for (const int pane : {1, 2}) {
    form.Pane(pane)->RunScript(QStringLiteral("document.body?document.body.offsetWidth:0"),
                               [&pending](const QVariant&) { --pending; });
  }
  while (pending > 0) QApplication::processEvents(QEventLoop::WaitForMoreEvents, 5);
}

void Step(suizo::app::WritingsForm& form, int key) {
  QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier);
  QApplication::sendEvent(&form, &press);
  QKeyEvent release(QEvent::KeyRelease, key, Qt::NoModifier);
  QApplication::sendEvent(&form, &release);
  WaitForPanes(form);
}

void BM_VerticalPageStep(benchmark::State& state) {
  suizo::app::WritingsForm& form = *reader;
  form.reader().GoToWork(1);
  form.window().Hyouji();
  WaitForPanes(form);
  int lines = 0;
  for (auto _ : state) {
    const int before = form.reader().Lpos();
    QElapsedTimer timer;
    timer.start();
    Step(form, Qt::Key_Down);
    state.SetIterationTime(static_cast<double>(timer.nsecsElapsed()) * 1e-9);
    lines += form.reader().Lpos() - before;
  }
  state.counters["lines_per_step"] = benchmark::Counter(lines, benchmark::Counter::kAvgIterations);
}
BENCHMARK(BM_VerticalPageStep)->UseManualTime()->Iterations(200)->Unit(benchmark::kMillisecond);

// The floor under a step: the same wait with nothing new to show.
void BM_PaneRoundTrip(benchmark::State& state) {
  for (auto _ : state) {
    QElapsedTimer timer;
    timer.start();
    WaitForPanes(*reader);
    state.SetIterationTime(static_cast<double>(timer.nsecsElapsed()) * 1e-9);
  }
}
BENCHMARK(BM_PaneRoundTrip)->UseManualTime()->Iterations(200)->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) {
  suizo::platform::PrepareWebEngine();
  QApplication app(argc, argv);
  suizo::platform::ChooseRenderer();
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  suizo::corpus::MemorySettings store;
  int status = 1;
  {
    suizo::app::Program program(suizo::bench::FullCorpus(), store, u"0.1.0");
    program.showError = [](const QString& message) {
      std::fprintf(stderr, "%s\n", qPrintable(message));
    };
    if (program.Start()) {
      const auto jump = program.navigator().GoHonbun(u"", 1, 0, suizo::search::Method::And, 1,
                                                     suizo::reader::kWritingsFamily);
      for (QWidget* w : QApplication::topLevelWidgets()) {
        auto* form = qobject_cast<suizo::app::WritingsForm*>(w);
        if (form != nullptr && &form->window() == jump.window) reader = form;
      }
      if (reader != nullptr) {
        reader->setFocus();
        benchmark::RunSpecifiedBenchmarks();
        status = 0;
      }
      program.End();
    }
  }
  benchmark::Shutdown();
  suizo::bench::RemoveFullCorpus();
  return status;
}
