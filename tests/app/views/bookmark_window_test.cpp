// `Form17` over suiten.ini of the sample: the choice and its colours, the
// questions, a write, a read that switches the collection, and its place.
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <filesystem>
#include <fstream>
#include <memory>
#include <vector>

#include "app/platform/grid.h"
#include "app/views/bookmark_window.h"
#include "app_test.h"
#include "core/corpus/orders.h"
#include "core/corpus/schema.h"
#include "core/reader/texts.h"
#include "dialogs/sample_corpus.h"

namespace suizo::apptest {

using app::BookmarkWindow;
using corpus::BookmarkKind;

namespace {

template <class W>
W* Control(QWidget* form, const QString& name) {
  W* w = form->findChild<W*>(name);
  if (w == nullptr) qFatal("no control %s", qPrintable(name));
  return w;
}

QString Q(std::u16string_view text) {
  return QString::fromUtf16(text.data(), static_cast<qsizetype>(text.size()));
}

std::string Bytes(const std::filesystem::path& path) {
  std::ifstream in(path, std::ios::binary);
  return std::string(std::istreambuf_iterator<char>(in), {});
}

}  // namespace

class BookmarkWindowTest : public QObject {
  Q_OBJECT

 private:
  std::unique_ptr<SampleCorpus> sample;
  std::unique_ptr<corpus::ProfileFile> file;
  std::unique_ptr<corpus::MemorySettings> store;
  QStringList asked;

  std::filesystem::path Ini() const {
    return std::filesystem::path(sample->dir.path().toStdString()) / "suiten.ini";
  }
  corpus::Corpus& Data() { return *sample->corpus; }
  void Choose(int gk) {
    sample->selection.MokRedo = gk != sample->selection.Gk ? 1 : 0;
    sample->selection.Gk = gk;
    corpus::ApplySelection(Data(), sample->selection);
  }
  int FirstLine(int mpos) const {
    return search::LineOrder::Writings(*sample->corpus).FirstLineOf(mpos);
  }
  std::u16string_view DatAt(int lpos, int field) {
    return Data().Dat().Get(Data().DatOrder[static_cast<std::size_t>(lpos)], field);
  }
  std::unique_ptr<BookmarkWindow> Open(const search::Position& place, bool answer,
                                       QPoint mov = {200, 150}) {
    auto dialog = std::make_unique<BookmarkWindow>(BookmarkKind::Writings, *file, Data(),
                                                   sample->selection, place, *store, mov);
    dialog->ask = [this, answer](QWidget*, const QString& question) {
      asked << question;
      return answer;
    };
    dialog->show();
    if (!QTest::qWaitForWindowExposed(dialog.get())) return nullptr;
    return dialog;
  }
  void Click(QWidget* dialog, const QString& name) {
    QTest::mouseClick(Control<QPushButton>(dialog, name), Qt::LeftButton);
  }
  QColor Back(QWidget* dialog, const QString& name) {
    return Control<QLineEdit>(dialog, name)->palette().color(QPalette::Base);
  }

 private slots:
  void initTestCase() { sample = std::make_unique<SampleCorpus>(); }

  void init() {
    sample->selection = corpus::Selection{};
    corpus::InitialOrders(Data(), sample->selection);
    std::filesystem::remove(Ini());
    file = std::make_unique<corpus::ProfileFile>(Ini());
    corpus::FillBookmarksOnFirstRun(*file, Data(), sample->selection);
    store = std::make_unique<corpus::MemorySettings>();
    asked.clear();
  }

  void rowsShowTheirCaptionsAndTheChoiceIsColoured() {
    auto d = Open({1, FirstLine(1), {}}, true);
    QVERIFY(d);
    QCOMPARE(d->objectName(), QStringLiteral("Form17"));
    QVERIFY(d->isModal());
    QCOMPARE(Control<QLineEdit>(d.get(), "Text1_1")->text(), QStringLiteral("---"));
    QCOMPARE(Control<QLineEdit>(d.get(), "Text2_10")->text(), QStringLiteral("---"));
    QVERIFY(Control<QLineEdit>(d.get(), "Text2_10")->isReadOnly());
    QCOMPARE(Control<QPushButton>(d.get(), "Command1")->text(), QStringLiteral("読込"));
    QCOMPARE(Control<QPushButton>(d.get(), "Command3")->text(), QStringLiteral("保存"));
    QCOMPARE(Control<QPushButton>(d.get(), "Command2")->text(), QStringLiteral("閉じる"));
    Click(d.get(), "Bm_3");
    Click(d.get(), "Bm_7");
    QCOMPARE(d->model().chosen(), 7);
    QVERIFY(Control<QPushButton>(d.get(), "Bm_7")->isChecked());
    QVERIFY(!Control<QPushButton>(d.get(), "Bm_3")->isChecked());
    QCOMPARE(Back(d.get(), "Text1_7"), platform::FromBgr(reader::kChosenText1));
    QCOMPARE(Back(d.get(), "Text2_7"), platform::FromBgr(reader::kChosenText2));
    QCOMPARE(Back(d.get(), "Text1_3"), platform::FromBgr(reader::kOtherText1));
    QCOMPARE(Back(d.get(), "Text2_3"), platform::FromBgr(reader::kOtherText2));
    // Nothing was asked by a choice alone.
    QVERIFY(asked.isEmpty());
  }

