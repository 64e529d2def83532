// The settings store on QSettings: text in, the same text out, by section
// and key, across a reopening; and all of it gone on request.
#include <QTemporaryDir>
#include <QTest>

#include "app/platform/qt_settings.h"
#include "app_test.h"
#include "core/corpus/settings.h"

using suizo::platform::QtSettingsStore;

class QtSettingsTest : public QObject {
  Q_OBJECT

 private slots:
  void valuesComeBackAsWritten() {
    QTemporaryDir folder;
    QVERIFY(folder.isValid());
    const QString path = folder.filePath(QStringLiteral("settings.ini"));
    const std::u16string awkward = u"  前後に空白, カンマ=等号; @印 \"引用\" \\ ";
    {
      QtSettingsStore store(path);
      QCOMPARE(store.Read(u"@本文", u"w"), std::nullopt);
      store.Write(u"@本文", u"w", u"800");
      store.Write(u"@本文", u"x", u"-12");
      store.Write(u"@辞書", u"w", u"640");
      store.Write(u"@設定", u"AutoDiv", u"0");
      store.Write(u"@しおり", u"T1", u"");
      store.Write(u"@しおり", u"T2", awkward);
      store.Write(u"@本文", u"x", u"15");  // written over
      QCOMPARE(store.Read(u"@本文", u"w"), std::u16string(u"800"));
      QCOMPARE(store.Read(u"@辞書", u"w"), std::u16string(u"640"));
      QCOMPARE(store.Read(u"@本文", u"h"), std::nullopt);
      QCOMPARE(store.Read(u"@年表", u"w"), std::nullopt);
    }
    QtSettingsStore reopened(path);
    QCOMPARE(reopened.Read(u"@本文", u"x"), std::u16string(u"15"));
    QCOMPARE(reopened.Read(u"@しおり", u"T1"), std::u16string());
    QCOMPARE(reopened.Read(u"@しおり", u"T2"), awkward);
    QCOMPARE(reopened.Get(u"@設定", u"Itaiji", u"1"), std::u16string(u"1"));
    // The core reads its settings through the same store.
    const suizo::corpus::Settings settings = suizo::corpus::ReadSettings(reopened);
    QCOMPARE(settings.AutoDiv, 0);
    QCOMPARE(settings.Itaiji, 1);
  }

  void deleteAllLeavesNothing() {
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("settings.ini"));
    {
      QtSettingsStore store(path);
      store.Write(u"@目次", u"w", u"900");
      store.Write(u"@設定", u"GmL1", u"20");
      store.Write(u"", u"top", u"level");
      store.DeleteAll();
      QCOMPARE(store.Read(u"@目次", u"w"), std::nullopt);
      QCOMPARE(store.Read(u"", u"top"), std::nullopt);
    }
    QtSettingsStore reopened(path);
    QCOMPARE(reopened.Read(u"@設定", u"GmL1"), std::nullopt);
    reopened.Write(u"@目次", u"h", u"700");  // the store still works after
    QCOMPARE(reopened.Read(u"@目次", u"h"), std::u16string(u"700"));
  }

  void emptyKeyIsNoSetting() {
    QTemporaryDir folder;
    QtSettingsStore store(folder.filePath(QStringLiteral("settings.ini")));
    store.Write(u"@本文", u"", u"lost");
    QCOMPARE(store.Read(u"@本文", u""), std::nullopt);
  }

  void programStoreIsUnderTheApplicationsName() {
    const QtSettingsStore store;
    QVERIFY(store.FileName().contains(QStringLiteral("翠蔵Viewer")));
  }
};

SUIZO_APP_TEST(QtSettingsTest);

#include "qt_settings_test.moc"
