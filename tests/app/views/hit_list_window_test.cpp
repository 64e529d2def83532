// `Form4` over a real search of the sample: pages, sizes, jumps and keys,
// and the place it keeps.
#include <QAbstractButton>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>
#include <QWebEngineView>
#include <memory>
#include <optional>

#include "app/views/hit_list_window.h"
#include "app_test.h"
#include "core/reader/texts.h"
#include "dialogs/sample_corpus.h"
#include "pane_eval.h"

namespace suizo::apptest {

using app::HitListWindow;

namespace {

// A word the sample holds on more than 50 lines.
constexpr std::u16string_view kWord = u"候";

template <class W>
W* Control(QWidget* form, const char* name) {
  W* w = form->findChild<W*>(QString::fromLatin1(name));
  if (w == nullptr) qFatal("no control %s", name);
  return w;
}

QString EvalText(platform::HtmlPane& pane, const QString& js) {
  const auto value = Eval(pane, js);
  return value ? value->toString() : QStringLiteral("<no answer>");
}

// The hit numbers the pane's links name, "1,2,3".
QString Links(platform::HtmlPane& pane) {
  return EvalText(pane, QStringLiteral("Array.from(document.querySelectorAll('a'))"
                                       ".map(a=>a.getAttribute('href')).join(',')"));
}

QString Range(int first, int last) {
  QStringList numbers;
  for (int i = first; i <= last; ++i) numbers << QString::number(i);
  return numbers.join(QLatin1Char(','));
}

int Pages(int hits, int size) {
  return (hits + size - 1) / size;
}

}  // namespace

class HitListWindowTest : public QObject {
  Q_OBJECT

 private:
  std::unique_ptr<SampleCorpus> sample;
  corpus::Settings settings;
  int Nok = 0;
  std::unique_ptr<search::SearchEngine> engine;
  std::unique_ptr<reader::Highlighter> highlighter;
  std::unique_ptr<corpus::MemorySettings> store;
  std::unique_ptr<HitListWindow> list;
  int jumps = 0;

  std::unique_ptr<HitListWindow> Make() {
    return std::make_unique<HitListWindow>(*engine, *highlighter, *sample->corpus,
                                           sample->selection, settings, Nok, *store, u"本文「x」",
                                           u"7");
  }
  QString Label(const char* name) { return Control<QLabel>(list.get(), name)->text(); }
  QString Page() { return Label("Label2"); }
  // Waits until the pane shows the links of hits `first` to `last`.
  bool Showing(int first, int last) {
    const QString want = Range(first, last);
    return QTest::qWaitFor([&] { return Links(*list->pane()) == want; }, 15000);
  }
  void Click(const char* name) {
    QTest::mouseClick(Control<QAbstractButton>(list.get(), name), Qt::LeftButton);
  }

 private slots:
  void initTestCase() { sample = std::make_unique<SampleCorpus>(); }

  void init() {
    settings = corpus::Settings{};
    settings.DispN = 3;  // 50 a page
    engine = std::make_unique<search::SearchEngine>(
        search::TextTable::Writings(*sample->corpus, sample->selection), settings);
    engine->Combo1 = kWord;
    engine->Kensaku(0);
    highlighter = std::make_unique<reader::Highlighter>(*engine, settings.Itaiji);
    store = std::make_unique<corpus::MemorySettings>();
    list = Make();
    jumps = 0;
    list->onJump = [this] { ++jumps; };
    list->resize(640, 680);
    list->show();
    QVERIFY(QTest::qWaitForWindowExposed(list.get()));
  }

  void cleanup() { list.reset(); }

