#include <QApplication>
#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <filesystem>

#include "app/corpus/program.h"
#include "app/platform/qt_text.h"
#include "app/views/contents_form.h"
#include "app/views/outline_form.h"
#include "app/views/scripture_forms.h"
#include "app/views/writings_form.h"
#include "app_test.h"
#include "core/corpus/orders.h"
#include "core/corpus/schema.h"
#include "core/corpus/settings.h"
#include "core/scripture/outline.h"
#include "core/scripture/sutra_reader.h"
#include "pane_eval.h"
#include "started_program.h"

namespace suizo::app {

using platform::Q;

class ScriptureFormsTest : public QObject {
  Q_OBJECT

 private:
  QTemporaryDir data_;
  corpus::MemorySettings settings_;
  std::unique_ptr<Program> program_;

  std::filesystem::path Path() const { return data_.path().toStdString(); }

  std::unique_ptr<Program> Started() { return apptest::StartedProgram(Path(), settings_); }

  // The form of the window of `kind` made last.
  template <class Form>
  Form* Last(reader::FormKind kind) const {
    const auto windows = program_->windows().OfKind(kind);
    if (windows.empty()) return nullptr;
    for (QWidget* w : QApplication::topLevelWidgets()) {
      auto* form = qobject_cast<Form*>(w);
      if (form != nullptr && &form->textView() == windows.back()) return form;
    }
    return nullptr;
  }

  template <class T>
  static T* Control(QWidget& form, const char* name) {
    return form.findChild<T*>(QString::fromLatin1(name));
  }

  static QString PaneText(ReaderForm& form, int pane) {
    return apptest::Eval(*form.Pane(pane),
                         QStringLiteral("document.body?document.body.innerText:''"), 2000)
        .value_or(QString())
        .toString();
  }

  // The sources' list, from its button in the writings' list.
  ContentsForm* SourcesList() {
    program_->contents()->findChild<QPushButton*>("Command9")->click();
    for (QWidget* w : QApplication::topLevelWidgets()) {
      if (w->objectName() == QStringLiteral("Form15") && w->isVisible())
        return qobject_cast<ContentsForm*>(w);
    }
    return nullptr;
  }

  // Types a note into pane 4 of a reader and ends the editing with Enter.
  static void EditNote(ReaderForm& form, const QString& note) {
    QVERIFY(form.StartNoteEdit(4));
    QInputMethodEvent typed;
    typed.setCommitString(note);
    QApplication::sendEvent(form.EditBox(), &typed);
    QTest::keyClick(form.EditBox(), Qt::Key_Return);
    QVERIFY(!form.EditBox()->isVisible());
  }

 private slots:
  void initTestCase() {
    QVERIFY(data_.isValid());
    std::filesystem::copy(SUIZO_SAMPLE_DIR, Path(), std::filesystem::copy_options::recursive);
  }

  void init() {
    program_ = Started();
    QVERIFY(program_);
  }

  void cleanup() {
    if (program_) program_->End();
    program_.reset();
  }

  void sutraWalksItsChaptersToBothEnds() {
    auto* command6 = Control<QPushButton>(*program_->contents(), "Command6");
    QVERIFY(command6->isEnabled());
    command6->click();
    auto* sutra = Last<SutraForm>(reader::FormKind::Form7);
    QVERIFY(sutra && sutra->isVisible());
    scripture::SutraReader& r = sutra->reader();
    QCOMPARE(r.Chapter(), std::u16string(scripture::kFirstChapter));
    QCOMPARE(Control<QLabel>(*sutra, "Text5")->text(), Q(scripture::kFirstChapter));
    QTRY_VERIFY(!PaneText(*sutra, 1).trimmed().isEmpty());
    sutra->setFocus();

    // At the first chapter Ctrl+Up stays; Ctrl+Down goes chapter by chapter.
    QTest::keyClick(sutra, Qt::Key_Up, Qt::ControlModifier);
    QCOMPARE(r.Lpos(), 1);
    std::u16string before = r.Chapter();
    int chapters = 0;
    while (chapters < 100) {
      QTest::keyClick(sutra, Qt::Key_Down, Qt::ControlModifier);
      if (r.Chapter() == before) break;
      QVERIFY(r.Chapter() != before);
      before = r.Chapter();
      ++chapters;
    }
    QVERIFY(chapters > 2);
    QCOMPARE(r.Chapter(), std::u16string(scripture::kLastChapter));
    QCOMPARE(Control<QLabel>(*sutra, "Text5")->text(), Q(scripture::kLastChapter));
    // Ctrl+Up goes to the head of the chapter before.
    QTest::keyClick(sutra, Qt::Key_Up, Qt::ControlModifier);
    QVERIFY(r.Chapter() != std::u16string(scripture::kLastChapter));

    // Down, the reading beside the Chinese text: 真訓 moves the second page.
    QTest::keyClick(sutra, Qt::Key_Space);
    QCOMPARE(r.Muki1, 1);
    QVERIFY(sutra->Pane(2)->isVisible());
    QVERIFY(!sutra->Pane(3)->isVisible());
    auto* check1 = Control<QCheckBox>(*sutra, "Check1");
    QVERIFY(check1->isVisible());
    check1->click();
    QVERIFY(sutra->Pane(3)->isVisible());
    QVERIFY(!sutra->Pane(2)->isVisible());
    QTRY_VERIFY(!PaneText(*sutra, 3).trimmed().isEmpty());
  }

