#include <QApplication>
#include <QCheckBox>
#include <QLabel>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <filesystem>
#include <functional>

#include "app/corpus/program.h"
#include "app/platform/qt_text.h"
#include "app/views/chronology_form.h"
#include "app/views/contents_form.h"
#include "app_test.h"
#include "core/corpus/orders.h"
#include "core/corpus/settings.h"
#include "core/text/numbers.h"
#include "started_program.h"

namespace suizo::app {

class ChronologyFormTest : public QObject {
  Q_OBJECT

 private:
  QTemporaryDir data_;
  corpus::MemorySettings settings_;
  std::unique_ptr<Program> program_;

  std::filesystem::path Path() const { return data_.path().toStdString(); }

  ChronologyForm* Chronology() const {
    for (QWidget* w : QApplication::topLevelWidgets()) {
      if (auto* form = qobject_cast<ChronologyForm*>(w)) return form;
    }
    return nullptr;
  }

  // The chronology as the record's 年表 opens it, at the work's event.
  ChronologyForm* OpenAt(std::u16string_view sysNo) {
    const int work = corpus::FindContentsPlace(program_->corpus(), sysNo).Mpos;
    program_->navigator().GoNen(u"", work, reader::kFromWritingsContents);
    return Chronology();
  }

  // The list position of an event, or 0.
  int PositionOf(ChronologyForm& form, int nenNo) const {
    const auto order = form.model().NenOrder();
    for (std::size_t p = 1; p < order.size(); ++p) {
      if (text::Val(program_->corpus().Nen().Get(order[p], corpus::nen::kNumber)) == nenNo) {
        return static_cast<int>(p);
      }
    }
    return 0;
  }

  // The middle of a cell in the grid's viewport, where the mouse goes.
  static QPoint At(platform::Grid* grid, int row, int col) {
    return grid->viewport()->mapFrom(grid, grid->CellRect(row, col).center());
  }

 private slots:
  void initTestCase() {
    QVERIFY(data_.isValid());
    std::filesystem::copy(SUIZO_SAMPLE_DIR, Path(), std::filesystem::copy_options::recursive);
  }

  void init() {
    program_ = apptest::StartedProgram(Path(), settings_);
    QVERIFY(program_);
  }

  void cleanup() {
    program_->End();
    program_.reset();
  }

  void opensFromEveryViewButtonAtTheEventOfTheWork() {
    ContentsForm& contents = *program_->contents();
    // Every button of the contents that leads to a view is there now.
    for (int n = 4; n <= 9; ++n) {
      QVERIFY2(contents.findChild<QPushButton*>(QStringLiteral("Command%1").arg(n))->isEnabled(),
               qPrintable(QString::number(n)));
    }
    ChronologyForm* form = OpenAt(u"10154");
    QVERIFY(form && form->isVisible());
    QCOMPARE(form->findChild<QLabel*>("Label4")->text(), QStringLiteral("774"));
    // The current row is painted and the event stands in `Edit` over it.
    platform::Grid* grid = form->grid();
    const int row = form->model().Grid().Row;
    QCOMPARE(grid->Row(), row);
    QCOMPARE(grid->CellBackColor(row, views::kEventCol), QColor(0xFF, 0xFF, 0x00));
    QTRY_VERIFY(form->edit()->isVisible());
    QCOMPARE(form->edit()->toPlainText(), grid->Text(row, views::kEventCol));
    QVERIFY(grid->CellRect(row, views::kEventCol)
                .intersects(QRect(grid->viewport()->mapTo(grid, form->edit()->geometry().topLeft()),
                                  form->edit()->size())));
    // The office headers read downwards.
    QCOMPARE(grid->Text(0, 0), QStringLiteral("天\n皇"));
  }

  void foldsAndOpensAgainAtTheSameEvent() {
    ChronologyForm* form = OpenAt(u"10154");
    QVERIFY(form);
    platform::Grid* grid = form->grid();
    const int rows = grid->Rows();
    grid->setFocus();
    QTest::keyClick(grid, Qt::Key_Space);
    QCOMPARE(form->findChild<QPushButton*>("Command13")->text(), QStringLiteral("▼"));
    QVERIFY(grid->Rows() < rows);
    QCOMPARE(grid->columnWidth(views::kEventCol), 0);  // the details are hidden
    QVERIFY(!form->edit()->isVisible());
    form->findChild<QPushButton*>("Command13")->click();
    QCOMPARE(grid->Rows(), rows);
    QCOMPARE(form->findChild<QLabel*>("Label4")->text(), QStringLiteral("774"));

    // Folded, a double click on another era opens at its first event.
    QTest::keyClick(grid, Qt::Key_Space);
    const int other = std::min(grid->Rows() - 1, 5);
    const QString era = grid->Text(other, views::kEraCol);
    QTest::mouseDClick(grid->viewport(), Qt::LeftButton, {}, At(grid, other, views::kEraCol));
    QCOMPARE(form->model().Fold, 0);
    QCOMPARE(grid->Text(form->model().Grid().Row, views::kEraCol), era);
    QVERIFY(grid->Text(form->model().Grid().Row - 1, views::kEraCol) != era);
  }

