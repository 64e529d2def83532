// The pane over the browser: frames, queued bodies, links, keys and looks.
#include <QApplication>
#include <QSignalSpy>
#include <QTest>
#include <QWebEngineView>
#include <QWheelEvent>
#include <memory>
#include <optional>

#include "app/platform/html_pane.h"
#include "app_test.h"
#include "core/reader/frame.h"
#include "pane_eval.h"

using suizo::platform::HtmlPane;

namespace {

QString Q(const std::u16string& text) {
  return QString::fromStdU16String(text);
}

using suizo::apptest::Eval;

QString EvalText(HtmlPane& pane, const QString& js) {
  const auto value = Eval(pane, js);
  return value ? value->toString() : QStringLiteral("<no answer>");
}

}  // namespace

class HtmlPaneTest : public QObject {
  Q_OBJECT

 private slots:
  void bodiesWaitForTheFrameAndKeepTheirOrder() {
    HtmlPane pane;
    QSignalSpy loaded(&pane, &HtmlPane::frameLoaded);
    pane.WriteFrame(Q(suizo::reader::HorizontalFrame(1)));
    QVERIFY(!pane.FrameReady());
    pane.SetBody(QStringLiteral("<p>一</p>"));
    pane.RunScript(QStringLiteral("window.seen=[document.body.innerHTML];"));
    pane.SetBody(QStringLiteral("<p>二</p>"));
    pane.RunScript(QStringLiteral("window.seen.push(document.body.innerHTML);"));
    QTRY_VERIFY_WITH_TIMEOUT(pane.FrameReady(), 15000);
    QCOMPARE(EvalText(pane, QStringLiteral("window.seen.join('|')")),
             QStringLiteral("<p>一</p>|<p>二</p>"));
    pane.SetBody(QStringLiteral("<p>三</p>"));
    QCOMPARE(EvalText(pane, QStringLiteral("document.body.innerHTML")),
             QStringLiteral("<p>三</p>"));
    QCOMPARE(loaded.count(), 1);
  }

  void aFrameWrittenOverAnotherTakesTheWaitingBodies() {
    HtmlPane pane;
    QSignalSpy loaded(&pane, &HtmlPane::frameLoaded);
    pane.WriteFrame(Q(suizo::reader::HorizontalFrame(1)));  // 16px text
    pane.WriteFrame(Q(suizo::reader::HorizontalFrame(4)));  // 14px text
    pane.SetBody(QStringLiteral("後"));
    QTRY_VERIFY_WITH_TIMEOUT(pane.FrameReady(), 15000);
    QCOMPARE(EvalText(pane, QStringLiteral("getComputedStyle(document.body).fontSize")),
             QStringLiteral("14px"));
    QCOMPARE(EvalText(pane, QStringLiteral("document.body.textContent")), QStringLiteral("後"));
    QCOMPARE(loaded.count(), 1);
  }

  void bodyTextArrivesExactly() {
    HtmlPane pane;
    pane.WriteFrame(Q(suizo::reader::HorizontalFrame(2)));
    const QString text = QStringLiteral("a\"b'c\\d\ne\r\u2028f\u2029</script>\uE001経");
    pane.SetBody(QStringLiteral("<pre id=t></pre>"));
    pane.RunScript(QStringLiteral("document.getElementById('t').textContent=%1;")
                       .arg(suizo::platform::JsString(text)));
    QTRY_VERIFY_WITH_TIMEOUT(pane.FrameReady(), 15000);
    QCOMPARE(EvalText(pane, QStringLiteral("document.getElementById('t').textContent")), text);
  }

  void linkGivesTheHrefAsWritten_data() {
    QTest::addColumn<QString>("href");
    for (const char* href : {"D17", "12345", "-14601", "h3", "r2"})
      QTest::newRow(href) << QString::fromLatin1(href);
    QTest::newRow("kanji") << QStringLiteral("経12");
  }
  void linkGivesTheHrefAsWritten() {
    QFETCH(QString, href);
    HtmlPane pane;
    QSignalSpy links(&pane, &HtmlPane::linkClicked);
    pane.WriteFrame(Q(suizo::reader::HorizontalFrame(1)));
    pane.SetBody(QStringLiteral("<a href='%1'>頁</a>").arg(href));
    pane.RunScript(QStringLiteral("document.querySelector('a').click()"));
    QTRY_COMPARE_WITH_TIMEOUT(links.count(), 1, 15000);
    QCOMPARE(links.at(0).at(0).toString(), href);
    // The page was not left: the body is still there.
    QCOMPARE(EvalText(pane, QStringLiteral("document.querySelector('a').textContent")),
             QStringLiteral("頁"));
    QCOMPARE(pane.Page()->url().toString().left(13), QStringLiteral("suizo://pane/"));
    QCOMPARE(links.count(), 1);
  }

