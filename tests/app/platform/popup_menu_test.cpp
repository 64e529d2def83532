// The pop-up menu: drawn as its state says, chosen by a click, gone at a
// press elsewhere, on the screen, and never taking the reader's activation.
#include <QApplication>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPointer>
#include <QRegularExpression>
#include <QScreen>
#include <QSignalSpy>
#include <QTest>

#include "app/platform/popup_menu.h"
#include "app_test.h"

using suizo::platform::PopupMenu;
using suizo::reader::MenuShow;
using suizo::reader::MenuTarget;

namespace {

constexpr int kSeparator = 5;

// A pane with a selection: the lookups and コピー can be chosen, the rest not.
const auto kPane = MenuShow(MenuTarget::Pane, u"南無妙法蓮華経", u"");

// The reader the menu serves, active with the keyboard in its box.
struct Owner {
  QWidget window;
  QLineEdit* box = new QLineEdit(&window);

  Owner() {
    window.setGeometry(100, 100, 500, 350);
    window.show();
    window.activateWindow();
    box->setFocus();
  }
  PopupMenu* Menu() {
    return PopupMenu::ShowAt(kPane, window.mapToGlobal(QPoint(250, 200)), &window);
  }
};

void Hover(QWidget* menu, QPoint pos) {
  QMouseEvent move(QEvent::MouseMove, pos, menu->mapToGlobal(pos), Qt::NoButton, Qt::NoButton,
                   Qt::NoModifier);
  QApplication::sendEvent(menu, &move);
}

// The darkest colour drawn in `area`: the text's own colour.
QColor Darkest(const QImage& image, QRect area) {
  QColor darkest = Qt::white;
  for (int y = area.top(); y <= area.bottom(); ++y) {
    for (int x = area.left(); x <= area.right(); ++x) {
      if (image.pixelColor(x, y).lightness() < darkest.lightness())
        darkest = image.pixelColor(x, y);
    }
  }
  return darkest;
}

}  // namespace

class PopupMenuTest : public QObject {
  Q_OBJECT

 private slots:
  void cleanup() {
    PopupMenu::CloseMenu();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  }

  void itemsAreDrawnAsTheStateSays() {
    // A box with only a clipboard: 貼り付け alone can be chosen.
    for (const auto& state : {kPane, MenuShow(MenuTarget::TextBox, u"", u"x")}) {
      PopupMenu menu(state);
      QCOMPARE(menu.objectName(), QStringLiteral("Menu1"));
      const QImage image = menu.grab().toImage();
      const QColor enabled = menu.palette().color(QPalette::Active, QPalette::WindowText);
      const QColor greyed = menu.palette().color(QPalette::Disabled, QPalette::WindowText);
      const int textHeight = QFontMetrics(menu.font()).height();
      for (int n = 1; n <= 8; ++n) {
        const QRect item = menu.ItemRect(n);
        QVERIFY(menu.rect().contains(item));
        QCOMPARE(menu.IsEnabled(n), state.MenuEnabled[static_cast<std::size_t>(n)] == 1);
        if (n > 1) {
          QCOMPARE(item.top(), menu.ItemRect(n - 1).bottom() + 1);
        }
        if (n != kSeparator) {
          QVERIFY(item.height() >= textHeight);
          QCOMPARE(Darkest(image, item), menu.IsEnabled(n) ? enabled : greyed);
        }
      }
      QVERIFY(menu.ItemRect(kSeparator).height() < textHeight);
    }
  }

  void theItemUnderTheMouseIsHighlighted() {
    PopupMenu menu(kPane);
    const auto litAt = [&menu](int n) {
      const QPoint corner = menu.ItemRect(n).topLeft() + QPoint(2, 2);
      return menu.grab().toImage().pixelColor(corner) == menu.palette().color(QPalette::Highlight);
    };
    Hover(&menu, menu.ItemRect(2).center());
    QCOMPARE(menu.Highlighted(), 2);
    QVERIFY(litAt(2) && !litAt(1));
    // Nothing that cannot be chosen lights up.
    for (const int n : {8, kSeparator}) {
      Hover(&menu, menu.ItemRect(n).center());
      QCOMPARE(menu.Highlighted(), 0);
      QVERIFY(!litAt(2));
    }
  }

