// The not-found toast, `Form11`: a small borderless window over the window
// that searched, blinking "** 見つかりません **" until it closes itself.
#pragma once

#include <QColor>
#include <QDialog>

class QLabel;
class QTimer;

namespace suizo::platform {

class Toast : public QDialog {
  Q_OBJECT

 public:
  static constexpr int kTickMs = 140;
  static constexpr int kTicks = 4;  // it closes at this tick

  explicit Toast(QWidget* over = nullptr);

  // Shows the toast centred on `over` (the screen when null), modally, and
  // returns once it has closed itself.
  static void Show(QWidget* over);

  int Ticks() const { return ticks_; }
  QColor LabelColour() const;

 signals:
  // Each tick, with the count so far and the label's colour after it.
  void ticked(int count, QColor colour);

 protected:
  void showEvent(QShowEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  // It takes no input, and no key closes it early.
  void keyPressEvent(QKeyEvent* event) override;
  void reject() override {}

 private:
  void Tick();
  void Paint(const QColor& colour);

  QWidget* over_;
  QLabel* label_;
  QTimer* timer_;
  int ticks_ = 0;
};

// Centres `window` on `over`, or on the screen when `over` is null, keeping
// it on the screen.
void CentreOn(QWidget* window, const QWidget* over);

}  // namespace suizo::platform