  void linkTargetStripsTheBaseOnly() {
    using suizo::platform::LinkTarget;
    QCOMPARE(LinkTarget(QUrl(QStringLiteral("suizo://pane/D17"))), QStringLiteral("D17"));
    QCOMPARE(LinkTarget(QUrl(QStringLiteral("suizo://pane/%E7%B5%8C"))), QStringLiteral("経"));
    QCOMPARE(LinkTarget(QUrl(QStringLiteral("suizo://pane/?frame=7"))), QString());
    QCOMPARE(LinkTarget(QUrl(QStringLiteral("https://example.org/x"))),
             QStringLiteral("https://example.org/x"));
  }

  void keyTakenByTheWindowNeverReachesThePage() {
    HtmlPane pane;
    pane.resize(400, 300);
    pane.show();
    QVERIFY(QTest::qWaitForWindowExposed(&pane));
    pane.WriteFrame(Q(suizo::reader::HorizontalFrame(1)));
    pane.SetBody(QStringLiteral("本文"));
    QTRY_VERIFY_WITH_TIMEOUT(pane.FrameReady(), 15000);
    QCOMPARE(EvalText(pane, QStringLiteral("window.keys=[];document.addEventListener('keydown',"
                                           "e=>keys.push(e.key));'ok'")),
             QStringLiteral("ok"));
    QList<int> seen;
    connect(&pane, &HtmlPane::keyPressed, this,
            [&seen](int key, Qt::KeyboardModifiers, bool& handled) {
              seen << key;
              handled = key == Qt::Key_A;
            });
    pane.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&pane));
    QWidget* proxy = pane.View()->focusProxy();
    QVERIFY(proxy != nullptr);
    proxy->setFocus();
    QTest::keyClick(proxy, Qt::Key_A);
    QTest::keyClick(proxy, Qt::Key_B);
    // Keys arrive in order: once "b" is in, "a" would have been before it.
    QTRY_VERIFY_WITH_TIMEOUT(
        EvalText(pane, QStringLiteral("keys.join(',')")) == QStringLiteral("b"), 15000);
    QCOMPARE(seen, (QList<int>{Qt::Key_A, Qt::Key_B}));
  }

  void zoomAndBackgroundApplied() {
    HtmlPane pane;
    pane.WriteFrame(Q(suizo::reader::HorizontalFrame(1)));
    pane.SetBackground(0x0000FF);  // 0xBBGGRR: red
    pane.SetZoom(QStringLiteral("150%"));
    QTRY_VERIFY_WITH_TIMEOUT(pane.FrameReady(), 15000);
    QCOMPARE(EvalText(pane, QStringLiteral("getComputedStyle(document.body).backgroundColor")),
             QStringLiteral("rgb(255, 0, 0)"));
    QCOMPARE(EvalText(pane, QStringLiteral("getComputedStyle(document.body).zoom")),
             QStringLiteral("1.5"));
    pane.SetBackground(15987674);
    pane.SetZoom(QStringLiteral("zoom!"));  // not a percentage: left alone
    QCOMPARE(EvalText(pane, QStringLiteral("getComputedStyle(document.body).backgroundColor")),
             QStringLiteral("rgb(218, 243, 243)"));
    QCOMPARE(EvalText(pane, QStringLiteral("getComputedStyle(document.body).zoom")),
             QStringLiteral("1.5"));
  }

  void scrollMovesThePage() {
    HtmlPane pane;
    pane.resize(300, 200);
    pane.show();
    QVERIFY(QTest::qWaitForWindowExposed(&pane));
    pane.WriteFrame(Q(suizo::reader::HorizontalFrame(1)));
    pane.SetBody(QStringLiteral("<div style='height:3000px'>長</div>"));
    pane.ScrollTo(0, 200);
    QTRY_VERIFY_WITH_TIMEOUT(pane.FrameReady(), 15000);
    QCOMPARE(EvalText(pane, QStringLiteral("String(window.scrollY)")), QStringLiteral("200"));
    pane.ScrollBy(0, 50);
    QCOMPARE(EvalText(pane, QStringLiteral("String(window.scrollY)")), QStringLiteral("250"));
  }

  void framesFontIsMonospacedJapanese() {
    HtmlPane pane;
    pane.resize(600, 300);
    pane.show();
    QVERIFY(QTest::qWaitForWindowExposed(&pane));
    pane.WriteFrame(Q(suizo::reader::HorizontalFrame(1)));
    const QString plain = QStringLiteral("style='font-weight:normal;background:none'");
    pane.SetBody(QStringLiteral("<span id=n %1>iiiiiiiiii</span><br><span id=w %1>WWWWWWWWWW</span>"
                                "<br><span id=j %1>漢字漢字漢</span>")
                     .arg(plain));
    QTRY_VERIFY_WITH_TIMEOUT(pane.FrameReady(), 15000);
    const QString widths = QStringLiteral(
        "['n','w','j'].map(i=>Math.round(document.getElementById(i)"
        ".getBoundingClientRect().width)).join(',')");
    // Ten narrow letters, ten wide ones and five kanji take the same room.
    QTRY_VERIFY_WITH_TIMEOUT(
        [&] {
          const QStringList w = EvalText(pane, widths).split(QLatin1Char(','));
          return w.size() == 3 && w[0] == w[1] && qAbs(w[0].toInt() - w[2].toInt()) <= 1 &&
                 w[0].toInt() > 0;
        }(),
        15000);
  }

  void rightClickAsksForTheProgramsMenu() {
    HtmlPane pane;
    pane.resize(300, 200);
    pane.show();
    QVERIFY(QTest::qWaitForWindowExposed(&pane));
    pane.WriteFrame(Q(suizo::reader::HorizontalFrame(1)));
    pane.SetBody(QStringLiteral("右"));
    QTRY_VERIFY_WITH_TIMEOUT(pane.FrameReady(), 15000);
    QWidget* proxy = pane.View()->focusProxy();
    QVERIFY(proxy != nullptr);
    QSignalSpy menus(&pane, &HtmlPane::contextMenuRequested);
    const QPoint at(40, 30);
    QTest::mouseClick(pane.windowHandle(), Qt::RightButton, {}, proxy->mapTo(&pane, at));
    QTRY_COMPARE_WITH_TIMEOUT(menus.count(), 1, 15000);
    QCOMPARE(menus.at(0).at(0).toPoint(), proxy->mapToGlobal(at));
    QVERIFY(QApplication::activePopupWidget() == nullptr);
  }

  void doubleClickIsReported() {
    HtmlPane pane;
    pane.resize(300, 200);
    pane.show();
    QVERIFY(QTest::qWaitForWindowExposed(&pane));
    pane.WriteFrame(Q(suizo::reader::HorizontalFrame(1)));
    pane.SetBody(QStringLiteral("語"));
    QTRY_VERIFY_WITH_TIMEOUT(pane.FrameReady(), 15000);
    QSignalSpy doubles(&pane, &HtmlPane::doubleClicked);
    QTest::mouseDClick(pane.View()->focusProxy(), Qt::LeftButton, {}, QPoint(20, 15));
    QCOMPARE(doubles.count(), 1);
  }

  void controlWheelIsKeptFromThePage() {
    HtmlPane pane;
    pane.resize(300, 200);
    pane.show();
    QVERIFY(QTest::qWaitForWindowExposed(&pane));
    pane.WriteFrame(Q(suizo::reader::HorizontalFrame(1)));
    pane.SetBody(QStringLiteral("<div style='height:3000px'>輪</div>"));
    QTRY_VERIFY_WITH_TIMEOUT(pane.FrameReady(), 15000);
    QCOMPARE(EvalText(pane, QStringLiteral("window.wheels=0;addEventListener('wheel',"
                                           "()=>wheels++,{passive:true});'ok'")),
             QStringLiteral("ok"));
    QWidget* proxy = pane.View()->focusProxy();
    const QPoint at(50, 50);
    auto wheel = [&](Qt::KeyboardModifiers modifiers) {
      QWheelEvent event(at, proxy->mapToGlobal(at), QPoint(), QPoint(0, -120), Qt::NoButton,
                        modifiers, Qt::NoScrollPhase, false);
      QApplication::sendEvent(proxy, &event);
    };
    const auto wheels = [&] { return EvalText(pane, QStringLiteral("String(wheels)")).toInt(); };
    // Turns reach the page once it is being drawn.
    EvalText(pane, QStringLiteral(
                       "window.drawn=0;(function f(){drawn++;requestAnimationFrame(f);})();'ok'"));
    QTRY_VERIFY_WITH_TIMEOUT(EvalText(pane, QStringLiteral("String(drawn)")).toInt() > 2, 15000);
    wheel(Qt::NoModifier);
    QTRY_VERIFY_WITH_TIMEOUT(wheels() == 1, 15000);
    // A turn with Ctrl, then a plain one: the plain one arrives, in order, alone.
    wheel(Qt::ControlModifier);
    wheel(Qt::NoModifier);
    QTRY_VERIFY_WITH_TIMEOUT(wheels() > 1, 15000);
    QCOMPARE(wheels(), 2);
    QCOMPARE(pane.Page()->zoomFactor(), 1.0);
  }
};

SUIZO_APP_TEST(HtmlPaneTest);

#include "html_pane_test.moc"
