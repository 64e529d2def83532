// The two transient windows: the toast that closes itself, and the yes/no
// question.
#include <QApplication>
#include <QLabel>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <functional>

#include "app/platform/grid.h"
#include "app/platform/toast.h"
#include "app/platform/yes_no.h"
#include "app_test.h"

using suizo::platform::Toast;
using suizo::platform::YesNoDialog;

namespace {

// Runs `act` on the modal window named `name` once it is up.
void WhenModal(const QString& name, std::function<void(QWidget*)> act) {
  auto* poll = new QTimer;
  poll->setInterval(10);
  QObject::connect(poll, &QTimer::timeout, [poll, name, act] {
    QWidget* modal = QApplication::activeModalWidget();
    if (modal == nullptr || modal->objectName() != name || !modal->isVisible()) return;
    poll->stop();
    poll->deleteLater();
    act(modal);
  });
  poll->start();
}

}  // namespace

class DialogsTest : public QObject {
  Q_OBJECT

 private slots:
  void toastBlinksAndClosesItselfAtTheFourthTick() {
    QWidget over;
    over.setGeometry(200, 150, 600, 400);
    over.show();
    QVERIFY(QTest::qWaitForWindowExposed(&over));
    Toast toast(&over);
    QCOMPARE(toast.objectName(), QStringLiteral("Form11"));
    QCOMPARE(toast.findChild<QLabel*>(QStringLiteral("Com"))->text(),
             QStringLiteral("** 見つかりません **"));
    const QColor face = toast.palette().color(QPalette::Button);
    QCOMPARE(toast.LabelColour(), face);
    QList<QColor> colours;
    QPoint centre;
    bool modal = false;
    connect(&toast, &Toast::ticked, this, [&](int count, QColor colour) {
      colours << colour;
      if (count == 1) {
        centre = toast.frameGeometry().center();
        modal = QApplication::activeModalWidget() == &toast;
        QTest::keyClick(&toast, Qt::Key_Escape);  // takes no input
      }
    });
    toast.exec();
    const QColor yellow(255, 255, 0);
    QCOMPARE(colours, (QList<QColor>{yellow, face, yellow, face}));
    QCOMPARE(toast.Ticks(), Toast::kTicks);
    QVERIFY(!toast.isVisible());
    QVERIFY(modal);
    QVERIFY((centre - over.frameGeometry().center()).manhattanLength() <= 2);
  }

  void showReturnsOnItsOwn() {
    Toast::Show(nullptr);
    QVERIFY(QApplication::activeModalWidget() == nullptr);
  }

  void yesNoAnswers_data() {
    QTest::addColumn<QString>("press");
    QTest::addColumn<bool>("answer");
    QTest::newRow("はい") << QStringLiteral("Command2") << true;
    QTest::newRow("いいえ") << QStringLiteral("Command1") << false;
    QTest::newRow("Enter") << QStringLiteral("Enter") << true;
    QTest::newRow("Esc") << QStringLiteral("Esc") << false;
    QTest::newRow("Tab Enter") << QStringLiteral("Tab Enter") << false;
  }
  void yesNoAnswers() {
    QFETCH(QString, press);
    QFETCH(bool, answer);
    QWidget over;
    over.setGeometry(100, 100, 500, 300);
    over.show();
    QVERIFY(QTest::qWaitForWindowExposed(&over));
    QString question, yes, no;
    WhenModal(QStringLiteral("Form10"), [&](QWidget* dialog) {
      question = dialog->findChild<QLabel*>(QStringLiteral("Text1"))->text();
      auto* yesButton = dialog->findChild<QPushButton*>(QStringLiteral("Command2"));
      auto* noButton = dialog->findChild<QPushButton*>(QStringLiteral("Command1"));
      yes = yesButton->text();
      no = noButton->text();
      if (press == QLatin1String("Command2")) {
        QTest::mouseClick(yesButton, Qt::LeftButton);
      } else if (press == QLatin1String("Command1")) {
        QTest::mouseClick(noButton, Qt::LeftButton);
      } else {
        for (const QString& key : press.split(QLatin1Char(' '))) {
          const Qt::Key code = key == QLatin1String("Enter") ? Qt::Key_Return
                               : key == QLatin1String("Esc") ? Qt::Key_Escape
                                                             : Qt::Key_Tab;
          QWidget* focus = QApplication::focusWidget();
          QTest::keyClick(focus != nullptr ? focus : dialog, code);
        }
      }
    });
    const QString asked = QStringLiteral("≪しおり①≫を読込み移動してもよろしいですか？");
    QCOMPARE(YesNoDialog::Ask(&over, asked), answer);
    QCOMPARE(question, asked);
    QCOMPARE(yes, QStringLiteral("はい"));
    QCOMPARE(no, QStringLiteral("いいえ"));
  }

  void yesNoStandsWhereAsked() {
    QPoint where;
    QString name;
    WhenModal(QStringLiteral("Form10"), [&](QWidget* dialog) {
      where = dialog->pos();
      name = dialog->objectName();
      QTest::mouseClick(dialog->findChild<QPushButton*>(QStringLiteral("Command1")),
                        Qt::LeftButton);
    });
    QVERIFY(!YesNoDialog::AskAt(
        QPoint(150, 120),
        QStringLiteral("設定をすべて削除してプログラムを終了します\nよろしいですか?")));
    QCOMPARE(where, QPoint(150, 120));
    QCOMPARE(name, QStringLiteral("Form10"));
  }
};

SUIZO_APP_TEST(DialogsTest);

#include "dialogs_test.moc"
