#include <QApplication>
#include <QCheckBox>
#include <QContextMenuEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QWebEngineView>
#include <filesystem>

#include "app/corpus/program.h"
#include "app/platform/clipboard.h"
#include "app/platform/grid.h"
#include "app/platform/popup_menu.h"
#include "app/platform/qt_text.h"
#include "app/views/contents_form.h"
#include "app/views/hit_list_window.h"
#include "app/views/writings_form.h"
#include "app_test.h"
#include "core/corpus/orders.h"
#include "core/corpus/profile.h"
#include "core/corpus/schema.h"
#include "core/corpus/settings.h"
#include "core/views/selection_dialog.h"
#include "pane_eval.h"
#include "started_program.h"

namespace suizo::app {

using platform::Q;
using platform::U;

class WritingsFormTest : public QObject {
  Q_OBJECT

 private:
  QTemporaryDir data_;
  corpus::MemorySettings settings_;
  std::unique_ptr<Program> program_;

  std::filesystem::path Path() const { return data_.path().toStdString(); }

  std::unique_ptr<Program> Started() { return apptest::StartedProgram(Path(), settings_); }

  // The reader made last.
  WritingsForm* Reader() const {
    const auto readers = program_->windows().OfKind(reader::FormKind::Form2);
    if (readers.empty()) return nullptr;
    for (QWidget* w : QApplication::topLevelWidgets()) {
      auto* form = qobject_cast<WritingsForm*>(w);
      if (form != nullptr && &form->window() == readers.back()) return form;
    }
    return nullptr;
  }

  // Opens a reader from the contents window by its button.
  WritingsForm* OpenReader() {
    program_->contents()->findChild<QPushButton*>("Command4")->click();
    WritingsForm* form = Reader();
    if (form != nullptr) form->activateWindow();
    return form;
  }

  // The text a pane shows, once the browser has it.
  static QString PaneText(WritingsForm& form, int pane) {
    return apptest::Eval(*form.Pane(pane),
                         QStringLiteral("document.body?document.body.innerText:''"), 2000)
        .value_or(QString())
        .toString();
  }

  template <class T>
  static T* Control(QWidget& form, const char* name) {
    return form.findChild<T*>(QString::fromLatin1(name));
  }

  static void GoTo(WritingsForm& form, std::u16string_view sysNo, Program& program) {
    const corpus::ReaderPlace place = corpus::FindReaderPlace(program.corpus(), sysNo);
    form.reader().GoToLine(place.Lpos);
    form.window().Hyouji();
  }