  void showsTheFirstPageWithCountAndPages() {
    const int srn = engine->Srn;
    QVERIFY2(srn > 50, qPrintable(QString::number(srn)));
    QCOMPARE(list->objectName(), QStringLiteral("Form4"));
    QVERIFY(list->Parent() == u"@結果7");
    list->Hyouji();
    QCOMPARE(Label("Label1"), QStringLiteral("検索結果%1件").arg(srn));
    QCOMPARE(Page(), QStringLiteral("1/%1ページ").arg(Pages(srn, 50)));
    QVERIFY(Control<QRadioButton>(list.get(), "Opt_3")->isChecked());
    QVERIFY(Showing(1, 50));
    // Each hit with its title, its place and its line, the word marked.
    QCOMPARE(EvalText(*list->pane(), QStringLiteral("String(document.querySelectorAll("
                                                    "'div[style*=\"float:right\"]').length)")),
             QStringLiteral("50"));
    QVERIFY(EvalText(*list->pane(), QStringLiteral("document.body.innerHTML"))
                .contains(QStringLiteral("<span>候</span>")));
  }

  void buttonsTurnThePages() {
    const int srn = engine->Srn;
    const int last = Pages(srn, 50);
    list->Hyouji();
    QVERIFY(Showing(1, 50));
    Click("Command3");  // no page before the first
    QCOMPARE(Page(), QStringLiteral("1/%1ページ").arg(last));
    QCOMPARE(EvalText(*list->pane(), QStringLiteral("window.scrollTo(0,400);String(scrollY>0)")),
             QStringLiteral("true"));
    Click("Command4");
    QCOMPARE(Page(), QStringLiteral("2/%1ページ").arg(last));
    QVERIFY(Showing(51, std::min(100, srn)));
    // A new page is seen from its top.
    QCOMPARE(EvalText(*list->pane(), QStringLiteral("String(scrollY)")), QStringLiteral("0"));
    Click("Command5");
    QCOMPARE(Page(), QStringLiteral("%1/%1ページ").arg(last));
    QVERIFY(Showing((last - 1) * 50 + 1, srn));
    Click("Command4");  // no page after the last
    QCOMPARE(Page(), QStringLiteral("%1/%1ページ").arg(last));
    Click("Command3");
    QCOMPARE(Page(), QStringLiteral("%1/%2ページ").arg(last - 1).arg(last));
    Click("Command2");
    QCOMPARE(Page(), QStringLiteral("1/%1ページ").arg(last));
    QVERIFY(Showing(1, 50));
    QCOMPARE(list->model().PageNo(), 1);
    QCOMPARE(engine->HitListPage, 1);
  }

  void aSizeGoesBackToPageOneAndIsKept() {
    const int srn = engine->Srn;
    list->Hyouji();
    Click("Command4");
    Click("Opt_0");
    QCOMPARE(settings.DispN, 0);
    QVERIFY(store->Read(u"@設定", u"DispN") == u"0");
    QCOMPARE(Page(), QStringLiteral("1/%1ページ").arg(Pages(srn, 5)));
    QVERIFY(Control<QRadioButton>(list.get(), "Opt_0")->isChecked());
    QVERIFY(!Control<QRadioButton>(list.get(), "Opt_3")->isChecked());
    QVERIFY(Showing(1, 5));
    Click("Command4");
    Click("Opt_1");
    QCOMPARE(settings.DispN, 1);
    QCOMPARE(Page(), QStringLiteral("1/%1ページ").arg(Pages(srn, 10)));
    QCOMPARE(Control<QRadioButton>(list.get(), "Opt_1")->text(), QStringLiteral("10件"));
    QVERIFY(Showing(1, 10));

    // A new list starts at the size kept; one kept out of range sets no option.
    list = Make();
    QVERIFY(Control<QRadioButton>(list.get(), "Opt_1")->isChecked());
    settings.DispN = 7;
    list->Hyouji();
    for (const char* name : {"Opt_0", "Opt_1", "Opt_2", "Opt_3"}) {
      QVERIFY(!Control<QRadioButton>(list.get(), name)->isChecked());
    }
    QCOMPARE(Page(), QStringLiteral("1/%1ページ").arg(Pages(srn, 50)));
  }

