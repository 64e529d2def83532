// A program started on a data folder as the user starts it: a message it
// would show fails the test, and the toast "not found" stays silent.
#pragma once

#include <QApplication>
#include <QDialog>
#include <QTest>
#include <QTimer>
#include <filesystem>
#include <functional>
#include <memory>

#include "app/corpus/program.h"
#include "core/corpus/settings.h"

namespace suizo::apptest {

inline std::unique_ptr<app::Program> StartedProgram(const std::filesystem::path& data,
                                                    corpus::SettingsStore& store) {
  auto program = std::make_unique<app::Program>(data, store, u"0.1.0");
  program->showError = [](const QString& message) { QFAIL(qPrintable(message)); };
  program->toast = [](QWidget*) {};
  if (!program->Start()) return nullptr;
  return program;
}

// Runs `act` on the modal dialog that `open` brings up; fails when none came.
inline void WithDialog(const std::function<void()>& open,
                       const std::function<void(QDialog&)>& act) {
  bool acted = false;
  QTimer timer;
  timer.setInterval(20);
  QObject::connect(&timer, &QTimer::timeout, [&] {
    auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    if (dialog == nullptr || acted) return;
    acted = true;
    act(*dialog);
  });
  timer.start();
  open();
  QVERIFY(acted);
}

}  // namespace suizo::apptest
