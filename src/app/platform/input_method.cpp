#include "app/platform/input_method.h"

#include <QEvent>
#include <QInputMethodQueryEvent>
#include <QWidget>

namespace suizo::platform {

namespace {

bool InsideCombo1(const QWidget* widget, const QWidget* window) {
  for (const QWidget* w = widget; w != nullptr && w != window; w = w->parentWidget())
    if (w->objectName() == QLatin1String("Combo1")) return true;
  return false;
}

// Text controls answer the input method's question themselves, whatever the
// attribute says; this one answers for them that they take no input.
class InputMethodCut : public QObject {
 public:
  using QObject::QObject;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::InputMethod) return true;
    if (event->type() != QEvent::InputMethodQuery || !watched->isWidgetType()) return false;
    auto* query = static_cast<QInputMethodQueryEvent*>(event);
    const auto* widget = static_cast<QWidget*>(watched);
    for (int bit = 0; bit < 32; ++bit) {
      const auto asked = static_cast<Qt::InputMethodQuery>(query->queries().toInt() & (1 << bit));
      if (asked == 0) continue;
      query->setValue(asked,
                      asked == Qt::ImEnabled ? QVariant(false) : widget->inputMethodQuery(asked));
    }
    query->accept();
    return true;
  }
};

}  // namespace

void InputMethodOnlyInCombo1(QWidget* window) {
  if (window == nullptr) return;
  auto* cut = new InputMethodCut(window);
  window->setAttribute(Qt::WA_InputMethodEnabled, false);
  window->installEventFilter(cut);
  for (QWidget* widget : window->findChildren<QWidget*>()) {
    if (InsideCombo1(widget, window)) {
      // The combo box passes input to its line edit; both must take it.
      if (widget->objectName() == QLatin1String("Combo1") || widget->focusPolicy() != Qt::NoFocus)
        widget->setAttribute(Qt::WA_InputMethodEnabled, true);
    } else {
      widget->setAttribute(Qt::WA_InputMethodEnabled, false);
      widget->installEventFilter(cut);
    }
  }
}

}  // namespace suizo::platform
