#include "app/platform/dialog_place.h"

#include <QCursor>
#include <QScreen>
#include <algorithm>

namespace suizo::platform {

void CentreOnOpener(QWidget& dialog, const QWidget* opener) {
  if (opener == nullptr) return;
  const QWidget* target = opener->findChild<QWidget*>(QStringLiteral("Picture3"));
  if (target == nullptr || !target->isVisible()) target = opener;
  const QPoint centre = target->mapToGlobal(target->rect().center());
  QRect place(QPoint(0, 0), dialog.frameGeometry().size());
  place.moveCenter(centre);
  if (const QScreen* screen = target->screen()) {
    const QRect area = screen->availableGeometry();
    place.moveLeft(
        std::clamp(place.left(), area.left(), std::max(area.left(), area.right() - place.width())));
    place.moveTop(
        std::clamp(place.top(), area.top(), std::max(area.top(), area.bottom() - place.height())));
  }
  dialog.move(place.topLeft());
}

void PointerOn(const QWidget& button) {
  QCursor::setPos(button.mapToGlobal(button.rect().center()));
}

}  // namespace suizo::platform
