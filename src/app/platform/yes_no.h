// The confirmation dialog, `Form10` (確認): the caller's question with the
// buttons "はい" (`Command2`) and "いいえ" (`Command1`). Enter answers with
// the button that has the focus, "はい" at first; Esc answers "いいえ".
#pragma once

#include <QDialog>
#include <QPoint>
#include <QString>

namespace suizo::platform {

class YesNoDialog : public QDialog {
  Q_OBJECT

 public:
  explicit YesNoDialog(const QString& question, QWidget* parent = nullptr);

  // Asks modally, centred on `over` (the screen when null): true for "はい".
  static bool Ask(QWidget* over, const QString& question);
  // The same with the dialog's top left corner at `topLeft` (`Fx`, `Fy`).
  static bool AskAt(QPoint topLeft, const QString& question, QWidget* parent = nullptr);

  // 1 after "はい", 0 after "いいえ" or Esc.
  int Answer() const { return answer_; }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  int answer_ = 0;
};

}  // namespace suizo::platform
