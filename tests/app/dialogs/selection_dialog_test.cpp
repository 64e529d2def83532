#include <QCheckBox>
#include <QCursor>
#include <QPushButton>
#include <QRadioButton>
#include <QScreen>
#include <QTest>
#include <cmath>
#include <memory>
#include <vector>

#include "app/views/selection_dialog_window.h"
#include "app_test.h"
#include "core/corpus/schema.h"
#include "core/text/numbers.h"
#include "sample_corpus.h"

namespace suizo::apptest {

using app::SelectionDialogWindow;

namespace {

using reader::FormKind;

// A window that notes what it saw when asked to follow.
class Follower : public reader::OpenWindow {
 public:
  Follower(FormKind kind, const corpus::Corpus& corpus) : OpenWindow(kind), corpus_(corpus) {}
  void FollowSelection() override {
    ++follows;
    seen = corpus_.MokOrder;
  }
  void PlacementsRebuilt() override { ++rebuilds; }

  int follows = 0;
  int rebuilds = 0;
  std::vector<int> seen;

 private:
  void OnShow() override {}
  void OnRaise() override {}
  const corpus::Corpus& corpus_;
};

// Documents of the list in a class.
int Listed(const corpus::Corpus& corpus, int klass) {
  int n = 0;
  for (int m = 1; m <= corpus.MosMaxY; ++m) {
    const auto row = corpus.MokOrder[static_cast<std::size_t>(m)];
    if (text::Val(corpus.Mok().Get(row, corpus::mok::kClass)) == klass) ++n;
  }
  return n;
}

template <class W>
W* Control(QWidget* form, const char* name) {
  W* w = form->findChild<W*>(QString::fromLatin1(name));
  if (w == nullptr) qFatal("no control %s", name);
  return w;
}

}  // namespace

class SelectionDialogTest : public QObject {
  Q_OBJECT

 private slots:
  void initTestCase() { sample = std::make_unique<SampleCorpus>(); }

  void init() {
    sample->selection = corpus::Selection{};
    corpus::InitialOrders(*sample->corpus, sample->selection);
    store = std::make_unique<corpus::MemorySettings>();
    windows = std::make_unique<reader::WindowRegistry>(
        [this](FormKind kind) { return std::make_unique<Follower>(kind, *sample->corpus); });
    contents = &dynamic_cast<Follower&>(windows->Create(FormKind::Form9));
  }

  void opensOnTheCurrentSelection() {
    sample->selection.CSel[4] = 0;
    sample->selection.CSel[10] = 1;
    auto dialog = Open();
    QVERIFY(Control<QRadioButton>(dialog.get(), "Option1_0")->isChecked());
    QVERIFY(!Control<QCheckBox>(dialog.get(), "Check1")->isChecked());
    QVERIFY(!Control<QCheckBox>(dialog.get(), "Check2_4")->isChecked());
    QVERIFY(Control<QCheckBox>(dialog.get(), "Check2_5")->isChecked());
    QVERIFY(Control<QCheckBox>(dialog.get(), "Check2_10")->isChecked());
    QCOMPARE(Control<QCheckBox>(dialog.get(), "Check2_10")->text(), QStringLiteral("真蹟検索"));
    QCOMPARE(Control<QRadioButton>(dialog.get(), "Option1_6")->text(), QStringLiteral("縮刷遺文"));
  }

  void anotherCollectionOrderAndClassesFollow() {
    corpus::Corpus& corpus = *sample->corpus;
    const std::vector<int> before(corpus.MokOrder.begin(),
                                  corpus.MokOrder.begin() + corpus.MosMaxY + 1);
    QVERIFY(Listed(corpus, 4) > 0);

    auto dialog = Open();
    QTest::mouseClick(Control<QRadioButton>(dialog.get(), "Option1_1"), Qt::LeftButton);
    QTest::mouseClick(Control<QCheckBox>(dialog.get(), "Check2_4"), Qt::LeftButton);
    QTest::mouseClick(Control<QCheckBox>(dialog.get(), "Check1"), Qt::LeftButton);
    QTest::mouseClick(Control<QPushButton>(dialog.get(), "Command1"), Qt::LeftButton);

    QVERIFY(!dialog->isVisible());
    QVERIFY(!dialog->Cancelled());
    QCOMPARE(sample->selection.Gk, 22);
    QCOMPARE(sample->selection.Kn, 1);
    QCOMPARE(sample->selection.CSel[4], 0);
    QCOMPARE(sample->selection.MokRedo, 0);  // the placements were made
    QCOMPARE(Listed(corpus, 4), 0);
    QVERIFY(corpus.MosMaxY > 0);
    const std::vector<int> after(corpus.MokOrder.begin(),
                                 corpus.MokOrder.begin() + corpus.MosMaxY + 1);
    QVERIFY(after != before);
    // The contents window restored its refinements and found its place in the new list.
    QCOMPARE(contents->rebuilds, 1);
    QCOMPARE(contents->follows, 1);
    QCOMPARE(std::vector<int>(contents->seen.begin(), contents->seen.begin() + corpus.MosMaxY + 1),
             after);
  }

