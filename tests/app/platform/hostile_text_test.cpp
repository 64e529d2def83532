// Text from a data folder is shown, never run: each kind of markup a sender
// could hide in a text or a note is put into a pane as the readers put
// theirs, and the canaries (the title, a mark on the window, a link handed
// to the window, the page's address, a style, a file read) show that none
// ran, none loaded and none navigated, while the frame's own script runs.
#include <QDir>
#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include "app/platform/html_pane.h"
#include "app_test.h"
#include "core/reader/frame.h"
#include "pane_eval.h"

using suizo::apptest::Eval;
using suizo::platform::HtmlPane;

namespace {

QString EvalText(HtmlPane& pane, const QString& js) {
  const auto value = Eval(pane, js);
  return value ? value->toString() : QStringLiteral("<no answer>");
}

// Every way the payloads below try to show that they ran.
constexpr char kRan[] = "document.title='ran';window.ran=1";

}  // namespace

class HostileTextTest : public QObject {
  Q_OBJECT

 private:
  QTemporaryDir files_;

  QString FileUrl(const char* name) const {
    return QUrl::fromLocalFile(files_.filePath(QLatin1String(name))).toString();
  }

 private slots:
  void initTestCase() {
    QVERIFY(files_.isValid());
    const auto write = [&](const char* name, const QByteArray& bytes) {
      QFile file(files_.filePath(QLatin1String(name)));
      QVERIFY(file.open(QIODevice::WriteOnly));
      file.write(bytes);
    };
    write("canary.css", "body{background-color:rgb(1, 2, 3)}");
    write("canary.txt", "secret");
    write("canary.png", QByteArray::fromBase64("iVBORw0KGgoAAAANSUhEUgAAAAEAAAABCAYAAAAfFcSJAAAADUl"
                                               "EQVR42mP8z8DwHwAFBQIAX8jx0gAAAABJRU5ErkJggg=="));
  }

