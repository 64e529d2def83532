// The clipboard lent out as a transport comes back as the user left it.
#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>
#include <QTest>
#include <stdexcept>

#include "app/platform/clipboard.h"
#include "app_test.h"

using suizo::platform::Clipboard;

class ClipboardTest : public QObject {
  Q_OBJECT

 private slots:
  void textIsPutBack() {
    Clipboard::SetText(QStringLiteral("利用者の文 \n二行目"));
    const QString carried = Clipboard::Borrow([] {
      Clipboard::SetText(QString());
      Clipboard::SetText(QStringLiteral("選択"));
      return Clipboard::Text();
    });
    QCOMPARE(carried, QStringLiteral("選択"));
    QCOMPARE(Clipboard::Text(), QStringLiteral("利用者の文 \n二行目"));
  }

  void emptyClipboardStaysEmpty() {
    Clipboard::SetText(QString());
    QVERIFY(!QGuiApplication::clipboard()->mimeData()->hasText());
    Clipboard::Borrow([] { Clipboard::SetText(QStringLiteral("運ぶ")); });
    QCOMPARE(Clipboard::Text(), QString());
    QVERIFY(!QGuiApplication::clipboard()->mimeData()->hasText());
  }

  void putBackAlsoWhenTheUseFails() {
    Clipboard::SetText(QStringLiteral("元"));
    QVERIFY_THROWS_EXCEPTION(std::runtime_error, Clipboard::Borrow([] {
                               Clipboard::SetText(QStringLiteral("途中"));
                               throw std::runtime_error("failed");
                             }));
    QCOMPARE(Clipboard::Text(), QStringLiteral("元"));
  }
};

SUIZO_APP_TEST(ClipboardTest);

#include "clipboard_test.moc"
