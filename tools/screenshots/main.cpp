// A walk through the program as a scholar would take it, with a picture of
// each step: suizo-screenshots DATA_DIR OUT_DIR. It presses the windows' own
// buttons where it can and calls the program where a pointer would be needed.
// The user's settings are not touched. It ends as the user ends the program,
// and fails when a step does not bring up the window it should.
#include <QApplication>
#include <QCheckBox>
#include <QDialog>
#include <QDir>
#include <QElapsedTimer>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTimer>
#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <functional>

#include "app/corpus/program.h"
#include "app/platform/qt_text.h"
#include "app/platform/web_engine_setup.h"
#include "app/views/chronology_form.h"
#include "app/views/contents_form.h"
#include "app/views/outline_form.h"
#include "app/views/reader_form.h"
#include "app/views/scripture_forms.h"
#include "core/corpus/settings.h"

namespace {

QString out;
int step = 0;
bool ok = true;

void Settle(int ms = 0) {
  QElapsedTimer waited;
  waited.start();
  do {
    QApplication::processEvents(QEventLoop::AllEvents, 50);
  } while (waited.elapsed() < ms);
}

void Fail(const char* what) {
  std::fprintf(stderr, "step %d: %s\n", step + 1, what);
  ok = false;
}

// The picture of a window; the panes load and paint in the browser's time.
void Shoot(QWidget* window, const char* name, int settleMs = 1500) {
  ++step;
  if (window == nullptr || !window->isVisible()) {
    Fail(name);
    return;
  }
  Settle(settleMs);
  const QString file =
      QStringLiteral("%1/%2-%3.png").arg(out).arg(step, 2, 10, QChar('0')).arg(name);
  if (!window->grab().save(file)) Fail("the picture could not be written");
  std::printf("%s\n", qPrintable(file));
}

// The visible top-level window with this object name that came last.
QWidget* Window(const char* name) {
  QWidget* found = nullptr;
  for (QWidget* w : QApplication::topLevelWidgets()) {
    if (w->objectName() == QLatin1String(name) && w->isVisible()) found = w;
  }
  return found;
}

void Press(QWidget* window, const char* button) {
  auto* b = window != nullptr ? window->findChild<QPushButton*>(QLatin1String(button)) : nullptr;
  if (b == nullptr || !b->isEnabled()) {
    Fail(button);
    return;
  }
  b->click();
  Settle();
}

void Type(QWidget* window, const QString& text) {
  auto* box = window != nullptr ? window->findChild<QLineEdit*>(QStringLiteral("Combo1")) : nullptr;
  if (box == nullptr) return Fail("no search box");
  box->setFocus();
  box->setText(text);
  // Enter as the keyboard gives it: some views take it before the box does.
  QKeyEvent enter(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier);
  QApplication::sendEvent(box, &enter);
  Settle();
}

// A click on a button as the mouse gives it, with modifiers or another
// button: the readers take Shift, Ctrl and the right button on their own.
void Click(QWidget* window, const char* button, Qt::MouseButton which,
           Qt::KeyboardModifiers modifiers) {
  auto* b = window != nullptr ? window->findChild<QPushButton*>(QLatin1String(button)) : nullptr;
  if (b == nullptr) return Fail(button);
  const QPointF at(b->width() / 2.0, b->height() / 2.0);
  QMouseEvent press(QEvent::MouseButtonPress, at, b->mapToGlobal(at), which, which, modifiers);
  QApplication::sendEvent(b, &press);
  QMouseEvent release(QEvent::MouseButtonRelease, at, b->mapToGlobal(at), which, Qt::NoButton,
                      modifiers);
  QApplication::sendEvent(b, &release);
  Settle();
}

// A modal dialog: `act` runs on it once it is up, before `open` returns.
void WithDialog(const std::function<void()>& open, const std::function<void(QDialog&)>& act) {
  auto* timer = new QTimer;
  timer->setInterval(50);
  QObject::connect(timer, &QTimer::timeout, [timer, act] {
    auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    if (dialog == nullptr || !dialog->isVisible()) return;
    timer->stop();
    timer->deleteLater();
    act(*dialog);
  });
  timer->start();
  open();
}

}  // namespace