  void aClickOnAHitPutsTheOwnerThereAndJumps() {
    list->Hyouji();
    QVERIFY(Showing(1, 50));
    engine->SrnPos = 1;
    list->pane()->RunScript(QStringLiteral("document.querySelector(\"a[href='7']\").click()"));
    QTRY_COMPARE_WITH_TIMEOUT(jumps, 1, 15000);
    QCOMPARE(engine->SrnPos, 7);
    QCOMPARE(engine->pos.Mpos, engine->getSr(7, 0));
    QCOMPARE(engine->pos.Lpos, engine->getSr(7, 1));
    QVERIFY(list->isVisible());  // the list stays

    // Any other link is no hit: nothing moves.
    list->pane()->RunScript(
        QStringLiteral("document.body.insertAdjacentHTML('beforeend',\"<a id=o href='D17'>x</a>\");"
                       "document.getElementById('o').click()"));
    list->pane()->RunScript(QStringLiteral("document.querySelector(\"a[href='9']\").click()"));
    QTRY_COMPARE_WITH_TIMEOUT(engine->SrnPos, 9, 15000);
    QCOMPARE(jumps, 2);
  }

  void leftAndRightTurnThePages() {
    const int last = Pages(engine->Srn, 50);
    list->Hyouji();
    QVERIFY(Showing(1, 50));
    // On the window.
    QTest::keyClick(list.get(), Qt::Key_Right);
    QCOMPARE(Page(), QStringLiteral("2/%1ページ").arg(last));
    QTest::keyClick(list.get(), Qt::Key_Left);
    QCOMPARE(Page(), QStringLiteral("1/%1ページ").arg(last));
    // In the pane, before the browser sees them.
    QWidget* proxy = list->pane()->View()->focusProxy();
    QVERIFY(proxy != nullptr);
    QTest::keyClick(proxy, Qt::Key_Right);
    QCOMPARE(Page(), QStringLiteral("2/%1ページ").arg(last));
    QTest::keyClick(proxy, Qt::Key_Down);  // no move of the list
    QTest::keyClick(proxy, Qt::Key_Left);
    QCOMPARE(Page(), QStringLiteral("1/%1ページ").arg(last));
    QTest::keyClick(proxy, Qt::Key_Left);
    QCOMPARE(Page(), QStringLiteral("1/%1ページ").arg(last));
  }

  void rightClickAsksForTheOwnersMenu() {
    list->Hyouji();
    QVERIFY(Showing(1, 50));
    std::optional<QPoint> menuAt;
    list->onContextMenu = [&](QPoint at) { menuAt = at; };
    QWidget* proxy = list->pane()->View()->focusProxy();
    QVERIFY(proxy != nullptr);
    const QPoint at(60, 40);
    QTest::mouseClick(list->windowHandle(), Qt::RightButton, {}, proxy->mapTo(list.get(), at));
    QTRY_VERIFY_WITH_TIMEOUT(menuAt.has_value(), 15000);
    QCOMPARE(*menuAt, proxy->mapToGlobal(at));
  }

  void thePlaceIsRestoredAndKept() {
    list.reset();
    corpus::WriteGeometry(*store, u"@結果7", {120, 90, 700, 500});
    list = Make();
    QCOMPARE(list->geometry(), QRect(120, 90, 700, 500));
    list->show();
    QVERIFY(QTest::qWaitForWindowExposed(list.get()));
    // The pane follows the width in proportion, its text by zoom.
    list->Hyouji();
    QTRY_COMPARE_WITH_TIMEOUT(
        EvalText(*list->pane(), QStringLiteral("getComputedStyle(document.body).zoom")),
        QString::number(std::lround(700.0 / 640 * 100) / 100.0), 15000);
    list->move(140, 110);
    list->resize(640, 520);
    QTRY_COMPARE_WITH_TIMEOUT(
        corpus::ReadGeometry(*store, u"@結果7").value_or(corpus::Geometry{}).w, 640, 5000);
    const corpus::Geometry g = corpus::ReadGeometry(*store, u"@結果7").value_or(corpus::Geometry{});
    QCOMPARE(QRect(g.x, g.y, g.w, g.h), list->geometry());
    QCOMPARE(list->geometry().topLeft(), QPoint(140, 110));
  }
};

SUIZO_APP_TEST(HitListWindowTest);

}  // namespace suizo::apptest

#include "hit_list_window_test.moc"
