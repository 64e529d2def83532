#include <QAbstractButton>
#include <QApplication>
#include <QInputMethodEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <filesystem>

#include "app/corpus/program.h"
#include "app/platform/grid.h"
#include "app/views/contents_form.h"
#include "app_test.h"
#include "core/corpus/schema.h"
#include "core/corpus/settings.h"
#include "core/text/utf16.h"
#include "core/views/selection_dialog.h"

namespace suizo::app {
namespace {

QString Q(std::u16string_view text) {
  return QString::fromUtf16(text.data(), static_cast<qsizetype>(text.size()));
}

std::filesystem::path Path(const QTemporaryDir& dir) {
  return std::filesystem::path(dir.path().toStdString());
}

}  // namespace

class ContentsFormTest : public QObject {
  Q_OBJECT

 private:
  QTemporaryDir data_;
  corpus::MemorySettings settings_;

  // A fresh sample folder with the exports only, as a first start finds it.
  void FreshSample() {
    std::filesystem::remove_all(Path(data_));
    std::filesystem::copy(SUIZO_SAMPLE_DIR, Path(data_), std::filesystem::copy_options::recursive);
  }
  std::unique_ptr<Program> Started() {
    auto program = std::make_unique<Program>(Path(data_), settings_, u"0.1.0");
    program->showError = [](const QString& message) { QFAIL(qPrintable(message)); };
    if (!program->Start()) return nullptr;
    return program;
  }
  template <class T>
  T* Control(Program& p, const char* name) {
    return p.contents()->findChild<T*>(QString::fromLatin1(name));
  }

 private slots:
  void initTestCase() {
    QVERIFY(data_.isValid());
    FreshSample();
  }

  void firstStartConvertsAndLaterStartsLoad() {
    auto first = Started();
    QVERIFY(first);
    QVERIFY(first->Converted());
    QVERIFY(std::filesystem::exists(Path(data_) / "ver.dax"));
    QCOMPARE(first->contents()->objectName(), QStringLiteral("Form9"));
    QVERIFY(first->contents()->isVisible());
    QCOMPARE(first->contents()->windowTitle(), QStringLiteral("目次"));
    first->End();
    first.reset();

    auto second = Started();
    QVERIFY(second);
    QVERIFY(!second->Converted());
    auto* grid = Control<platform::Grid>(*second, "Grid1");
    QVERIFY(grid);
    QCOMPARE(grid->Rows(), second->corpus().MosMaxY + 1);
    second->End();
  }

  void searchesATitleInHiraganaAndRefinesTwice() {
    auto p = Started();
    QVERIFY(p);
    views::Contents& model =
        static_cast<views::ContentsWindow&>(*p->windows().First(reader::FormKind::Form9)).model();
    // A reading of a title in the list, in part.
    const int row = p->corpus().MokOrder[3];
    const std::u16string reading(p->corpus().Mok().Get(row, 25).substr(0, 3));
    QVERIFY(!reading.empty());
    auto* box = Control<QLineEdit>(*p, "Combo1");
    box->setFocus();
    // Japanese arrives through the input method as a committed string.
    QInputMethodEvent typed;
    typed.setCommitString(Q(reading));
    QApplication::sendEvent(box, &typed);
    QTest::keyClick(box, Qt::Key_Return);
    QVERIFY(model.Srn() > 0);
    auto* counter = Control<QPushButton>(*p, "Label3");
    QCOMPARE(counter->text(), QStringLiteral("1/%1").arg(model.Srn()));
    QVERIFY(counter->isEnabled());

    // Refine, search again inside, refine, then undo one level.
    auto* refine = Control<QPushButton>(*p, "Command14");
    auto* undo = Control<QPushButton>(*p, "Command15");
    const int listed = p->corpus().MosMaxY;
    QTest::mouseClick(refine, Qt::LeftButton);
    QCOMPARE(model.RefineCount(), 1);
    QVERIFY(p->corpus().MosMaxY < listed || model.Srn() == listed);
    const int afterOne = p->corpus().MosMaxY;
    box->setText(Q(reading.substr(0, 2)));
    QTest::mouseClick(Control<QPushButton>(*p, "Command1"), Qt::LeftButton);
    QVERIFY(model.Srn() > 0);
    QTest::mouseClick(refine, Qt::LeftButton);
    QCOMPARE(model.RefineCount(), 2);
    QVERIFY(undo->isEnabled());
    QTest::mouseClick(undo, Qt::LeftButton);
    QCOMPARE(model.RefineCount(), 1);
    QCOMPARE(p->corpus().MosMaxY, afterOne);
    QCOMPARE(Control<QLabel>(*p, "RefineLevel")->text().left(1), QStringLiteral("■"));
    p->End();
  }

