#include "app/corpus/splash_window.h"
#include "app/platform/plain_text.h"
#include "app/platform/qt_text.h"

#include <QApplication>
#include <QGuiApplication>
#include <QScreen>
#include <QVBoxLayout>

namespace suizo::app {

using platform::Q;

namespace {}  // namespace

SplashWindow::SplashWindow(std::u16string_view version, QWidget* parent)
    : QWidget(parent, Qt::SplashScreen | Qt::WindowStaysOnTopHint) {
  setObjectName("Form0");
  auto* layout = new QVBoxLayout(this);
  picture_ = platform::PlainLabel(QStringLiteral("翠蔵Viewer\n") + Q(version), this);
  picture_->setObjectName("Picture1");
  picture_->setAlignment(Qt::AlignCenter);
  picture_->setMinimumSize(282, 160);
  picture_->setStyleSheet("background:#0A7576; color:#FEF6EA; font-size:24px;");
  layout->addWidget(picture_);

  log_ = new QPlainTextEdit(this);
  log_->setObjectName("Text1");
  log_->setReadOnly(true);
  log_->setMinimumSize(420, 180);
  log_->setPlainText(QStringLiteral("■■■ 翠蔵Viewer") + Q(version) + QStringLiteral(" ■■■\n\n"));
  log_->hide();
  layout->addWidget(log_);
  Centre();
}

void SplashWindow::Centre() {
  adjustSize();
  if (const QScreen* screen = QGuiApplication::primaryScreen()) {
    move(screen->availableGeometry().center() - rect().center());
  }
}

void SplashWindow::ShowLog() {
  log_->show();
  Centre();
  QApplication::processEvents();
}

void SplashWindow::Append(std::u16string_view text) {
  log_->moveCursor(QTextCursor::End);
  log_->insertPlainText(Q(text));
  log_->moveCursor(QTextCursor::End);
  QApplication::processEvents();
}

}  // namespace suizo::app