  void sutraOpensFromASelectionAndFromAQuotationLink() {
    program_->contents()->findChild<QPushButton*>("Command4")->click();
    auto* writings = Last<WritingsForm>(reader::FormKind::Form2);
    QVERIFY(writings);
    QTRY_VERIFY(!PaneText(*writings, 1).trimmed().isEmpty());
    // A word selected in the writings is looked up in the sutra.
    writings->Pane(1)->RunScript(
        QStringLiteral("document.body.innerHTML='衆生';var "
                       "r=document.createRange();r.selectNodeContents(document.body);"
                       "getSelection().removeAllRanges();getSelection().addRange(r);"));
    QTRY_COMPARE(writings->Pane(1)->SelectedText(), QStringLiteral("衆生"));
    auto* command6 = Control<QPushButton>(*writings, "Command6");
    QVERIFY(command6->isEnabled());
    command6->click();
    auto* sutra = Last<SutraForm>(reader::FormKind::Form7);
    QVERIFY(sutra && sutra->isVisible());
    QCOMPARE(Control<QLineEdit>(*sutra, "Combo1")->text(), QStringLiteral("衆生"));
    QVERIFY(sutra->reader().engine().Srn > 0);

    // A page of the sutra edition in the quotation index opens the sutra there.
    const corpus::ReaderPlace place = corpus::FindReaderPlace(program_->corpus(), u"16610");
    writings->reader().GoToLine(place.Lpos);
    writings->window().Hyouji();
    QTRY_VERIFY(PaneText(*writings, 7).contains(QStringLiteral("384.41")));
    const int before = sutra->reader().Lpos();
    writings->Pane(7)->RunScript(
        QStringLiteral("document.querySelector(\"a[href='384.41']\").click();"));
    QTRY_VERIFY(Last<SutraForm>(reader::FormKind::Form7)->reader().Lpos() != before);
    const corpus::Table& hok = program_->corpus().table(corpus::TableId::Hok);
    const int row = Last<SutraForm>(reader::FormKind::Form7)->reader().Lpos();
    QVERIFY(Q(hok.Get(row, corpus::hok::kKaiketsuPage)).startsWith(QStringLiteral("384")));
  }

  void outlinesOpenAtTheRowStepByGroupsAndLeadBack() {
    program_->navigator().GoKyou(u"", 600, reader::kWritingsFamily);
    auto* sutra = Last<SutraForm>(reader::FormKind::Form7);
    QVERIFY(sutra);
    QCOMPARE(sutra->reader().Lpos(), 600);
    Control<QPushButton>(*sutra, "Command5")->click();
    OutlineForm* outline = sutra->Outline();
    QVERIFY(outline && outline->isVisible());
    QCOMPARE(outline->windowTitle(), QStringLiteral("法華経総科"));
    QVERIFY(outline->GridAt(0)->isVisible() && !outline->GridAt(1)->isVisible());
    const scripture::Outline& model = outline->model();
    const auto number = [&](int grid) {
      const scripture::OutlineGrid& g = model.Grid(grid);
      return Q(g.TextMatrix(g.Row, 2)).toInt();
    };
    // The broad outline stands on the group that holds row 600.
    QVERIFY(number(0) <= 600);
    QVERIFY(model.Grid(0).Row >= 1);
    QCOMPARE(outline->GridAt(0)->Row(), model.Grid(0).Row);

    // The arrow steps by whole groups: the next number, on its last row.
    const int before = number(0);
    QTest::keyClick(outline->GridAt(0), Qt::Key_Down);
    QVERIFY(number(0) > before);
    const scripture::OutlineGrid& g0 = model.Grid(0);
    QVERIFY(g0.Row == g0.Rows - 1 || g0.TextMatrix(g0.Row + 1, 2) != g0.TextMatrix(g0.Row, 2));
    QCOMPARE(g0.CellBackColor(g0.Row, 2), scripture::kGroupBack);

    // The switch shows the fine outline at the same place.
    Control<QPushButton>(*outline, "Command1")->click();
    QCOMPARE(outline->windowTitle(), QStringLiteral("法華経科文"));
    QVERIFY(outline->GridAt(1)->isVisible() && !outline->GridAt(0)->isVisible());
    QVERIFY(number(1) >= 1);
    // Enter leads back into the reader at the outline's row.
    const int target = number(1);
    QTest::keyClick(outline->GridAt(1), Qt::Key_Return);
    QVERIFY(!outline->isVisible());
    QCOMPARE(sutra->reader().Lpos(), target);
    QVERIFY(sutra->isVisible());

    // 科文 opens the fine outline directly.
    Control<QPushButton>(*sutra, "Command6")->click();
    QVERIFY(outline->isVisible());
    QCOMPARE(outline->model().SKflag, 1);
  }