  void answeringNoLeavesFileAndPlace() {
    const std::string before = Bytes(Ini());
    const corpus::Selection selection = sample->selection;
    auto d = Open({2, FirstLine(2) + 1, {}}, false);
    QVERIFY(d);
    Click(d.get(), "Bm_4");
    Click(d.get(), "Command3");
    QCOMPARE(asked, QStringList{Q(reader::WriteQuestion(4))});
    QVERIFY(d->isVisible());  // the dialog stays
    QCOMPARE(d->written(), 0);
    Click(d.get(), "Command1");
    QCOMPARE(asked.size(), 2);
    QCOMPARE(asked.at(1), Q(reader::ReadQuestion(4)));
    QVERIFY(d->isVisible());
    QVERIFY(!d->moved());
    QCOMPARE(Bytes(Ini()), before);
    QCOMPARE(sample->selection.Gk, selection.Gk);
    QCOMPARE(sample->selection.Kn, selection.Kn);
    // Closed: nothing to apply.
    Click(d.get(), "Command2");
    QVERIFY(!d->isVisible());
    QCOMPARE(d->result(), int(QDialog::Rejected));
    QVERIFY(!d->moved());
  }

  void aWriteKeepsThePlaceAndItsTexts() {
    Choose(22);
    const search::Position place{2, FirstLine(2) + 1, {}};
    auto d = Open(place, true);
    QVERIFY(d);
    Click(d.get(), "Bm_4");
    Click(d.get(), "Command3");
    QCOMPARE(asked, QStringList{Q(reader::WriteQuestion(4))});
    QVERIFY(!d->isVisible());
    QCOMPARE(d->result(), int(QDialog::Accepted));
    QCOMPARE(d->written(), 4);
    QVERIFY(!d->moved());

    const corpus::ProfileFile saved(Ini());  // as a later run reads it
    QVERIFY(saved.Read(u"BMark04", u"Gk", u"") == u"22");
    QVERIFY(saved.Read(u"BMark04", u"Mpos", u"") == u"2");
    QCOMPARE(Q(saved.Read(u"BMark04", u"Lpos", u"")), QString::number(place.Lpos));
    QVERIFY(saved.Read(u"BMark04", u"T1", u"") == DatAt(place.Lpos, 6));
    QVERIFY(saved.Read(u"BMark04", u"T2", u"") == DatAt(place.Lpos, corpus::dat::kMain));
    QCOMPARE(Control<QLineEdit>(d.get(), "Text1_4")->text(), Q(DatAt(place.Lpos, 6)));
    QCOMPARE(Control<QLineEdit>(d.get(), "Text2_4")->text(),
             Q(DatAt(place.Lpos, corpus::dat::kMain)));
    // The next dialog shows it.
    auto again = Open(place, true);
    QVERIFY(again);
    QCOMPARE(Control<QLineEdit>(again.get(), "Text1_4")->text(), Q(DatAt(place.Lpos, 6)));
  }

  void aReadUnderAnotherCollectionSwitchesToItFirst() {
    // Kept while reading 定本.
    Choose(22);
    const search::Position place{3, FirstLine(3) + 1, {}};
    const std::u16string title(DatAt(place.Lpos, 6));
    {
      auto d = Open(place, true);
      QVERIFY(d);
      Click(d.get(), "Bm_5");
      Click(d.get(), "Command3");
      QCOMPARE(d->written(), 5);
    }
    // Back in the system's own order, and read.
    Choose(0);
    QCOMPARE(sample->selection.Gk, 0);
    asked.clear();
    auto d = Open({1, FirstLine(1), {}}, true);
    QVERIFY(d);
    Click(d.get(), "Bm_5");
    Click(d.get(), "Command1");
    QCOMPARE(asked, QStringList{Q(reader::ReadQuestion(5))});
    QVERIFY(!d->isVisible());
    QCOMPARE(d->result(), int(QDialog::Accepted));
    QVERIFY(d->moved());
    QVERIFY(d->moved()->selectionChanged);
    QCOMPARE(d->moved()->place.Mpos, place.Mpos);
    QCOMPARE(d->moved()->place.Lpos, place.Lpos);
    // The orders are 定本's again, so the numbers mean the same line.
    QCOMPARE(sample->selection.Gk, 22);
    QVERIFY(DatAt(place.Lpos, 6) == title);
  }

  void opensWhereTheOwnerSaysAndKeepsItsWidth() {
    store->Write(u"@しおり", u"w", u"900");
    auto d = Open({1, FirstLine(1), {}}, true, QPoint(130, 170));
    QVERIFY(d);
    QCOMPARE(d->width(), 900);
    QCOMPARE(d->model().MovX, 130);
    QCOMPARE(d->model().MovY, 170);
    QCOMPARE(d->frameGeometry().topLeft(), QPoint(130, 170));
    d->resize(800, d->height());
    Click(d.get(), "Command2");
    QVERIFY(store->Read(u"@しおり", u"w") == u"800");
  }
};

SUIZO_APP_TEST(BookmarkWindowTest);

}  // namespace suizo::apptest

#include "bookmark_window_test.moc"
