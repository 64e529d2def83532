#include "app/platform/kept_place.h"

#include <QEvent>

namespace suizo::platform {

KeptPlace::KeptPlace(QWidget& window, corpus::SettingsStore& store, std::u16string section,
                     std::function<bool()> skip)
    : QObject(&window),
      window_(window),
      store_(store),
      section_(std::move(section)),
      skip_(std::move(skip)) {
  window.installEventFilter(this);
}

bool KeptPlace::eventFilter(QObject* watched, QEvent* event) {
  const QEvent::Type type = event->type();
  if (watched != &window_ || (type != QEvent::Move && type != QEvent::Resize)) return false;
  if (!window_.isVisible() || window_.isMinimized() || window_.isMaximized() || (skip_ && skip_()))
    return false;
  const QRect g = window_.geometry();
  corpus::WriteGeometry(store_, section_, {g.x(), g.y(), g.width(), g.height()});
  return false;
}

}  // namespace suizo::platform
