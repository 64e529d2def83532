#include "app/platform/proportional_resize.h"

#include <QComboBox>
#include <QEvent>
#include <QGuiApplication>
#include <QScreen>
#include <QWidget>
#include <algorithm>
#include <cmath>

namespace suizo::platform {

namespace {

int Scaled(int value, double ratio) {
  return static_cast<int>(std::lround(value * ratio));
}

bool IsCombo(const QWidget* control) {
  return qobject_cast<const QComboBox*>(control) != nullptr;
}

}  // namespace

std::vector<QWidget*> Controls(QWidget* window) {
  std::vector<QWidget*> controls;
  if (window == nullptr) return controls;
  for (QWidget* child : window->findChildren<QWidget*>()) {
    const QString name = child->objectName();
    if (name.isEmpty() || name.startsWith(QLatin1String("qt_")) || child->isWindow()) continue;
    controls.push_back(child);
  }
  return controls;
}

ProportionalResize::ProportionalResize(QWidget* window) : QObject(window), window_(window) {
  Record();
  if (window_ != nullptr) window_->installEventFilter(this);
}

void ProportionalResize::Record() {
  records_.clear();
  if (window_ == nullptr) return;
  designSize_ = window_->size();
  widthRatio_ = heightRatio_ = 1;
  for (QWidget* control : Controls(window_)) {
    const QFont& font = control->font();
    records_.push_back(Class1{control, control->geometry(), std::max(font.pointSizeF(), 0.0),
                              font.pointSizeF() > 0 ? 0 : font.pixelSize()});
  }
}

void ProportionalResize::Apply() {
  if (window_ == nullptr || designSize_.width() <= 0 || designSize_.height() <= 0) return;
  widthRatio_ = static_cast<double>(window_->width()) / designSize_.width();
  heightRatio_ = static_cast<double>(window_->height()) / designSize_.height();
  for (const Class1& record : records_) {
    QWidget* control = record.control.data();
    if (control == nullptr) continue;
    const QRect& d = record.design;
    const int height = IsCombo(control) ? d.height() : Scaled(d.height(), heightRatio_);
    control->setGeometry(Scaled(d.x(), widthRatio_), Scaled(d.y(), heightRatio_),
                         Scaled(d.width(), widthRatio_), height);
    QFont font = control->font();
    if (record.FontSize > 0)
      font.setPointSizeF(std::max(record.FontSize * widthRatio_, 1.0));
    else if (record.pixelSize > 0)
      font.setPixelSize(std::max(Scaled(record.pixelSize, widthRatio_), 1));
    control->setFont(font);
  }
  emit resized(widthRatio_, heightRatio_);
}

bool ProportionalResize::eventFilter(QObject* watched, QEvent* event) {
  if (watched == window_ && event->type() == QEvent::Resize) Apply();
  return false;
}

double DisplayFactor(const QWidget* window) {
  const QScreen* screen = window != nullptr ? window->screen() : QGuiApplication::primaryScreen();
  if (screen == nullptr) return 1;
  const double twipsPerPixel = 15;
  return (screen->logicalDotsPerInchX() / 96.0) / (15.0 / twipsPerPixel);
}

void ScaleToDisplay(QWidget* window, double factor) {
  if (window == nullptr || !(factor > 0) || std::abs(factor - 1) < 1e-9) return;
  const double by = 1 / factor;
  const QRect place = window->geometry();
  window->setGeometry(Scaled(place.x(), by), Scaled(place.y(), by), Scaled(place.width(), by),
                      Scaled(place.height(), by));
  for (QWidget* control : Controls(window)) {
    const QRect g = control->geometry();
    control->setGeometry(Scaled(g.x(), by), Scaled(g.y(), by), Scaled(g.width(), by),
                         IsCombo(control) ? g.height() : Scaled(g.height(), by));
  }
}

void FitHeightToWidth(QWidget& window, double aspect, const QResizeEvent& event, bool& fitting) {
  if (fitting || aspect <= 0 || event.oldSize().width() == event.size().width()) return;
  const int h = std::max(window.minimumSizeHint().height(),
                         static_cast<int>(std::lround(event.size().width() * aspect)));
  if (h == window.height()) return;
  fitting = true;
  window.resize(window.width(), h);
  fitting = false;
}

}  // namespace suizo::platform