  void nothingFromTheTextRunsLoadsOrNavigates_data() {
    QTest::addColumn<QString>("body");
    QTest::addColumn<QString>("act");        // what the user or the page would do next
    QTest::addColumn<QString>("directive");  // the policy's word on it, when it must speak
    QTest::addColumn<bool>("vertical");
    const QString ran = QLatin1String(kRan);
    QTest::newRow("script") << QStringLiteral("<script>%1</script>").arg(ran) << QString()
                            << QString() << false;
    QTest::newRow("img onerror") << QStringLiteral("<img src=x onerror=\"%1\">").arg(ran)
                                 << QString() << QStringLiteral("script-src-attr") << false;
    QTest::newRow("img onerror, vertical")
        << QStringLiteral("<img src=x onerror=\"%1\">").arg(ran) << QString()
        << QStringLiteral("script-src-attr") << true;
    QTest::newRow("svg onload")
        << QStringLiteral("<svg onload=\"%1\"><rect width=9 height=9 /></svg>").arg(ran)
        << QString() << QString() << false;
    QTest::newRow("iframe src")
        << QStringLiteral("<iframe src=\"%1\"></iframe>").arg(FileUrl("canary.txt")) << QString()
        << QStringLiteral("frame-src") << false;
    // The inner page takes the policy of the outer one, and says so there.
    QTest::newRow("iframe srcdoc")
        << QStringLiteral("<iframe srcdoc=\"<script>parent.%1</script>\"></iframe>").arg(ran)
        << QString() << QString() << false;
    QTest::newRow("javascript: link clicked")
        << QStringLiteral("<a id=x href=\"javascript:%1\">頁</a>").arg(ran)
        << QStringLiteral("document.getElementById('x').click()")
        << QStringLiteral("script-src-elem") << false;
    QTest::newRow("meta refresh") << QStringLiteral(
                                         "<meta http-equiv=\"refresh\" content=\"0;url=D17\">本文")
                                  << QString() << QString() << false;
    QTest::newRow("form submitted")
        << QStringLiteral("<form id=f action=\"D17\" method=\"post\"><input name=q value=1></form>")
        << QStringLiteral("document.getElementById('f').submit()") << QStringLiteral("form-action")
        << false;
    QTest::newRow("stylesheet from file:")
        << QStringLiteral("<link rel=\"stylesheet\" href=\"%1\">本文").arg(FileUrl("canary.css"))
        << QString() << QStringLiteral("style-src-elem") << false;
    QTest::newRow("css url(file:)")
        << QStringLiteral("<div style=\"width:9px;height:9px;background-image:url('%1')\"></div>")
               .arg(FileUrl("canary.png"))
        << QString() << QStringLiteral("img-src") << false;
    QTest::newRow("image from file:")
        << QStringLiteral("<img src=\"%1\">").arg(FileUrl("canary.png")) << QString()
        << QStringLiteral("img-src") << false;
    QTest::newRow("location set") << QStringLiteral("<img src=x onerror=\"location.href='D17'\">")
                                  << QString() << QStringLiteral("script-src-attr") << false;
  }
  void nothingFromTheTextRunsLoadsOrNavigates() {
    QFETCH(QString, body);
    QFETCH(QString, act);
    QFETCH(QString, directive);
    QFETCH(bool, vertical);
    HtmlPane pane;
    pane.resize(500, 400);
    pane.show();
    QSignalSpy links(&pane, &HtmlPane::linkClicked);
    pane.WriteFrame(QString::fromStdU16String(vertical ? suizo::reader::VerticalFrame(16)
                                                       : suizo::reader::HorizontalFrame(1)));
    QTRY_VERIFY_WITH_TIMEOUT(pane.FrameReady(), 15000);
    const QUrl frame = pane.Page()->url();
    QCOMPARE(
        EvalText(pane, QStringLiteral(
                           "window.seen=[];document.addEventListener('securitypolicyviolation',"
                           "e=>seen.push(e.violatedDirective+' '+e.blockedURI));"
                           "document.title='clean';'ok'")),
        QStringLiteral("ok"));
    pane.SetBody(body);
    if (!act.isEmpty()) pane.RunScript(act);
    if (!directive.isEmpty()) {
      QTRY_VERIFY_WITH_TIMEOUT(EvalText(pane, QStringLiteral("seen.join('|')")).contains(directive),
                               10000);
    }
    QTest::qWait(300);  // time for a refresh, a load or a handler to come through
    QCOMPARE(EvalText(pane, QStringLiteral("document.title+' '+(window.ran===undefined)")),
             QStringLiteral("clean true"));
    QCOMPARE(links.count(), 0);
    QCOMPARE(pane.Page()->url(), frame);
    QVERIFY(EvalText(pane, QStringLiteral("getComputedStyle(document.body).backgroundColor")) !=
            QStringLiteral("rgb(1, 2, 3)"));
    QCOMPARE(EvalText(pane, QStringLiteral("performance.getEntriesByType('resource')"
                                           ".filter(e=>e.name.startsWith('file:')).length")),
             QStringLiteral("0"));
  }

  // Even a script that runs, as the program's own do, reads no file.
  void noScriptReadsAFile() {
    HtmlPane pane;
    pane.WriteFrame(QString::fromStdU16String(suizo::reader::HorizontalFrame(1)));
    QTRY_VERIFY_WITH_TIMEOUT(pane.FrameReady(), 15000);
    pane.RunScript(
        QStringLiteral("window.got='waiting';fetch(%1).then(r=>r.text()).then(t=>{got='read '+t})"
                       ".catch(()=>{got='refused'});")
            .arg(suizo::platform::JsString(FileUrl("canary.txt"))));
    QTRY_COMPARE_WITH_TIMEOUT(EvalText(pane, QStringLiteral("window.got")),
                              QStringLiteral("refused"), 10000);
  }

  // The frame's own script is let run: the vertical frame's wheel handler.
  void theFramesOwnScriptRuns() {
    HtmlPane pane;
    pane.WriteFrame(QString::fromStdU16String(suizo::reader::VerticalFrame(16)));
    QTRY_VERIFY_WITH_TIMEOUT(pane.FrameReady(), 15000);
    QCOMPARE(EvalText(pane, QStringLiteral("typeof handle+' '+typeof window.onmousewheel")),
             QStringLiteral("function function"));
  }
};

SUIZO_APP_TEST(HostileTextTest);

#include "hostile_text_test.moc"