  void followsAChangeOfCollection() {
    auto p = Started();
    QVERIFY(p);
    auto* order = Control<QLabel>(*p, "Label1");
    QVERIFY(order->text().startsWith(QStringLiteral("ｼｽﾃﾑ")));
    // What the selection dialog's OK does.
    p->selection().Gk = 22;
    p->selection().Kn = 1;
    p->selection().MokRedo = 1;
    views::ConvSui(p->corpus(), p->selection(), p->windows());
    QCOMPARE(order->text(), QStringLiteral("定本並替:系年順"));
    auto* grid = Control<platform::Grid>(*p, "Grid1");
    QCOMPARE(grid->Rows(), p->corpus().MosMaxY + 1);
    // No class: the list empties, two rows with the second hidden.
    p->selection().CSel.fill(0);
    views::ConvSui(p->corpus(), p->selection(), p->windows());
    QCOMPARE(grid->Rows(), 2);
    QVERIFY(grid->CellRect(1, 1).isEmpty());
    p->End();
  }

  // The class strip opens the selection dialog over the window; its OK
  // carries the new collection and order into the list.
  void theSourcesListOpensFromTheButtonAndSwitchesItsOrder() {
    auto p = Started();
    QVERIFY(p);
    auto* command9 = Control<QPushButton>(*p, "Command9");
    QVERIFY(command9->isEnabled());
    command9->click();
    auto* sources =
        dynamic_cast<views::ContentsWindow*>(p->windows().First(reader::FormKind::Form15));
    QVERIFY(sources);
    ContentsForm* form = nullptr;
    for (QWidget* w : QApplication::topLevelWidgets()) {
      if (w->objectName() == QStringLiteral("Form15")) form = qobject_cast<ContentsForm*>(w);
    }
    QVERIFY(form && form->isVisible());
    QCOMPARE(form->findChild<platform::Grid*>("Grid1")->Rows(), p->corpus().SMosMaxY + 1);
    QVERIFY(!form->findChild<QPushButton*>("Command2")->isVisible());  // no "終了" here
    QVERIFY(form->findChild<QPushButton*>("Command9")->isEnabled());   // back to the writings' list
    QVERIFY(form->findChild<QPushButton*>("Command4")->isEnabled());   // the sources reader

    // The order label switches the order itself, with no dialog.
    auto* order = form->findChild<QLabel*>("Label1");
    const QString before = order->text();
    const std::vector<int> systemOrder = p->corpus().SMokOrder;
    QTest::mouseClick(order, Qt::LeftButton);
    QCOMPARE(p->selection().SKn, 1);
    QVERIFY(order->text() != before);
    QVERIFY(p->corpus().SMokOrder != systemOrder);
    QTest::mouseClick(order, Qt::LeftButton);
    QCOMPARE(p->selection().SKn, 0);

    // It closes like any view, and the writings' list comes forward.
    QVERIFY(form->close());
    QTRY_VERIFY(!p->windows().First(reader::FormKind::Form15));
    QVERIFY(p->contents()->isVisible());
    p->End();
  }

