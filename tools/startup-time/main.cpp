// The start as the program makes it, up to the contents window shown, then
// the run ends: suizo-startup-time DATA_DIR prints the milliseconds from the
// process's start to the window drawn.
#include <QApplication>
#include <QElapsedTimer>
#include <QTimer>
#include <cstdio>
#include <filesystem>

#include "app/corpus/program.h"
#include "app/platform/web_engine_setup.h"
#include "app/views/contents_form.h"
#include "core/corpus/settings.h"

int main(int argc, char** argv) {
  QElapsedTimer clock;
  clock.start();
  suizo::platform::PrepareWebEngine();
  QApplication app(argc, argv);
  suizo::platform::ChooseRenderer();
  if (argc != 2) {
    std::fprintf(stderr, "usage: suizo-startup-time DATA_DIR\n");
    return 2;
  }
  suizo::corpus::MemorySettings store;
  suizo::app::Program program(std::filesystem::path(argv[1]), store, u"" SUIZO_VERSION_U16);
  if (!program.Start()) return 2;
  // Drawn: the first turn of the event loop after the show has painted it.
  QTimer::singleShot(0, [&] {
    program.contents()->repaint();
    std::printf("%s start to the contents window shown: %lld ms\n",
                program.Converted() ? "converting" : "fast path", clock.elapsed());
    program.End();
  });
  return QApplication::exec();
}
