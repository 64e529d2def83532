#include <QTest>

#include "app/platform/keys.h"
#include "app_test.h"
#include "core/reader/reader_base.h"

namespace suizo::platform {

// The models answer the key codes of the desktop's events; a key that maps
// wrongly would reach a model as another key.
class KeysTest : public QObject {
  Q_OBJECT

 private slots:
  void codesAreTheModelsOwn() {
    namespace key = reader::key;
    QCOMPARE(KeyCode(Qt::Key_Return), key::kEnter);
    QCOMPARE(KeyCode(Qt::Key_Enter), key::kEnter);
    QCOMPARE(KeyCode(Qt::Key_Left), key::kLeft);
    QCOMPARE(KeyCode(Qt::Key_Down), key::kDown);
    QCOMPARE(KeyCode(Qt::Key_Space), key::kSpace);
    QCOMPARE(KeyCode(Qt::Key_F), key::kF);
    QCOMPARE(KeyCode(Qt::Key_X), key::kX);
    QCOMPARE(KeyCode(Qt::Key_F1), key::kF1);
    QCOMPARE(KeyCode(Qt::Key_F12), 123);
    QCOMPARE(KeyCode(Qt::Key_Tab), 0);
  }

  void shiftStateHasTheThreeBits() {
    namespace key = reader::key;
    QCOMPARE(ShiftState(Qt::NoModifier), 0);
    QCOMPARE(ShiftState(Qt::ControlModifier), key::kCtrl);
    QCOMPARE(ShiftState(Qt::ShiftModifier | Qt::AltModifier), key::kShift | key::kAlt);
  }
};

SUIZO_APP_TEST(KeysTest);

}  // namespace suizo::platform

#include "keys_test.moc"