int main(int argc, char** argv) {
  suizo::platform::PrepareWebEngine();
  QApplication app(argc, argv);
  suizo::platform::ChooseRenderer();
  if (argc != 3) {
    std::fprintf(stderr, "usage: suizo-screenshots DATA_DIR OUT_DIR\n");
    return 2;
  }
  out = QString::fromLocal8Bit(argv[2]);
  QDir().mkpath(out);
  suizo::corpus::MemorySettings store;
  suizo::app::Program program(std::filesystem::path(argv[1]), store, u"" SUIZO_VERSION_U16);
  if (!program.Start()) return 2;

  // The start: the writings' contents.
  QWidget* contents = Window("Form9");
  if (contents != nullptr) contents->setGeometry(20, 20, 1000, 660);
  Shoot(contents, "start", 300);

  // The contents: another collection, then a title by its reading.
  WithDialog([&] { program.OpenSelection(contents); },
             [&](QDialog& dialog) {
               if (auto* teihon = dialog.findChild<QRadioButton*>(QStringLiteral("Option1_1")))
                 teihon->click();
               Shoot(&dialog, "contents-collection", 300);
               Press(&dialog, "Command1");
             });
  Shoot(contents, "contents-teihon", 300);
  const int row = program.corpus().MokOrder[std::min(3, program.corpus().MosMaxY)];
  Type(contents, suizo::platform::Q(program.corpus().Mok().Get(row, 25).substr(0, 3)));
  Shoot(contents, "contents-search", 300);

  // The reader of the found document, across and then down.
  Press(contents, "Command4");
  QWidget* reader = Window("Form2");
  if (reader != nullptr) reader->move(20, 20);
  Shoot(reader, "reader-horizontal");
  Press(reader, "Command3");
  Shoot(reader, "reader-vertical");
  Press(reader, "Command3");

  // A search in the reader and its list of hits.
  Type(reader, QStringLiteral("衆生"));
  Shoot(reader, "search");
  Press(reader, "Command2");
  Shoot(Window("Form4"), "search-hit-list");

  // The ways of searching: a variant form, OR, the split search, a
  // refinement, a page.
  Type(reader, QStringLiteral("佛"));
  Shoot(reader, "search-variants");
  Click(reader, "Command1", Qt::RightButton, Qt::NoModifier);  // AND to OR
  Type(reader, QStringLiteral("浄土　弥陀"));
  Shoot(reader, "search-or");
  for (int i = 0; i < 2; ++i)
    Click(reader, "Command1", Qt::RightButton, Qt::NoModifier);  // back to AND
  if (auto* box =
          reader != nullptr ? reader->findChild<QLineEdit*>(QStringLiteral("Combo1")) : nullptr) {
    box->setText(QStringLiteral("一切衆生悉有仏性"));
  }
  Click(reader, "Command1", Qt::LeftButton, Qt::ShiftModifier);
  Shoot(reader, "search-split");
  Type(reader, QStringLiteral("衆生"));
  Press(reader, "Command14");
  Type(reader, QStringLiteral("仏"));
  Shoot(reader, "search-refine");
  Press(reader, "Command15");
  Type(reader, QStringLiteral("定本P10"));
  Shoot(reader, "search-page");

  // A note on the line: Ctrl and a double click on the work pane.
  if (auto* form = qobject_cast<suizo::app::ReaderForm*>(reader);
      form != nullptr && form->StartNoteEdit(5)) {
    form->EditBox()->insertPlainText(QStringLiteral("読み直す：宛所の比定"));
    Shoot(reader, "note", 500);
    if (auto* box = reader->findChild<QLineEdit*>(QStringLiteral("Combo1"))) box->setFocus();
    Settle(300);
  } else {
    ++step;
    Fail("note");
  }

  // The dictionary on a word selected in the text, then the record.
  Type(reader, QStringLiteral("題目"));
  if (auto* form = qobject_cast<suizo::app::ReaderForm*>(reader)) {
    form->Pane(1)->RunScript(QStringLiteral("window.find('題目')"));
    Settle(300);
  }
  Press(reader, "Command8");
  Shoot(Window("Form6"), "dictionary");
  Press(reader, "Command5");
  QWidget* record = Window("Form5");
  Shoot(record, "record");

  // The chronology at the document's event, folded, and its kinds.
  Press(record, "Command7");
  QWidget* chronology = Window("Form12");
  if (chronology != nullptr) chronology->move(30, 30);
  Shoot(chronology, "chronology", 300);
  Press(chronology, "Command13");
  Shoot(chronology, "chronology-folded", 300);
  Press(chronology, "Command13");
  WithDialog([&] { Press(chronology, "Command7"); },
             [&](QDialog& dialog) {
               if (auto* told = dialog.findChild<QCheckBox*>(QStringLiteral("Check2_0")))
                 told->click();
               Shoot(&dialog, "chronology-kinds", 300);
               Press(&dialog, "Command1");
             });
  Shoot(chronology, "chronology-filtered", 300);

  // The sutra from the chronology, with its outline.
  Press(chronology, "Command6");
  auto* sutra = qobject_cast<suizo::app::SutraForm*>(Window("Form7"));
  Shoot(sutra, "sutra");
  if (sutra != nullptr) {
    sutra->OpenOutline(0);
    if (sutra->Outline() != nullptr) sutra->Outline()->move(40, 40);
    Shoot(sutra->Outline(), "sutra-outline", 300);
  }

  // The sources: their list from the writings' contents, then a source.
  Press(contents, "Command9");
  QWidget* sources = Window("Form15");
  if (sources != nullptr) sources->setGeometry(40, 40, 1000, 660);
  Shoot(sources, "sources-contents", 300);
  Press(sources, "Command4");
  Shoot(Window("Form16"), "sources-reader");

  // Bookmarks of the writings' reader, then the settings.
  WithDialog([&] { Press(reader, "BMark"); },
             [&](QDialog& dialog) {
               Shoot(&dialog, "bookmarks", 300);
               dialog.reject();
             });
  WithDialog([&] { Press(contents, "Command11"); },
             [&](QDialog& dialog) {
               Shoot(&dialog, "settings", 300);
               dialog.reject();
             });

  // The end, by the contents' own button: every window goes.
  Press(contents, "Command2");
  Settle(300);
  ++step;
  for (QWidget* w : QApplication::topLevelWidgets()) {
    if (w->isVisible() && w->isWindow())
      Fail(qPrintable(QStringLiteral("still open at the end: ") + w->objectName()));
  }
  std::printf("%d steps%s\n", step, ok ? "" : ", some failed");
  return ok ? 0 : 1;
}
