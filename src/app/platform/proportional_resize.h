// Windows keep their proportions: every control's design place, size and
// font size are recorded at load (`Class1`) and multiplied on each resize by
// the window's width and height against its size at that time.
#pragma once

#include <QObject>
#include <QPointer>
#include <QRect>
#include <QResizeEvent>
#include <QSize>
#include <vector>

class QWidget;

namespace suizo::platform {

// One control's design geometry and font size.
struct Class1 {
  QPointer<QWidget> control;
  QRect design;
  double FontSize = 0;  // points; 0 when the font is sized in pixels
  int pixelSize = 0;    // the pixel size of such a font
};

// The controls of a window: its named descendants, but not the parts Qt
// builds inside its own widgets (names beginning "qt_" or none).
std::vector<QWidget*> Controls(QWidget* window);

class ProportionalResize : public QObject {
  Q_OBJECT

 public:
  // Records the window's controls as they stand and follows its resizes.
  explicit ProportionalResize(QWidget* window);

  // Takes the present geometry as the design again.
  void Record();
  // Puts every control at its design geometry times the ratios; fonts
  // follow the width ratio; a combo box keeps its height.
  void Apply();

  double WidthRatio() const { return widthRatio_; }
  double HeightRatio() const { return heightRatio_; }
  const std::vector<Class1>& Records() const { return records_; }

 signals:
  // After the controls were placed for a new size.
  void resized(double widthRatio, double heightRatio);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  QWidget* window_;
  QSize designSize_;
  std::vector<Class1> records_;
  double widthRatio_ = 1, heightRatio_ = 1;
};

// The display factor of the load-time scale: (dpi / 96) / (15 / twips per
// pixel), with 15 twips a pixel, so the logical dpi over 96.
double DisplayFactor(const QWidget* window = nullptr);

// Divides the window's size and place and those of its controls by
// `factor`; a combo box keeps its height. A factor of 1 changes nothing.
void ScaleToDisplay(QWidget* window, double factor);

// A dialog that keeps its proportions while its width is dragged: the height
// follows `aspect` (height over width), never below what its layout needs.
// `fitting` guards against the resize this makes.
void FitHeightToWidth(QWidget& window, double aspect, const QResizeEvent& event, bool& fitting);

}  // namespace suizo::platform