  void theClassStripOpensTheSelectionDialog() {
    auto p = Started();
    QVERIFY(p);
    bool seen = false;
    QTimer::singleShot(0, [&] {
      QWidget* dialog = QApplication::activeModalWidget();
      QVERIFY(dialog);
      QCOMPARE(dialog->objectName(), QStringLiteral("Form3"));
      seen = true;
      dialog->findChild<QAbstractButton*>(QStringLiteral("Option1_1"))->click();
      dialog->findChild<QAbstractButton*>(QStringLiteral("Check1"))->click();
      dialog->findChild<QAbstractButton*>(QStringLiteral("Command1"))->click();
    });
    QTest::mouseClick(Control<QLabel>(*p, "Clev_3"), Qt::LeftButton);
    QVERIFY(seen);
    QCOMPARE(p->selection().Gk, 22);
    QCOMPARE(Control<QLabel>(*p, "Label1")->text(), QStringLiteral("定本並替:系年順"));
    p->End();
  }

  // Deleting every setting from the settings dialog ends the run.
  void deleteAllFromTheSettingsDialogEndsTheRun() {
    auto p = Started();
    QVERIFY(p);
    settings_.Write(u"@設定", u"Itaiji", u"0");
    p->ask = [](QWidget*, const QString& question) {
      return question.contains(QStringLiteral("設定をすべて削除"));
    };
    QTimer::singleShot(0, [] {
      QWidget* dialog = QApplication::activeModalWidget();
      QVERIFY(dialog);
      QCOMPARE(dialog->objectName(), QStringLiteral("Form13"));
      dialog->findChild<QAbstractButton*>(QStringLiteral("Command1"))->click();
    });
    QTest::mouseClick(Control<QPushButton>(*p, "Command11"), Qt::LeftButton);
    QVERIFY(p->Ending());
    QVERIFY(!settings_.Read(u"@設定", u"Itaiji").has_value());
    QVERIFY(!corpus::ReadGeometry(settings_, u"@目次").has_value());
  }

  void closingIsRefusedButTheEndButtonEnds() {
    auto p = Started();
    QVERIFY(p);
    QVERIFY(!p->contents()->close());
    QVERIFY(p->contents()->isVisible());
    QVERIFY(!(p->contents()->windowFlags() & Qt::WindowCloseButtonHint));
    QTest::mouseClick(Control<QPushButton>(*p, "Command2"), Qt::LeftButton);
    QVERIFY(p->Ending());
    QVERIFY(!p->contents()->isVisible());
  }

  void theEndWritesNotesBackOnlyWhenEdited() {
    const auto store = Path(data_) / "翠典本文.dax";
    const auto before = std::filesystem::last_write_time(store);
    {
      auto p = Started();
      QVERIFY(p);
      p->End();
    }
    QCOMPARE(std::filesystem::last_write_time(store), before);
    {
      auto p = Started();
      QVERIFY(p);
      const int row = p->corpus().DatOrder[1];
      p->corpus().Dat().Set(row, corpus::dat::kNote2, u"余白の覚え書き");
      p->corpus().DatDirty = 1;
      p->End();
    }
    corpus::Corpus reread(Path(data_));
    reread.ReadData(0);
    bool found = false;
    for (int r = 1; r <= reread.Dat().rows() && !found; ++r) {
      found = reread.Dat().Get(r, corpus::dat::kNote2) == u"余白の覚え書き";
    }
    QVERIFY(found);
  }

  void theWindowPlaceIsKept() {
    auto p = Started();
    QVERIFY(p);
    p->contents()->setGeometry(40, 50, 900, 600);
    QTRY_VERIFY(corpus::ReadGeometry(settings_, u"@目次").has_value());
    const auto g = corpus::ReadGeometry(settings_, u"@目次");
    QCOMPARE(g->w, 900);
    p->End();
  }
};

SUIZO_APP_TEST(ContentsFormTest);

}  // namespace suizo::app

#include "contents_form_test.moc"
