#include <QApplication>
#include <QContextMenuEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QWebEngineView>
#include <filesystem>

#include "app/corpus/program.h"
#include "app/platform/popup_menu.h"
#include "app/views/contents_form.h"
#include "app/views/dictionary_form.h"
#include "app/views/writings_form.h"
#include "app_test.h"
#include "core/corpus/settings.h"
#include "pane_eval.h"
#include "started_program.h"

namespace suizo::app {

class DictionaryFormTest : public QObject {
  Q_OBJECT

 private:
  QTemporaryDir data_;
  corpus::MemorySettings settings_;
  std::unique_ptr<Program> program_;

  std::filesystem::path Path() const { return data_.path().toStdString(); }

  std::vector<DictionaryForm*> Dictionaries() const {
    std::vector<DictionaryForm*> out;
    for (reader::OpenWindow* w : program_->windows().OfKind(reader::FormKind::Form6)) {
      for (QWidget* top : QApplication::topLevelWidgets()) {
        auto* form = qobject_cast<DictionaryForm*>(top);
        if (form != nullptr && &form->window() == w) out.push_back(form);
      }
    }
    return out;
  }

  // Selects `text` in the reader's main pane, as a scholar's drag would.
  static void Select(WritingsForm& form, const QString& text) {
    form.Pane(1)->RunScript(
        QStringLiteral("document.body.innerHTML=%1;var r=document.createRange();"
                       "r.selectNodeContents(document.body);getSelection().removeAllRanges();"
                       "getSelection().addRange(r);")
            .arg(platform::JsString(text)));
    QTRY_COMPARE(form.Pane(1)->SelectedText(), text);
  }

  // The menu's 辞書 on the reader's main pane.
  static void LookUpByMenu(WritingsForm& form) {
    QWidget* surface = form.Pane(1)->View()->focusProxy();
    const QPoint at = surface->rect().center();
    QContextMenuEvent event(QContextMenuEvent::Mouse, at, surface->mapToGlobal(at));
    QApplication::sendEvent(surface, &event);
    platform::PopupMenu* menu = platform::PopupMenu::Open();
    QVERIFY(menu);
    QVERIFY(menu->IsEnabled(1));
    emit menu->chosen(1);
    menu->Close();
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

  void aSelectionOpensTheRankedEntryOneWindowPerWord() {
    program_->contents()->findChild<QPushButton*>("Command4")->click();
    WritingsForm* reader = nullptr;
    for (QWidget* w : QApplication::topLevelWidgets()) {
      if (auto* form = qobject_cast<WritingsForm*>(w)) reader = form;
    }
    QVERIFY(reader);
    QTRY_VERIFY(
        !apptest::Eval(*reader->Pane(1), QStringLiteral("document.body?document.body.innerText:''"))
             .value_or(QString())
             .toString()
             .isEmpty());

    // A selection longer than any entry finds the entry it holds.
    Select(*reader, QStringLiteral("法華経を"));
    LookUpByMenu(*reader);
    QCOMPARE(Dictionaries().size(), std::size_t{1});
    DictionaryForm* first = Dictionaries().front();
    QVERIFY(first->isVisible());
    QCOMPARE(first->findChild<QLabel*>("Text4")->text(), QStringLiteral("法華経"));
    QCOMPARE(first->windowTitle(), QStringLiteral("辞書「法華経」"));
    QCOMPARE(first->findChild<QPushButton*>("Command2")->text(), QStringLiteral("翠典"));

    // The same word again reuses its window; another word gets its own.
    Select(*reader, QStringLiteral("法華経を"));
    reader->findChild<QPushButton*>("Command8")->click();
    QCOMPARE(Dictionaries().size(), std::size_t{1});
    Select(*reader, QStringLiteral("妙法蓮華経を"));
    LookUpByMenu(*reader);
    QCOMPARE(Dictionaries().size(), std::size_t{2});
    QCOMPARE(Dictionaries().back()->findChild<QLabel*>("Text4")->text(),
             QStringLiteral("妙法蓮華経"));

    // The menu serves the dictionary's pane too: a word of the explanation
    // searched in the writings.
    DictionaryForm* shown = Dictionaries().front();
    QTRY_VERIFY(
        !apptest::Eval(*shown->Pane(), QStringLiteral("document.body?document.body.innerText:''"))
             .value_or(QString())
             .toString()
             .isEmpty());
    shown->Pane()->RunScript(
        QStringLiteral("var t=document.body.firstChild;while(t&&t.nodeType!==3)t=t.firstChild;var "
                       "r=document.createRange();"
                       "r.setStart(t,0);r.setEnd(t,2);getSelection().removeAllRanges();"
                       "getSelection().addRange(r);"));
    QTRY_VERIFY(!shown->Pane()->SelectedText().isEmpty());
    const QString word = shown->Pane()->SelectedText();
    QWidget* surface = shown->Pane()->View()->focusProxy();
    const QPoint center = surface->rect().center();
    QContextMenuEvent event(QContextMenuEvent::Mouse, center, surface->mapToGlobal(center));
    QApplication::sendEvent(surface, &event);
    platform::PopupMenu* menu = platform::PopupMenu::Open();
    QVERIFY(menu && menu->IsEnabled(2));
    const std::size_t readers = program_->windows().OfKind(reader::FormKind::Form2).size();
    emit menu->chosen(2);
    menu->Close();
    QTRY_VERIFY(program_->windows().OfKind(reader::FormKind::Form2).size() > readers);
    bool searched = false;
    for (QWidget* w : QApplication::topLevelWidgets()) {
      if (auto* form = qobject_cast<WritingsForm*>(w))
        searched = searched || form->findChild<QLineEdit*>("Combo1")->text() == word;
    }
    QVERIFY(searched);

    // The arrows step through the dictionary's order.
    DictionaryForm* second = Dictionaries().back();
    const int at = second->model().Dpos;
    QTest::keyClick(second, Qt::Key_Down);
    QCOMPARE(second->model().Dpos, at + 1);
    QVERIFY(second->findChild<QLabel*>("Text4")->text() != QStringLiteral("妙法蓮華経"));
  }
};

SUIZO_APP_TEST(DictionaryFormTest);

}  // namespace suizo::app

#include "dictionary_form_test.moc"
