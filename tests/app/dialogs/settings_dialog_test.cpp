#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <memory>

#include "app/corpus/settings_dialog_window.h"
#include "app_test.h"

Q_DECLARE_METATYPE(suizo::corpus::SettingsEffects)

namespace suizo::apptest {

using app::SettingsDialogWindow;

namespace {

template <class W>
W* Control(QWidget* form, const QString& name) {
  W* w = form->findChild<W*>(name);
  if (w == nullptr) qFatal("no control %s", qPrintable(name));
  return w;
}

}  // namespace

class SettingsDialogTest : public QObject {
  Q_OBJECT

 private slots:
  void init() {
    store = std::make_unique<corpus::MemorySettings>();
    store->Write(corpus::kSettingsSection, u"DispN", u"2");
    settings = corpus::ReadSettings(*store);
  }

  void everyControlStandsByItsName() {
    auto dialog = Open();
    QCOMPARE(dialog->objectName(), QStringLiteral("Form13"));
    QCOMPARE(dialog->windowTitle(), QStringLiteral("設定"));
    for (int i = 1; i <= 4; ++i) Control<QCheckBox>(dialog.get(), QStringLiteral("Check%1").arg(i));
    for (int i = 1; i <= 7; ++i) Control<QComboBox>(dialog.get(), QStringLiteral("Combo%1").arg(i));
    for (int i = 1; i <= 3; ++i)
      Control<QPushButton>(dialog.get(), QStringLiteral("Command%1").arg(i));
    QCOMPARE(Control<QGroupBox>(dialog.get(), "Frame1")->title(),
             QStringLiteral("縦書き文字数増加"));
    QCOMPARE(Control<QLabel>(dialog.get(), "Label1")->text(), QStringLiteral("翠蔵Viewer1.4.2"));
    QCOMPARE(Control<QComboBox>(dialog.get(), "Combo1")->itemText(0), QStringLiteral("標準"));
  }

  void opensOnTheSettingsAndConfirmStoresThem() {
    settings.Gcm1 = 1;
    settings.HmL2 = 22;
    auto dialog = Open();
    auto* check2 = Control<QCheckBox>(dialog.get(), "Check2");
    auto* check4 = Control<QCheckBox>(dialog.get(), "Check4");
    auto* combo4 = Control<QComboBox>(dialog.get(), "Combo4");
    auto* combo5 = Control<QComboBox>(dialog.get(), "Combo5");
    QVERIFY(check2->isChecked());
    QVERIFY(check4->isChecked());
    QCOMPARE(combo5->currentText(), QStringLiteral("22"));

    QSignalSpy confirmed(dialog.get(), &SettingsDialogWindow::confirmed);
    QTest::mouseClick(check2, Qt::LeftButton);
    QTest::mouseClick(check4, Qt::LeftButton);
    combo4->setCurrentIndex(combo4->findText(QStringLiteral("25")));
    Control<QComboBox>(dialog.get(), "Combo1")->setCurrentIndex(2);
    QTest::mouseClick(Control<QPushButton>(dialog.get(), "Command3"), Qt::LeftButton);

    QVERIFY(!dialog->isVisible());
    const corpus::Settings stored = corpus::ReadSettings(*store);
    QCOMPARE(stored.Itaiji, 0);
    QCOMPARE(stored.Gcm1, 0);
    QCOMPARE(stored.HmL1, 25);
    QCOMPARE(stored.HmL2, 22);
    QCOMPARE(stored.BTFont, 2);
    QCOMPARE(stored.AutoDiv, 1);
    QCOMPARE(stored.DispN, 2);
    // The program's own values changed with the store.
    QCOMPARE(settings.Itaiji, 0);
    QCOMPARE(settings.HmL1, 25);

    QCOMPARE(confirmed.size(), 1);
    const auto effects = confirmed.at(0).at(0).value<corpus::SettingsEffects>();
    QVERIFY(effects.balloons);
    QVERIFY(effects.resetFonts);
    QVERIFY(effects.gcm1Change);
    QVERIFY(effects.tateRedraw);
  }

  void closeChangesNothing() {
    auto dialog = Open();
    QSignalSpy confirmed(dialog.get(), &SettingsDialogWindow::confirmed);
    QTest::mouseClick(Control<QCheckBox>(dialog.get(), "Check1"), Qt::LeftButton);
    Control<QComboBox>(dialog.get(), "Combo2")->setCurrentIndex(0);
    QTest::mouseClick(Control<QPushButton>(dialog.get(), "Command2"), Qt::LeftButton);

    QVERIFY(!dialog->isVisible());
    QCOMPARE(confirmed.size(), 0);
    QVERIFY(!store->Read(corpus::kSettingsSection, u"AutoDiv"));
    QVERIFY(!store->Read(corpus::kSettingsSection, u"GmL1"));
    QCOMPARE(settings.AutoDiv, 1);
    QCOMPARE(settings.GmL1, 16);
    // The dialog keeps only its width.
    QVERIFY(store->Read(corpus::kSettingsSection, u"w"));
  }

  void deleteAllOnlyOnYes() {
    store->Write(u"@本文", u"w", u"640");
    auto dialog = Open();
    QSignalSpy exit(dialog.get(), &SettingsDialogWindow::exitRequested);
    QStringList asked;
    dialog->ask = [&](QWidget* over, const QString& question) {
      if (over != dialog.get()) qWarning("asked over another window");
      asked << question;
      return false;
    };
    QTest::mouseClick(Control<QPushButton>(dialog.get(), "Command1"), Qt::LeftButton);
    QCOMPARE(
        asked,
        QStringList{QStringLiteral("設定をすべて削除してプログラムを終了します\nよろしいですか?")});
    QVERIFY(dialog->isVisible());
    QCOMPARE(exit.size(), 0);
    QVERIFY(store->Read(u"@本文", u"w"));

    dialog->ask = [](QWidget*, const QString&) { return true; };
    QTest::mouseClick(Control<QPushButton>(dialog.get(), "Command1"), Qt::LeftButton);
    QCOMPARE(exit.size(), 1);
    QVERIFY(!dialog->isVisible());
    // Everything is gone, the closing dialog's own width too.
    QVERIFY(!store->Read(u"@本文", u"w"));
    QVERIFY(!store->Read(corpus::kSettingsSection, u"DispN"));
    QVERIFY(!store->Read(corpus::kSettingsSection, u"w"));
  }

 private:
  std::unique_ptr<SettingsDialogWindow> Open() {
    auto dialog = std::make_unique<SettingsDialogWindow>(settings, *store, u"1.4.2");
    dialog->show();
    if (!QTest::qWaitForWindowExposed(dialog.get())) qWarning("the dialog was not exposed");
    return dialog;
  }

  std::unique_ptr<corpus::MemorySettings> store;
  corpus::Settings settings;
};

SUIZO_APP_TEST(SettingsDialogTest);

}  // namespace suizo::apptest

#include "settings_dialog_test.moc"