  void theKindsDialogFiltersAndKeepsTheToldEventsWithSomeKind() {
    ChronologyForm* form = OpenAt(u"10154");
    QVERIFY(form);
    auto* count = form->findChild<QLabel*>("Label5");
    const QString all = count->text();
    apptest::WithDialog([&] { form->findChild<QPushButton*>("Command7")->click(); },
                        [](QDialog& dialog) {
                          QCOMPARE(dialog.objectName(), QStringLiteral("Form14"));
                          dialog.findChild<QCheckBox*>("Check2_0")->click();
                          dialog.findChild<QPushButton*>("Command1")->click();
                        });
    QVERIFY(count->text() != all);
    QCOMPARE(form->findChild<QLabel*>("Label4")->text(), QStringLiteral("774"));  // found again

    apptest::WithDialog(
        [&] { form->OpenFilter(); },
        [](QDialog& dialog) {
          for (int i = 1; i < 6; ++i)
            dialog.findChild<QCheckBox*>(QStringLiteral("Check2_%1").arg(i))->click();
          QVERIFY(!dialog.findChild<QCheckBox*>("Check2_6")->isEnabled());
          dialog.findChild<QCheckBox*>("Check2_3")->click();
          QVERIFY(dialog.findChild<QCheckBox*>("Check2_6")->isEnabled());
          dialog.findChild<QPushButton*>("Command2")->click();  // cancelled: nothing applied
        });
    QVERIFY(count->text() != all);
    QCOMPARE(form->model().NenSel[1], 1);
  }

  void linksOpenTheDocumentAndTheSource() {
    ChronologyForm* form = OpenAt(u"10154");
    QVERIFY(form);
    platform::Grid* grid = form->grid();
    const int row = form->model().Grid().Row;
    QVERIFY(form->model().HandCursor(row, views::kLinkCol));
    QTest::mouseMove(grid->viewport(), At(grid, row, views::kLinkCol));
    QTRY_COMPARE(grid->viewport()->cursor().shape(), Qt::PointingHandCursor);
    QTest::mouseClick(grid->viewport(), Qt::LeftButton, {}, At(grid, row, views::kLinkCol));
    QTRY_COMPARE(program_->windows().OfKind(reader::FormKind::Form2).size(), std::size_t{1});

    // An event that names a source opens the sources' reader at it.
    const int source = PositionOf(*form, 8);
    QVERIFY(source > 0);
    form->model().RowChange(source);
    form->Show();
    auto* command9 = form->findChild<QPushButton*>("Command9");
    QVERIFY(command9->isEnabled());
    command9->click();
    QTRY_COMPARE(program_->windows().OfKind(reader::FormKind::Form16).size(), std::size_t{1});
  }

  void aNarrowWindowGrowsTheCurrentRowToItsEvent() {
    ChronologyForm* form = OpenAt(u"10154");
    QVERIFY(form);
    platform::Grid* grid = form->grid();
    const int normal = grid->CellRect(form->model().Grid().Row, views::kEventCol).height();
    form->resize(520, form->height());
    QTest::qWait(50);
    // The longest event, entered at the narrow widths.
    const views::ChronologyGrid& g = form->model().Grid();
    int longest = 1;
    for (int r = 1; r < g.Rows(); ++r) {
      if (g.TextMatrix(r, views::kEventCol).size() > g.TextMatrix(longest, views::kEventCol).size())
        longest = r;
    }
    QVERIFY2(g.TextMatrix(longest, views::kEventCol).size() >= 24, "the sample has no long event");
    form->model().RowChange(longest);
    form->Show();
    QVERIFY(grid->CellRect(longest, views::kEventCol).height() >= 2 * normal - 1);
    QCOMPARE(form->edit()->toPlainText(), grid->Text(longest, views::kEventCol));
    // Left, the row is back at its height.
    form->model().RowChange(longest == 1 ? 2 : longest - 1);
    form->Show();
    QVERIFY(grid->CellRect(longest, views::kEventCol).height() <= normal + 1);
  }
};

SUIZO_APP_TEST(ChronologyFormTest);

}  // namespace suizo::app

#include "chronology_form_test.moc"