  std::u16string SysNoHere(WritingsForm& form) {
    return std::u16string(form.reader().table().Text(form.reader().Lpos(), corpus::dat::kSysNo));
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

  void opensFromTheContentsByDoubleClickAndEnter() {
    ContentsForm& contents = *program_->contents();
    auto* grid = Control<platform::Grid>(contents, "Grid1");
    QVERIFY(Control<QPushButton>(contents, "Command4")->isEnabled());
    QVERIFY(Control<QPushButton>(contents, "Command7")->isEnabled());
    contents.activateWindow();

    // Enter on the third document's row.
    QTest::mouseClick(grid->viewport(), Qt::LeftButton, {}, grid->CellRect(3, 2).center());
    const int chosen = contents.window().model().Mpos;
    QVERIFY(chosen > 1);
    grid->setFocus();
    QTest::keyClick(grid, Qt::Key_Return);
    WritingsForm* first = Reader();
    QVERIFY(first);
    QCOMPARE(first->reader().Mpos(), chosen);
    QTRY_VERIFY_WITH_TIMEOUT(!PaneText(*first, 1).trimmed().isEmpty(),
                             20000);  // the browser starts first

    // A double click on another row opens that document too.
    const QRect cell = grid->CellRect(5, 2);
    QTest::mouseDClick(grid->viewport(), Qt::LeftButton, {}, cell.center());
    QTRY_COMPARE(program_->windows().OfKind(reader::FormKind::Form2).size(), std::size_t{2});
    WritingsForm* second = Reader();
    QVERIFY(second != first);
    QCOMPARE(second->reader().Mpos(), contents.window().model().Mpos);
    QVERIFY(second->reader().Mpos() != chosen);
    QVERIFY(second->windowTitle().startsWith(QStringLiteral("本文「")));
  }

  void stepsAcrossAWorkHeadInBothLayouts() {
    WritingsForm* form = OpenReader();
    QVERIFY(form);
    form->setFocus();
    for (const int muki : {0, 1}) {
      if (muki == 1) QTest::keyClick(form, Qt::Key_Space);
      QCOMPARE(form->reader().Muki1, muki);
      form->reader().GoToWork(2);
      form->window().Hyouji();
      const int head = form->reader().Lpos();
      const QString title2 = Control<QLabel>(*form, "Text4")->text();
      // Up from the head goes into the first work, Down comes back.
      QTest::keyClick(form, Qt::Key_Up, Qt::ShiftModifier);
      QCOMPARE(form->reader().Mpos(), 1);
      QVERIFY(Control<QLabel>(*form, "Text4")->text() != title2);
      QTest::keyClick(form, Qt::Key_Down, Qt::ShiftModifier);
      QCOMPARE(form->reader().Lpos(), head);
      QCOMPARE(form->reader().Mpos(), 2);
      // The buttons step the same way; Ctrl goes by work.
      QTest::mouseClick(Control<QPushButton>(*form, "BTup"), Qt::LeftButton, Qt::ShiftModifier);
      QCOMPARE(form->reader().Mpos(), 1);
      QTest::mouseClick(Control<QPushButton>(*form, "BTdown"), Qt::LeftButton, Qt::ControlModifier);
      QCOMPARE(form->reader().Mpos(), 2);
      QCOMPARE(form->reader().Lpos(), head);
      QCOMPARE(Control<QLabel>(*form, "Text4")->text(), title2);
    }
    // Vertical panes hold vertical text; the notes panes are away.
    QTRY_VERIFY(!PaneText(*form, 1).trimmed().isEmpty());
    QVERIFY(!form->Pane(5)->isVisible());
    QVERIFY(form->Pane(2)->isVisible());
    // One pane: the translation goes, and comes back.
    QTest::keyClick(form, Qt::Key_V);
    QVERIFY(!form->Pane(2)->isVisible());
    QTest::keyClick(form, Qt::Key_V);
    QVERIFY(form->Pane(2)->isVisible());
    // Held down, the space bar switches once per gap of 50 ms.
    std::int64_t now = 1'000'000;
    form->reader().SetClock([&now] { return now; });
    QTest::keyClick(form, Qt::Key_Space);
    QCOMPARE(form->reader().Muki1, 0);
    now += 30;
    QTest::keyClick(form, Qt::Key_Space);
    QCOMPARE(form->reader().Muki1, 0);
    now += 60;
    QTest::keyClick(form, Qt::Key_Space);
    QCOMPARE(form->reader().Muki1, 1);
  }

  void searchesSplitsWalksAndRefines() {
    WritingsForm* form = OpenReader();
    QVERIFY(form);
    auto* box = Control<QLineEdit>(*form, "Combo1");
    auto* command1 = Control<QPushButton>(*form, "Command1");
    search::SearchEngine& engine = form->reader().engine();
    const auto search = [&](const QString& text) {
      box->setFocus();
      box->setText(text);
      QTest::keyClick(box, Qt::Key_Return);
      return engine.Srn;
    };
    const int one = search(QStringLiteral("衆生"));
    const int other = search(QStringLiteral("心"));
    const int both = search(QStringLiteral("衆生 心"));
    QVERIFY(one > 0 && other > 0);
    QVERIFY(both <= std::min(one, other));
    QCOMPARE(Control<QPushButton>(*form, "Label3")->text(), QStringLiteral("1/%1").arg(both));
    QVERIFY(!form->hasFocus() || form->focusWidget() != box);

    QTest::mouseClick(command1, Qt::RightButton);
    QCOMPARE(engine.SrMethod, search::Method::Or);
    QVERIFY(command1->text().startsWith(QStringLiteral("OR")));
    QVERIFY(search(QStringLiteral("衆生 心")) >= std::max(one, other));
    QTest::mouseClick(command1, Qt::RightButton);
    QCOMPARE(engine.SrMethod, search::Method::Not);
    QVERIFY(search(QStringLiteral("衆生")) > 0);
    QVERIFY(!Q(form->reader().table().Text(form->reader().Lpos(), corpus::dat::kMain))
                 .contains(QStringLiteral("衆生")));
    QTest::mouseClick(command1, Qt::RightButton);
    QCOMPARE(command1->text(), QStringLiteral("検索"));

    // Shift and Ctrl at the press split the box by character or by kanji.
    box->setText(QStringLiteral("衆生の心"));
    QTest::mousePress(command1, Qt::LeftButton, Qt::ShiftModifier);
    QTRY_COMPARE(engine.LastDivMode(), 1);
    QTest::mouseRelease(command1, Qt::LeftButton, Qt::ShiftModifier);
    QVERIFY(engine.Srn > 0);
    QTest::mousePress(command1, Qt::LeftButton, Qt::ControlModifier);
    QTRY_COMPARE(engine.LastDivMode(), 2);
    QTest::mouseRelease(command1, Qt::LeftButton, Qt::ControlModifier);

    // The arrows walk the hits.
    search(QStringLiteral("衆生"));
    form->setFocus();
    QTest::keyClick(form, Qt::Key_Right);
    QCOMPARE(engine.SrnPos, 2);
    QCOMPARE(form->reader().Lpos(), engine.getSr(2, 1));
    QTest::keyClick(form, Qt::Key_Left);
    QCOMPARE(engine.SrnPos, 1);
    QTRY_VERIFY(PaneText(*form, 1).contains(QStringLiteral("衆生")));

    // Refined by a second word, then undone.
    Control<QPushButton>(*form, "Command14")->click();
    QCOMPARE(engine.RefineCount, 1);
    const int refined = search(QStringLiteral("心"));
    QVERIFY(refined <= one);
    QVERIFY(Control<QPushButton>(*form, "Command15")->isEnabled());
    Control<QPushButton>(*form, "Command15")->click();
    QCOMPARE(engine.RefineCount, 0);
    QCOMPARE(engine.Srn, other);  // the box's word over every line again
  }

  void searchesAPageFromAPageBox() {
    WritingsForm* form = OpenReader();
    QVERIFY(form);
    auto* page = Control<QLineEdit>(*form, "Page_22");
    QVERIFY(page);
    page->setFocus();
    page->clear();
    QTest::keyClicks(page, QStringLiteral("1.x"));
    QCOMPARE(page->text(), QStringLiteral("1"));  // only digits and "-" are taken
    QTest::keyClick(page, Qt::Key_Return);
    QCOMPARE(Control<QLineEdit>(*form, "Combo1")->text(), QStringLiteral("定本P1"));
    QVERIFY(form->reader().engine().Srn > 0);
  }

  void quotationIndexLinkReachesItsLine() {
    WritingsForm* form = OpenReader();
    QVERIFY(form);
    GoTo(*form, u"16610", *program_);
    QTRY_VERIFY(PaneText(*form, 7).contains(QStringLiteral("10695")));
    // The index names the line by its ｼｽﾃﾑNo.; the link opens it in a reader.
    form->Pane(7)->RunScript(QStringLiteral(
        "for(const a of document.querySelectorAll('a'))if(a.textContent==='10695')a.click();"));
    QTRY_VERIFY(Reader() != form);
    QCOMPARE(SysNoHere(*Reader()), std::u16string(u"10695"));
    QTRY_COMPARE(Control<QLineEdit>(*Reader(), "Page_0")->text(), QStringLiteral("10695"));
    QCOMPARE(SysNoHere(*form), std::u16string(u"16610"));
  }

  void notesAreEditedInPlaceAndOutliveARestart() {
    WritingsForm* form = OpenReader();
    QVERIFY(form);
    GoTo(*form, u"10006", *program_);
    // Not in the readings' panes.
    QVERIFY(!form->StartNoteEdit(3));
    QVERIFY(form->StartNoteEdit(5));
    QPlainTextEdit* edit = form->EditBox();
    QVERIFY(edit->isVisible());
    // Enter with no change stores nothing.
    QTest::keyClick(edit, Qt::Key_Return);
    QVERIFY(!edit->isVisible());
    QCOMPARE(program_->corpus().DatDirty, 0);

    QVERIFY(form->StartNoteEdit(5));
    QInputMethodEvent typed;
    typed.setCommitString(QStringLiteral("講義の覚え"));
    QApplication::sendEvent(edit, &typed);
    QTest::keyClick(edit, Qt::Key_Return, Qt::ControlModifier);
    QApplication::sendEvent(edit, &typed);
    QTest::keyClick(edit, Qt::Key_Return);
    QCOMPARE(program_->corpus().DatDirty, 1);
    QTRY_VERIFY(PaneText(*form, 5).contains(QStringLiteral("講義の覚え")));

    program_->End();
    program_ = Started();
    QVERIFY(program_);
    form = OpenReader();
    QVERIFY(form);
    GoTo(*form, u"10006", *program_);
    QCOMPARE(Q(form->reader().table().Text(form->reader().Lpos(), corpus::dat::kNote2)),
             QStringLiteral("講義の覚え／講義の覚え"));
    QTRY_VERIFY(PaneText(*form, 5).contains(QStringLiteral("講義の覚え")));
  }

  // A text of the corpus and a note that hold markup meant to run: shown,
  // never run (the markup is kept, the handler is not called).
  void markupInTextsAndNotesNeverRuns() {
    WritingsForm* form = OpenReader();
    QVERIFY(form);
    const corpus::ReaderPlace place = corpus::FindReaderPlace(program_->corpus(), u"10006");
    const QString payload =
        QStringLiteral("<img id=bait src=x onerror=\"document.title='ran';window.ran=1\">");
    program_->corpus().Dat().Set(place.Lpos, corpus::dat::kMain,
                                 payload.toStdU16String() + u"本文");
    corpus::EditNote(program_->corpus(), *program_->journal(), corpus::TableId::Dat, place.Lpos,
                     corpus::dat::kNote2,
                     QStringLiteral("<svg onload=\"window.ran=1\"></svg>").toStdU16String() +
                         payload.toStdU16String());
    GoTo(*form, u"10006", *program_);
    // Qt's own widgets take no markup either: every label shows text as written.
    for (QWidget* window :
         {static_cast<QWidget*>(form), static_cast<QWidget*>(program_->contents())}) {
      for (const QLabel* label : window->findChildren<QLabel*>())
        QCOMPARE(label->textFormat(), Qt::PlainText);
    }
    for (const int pane : {1, 5}) {
      QTRY_VERIFY(
          apptest::Eval(*form->Pane(pane), QStringLiteral("!!document.getElementById('bait')"))
              .value_or(false)
              .toBool());
      QTest::qWait(200);  // the image's error has come and gone
      QCOMPARE(apptest::Eval(*form->Pane(pane),
                             QStringLiteral("document.title+'|'+(window.ran===undefined)"))
                   .value_or(QString())
                   .toString(),
               QStringLiteral("|true"));
    }
  }

  void hitListOpensAndLeadsBack() {
    WritingsForm* form = OpenReader();
    QVERIFY(form);
    auto* box = Control<QLineEdit>(*form, "Combo1");
    box->setText(QStringLiteral("衆生"));
    QTest::keyClick(box, Qt::Key_Return);
    const search::SearchEngine& engine = form->reader().engine();
    QVERIFY(engine.Srn > 3);
    Control<QPushButton>(*form, "Command2")->click();
    HitListWindow* list = form->HitList();
    QVERIFY(list && list->isVisible());
    QCOMPARE(Control<QLabel>(*list, "Label1")->text(),
             QStringLiteral("検索結果%1件").arg(engine.Srn));
    list->pane()->RunScript(QStringLiteral("document.querySelector(\"a[href='3']\").click()"));
    QTRY_COMPARE(engine.SrnPos, 3);
    QCOMPARE(form->reader().Lpos(), engine.getSr(3, 1));
    QCOMPARE(Control<QPushButton>(*form, "Label3")->text(), QStringLiteral("3/%1").arg(engine.Srn));
    // A search with nothing found empties the list with it.
    box->setText(QStringLiteral("衆生"));
    QTest::keyClick(box, Qt::Key_Return);
    QVERIFY(list->isVisible());
  }

  void bookmarkReadUnderAnotherCollectionRestoresIt() {
    WritingsForm* form = OpenReader();
    QVERIFY(form);
    program_->ask = [](QWidget*, const QString&) { return true; };
    const auto choose = [&](int gk) {
      program_->selection().MokRedo = 1;
      program_->selection().Gk = gk;
      views::ConvSui(program_->corpus(), program_->selection(), program_->windows());
    };
    // In 定本, on the third document: bookmark ② keeps the place.
    choose(22);
    form->reader().GoToWork(3);
    form->window().Hyouji();
    const search::Position kept = form->window().Place();
    const auto inDialog = [](const char* row, const char* command) {
      QTimer::singleShot(0, [row, command] {
        QWidget* dialog = QApplication::activeModalWidget();
        QVERIFY(dialog && dialog->objectName() == QStringLiteral("Form17"));
        dialog->findChild<QPushButton*>(row)->click();
        dialog->findChild<QPushButton*>(command)->click();
      });
    };
    inDialog("Bm_2", "Command3");
    Control<QPushButton>(*form, "BMark")->click();
    QVERIFY(Q(corpus::ProfileFile(Path() / "suiten.ini").Read(u"BMark02", u"Gk", u"")) ==
            QStringLiteral("22"));

    // Back in the system order, elsewhere; reading ② brings 定本 back for
    // every window.
    choose(0);
    form->reader().GoToWork(1);
    form->window().Hyouji();
    inDialog("Bm_2", "Command1");
    Control<QPushButton>(*form, "BMark")->click();
    QCOMPARE(program_->selection().Gk, 22);
    QCOMPARE(form->window().Place().Mpos, kept.Mpos);
    QCOMPARE(form->window().Place().Lpos, kept.Lpos);
    // The page label of 定本 is lit as the collection in use.
    QVERIFY(
        Control<QLabel>(*form, "PageTitle_22")->styleSheet().contains(QStringLiteral("#c0ffff")));
  }

  void menuOffersLookupsOnlyForASelection() {
    WritingsForm* form = OpenReader();
    QVERIFY(form);
    QTRY_VERIFY(!PaneText(*form, 1).trimmed().isEmpty());
    platform::Clipboard::SetText(QStringLiteral("手元の文"));
    const auto rightClick = [&] {
      QWidget* surface = form->Pane(1)->View()->focusProxy();
      QVERIFY(surface);
      const QPoint at = surface->rect().center();
      QContextMenuEvent event(QContextMenuEvent::Mouse, at, surface->mapToGlobal(at));
      QApplication::sendEvent(surface, &event);
    };
    rightClick();
    platform::PopupMenu* menu = platform::PopupMenu::Open();
    QVERIFY(menu);
    for (const int item : {1, 2, 3, 4, 6, 7, 8})
      QVERIFY2(!menu->IsEnabled(item), qPrintable(QString::number(item)));
    QCOMPARE(platform::Clipboard::Text(), QStringLiteral("手元の文"));
    // A letter in the pane only closes the menu.
    QTest::keyClick(form->Pane(1)->View()->focusProxy(), Qt::Key_S);
    QVERIFY(!platform::PopupMenu::Open());
    QCOMPARE(form->reader().SinSya, 0);

    // With a selection the lookups and the copy are offered; cut and paste
    // never in a pane.
    form->Pane(1)->RunScript(
        QStringLiteral("var r=document.createRange();var "
                       "t=document.body.firstChild;while(t&&t.nodeType!==3)t=t.firstChild;"
                       "r.setStart(t,0);r.setEnd(t,2);getSelection().removeAllRanges();"
                       "getSelection().addRange(r);"));
    QTRY_VERIFY(!form->Pane(1)->SelectedText().isEmpty());
    const QString selected = form->Pane(1)->SelectedText();
    rightClick();
    menu = platform::PopupMenu::Open();
    QVERIFY(menu);
    QVERIFY(menu->IsEnabled(2) && menu->IsEnabled(7));
    QVERIFY(!menu->IsEnabled(6) && !menu->IsEnabled(8));
    QVERIFY(menu->IsEnabled(1));  // the dictionary
    QCOMPARE(platform::Clipboard::Text(), QStringLiteral("手元の文"));
    // 翠典 searches the selection in a reader.
    emit menu->chosen(2);
    menu->Close();
    QTRY_VERIFY(Reader() != form);
    QCOMPARE(Control<QLineEdit>(*Reader(), "Combo1")->text(), selected);
  }

  void doubleClickSelectsTheRunOfKanji() {
    WritingsForm* form = OpenReader();
    QVERIFY(form);
    QTRY_VERIFY(!PaneText(*form, 1).trimmed().isEmpty());
    // One character chosen inside "衆生" of "候、衆生の心": the run is the word.
    form->Pane(1)->RunScript(
        QStringLiteral("document.body.innerHTML='聞き候、衆生の心';var "
                       "t=document.body.firstChild;var r=document.createRange();"
                       "r.setStart(t,5);r.setEnd(t,6);getSelection().removeAllRanges();"
                       "getSelection().addRange(r);"));
    QTRY_COMPARE(form->Pane(1)->SelectedText(), QStringLiteral("生"));
    platform::Clipboard::SetText(QStringLiteral("手元の文"));
    form->SelectKanjiRun(1);
    QTRY_COMPARE(form->Pane(1)->SelectedText(), QStringLiteral("衆生"));
    // The search takes the selection; the clipboard keeps its own text.
    Control<QPushButton>(*form, "Command1")->click();
    QCOMPARE(Control<QLineEdit>(*form, "Combo1")->text(), QStringLiteral("衆生"));
    QCOMPARE(platform::Clipboard::Text(), QStringLiteral("手元の文"));
  }

  void keepsItsProportionsAndPlace() {
    WritingsForm* form = OpenReader();
    QVERIFY(form);
    const QSize before = form->size();
    form->resize(before.width() * 5 / 4, before.height());
    const double aspect = double(before.height()) / before.width();
    QVERIFY(std::abs(double(form->height()) / form->width() - aspect) < 0.01);
    const auto kept = corpus::ReadGeometry(settings_, u"@本文");
    QVERIFY(kept);
    QCOMPARE(kept->w, form->width());
    // The panes grew with the window.
    QVERIFY(form->Pane(1)->width() > before.width() / 2);
  }

  void closingReturnsToTheContentsUnlessPinned() {
    WritingsForm* form = OpenReader();
    QVERIFY(form);
    Control<QPushButton>(*form, "Pin")->click();
    QVERIFY(!form->close());
    Control<QPushButton>(*form, "Pin")->click();
    QVERIFY(form->close());
    QTRY_COMPARE(program_->windows().OfKind(reader::FormKind::Form2).size(), std::size_t{0});
    QVERIFY(program_->contents()->isVisible());
  }
};

SUIZO_APP_TEST(WritingsFormTest);

}  // namespace suizo::app

#include "writings_form_test.moc"
