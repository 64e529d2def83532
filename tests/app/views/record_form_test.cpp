#include <QApplication>
#include <QLabel>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <filesystem>
#include <optional>

#include "app/corpus/program.h"
#include "app/platform/qt_text.h"
#include "app/views/contents_form.h"
#include "app/views/record_form.h"
#include "app/views/writings_form.h"
#include "app_test.h"
#include "core/corpus/settings.h"
#include "core/text/utf16.h"
#include "pane_eval.h"
#include "started_program.h"

namespace suizo::app {

class RecordFormTest : public QObject {
  Q_OBJECT

 private:
  QTemporaryDir data_;
  corpus::MemorySettings settings_;
  std::unique_ptr<Program> program_;

  std::filesystem::path Path() const { return data_.path().toStdString(); }

  template <class Form, class Window>
  Form* FormOf(reader::FormKind kind) const {
    const auto windows = program_->windows().OfKind(kind);
    if (windows.empty()) return nullptr;
    for (QWidget* w : QApplication::topLevelWidgets()) {
      auto* form = qobject_cast<Form*>(w);
      if (form != nullptr && static_cast<reader::OpenWindow*>(&form->window()) == windows.back())
        return form;
    }
    return nullptr;
  }

  // The first document whose record has a link of the kind, and the pane.
  std::optional<std::pair<int, int>> DocumentWithLink(RecordForm& record,
                                                      std::u16string_view mark) {
    for (int m = 1; m <= program_->corpus().MosMaxY; ++m) {
      record.model().Mpos = m;
      const views::RecordDisplay d = record.model().Hyouji();
      for (int p = 1; p <= views::kRecordPanes; ++p) {
        if (text::Contains(d.panes[static_cast<std::size_t>(p)].body, mark)) return std::pair{m, p};
      }
    }
    return std::nullopt;
  }

 private slots:
  void initTestCase() {
    QVERIFY(data_.isValid());
    std::filesystem::copy(SUIZO_SAMPLE_DIR, Path(), std::filesystem::copy_options::recursive);
    program_ = apptest::StartedProgram(Path(), settings_);
    QVERIFY(program_);
  }

  void cleanupTestCase() {
    program_->End();
    program_.reset();
  }

  void opensFromTheReaderAndItsLinksLeadOn() {
    auto* contents = program_->contents();
    QVERIFY(contents->findChild<QPushButton*>("Command5")->isEnabled());
    contents->findChild<QPushButton*>("Command4")->click();
    auto* reader = FormOf<WritingsForm, reader::WritingsWindow>(reader::FormKind::Form2);
    QVERIFY(reader);
    reader->reader().GoToWork(3);
    reader->window().Hyouji();
    auto* command5 = reader->findChild<QPushButton*>("Command5");
    QVERIFY(command5->isEnabled());
    command5->click();
    auto* record = FormOf<RecordForm, views::RecordWindow>(reader::FormKind::Form5);
    QVERIFY(record && record->isVisible());
    QCOMPARE(record->model().Mpos, 3);
    QCOMPARE(record->findChild<QLabel*>("Text4")->text().isEmpty(), false);

    // The arrows go from document to document.
    record->setFocus();
    QTest::keyClick(record, Qt::Key_Down);
    QCOMPARE(record->model().Mpos, 4);

    // A line of the writings named in the commentary opens the reader there.
    const auto line = DocumentWithLink(*record, u"<a href='D");
    QVERIFY2(line, "the sample's records name no line");
    record->window().Hyouji();
    const std::size_t readers = program_->windows().OfKind(reader::FormKind::Form2).size();
    record->Pane(line->second)
        ->RunScript(QStringLiteral("document.querySelector(\"a[href^='D']\").click();"));
    QTRY_VERIFY(program_->windows().OfKind(reader::FormKind::Form2).size() > readers);
    auto* opened = FormOf<WritingsForm, reader::WritingsWindow>(reader::FormKind::Form2);
    QVERIFY(opened && opened->isVisible());

    // A document named by its number moves the record to it.
    const auto document = DocumentWithLink(*record, u"<a href='");
    QVERIFY(document);
    record->window().Hyouji();
    const int before = record->model().Mpos;
    record->Pane(document->second)
        ->RunScript(QStringLiteral("for(const a of "
                                   "document.querySelectorAll('a')){if(!a.getAttribute('href')."
                                   "startsWith('D')){a.click();break;}}"));
    QTRY_VERIFY(record->model().Mpos != before || !record->isVisible());

    // A right pane shown on the left, then back.
    record->showNormal();
    const auto shown = record->model().PaneDoubleClick(3);
    QVERIFY(shown);
    record->Show(*shown);
    QVERIFY(record->findChild<QLabel*>("Pic")->isVisible());
    QVERIFY(record->findChild<QLabel*>("Text9")->isVisible());
    QTest::mouseClick(record->findChild<QLabel*>("Text9"), Qt::LeftButton);
    QVERIFY(!record->findChild<QLabel*>("Pic")->isVisible());
    // So does a click in the left pane itself; one in a right pane does not.
    record->Show(*record->model().PaneDoubleClick(4));
    QMetaObject::invokeMethod(record->Pane(4), "clicked");
    QVERIFY(record->findChild<QLabel*>("Pic")->isVisible());
    QMetaObject::invokeMethod(record->Pane(1), "clicked");
    QVERIFY(!record->findChild<QLabel*>("Pic")->isVisible());
  }
};

SUIZO_APP_TEST(RecordFormTest);

}  // namespace suizo::app

#include "record_form_test.moc"
