// What every window does at load and on resize: scale to the display, keep
// its proportions, take Japanese input only in the search box; and the
// program's single run.
#include <QApplication>
#include <QComboBox>
#include <QInputMethodQueryEvent>
#include <QLabel>
#include <QLineEdit>
#include <QTemporaryDir>
#include <QTest>
#include <QTextEdit>
#include <memory>

#include "app/platform/input_method.h"
#include "app/platform/proportional_resize.h"
#include "app/platform/single_instance.h"
#include "app/platform/web_engine_setup.h"
#include "app_test.h"

using namespace suizo::platform;

namespace {

struct Window {
  QWidget window;
  QLabel* label = nullptr;
  QComboBox* combo = nullptr;
  QWidget* panel = nullptr;
  QLabel* inner = nullptr;

  Window() {
    window.resize(400, 300);
    label = new QLabel(QStringLiteral("表"), &window);
    label->setObjectName(QStringLiteral("Label1"));
    label->setGeometry(40, 30, 100, 20);
    QFont font = label->font();
    font.setPointSizeF(10);
    label->setFont(font);
    combo = new QComboBox(&window);
    combo->setObjectName(QStringLiteral("Combo1"));
    combo->setEditable(true);
    combo->setGeometry(10, 10, 100, 24);
    panel = new QWidget(&window);
    panel->setObjectName(QStringLiteral("Pic1"));
    panel->setGeometry(200, 100, 160, 120);
    inner = new QLabel(panel);
    inner->setObjectName(QStringLiteral("Label3"));
    inner->setGeometry(20, 10, 80, 40);
  }
};

}  // namespace

class WindowSupportTest : public QObject {
  Q_OBJECT

 private slots:
  void controlsFollowTheWindowsProportions() {
    Window w;
    ProportionalResize resize(&w.window);
    // The label, the combo box, the panel and the label in it; not the
    // combo box's own line edit.
    QCOMPARE(resize.Records().size(), std::size_t{4});
    w.window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&w.window));
    w.window.resize(800, 450);
    QCOMPARE(resize.WidthRatio(), 2.0);
    QCOMPARE(resize.HeightRatio(), 1.5);
    QCOMPARE(w.label->geometry(), QRect(80, 45, 200, 30));
    QCOMPARE(w.label->font().pointSizeF(), 20.0);
    QCOMPARE(w.combo->geometry(), QRect(20, 15, 200, 24));  // keeps its height
    QCOMPARE(w.panel->geometry(), QRect(400, 150, 320, 180));
    QCOMPARE(w.inner->geometry(), QRect(40, 15, 160, 60));
    // From the design each time, so a way back ends where it began.
    w.window.resize(300, 150);
    w.window.resize(400, 300);
    QCOMPARE(w.label->geometry(), QRect(40, 30, 100, 20));
    QCOMPARE(w.label->font().pointSizeF(), 10.0);
    QCOMPARE(w.inner->geometry(), QRect(20, 10, 80, 40));
  }

  void loadScaleDividesByTheDisplayFactor() {
    Window w;
    ScaleToDisplay(&w.window, 1.25);
    QCOMPARE(w.window.size(), QSize(320, 240));
    QCOMPARE(w.label->geometry(), QRect(32, 24, 80, 16));
    QCOMPARE(w.combo->geometry(), QRect(8, 8, 80, 24));
    QCOMPARE(w.inner->geometry(), QRect(16, 8, 64, 32));
    ScaleToDisplay(&w.window, 0);  // no factor: nothing changes
    QCOMPARE(w.window.size(), QSize(320, 240));
    const double dpi = w.window.screen()->logicalDotsPerInchX();
    QCOMPARE(DisplayFactor(&w.window), dpi / 96);
  }

  void inputMethodOnlyInTheSearchBox() {
    Window w;
    auto* text = new QLineEdit(&w.window);
    text->setObjectName(QStringLiteral("Text1"));
    auto* edit = new QTextEdit(&w.window);
    edit->setObjectName(QStringLiteral("EditBox"));
    auto* unnamed = new QLineEdit(w.panel);
    InputMethodOnlyInCombo1(&w.window);
    QVERIFY(!w.window.testAttribute(Qt::WA_InputMethodEnabled));
    QVERIFY(!text->testAttribute(Qt::WA_InputMethodEnabled));
    QVERIFY(!edit->testAttribute(Qt::WA_InputMethodEnabled));
    QVERIFY(!unnamed->testAttribute(Qt::WA_InputMethodEnabled));
    QVERIFY(w.combo->testAttribute(Qt::WA_InputMethodEnabled));
    QVERIFY(w.combo->lineEdit()->testAttribute(Qt::WA_InputMethodEnabled));
    // What the input method asks of the widget with the focus.
    auto takesInput = [](QWidget* widget) {
      QInputMethodQueryEvent query(Qt::ImEnabled);
      QApplication::sendEvent(widget, &query);
      return query.value(Qt::ImEnabled).toBool();
    };
    QVERIFY(takesInput(w.combo->lineEdit()));
    QVERIFY(!takesInput(text));
    QVERIFY(!takesInput(edit));
  }

  void softwareRasterizersAreKnownByName() {
    for (const char* name :
         {"llvmpipe (LLVM 15.0.6, 256 bits)", "softpipe", "Mesa DRI Intel Software Rasterizer",
          "Gallium 0.4 on SWR", "Mesa swrast"}) {
      QVERIFY2(SoftwareRasterizer(name), name);
    }
    for (const char* name :
         {"Mesa Intel(R) UHD Graphics 620 (KBL GT2)", "NVIDIA GeForce RTX 3060/PCIe/SSE2",
          "AMD Radeon RX 6600 (navi23, LLVM 15.0.6, DRM 3.49)", ""}) {
      QVERIFY2(!SoftwareRasterizer(name), name);
    }
  }

  void secondRunSeesTheFirstsLock() {
    QTemporaryDir folder;
    QVERIFY(folder.isValid());
    const QString path = folder.filePath(QStringLiteral("翠蔵Viewer.lock"));
    auto first = std::make_unique<SingleInstance>(path);
    QVERIFY(first->IsFirst());
    {
      const SingleInstance second(path);
      QVERIFY(!second.IsFirst());
    }
    // The one that lost never took the lock from the first.
    QVERIFY(!SingleInstance(path).IsFirst());
    first.reset();
    QVERIFY(SingleInstance(path).IsFirst());
    QVERIFY(SingleInstance::DefaultLockPath().endsWith(QStringLiteral("翠蔵Viewer.lock")));
  }
};

SUIZO_APP_TEST(WindowSupportTest);

#include "window_support_test.moc"
