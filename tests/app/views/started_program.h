// A program started on a data folder as the user starts it: a message it
// would show fails the test, and the toast "not found" stays silent.
#pragma once

#include <QTest>
#include <filesystem>
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

}  // namespace suizo::apptest
