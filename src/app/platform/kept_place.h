// A window keeps its place: each move and resize of the shown, normal
// window is written to its settings section, so that the next run opens it
// there. `skip`, when set, holds the writing back (the run is ending).
#pragma once

#include <QObject>
#include <QWidget>
#include <functional>
#include <string>

#include "core/corpus/settings.h"

namespace suizo::platform {

class KeptPlace : public QObject {
 public:
  KeptPlace(QWidget& window, corpus::SettingsStore& store, std::u16string section,
            std::function<bool()> skip = {});

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  QWidget& window_;
  corpus::SettingsStore& store_;
  std::u16string section_;
  std::function<bool()> skip_;
};

}  // namespace suizo::platform
