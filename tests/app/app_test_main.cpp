#include <QApplication>
#include <QTest>

#include "app/platform/web_engine_setup.h"
#include "app_test.h"

namespace suizo::apptest {

std::vector<Factory>& Suites() {
  static std::vector<Factory> suites;
  return suites;
}

}  // namespace suizo::apptest

int main(int argc, char** argv) {
  // On the virtual display the browser's GPU process fails now and then to
  // set up, and input then never reaches a page: draw in software alone.
  if (qEnvironmentVariableIsEmpty("QTWEBENGINE_CHROMIUM_FLAGS"))
    qputenv("QTWEBENGINE_CHROMIUM_FLAGS", "--disable-gpu");
  suizo::platform::PrepareWebEngine();
  QApplication app(argc, argv);
  suizo::platform::ChooseRenderer();
  int failed = 0;
  for (const auto& make : suizo::apptest::Suites()) {
    const std::unique_ptr<QObject> suite = make();
    failed += QTest::qExec(suite.get(), argc, argv);
  }
  return failed == 0 ? 0 : 1;
}
