#include "app/platform/toast.h"

#include <QGuiApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QLinearGradient>
#include <QPainter>
#include <QScreen>
#include <QTimer>
#include <QVBoxLayout>
#include <algorithm>

#include "app/platform/grid.h"
#include "app/platform/plain_text.h"

namespace suizo::platform {

namespace {

constexpr std::uint32_t kYellow = 65535;  // 0xBBGGRR

}  // namespace

void CentreOn(QWidget* window, const QWidget* over) {
  window->adjustSize();
  const QScreen* screen = over != nullptr ? over->screen() : QGuiApplication::primaryScreen();
  const QRect area = screen != nullptr ? screen->availableGeometry() : QRect();
  const QRect around = over != nullptr && over->isVisible() ? over->frameGeometry() : area;
  QRect place(QPoint(), window->frameGeometry().size());
  place.moveCenter(around.center());
  if (!area.isEmpty()) {
    place.moveRight(std::min(place.right(), area.right()));
    place.moveBottom(std::min(place.bottom(), area.bottom()));
    place.moveLeft(std::max(place.left(), area.left()));
    place.moveTop(std::max(place.top(), area.top()));
  }
  window->move(place.topLeft());
}

Toast::Toast(QWidget* over) : QDialog(over, Qt::Dialog | Qt::FramelessWindowHint), over_(over) {
  setObjectName(QStringLiteral("Form11"));
  setModal(true);
  setFocusPolicy(Qt::NoFocus);
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(6, 6, 6, 6);
  label_ = PlainLabel(QStringLiteral("** 見つかりません **"), this);
  label_->setObjectName(QStringLiteral("Com"));
  label_->setAlignment(Qt::AlignCenter);
  label_->setAutoFillBackground(true);
  label_->setMinimumSize(220, 44);
  QFont big = label_->font();
  big.setPointSizeF(big.pointSizeF() * 1.2);
  big.setBold(true);
  label_->setFont(big);
  layout->addWidget(label_);
  Paint(palette().color(QPalette::Button));

  timer_ = new QTimer(this);
  timer_->setObjectName(QStringLiteral("Timer1"));
  timer_->setTimerType(Qt::PreciseTimer);
  timer_->setInterval(kTickMs);
  connect(timer_, &QTimer::timeout, this, &Toast::Tick);
}

void Toast::Show(QWidget* over) {
  Toast toast(over);
  toast.exec();
}

QColor Toast::LabelColour() const {
  return label_->palette().color(QPalette::Window);
}

void Toast::Paint(const QColor& colour) {
  QPalette colours = label_->palette();
  colours.setColor(QPalette::Window, colour);
  label_->setPalette(colours);
}

void Toast::showEvent(QShowEvent* event) {
  QDialog::showEvent(event);
  CentreOn(this, over_);
  ticks_ = 0;
  timer_->start();
}

void Toast::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  QLinearGradient fade(rect().topLeft(), rect().bottomLeft());
  fade.setColorAt(0, palette().color(QPalette::Light));
  fade.setColorAt(1, palette().color(QPalette::Mid));
  painter.fillRect(rect(), fade);
}

void Toast::keyPressEvent(QKeyEvent* event) {
  event->accept();
}

void Toast::Tick() {
  ++ticks_;
  const QColor face = palette().color(QPalette::Button);
  Paint(ticks_ % 2 == 1 ? FromBgr(kYellow) : face);
  emit ticked(ticks_, LabelColour());
  if (ticks_ >= kTicks) {
    timer_->stop();
    done(QDialog::Accepted);
  }
}

}  // namespace suizo::platform