  void sourcesOpenFromTheirListAndSearchByKanji() {
    ContentsForm* list = SourcesList();
    QVERIFY(list);
    auto* open = Control<QPushButton>(*list, "Command4");
    QVERIFY(open->isEnabled());
    open->click();
    auto* sources = Last<SourcesForm>(reader::FormKind::Form16);
    QVERIFY(sources && sources->isVisible());
    QCOMPARE(sources->reader().Mpos(), list->window().model().Mpos);
    QTRY_VERIFY(!PaneText(*sources, 1).trimmed().isEmpty());

    // The kanji-only split by Ctrl at the press: kana drop out.
    auto* box = Control<QLineEdit>(*sources, "Combo1");
    box->setText(QStringLiteral("寺の縁起"));
    auto* command1 = Control<QPushButton>(*sources, "Command1");
    QTest::mousePress(command1, Qt::LeftButton, Qt::ControlModifier);
    QTRY_COMPARE(sources->reader().engine().LastDivMode(), 2);
    QTest::mouseRelease(command1, Qt::LeftButton, Qt::ControlModifier);
    QVERIFY(sources->reader().engine().Srn > 0);

    // The list's order switched with a word in its box keeps the search.
    views::Contents& model = list->window().model();
    list->window().SetCombo1(u"寺");
    list->window().Kensaku(0);
    const int hits = model.Srn();
    QVERIFY(hits > 0);
    QTest::mouseClick(Control<QLabel>(*list, "Label1"), Qt::LeftButton);
    QCOMPARE(program_->selection().SKn, 1);
    QCOMPARE(model.Srn(), hits);
    QCOMPARE(Control<QLineEdit>(*list, "Combo1")->text(), QStringLiteral("寺"));
    // The reader stays on its line in the new order.
    const std::u16string line(
        sources->reader().table().Text(sources->reader().Lpos(), corpus::sdat::kSysNo));
    QVERIFY(!line.empty());
  }

  void notesInBothReadersOutliveARestart() {
    program_->navigator().GoKyou(u"", 212, reader::kWritingsFamily);
    auto* sutra = Last<SutraForm>(reader::FormKind::Form7);
    QVERIFY(sutra);
    EditNote(*sutra, QStringLiteral("序の覚え"));
    QCOMPARE(program_->corpus().HokDirty, 1);
    program_->navigator().GoShiryou(u"", 3, 0, search::Method::And, 0, reader::kSourcesFamily);
    auto* sources = Last<SourcesForm>(reader::FormKind::Form16);
    QVERIFY(sources);
    EditNote(*sources, QStringLiteral("縁起の覚え"));
    QCOMPARE(program_->corpus().SDatDirty, 1);
    QTRY_VERIFY(PaneText(*sources, 4).contains(QStringLiteral("縁起の覚え")));

    program_->End();
    program_ = Started();
    QVERIFY(program_);
    program_->navigator().GoKyou(u"", 212, reader::kWritingsFamily);
    sutra = Last<SutraForm>(reader::FormKind::Form7);
    QVERIFY(sutra);
    QTRY_VERIFY(PaneText(*sutra, 4).contains(QStringLiteral("序の覚え")));
    program_->navigator().GoShiryou(u"", 3, 0, search::Method::And, 0, reader::kSourcesFamily);
    sources = Last<SourcesForm>(reader::FormKind::Form16);
    QVERIFY(sources);
    QTRY_VERIFY(PaneText(*sources, 4).contains(QStringLiteral("縁起の覚え")));
  }
};

SUIZO_APP_TEST(ScriptureFormsTest);

}  // namespace suizo::app

#include "scripture_forms_test.moc"