  void theSameCollectionKeepsItsPlacements() {
    auto dialog = Open();
    QTest::mouseClick(Control<QCheckBox>(dialog.get(), "Check1"), Qt::LeftButton);
    QTest::mouseClick(Control<QPushButton>(dialog.get(), "Command1"), Qt::LeftButton);
    QCOMPARE(sample->selection.Kn, 1);
    QCOMPARE(contents->rebuilds, 0);
    QCOMPARE(contents->follows, 1);
  }

  void allClassesOffLeaveAnEmptyList() {
    auto dialog = Open();
    for (int c = 0; c < 10; ++c) {
      Control<QCheckBox>(dialog.get(), qPrintable(QStringLiteral("Check2_%1").arg(c)))
          ->setChecked(false);
    }
    QTest::mouseClick(Control<QPushButton>(dialog.get(), "Command1"), Qt::LeftButton);
    QCOMPARE(sample->corpus->MosMaxY, 0);
    QCOMPARE(contents->follows, 1);
  }

  void cancelChangesNothing() {
    corpus::Corpus& corpus = *sample->corpus;
    const corpus::Selection was = sample->selection;
    const std::vector<int> list = corpus.MokOrder;
    const int count = corpus.MosMaxY;

    auto dialog = Open();
    QTest::mouseClick(Control<QRadioButton>(dialog.get(), "Option1_3"), Qt::LeftButton);
    QTest::mouseClick(Control<QCheckBox>(dialog.get(), "Check2_0"), Qt::LeftButton);
    QTest::mouseClick(Control<QCheckBox>(dialog.get(), "Check1"), Qt::LeftButton);
    QTest::mouseClick(Control<QPushButton>(dialog.get(), "Command2"), Qt::LeftButton);

    QVERIFY(!dialog->isVisible());
    QVERIFY(dialog->Cancelled());
    QCOMPARE(sample->selection.Gk, was.Gk);
    QCOMPARE(sample->selection.Kn, was.Kn);
    QVERIFY(sample->selection.CSel == was.CSel);
    QCOMPARE(corpus.MosMaxY, count);
    QVERIFY(corpus.MokOrder == list);
    QCOMPARE(contents->follows, 0);

    // Esc is a cancel as well.
    auto again = Open();
    QTest::mouseClick(Control<QRadioButton>(again.get(), "Option1_3"), Qt::LeftButton);
    QTest::keyClick(again.get(), Qt::Key_Escape);
    QVERIFY(again->Cancelled());
    QCOMPARE(sample->selection.Gk, was.Gk);
  }

  void standsOnTheOpenersPictureWithThePointerOnConfirm() {
    QWidget opener;
    opener.setGeometry(100, 120, 900, 700);
    auto* picture3 = new QWidget(&opener);
    picture3->setObjectName(QStringLiteral("Picture3"));
    picture3->setGeometry(500, 400, 200, 100);
    opener.show();
    QVERIFY(QTest::qWaitForWindowExposed(&opener));

    auto dialog = Open(&opener);
    dialog->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(dialog.get()));
    const QPoint want = picture3->mapToGlobal(picture3->rect().center());
    QVERIFY2((dialog->frameGeometry().center() - want).manhattanLength() <= 4,
             qPrintable(QStringLiteral("dialog centre %1,%2")
                            .arg(dialog->frameGeometry().center().x())
                            .arg(dialog->frameGeometry().center().y())));
    auto* command1 = Control<QPushButton>(dialog.get(), "Command1");
    QTRY_COMPARE(QCursor::pos(), command1->mapToGlobal(command1->rect().center()));

    // Without a Picture3 the opener itself is the centre.
    delete picture3;
    auto other = Open(&opener);
    QVERIFY((other->frameGeometry().center() - opener.frameGeometry().center()).manhattanLength() <=
            4);
  }

  void keepsItsWidthAndProportions() {
    auto dialog = Open();
    const double aspect = static_cast<double>(dialog->height()) / dialog->width();
    dialog->resize(dialog->width() + 200, dialog->height());
    QTRY_VERIFY(std::abs(dialog->height() - aspect * dialog->width()) <= 2);
    const int width = dialog->width();
    QTest::mouseClick(Control<QPushButton>(dialog.get(), "Command2"), Qt::LeftButton);
    QVERIFY(store->Read(u"@選択", u"w") == text::NumberText(width));
    auto again = Open();
    QCOMPARE(again->width(), width);
  }

  void cleanupTestCase() { sample.reset(); }

 private:
  std::unique_ptr<SelectionDialogWindow> Open(QWidget* opener = nullptr) {
    auto dialog = std::make_unique<SelectionDialogWindow>(*sample->corpus, sample->selection,
                                                          *windows, settings, *store, opener);
    dialog->show();
    if (!QTest::qWaitForWindowExposed(dialog.get())) qWarning("the dialog was not exposed");
    return dialog;
  }

  std::unique_ptr<SampleCorpus> sample;
  corpus::Settings settings;
  std::unique_ptr<corpus::MemorySettings> store;
  std::unique_ptr<reader::WindowRegistry> windows;
  Follower* contents = nullptr;
};

SUIZO_APP_TEST(SelectionDialogTest);

}  // namespace suizo::apptest

#include "selection_dialog_test.moc"
