// `Form0`: the window of the start. On the fast path it only shows the
// program's name; when the store must be built it shows a log that grows a
// "*" per step of the conversion.
#pragma once

#include <QLabel>
#include <QPlainTextEdit>
#include <QWidget>
#include <string_view>

namespace suizo::app {

class SplashWindow : public QWidget {
  Q_OBJECT

 public:
  explicit SplashWindow(std::u16string_view version, QWidget* parent = nullptr);

  // The log is shown: the store is being built.
  void ShowLog();
  bool LogShown() const { return log_->isVisible(); }
  // Appends text to the log and lets the screen catch up.
  void Append(std::u16string_view text);
  QString LogText() const { return log_->toPlainText(); }

 private:
  // In the middle of the screen, at its present size.
  void Centre();
  QLabel* picture_;
  QPlainTextEdit* log_;
};

}  // namespace suizo::app
