#include <QApplication>
#include <QCheckBox>
#include <QEnterEvent>
#include <QLabel>
#include <QMouseEvent>
#include <QPushButton>
#include <QTableWidget>
#include <QTest>
#include <QVBoxLayout>
#include <cmath>
#include <cstdlib>
#include <memory>

#include "app/corpus/settings_dialog_window.h"
#include "app/views/balloon_help_qt.h"
#include "app_test.h"

namespace suizo::apptest {

using app::BalloonHelpQt;

namespace {

QString Core(std::u16string_view form, std::u16string_view control) {
  return QString::fromStdU16String(views::BalloonText(form, control).value_or(u"(none)"));
}

void Hover(QWidget* control) {
  const QPointF centre = QRectF(control->rect()).center();
  QEnterEvent enter(centre, centre, control->mapToGlobal(centre));
  QApplication::sendEvent(control, &enter);
}

void Leave(QWidget* control) {
  QEvent leave(QEvent::Leave);
  QApplication::sendEvent(control, &leave);
}

void Move(QWidget* area) {
  const QPointF centre = QRectF(area->rect()).center();
  QMouseEvent move(QEvent::MouseMove, centre, area->mapToGlobal(centre), Qt::NoButton, Qt::NoButton,
                   Qt::NoModifier);
  QApplication::sendEvent(area, &move);
}

// A window of some form with a few of its controls, as any view builds them.
std::unique_ptr<QWidget> MakeForm(const QString& form, const QStringList& controls) {
  auto window = std::make_unique<QWidget>();
  window->setObjectName(form);
  auto* layout = new QVBoxLayout(window.get());
  for (const QString& name : controls) {
    QWidget* w = name == QStringLiteral("Grid") ? static_cast<QWidget*>(new QTableWidget(3, 3))
                                                : new QPushButton(name);
    w->setObjectName(name);
    layout->addWidget(w);
  }
  window->resize(400, 500);
  window->show();
  if (!QTest::qWaitForWindowExposed(window.get())) qWarning("not exposed");
  return window;
}

template <class W = QWidget>
W* Control(QWidget* form, const char* name) {
  W* w = form->findChild<W*>(QString::fromLatin1(name));
  if (w == nullptr) qFatal("no control %s", name);
  return w;
}

}  // namespace

class BalloonHelpTest : public QObject {
  Q_OBJECT

 private slots:
  void controlArraysGoByTheirObjectNames() {
    QCOMPARE(app::ControlObjectName(u"Check2(10)"), QStringLiteral("Check2_10"));
    QCOMPARE(app::ControlObjectName(u"Command1"), QStringLiteral("Command1"));
    corpus::Settings settings;
    auto form = MakeForm(
        QStringLiteral("Form3"),
        {QStringLiteral("Frame2"), QStringLiteral("Check2_10"), QStringLiteral("Check2_3")});
    BalloonHelpQt help(form.get(), settings);
    help.Load();
    QCOMPARE(help.TextOf(Control(form.get(), "Check2_10")), Core(u"Form3", u"Check2(10)"));
    QCOMPARE(help.TextOf(Control(form.get(), "Frame2")), Core(u"Form3", u"Frame2"));
    QVERIFY(help.TextOf(Control(form.get(), "Check2_3")).isEmpty());
    // Controls the window lacks are passed over.
    QCOMPARE(help.model().ToolTip()->ToolCount(), 2);
  }

  void aBalloonShowsOverItsControlAndGoesWithTheMouse() {
    corpus::Settings settings;
    corpus::MemorySettings store;
    app::SettingsDialogWindow dialog(settings, store, u"1.0.0");
    dialog.show();
    QVERIFY(QTest::qWaitForWindowExposed(&dialog));
    BalloonHelpQt* help = dialog.balloons();
    QVERIFY(help->Showing());
    QCOMPARE(help->TextOf(Control(&dialog, "Check1")), Core(u"Form13", u"Check1"));
    QCOMPARE(help->TextOf(Control(&dialog, "Combo1")), Core(u"Form13", u"Combo1"));
    QVERIFY(help->TextOf(Control(&dialog, "Command3")).isEmpty());

    auto* check3 = Control(&dialog, "Check3");
    Hover(check3);
    QTRY_VERIFY(help->VisibleBalloon() != nullptr);
    QCOMPARE(help->ShownText(), Core(u"Form13", u"Check3"));
    QWidget* balloon = help->VisibleBalloon();
    QVERIFY(balloon->width() <= 800);
    QVERIFY(balloon->geometry().top() >= check3->mapToGlobal(QPoint(0, check3->height())).y() - 1);
    Leave(check3);
    QVERIFY(help->VisibleBalloon() == nullptr);
    // A combo inside the frame shows the frame's balloon.
    Hover(Control(&dialog, "Combo5"));
    QCOMPARE(help->Pending(), Control(&dialog, "Frame1"));
    QTRY_COMPARE(help->ShownText(), Core(u"Form13", u"Frame1"));
    // The balloon is a window of its own: it goes when the dialog goes.
    dialog.reject();
    QVERIFY(help->VisibleBalloon() == nullptr);
  }