  void aClickChoosesOnlyWhatCanBeChosen() {
    Owner owner;
    QVERIFY(QTest::qWaitForWindowActive(&owner.window));
    // 史料 can be chosen; 切り取り in a pane and the separator cannot.
    for (const int n : {4, 6, kSeparator}) {
      QPointer<PopupMenu> menu = owner.Menu();
      QSignalSpy choices(menu, &PopupMenu::chosen);
      QSignalSpy closes(menu, &PopupMenu::closed);
      QTest::mouseClick(menu, Qt::LeftButton, {}, menu->ItemRect(n).center());
      QCOMPARE(choices, n == 4 ? QList<QList<QVariant>>{{4}} : QList<QList<QVariant>>{});
      QCOMPARE(closes.size(), 1);
      QVERIFY(PopupMenu::Open() == nullptr);
      QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
      QVERIFY(menu.isNull());
    }
  }

  void aPressElsewhereClosesWithoutAChoice() {
    Owner owner;
    QVERIFY(QTest::qWaitForWindowActive(&owner.window));
    PopupMenu* menu = owner.Menu();
    QSignalSpy choices(menu, &PopupMenu::chosen);
    QSignalSpy closes(menu, &PopupMenu::closed);
    // A press on the menu itself is no press elsewhere, though the program
    // sees it first at the menu's window.
    const QPoint separator = menu->ItemRect(kSeparator).center();
    QTest::mousePress(menu->windowHandle(), Qt::LeftButton, {}, separator);
    QCOMPARE(closes.size(), 0);
    QTest::mouseRelease(menu->windowHandle(), Qt::LeftButton, {}, separator);
    menu = owner.Menu();
    QSignalSpy closesAgain(menu, &PopupMenu::closed);
    QTest::mouseClick(&owner.window, Qt::LeftButton, {}, QPoint(20, 20));
    QCOMPARE(closesAgain.size(), 1);
    QCOMPARE(choices.size(), 0);
    QVERIFY(PopupMenu::Open() == nullptr);
  }

  void itOpensAtTheCursorAndStaysOnTheScreen() {
    const QRect area = QGuiApplication::primaryScreen()->availableGeometry();
    QCOMPARE(PopupMenu::ShowAt(kPane, area.center())->geometry().topLeft(), area.center());
    // Near the bottom right corner it opens to the left of and above the cursor.
    const QPoint corner = area.bottomRight() - QPoint(5, 5);
    const QRect placed = PopupMenu::ShowAt(kPane, corner)->geometry();
    QVERIFY(area.contains(placed));
    QCOMPARE(placed.bottomRight(), corner);
  }

  void showingLeavesTheReaderActive() {
    Owner owner;
    QVERIFY(QTest::qWaitForWindowActive(&owner.window));
    PopupMenu* menu = owner.Menu();
    QVERIFY(QTest::qWaitForWindowExposed(menu));
    Hover(menu, menu->ItemRect(1).center());
    // Not even when asked: a click on it would ask the same of the platform.
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("requestActivate")));
    menu->activateWindow();
    QTest::qWait(50);
    QVERIFY(owner.window.isActiveWindow());
    QVERIFY(owner.box->hasFocus());
    QVERIFY(PopupMenu::Open() == menu);
  }

  void onlyOneMenuIsOpenAtATime() {
    Owner owner;
    QPointer<PopupMenu> first = owner.Menu();
    QSignalSpy firstCloses(first, &PopupMenu::closed);
    PopupMenu* second = owner.Menu();
    QCOMPARE(firstCloses.size(), 1);
    QVERIFY(PopupMenu::Open() == second);
    QVERIFY(PopupMenu::CloseMenu());
    QVERIFY(!PopupMenu::CloseMenu());
    // A menu that goes with its owner leaves none open behind.
    {
      QWidget gone;
      PopupMenu::ShowAt(kPane, QPoint(300, 300), &gone);
      QVERIFY(PopupMenu::Open() != nullptr);
    }
    QVERIFY(PopupMenu::Open() == nullptr);
  }
};

SUIZO_APP_TEST(PopupMenuTest);

#include "popup_menu_test.moc"
