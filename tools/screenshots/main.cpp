// Takes pictures of the windows on a data folder, for a person to look at:
// suizo-screenshots DATA_DIR OUT_DIR. The user's settings are not touched.
#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QTimer>
#include <algorithm>
#include <cstdio>
#include <filesystem>

#include "app/corpus/program.h"
#include "app/corpus/settings_dialog_window.h"
#include "app/platform/web_engine_setup.h"
#include "app/views/contents_form.h"
#include "app/views/selection_dialog_window.h"
#include "app/views/dictionary_form.h"
#include "app/views/outline_form.h"
#include "app/views/record_form.h"
#include "app/views/reader_form.h"
#include "app/views/scripture_forms.h"
#include "app/views/writings_form.h"
#include "core/reader/writings_window.h"
#include "core/corpus/settings.h"

namespace {

void Settle() {
  for (int i = 0; i < 20; ++i) QApplication::processEvents();
}

bool Save(QWidget& window, const QString& file) {
  Settle();
  return window.grab().save(file);
}

// The panes load and paint in the browser's own time.
bool SaveAfterPanes(QWidget& window, const QString& file) {
  QElapsedTimer waited;
  waited.start();
  while (waited.elapsed() < 1500) QApplication::processEvents(QEventLoop::AllEvents, 50);
  return Save(window, file);
}

}  // namespace

int main(int argc, char** argv) {
  suizo::platform::PrepareWebEngine();
  QApplication app(argc, argv);
  if (argc != 3) {
    std::fprintf(stderr, "usage: suizo-screenshots DATA_DIR OUT_DIR\n");
    return 2;
  }
  const QString out = QString::fromLocal8Bit(argv[2]);
  QDir().mkpath(out);
  suizo::corpus::MemorySettings store;
  suizo::app::Program program(std::filesystem::path(argv[1]), store, u"" SUIZO_VERSION_U16);
  if (!program.Start()) return 2;
  suizo::app::ContentsForm& contents = *program.contents();
  contents.setGeometry(20, 20, 1000, 660);

  bool ok = Save(contents, out + "/Form9.png");
  // A title searched by its reading, as a scholar would first try.
  const int row = program.corpus().MokOrder[std::min(3, program.corpus().MosMaxY)];
  contents.window().SetCombo1(program.corpus().Mok().Get(row, 25).substr(0, 3));
  contents.window().Kensaku(0);
  ok = Save(contents, out + "/Form9-search.png") && ok;

  suizo::app::SelectionDialogWindow selection(program.corpus(), program.selection(),
                                              program.windows(), program.settings(), store,
                                              &contents);
  selection.show();
  ok = Save(selection, out + "/Form3.png") && ok;
  selection.reject();

  suizo::app::SettingsDialogWindow settings(program.settings(), store, u"" SUIZO_VERSION_U16,
                                            &contents);
  settings.show();
  ok = Save(settings, out + "/Form13.png") && ok;
  settings.reject();

  // The reader on a search with hits, across and then down.
  using suizo::reader::WritingsWindow;
  const auto jump = program.navigator().GoHonbun(u"衆生", 0, 0, suizo::search::Method::And, 0,
                                                  suizo::reader::kWritingsFamily);
  if (auto* reader = dynamic_cast<WritingsWindow*>(jump.window)) {
    for (QWidget* w : QApplication::topLevelWidgets()) {
      auto* writings = qobject_cast<suizo::app::WritingsForm*>(w);
      if (writings == nullptr || &writings->window() != reader) continue;
      writings->move(20, 20);
      ok = SaveAfterPanes(*writings, out + "/Form2-horizontal.png") && ok;
      writings->Apply(writings->reader().Command3(1000000));
      ok = SaveAfterPanes(*writings, out + "/Form2-vertical.png") && ok;
    }
  } else {
    ok = false;
  }

  // The sutra and the sources, across and down.
  const auto shoot = [&](const suizo::reader::JumpOutcome& jump, const QString& name) {
    for (QWidget* w : QApplication::topLevelWidgets()) {
      auto* form = qobject_cast<suizo::app::ReaderForm*>(w);
      if (form == nullptr || &form->textView() != jump.window) continue;
      form->move(20, 20);
      ok = SaveAfterPanes(*form, out + "/" + name + "-horizontal.png") && ok;
      form->KeyDownAll(Qt::Key_Space, Qt::NoModifier);
      ok = SaveAfterPanes(*form, out + "/" + name + "-vertical.png") && ok;
      return;
    }
    ok = false;
  };
  shoot(program.navigator().GoKyou(u"", 212, suizo::reader::kWritingsFamily), "Form7");
  // The outlines of the sutra reader's row, broad and fine.
  for (QWidget* w : QApplication::topLevelWidgets()) {
    auto* sutra = qobject_cast<suizo::app::SutraForm*>(w);
    if (sutra == nullptr) continue;
    sutra->OpenOutline(0);
    sutra->Outline()->move(40, 40);
    ok = Save(*sutra->Outline(), out + "/Form8-souka.png") && ok;
    sutra->OpenOutline(1);
    ok = Save(*sutra->Outline(), out + "/Form8-kamon.png") && ok;
  }
  shoot(program.navigator().GoShiryou(u"寺", 0, 0, suizo::search::Method::And, 0, suizo::reader::kSourcesFamily),
        "Form16");

  // The dictionary on a selection longer than its entry.
  const auto entry = program.navigator().GoJisho(u"法華経を", suizo::reader::kWritingsFamily);
  for (QWidget* w : QApplication::topLevelWidgets()) {
    auto* form = qobject_cast<suizo::app::DictionaryForm*>(w);
    if (form == nullptr || &form->window() != entry.window) continue;
    form->move(40, 40);
    ok = SaveAfterPanes(*form, out + "/Form6.png") && ok;
  }

  // The record of the third document.
  const auto record = program.navigator().GoMok(u"", 3, suizo::reader::kWritingsFamily);
  for (QWidget* w : QApplication::topLevelWidgets()) {
    auto* form = qobject_cast<suizo::app::RecordForm*>(w);
    if (form == nullptr || &form->window() != record.window) continue;
    form->move(30, 30);
    ok = SaveAfterPanes(*form, out + "/Form5.png") && ok;
  }

  // The sources' list, from its button in the writings' list.
  contents.window().Command(9, program.navigator(), program.windows());
  for (QWidget* w : QApplication::topLevelWidgets()) {
    if (w->objectName() != QStringLiteral("Form15") || !w->isVisible()) continue;
    w->setGeometry(40, 40, 1000, 660);
    ok = Save(*w, out + "/Form15.png") && ok;
  }

  program.End();
  return ok ? 0 : 1;
}