  void theFontSizeSettingOnlyAddsToTheDesktops() {
    corpus::MemorySettings store;
    auto shownSize = [&](int btFont) {
      corpus::Settings settings;
      settings.BTFont = btFont;
      app::SettingsDialogWindow dialog(settings, store, u"1.0.0");
      dialog.show();
      if (!QTest::qWaitForWindowExposed(&dialog)) return -1;
      Hover(Control(&dialog, "Check1"));
      if (!QTest::qWaitFor([&] { return dialog.balloons()->VisibleBalloon() != nullptr; }))
        return -1;
      return dialog.balloons()->VisibleBalloon()->font().pixelSize();
    };
    const int plain = shownSize(0);
    const int larger = shownSize(3);
    QVERIFY(plain > 0);
    const long added = std::lround(3 * QWidget().logicalDpiY() / 72.0);
    QVERIFY2(std::abs(larger - plain - added) <= 1,
             qPrintable(QStringLiteral("%1 then %2").arg(plain).arg(larger)));
  }

  void helperOffMakesNone() {
    corpus::Settings settings;
    settings.Helper = 0;
    auto form =
        MakeForm(QStringLiteral("Form9"), {QStringLiteral("Label5"), QStringLiteral("Picture1")});
    BalloonHelpQt help(form.get(), settings);
    help.Load();
    QVERIFY(!help.Showing());
    QVERIFY(help.TextOf(Control(form.get(), "Label5")).isEmpty());
    Move(Control(form.get(), "Picture1"));
    QVERIFY(!help.Showing());
    Hover(Control(form.get(), "Label5"));
    QTest::qWait(100);
    QVERIFY(help.VisibleBalloon() == nullptr);
  }

  void aKeyTakesThemAwayUntilTheMouseMovesOverThePictureOrTheGrid() {
    corpus::Settings settings;
    auto form =
        MakeForm(QStringLiteral("Form9"), {QStringLiteral("Label5"), QStringLiteral("Command11"),
                                           QStringLiteral("Picture1"), QStringLiteral("Grid")});
    BalloonHelpQt help(form.get(), settings);
    help.Load();
    auto* label5 = Control(form.get(), "Label5");
    Hover(label5);
    QTRY_VERIFY(help.VisibleBalloon() != nullptr);

    QTest::keyClick(Control(form.get(), "Command11"), Qt::Key_A);
    QVERIFY(!help.Showing());
    QVERIFY(help.VisibleBalloon() == nullptr);
    QVERIFY(help.TextOf(label5).isEmpty());
    // Other controls do not bring them back.
    Move(label5);
    Hover(label5);
    QTest::qWait(50);
    QVERIFY(!help.Showing());
    QVERIFY(help.VisibleBalloon() == nullptr);

    Move(Control(form.get(), "Picture1"));
    QVERIFY(help.Showing());
    QCOMPARE(help.TextOf(label5), Core(u"Form9", u"Label5"));

    QTest::keyClick(label5, Qt::Key_Space);
    QVERIFY(!help.Showing());
    Move(Control<QTableWidget>(form.get(), "Grid")->viewport());
    QVERIFY(help.Showing());
  }

  void confirmedSettingsReachEveryOpenWindow() {
    corpus::Settings settings;
    corpus::MemorySettings store;
    auto form = MakeForm(QStringLiteral("Form9"), {QStringLiteral("Label5")});
    auto* help = new BalloonHelpQt(form.get(), settings);
    help->Load();

    auto confirm = [&](bool helper) {
      app::SettingsDialogWindow dialog(settings, store, u"1.0.0");
      dialog.show();
      Control<QCheckBox>(&dialog, "Check3")->setChecked(helper);
      QTest::mouseClick(Control(&dialog, "Command3"), Qt::LeftButton);
    };
    confirm(false);
    QVERIFY(!help->Showing());
    QVERIFY(help->TextOf(Control(form.get(), "Label5")).isEmpty());
    confirm(true);
    QVERIFY(help->Showing());
    QCOMPARE(help->TextOf(Control(form.get(), "Label5")), Core(u"Form9", u"Label5"));
  }
};

SUIZO_APP_TEST(BalloonHelpTest);

}  // namespace suizo::apptest

#include "balloon_help_test.moc"
