#include "app/corpus/program.h"

#include <QApplication>
#include <QMessageBox>
#include <QTimer>
#include <array>

#include "app/corpus/settings_dialog_window.h"
#include "app/corpus/splash_window.h"
#include "app/platform/plain_text.h"
#include "app/platform/qt_text.h"
#include "app/platform/toast.h"
#include "app/platform/yes_no.h"
#include "app/views/balloon_help_qt.h"
#include "app/views/chronology_form.h"
#include "app/views/contents_form.h"
#include "app/views/dictionary_form.h"
#include "app/views/record_form.h"
#include "app/views/scripture_forms.h"
#include "app/views/selection_dialog_window.h"
#include "app/views/writings_form.h"
#include "core/corpus/bookmarks.h"
#include "core/corpus/data_path.h"
#include "core/corpus/errors.h"
#include "core/corpus/import.h"
#include "core/corpus/orders.h"
#include "core/corpus/schema.h"
#include "core/corpus/startup.h"
#include "core/text/utf16.h"
#include "core/views/contents.h"
#include "core/views/selection_dialog.h"

namespace suizo::app {

namespace {

// A contents window of the registry with its form: the form goes when the
// registry lets the window go.
class ContentsList : public views::ContentsWindow {
 public:
  ContentsList(views::ContentsKind kind, Program& program)
      : views::ContentsWindow(kind, program.corpus(), program.selection(), program.settings()),
        form_(std::make_unique<ContentsForm>(*this, program)) {}
  ContentsForm* form() const { return form_.get(); }

 private:
  std::unique_ptr<ContentsForm> form_;
};

// A writings reader of the registry with its form.
class WritingsReaderWindow : public reader::WritingsWindow {
 public:
  explicit WritingsReaderWindow(Program& program)
      : reader::WritingsWindow(program.corpus(), program.selection(), program.settings(),
                               program.navigator(), program.journal()),
        form_(std::make_unique<WritingsForm>(*this, program)) {}
  WritingsForm* form() const { return form_.get(); }

 private:
  std::unique_ptr<WritingsForm> form_;
};

// The sutra and the sources readers with their forms.
class SutraReaderWindow : public scripture::SutraWindow {
 public:
  explicit SutraReaderWindow(Program& program)
      : scripture::SutraWindow(reader::FormKind::Form7, program.corpus(), program.selection(),
                               program.settings(), program.navigator(), program.journal()),
        form_(std::make_unique<SutraForm>(*this, program)) {}

 private:
  std::unique_ptr<SutraForm> form_;
};

class SourcesReaderWindow : public scripture::SourcesWindow {
 public:
  explicit SourcesReaderWindow(Program& program)
      : scripture::SourcesWindow(program.corpus(), program.selection(), program.settings(),
                                 program.navigator(), program.journal()),
        form_(std::make_unique<SourcesForm>(*this, program)) {}

 private:
  std::unique_ptr<SourcesForm> form_;
};

// The document record with its form.
class DocumentRecordWindow : public views::RecordWindow {
 public:
  explicit DocumentRecordWindow(Program& program)
      : views::RecordWindow(program.corpus(), program.selection(), program.settings()),
        form_(std::make_unique<RecordForm>(*this, program)) {}

 private:
  std::unique_ptr<RecordForm> form_;
};

// A dictionary window with its form; every one shares the program's lookup.
class DictionaryEntry : public views::DictionaryWindow {
 public:
  DictionaryEntry(Program& program, const views::DictionaryLookup& lookup)
      : views::DictionaryWindow(program.corpus(), program.selection(), program.settings(), lookup),
        form_(std::make_unique<DictionaryForm>(*this, program)) {}

 private:
  std::unique_ptr<DictionaryForm> form_;
};

// The chronology with its form.
class ChronologyEntry : public views::ChronologyWindow {
 public:
  explicit ChronologyEntry(Program& program)
      : views::ChronologyWindow(program.corpus(), program.selection(), program.settings()),
        form_(std::make_unique<ChronologyForm>(*this, program)) {}

 private:
  std::unique_ptr<ChronologyForm> form_;
};

}  // namespace

Program::Program(std::filesystem::path dataPath, corpus::SettingsStore& store,
                 std::u16string version)
    : dataPath_(std::move(dataPath)), store_(store), version_(std::move(version)) {
  showError = [](const QString& message) {
    platform::ShowMessage(nullptr, QMessageBox::Critical, QStringLiteral("翠蔵Viewer"), message);
  };
  toast = [](QWidget* over) { platform::Toast::Show(over); };
  ask = [](QWidget* over, const QString& question) {
    return platform::YesNoDialog::Ask(over, question);
  };
}

Program::~Program() = default;

std::unique_ptr<reader::OpenWindow> Program::MakeWindow(reader::FormKind kind) {
  switch (kind) {
    case reader::FormKind::Form9:
      return std::make_unique<ContentsList>(views::ContentsKind::Writings, *this);
    case reader::FormKind::Form15: {
      auto list = std::make_unique<ContentsList>(views::ContentsKind::Sources, *this);
      WireContents(*list->form());
      // Made on first use: the list is drawn before the jump shows it.
      list->model().ClevWrite();
      list->Hyouji();
      return list;
    }
    case reader::FormKind::Form2:
      return std::make_unique<WritingsReaderWindow>(*this);
    case reader::FormKind::Form7:
      return std::make_unique<SutraReaderWindow>(*this);
    case reader::FormKind::Form16:
      return std::make_unique<SourcesReaderWindow>(*this);
    case reader::FormKind::Form5:
      return std::make_unique<DocumentRecordWindow>(*this);
    case reader::FormKind::Form12:
      try {
        corpus_->ReadData(3);
      } catch (const corpus::CorpusError& e) {
        Stop(e.what());  // the window opens empty and goes with the rest
      }
      return std::make_unique<ChronologyEntry>(*this);
    case reader::FormKind::Form6: {
      // Made at the first lookup: its patterns are kept for every later one.
      if (!lookup_) lookup_ = std::make_unique<views::DictionaryLookup>(*corpus_, settings_.Itaiji);
      return std::make_unique<DictionaryEntry>(*this, *lookup_);
    }
    default:
      return nullptr;  // the registry reports a kind this build has no window for
  }
}

bool Program::Builds(reader::FormKind kind) const {
  switch (kind) {
    case reader::FormKind::Form9:
    case reader::FormKind::Form2:
    case reader::FormKind::Form15:
    case reader::FormKind::Form7:
    case reader::FormKind::Form16:
    case reader::FormKind::Form8:
    case reader::FormKind::Form6:
    case reader::FormKind::Form5:
    case reader::FormKind::Form12:
      return true;
    default:
      return false;
  }
}

void Program::WireContents(ContentsForm& form) {
  form.toast = [this](QWidget* over) {
    if (toast) toast(over);
  };
  form.openSelection = [this] { OpenSelection(); };
  form.openSettings = [this] { OpenSettings(); };
  // A button leads to a view only when this build has its window.
  const bool writings = form.window().model().kind() == views::ContentsKind::Writings;
  const std::array<reader::FormKind, 6> views = {
      writings ? reader::FormKind::Form2 : reader::FormKind::Form16,
      writings ? reader::FormKind::Form5 : reader::FormKind::Form16,
      reader::FormKind::Form7,
      reader::FormKind::Form12,
      reader::FormKind::Form6,
      writings ? reader::FormKind::Form15 : reader::FormKind::Form9};
  for (int command = 4; command <= 9; ++command) {
    form.SetViewAvailable(command, Builds(views[static_cast<std::size_t>(command - 4)]));
  }
}

void Program::FollowSelection() {
  views::FollowSelection(*windows_, true);
}

void Program::ShowContentsAt(reader::FormKind kind, int mpos) {
  auto& window = static_cast<ContentsList&>(windows_->Single(kind));
  const int last = kind == reader::FormKind::Form9 ? corpus_->MosMaxY : corpus_->SMosMaxY;
  if (mpos >= 1 && mpos <= last) window.model().Mpos = mpos;
  window.Hyouji();
  window.Show();
  window.Raise();
}

void Program::Closed(reader::OpenWindow& window) {
  window.Visible = false;
  const std::u16string family = window.ParentForm;
  // The form is inside its own close event: it goes once that is over.
  QTimer::singleShot(0, this, [this, w = &window, family] {
    for (reader::OpenWindow* open : windows_->All()) {
      if (open == w) windows_->Unload(*w);
    }
    if (!ending_)
      navigator_->BackToParent(family.empty() ? std::u16string(reader::kWritingsFamily) : family);
  });
}

bool Program::CloseView(reader::OpenWindow& window, QCloseEvent& event) {
  if (!ending_ && window.Pin) {
    event.ignore();
    return false;
  }
  event.accept();
  if (!ending_) Closed(window);
  return true;
}

// Before anything is written to the folder; the folder a first use fills is
// made first, so that the filling is held too. A folder that is not there
// stays so, and the start says what it lacks.
void Program::HoldDataFolder() {
  corpus::MakeDataFolder({dataPath_, seed});
  std::error_code error;
  if (std::filesystem::is_directory(dataPath_, error)) {
    folderLock_.emplace(corpus::DataFolderLock::Acquire(dataPath_, "suizo-viewer"));
  }
}

bool Program::Start() {
  try {
    HoldDataFolder();
    corpus::SeedDataFolder({dataPath_, seed});
    settings_ = corpus::ReadSettings(store_);
    corpus_ = std::make_unique<corpus::Corpus>(dataPath_);
    splash_ = std::make_unique<SplashWindow>(version_);
    splash_->show();
    QApplication::processEvents();

    corpus::ImportOptions options = corpus::ImportOptionsFor(dataPath_);
    options.itaiji = settings_.Itaiji;
    options.message = [this](const std::u16string& text) { splash_->Append(text + u"\n"); };
    options.progress = [this](corpus::TableId) { splash_->Append(u"*"); };
    const corpus::StartupDecision decision = corpus::DecideStartup(dataPath_, version_);
    converted_ = corpus::Converts(decision.path);
    if (converted_) {
      splash_->ShowLog();
      if (decision.path == corpus::StartupPath::Reconvert) {
        splash_->Append(u"『翠蔵』データの再構成を行います\nしばらくお待ちください\n");
      }
    }
    corpus::NoOutsideDatabase outside;
    const corpus::StartupReport report = corpus::OpenStore(
        *corpus_, version_, options, outside, [this](const corpus::StartupDecision& found) {
          return ask(splash_.get(), platform::Q(corpus::AsItIsQuestion(found)));
        });
    if (converted_) splash_->Append(u"\n変換作業が完了しました\n『翠蔵Viewer』を起動します");
    corpus::InitialOrders(*corpus_, selection_);
    journal_ = std::make_unique<corpus::NoteJournal>(dataPath_);
    corpus::ProfileFile bookmarks(dataPath_ / "suiten.ini");
    // A store read as it is stays as it came until the user changes something.
    if (!report.openedAsItIs) corpus::FillBookmarksOnFirstRun(bookmarks, *corpus_, selection_);

    windows_ = std::make_unique<reader::WindowRegistry>(
        [this](reader::FormKind kind) { return MakeWindow(kind); });
    navigator_ = std::make_unique<reader::Navigator>(*corpus_, *windows_);
    navigator_->DoEvents = [] { QApplication::processEvents(); };

    auto& window = static_cast<ContentsList&>(windows_->Single(reader::FormKind::Form9));
    contents_ = window.form();
    WireContents(*contents_);
    window.model().ConvSui = [this] {
      try {
        views::ConvSui(*corpus_, selection_, *windows_);
      } catch (const corpus::CorpusError& e) {
        Stop(e.what());
      }
    };
    window.Hyouji();
    window.Show();
    window.model().ClevWrite();
    window.Hyouji();
    splash_.reset();
    return true;
  } catch (const corpus::StartDeclined&) {
    splash_.reset();  // the user said no: nothing more to tell
    declined_ = true;
  } catch (const corpus::FolderBusyError& e) {
    showError(platform::Q(corpus::FolderBusyNotice(e)));
  } catch (const corpus::CorpusError& e) {
    splash_.reset();
    showError(QString::fromUtf8(e.what()));
  } catch (const corpus::SettingsError& e) {
    splash_.reset();
    showError(QString::fromUtf8(e.what()));
  }
  folderLock_.reset();
  return false;
}

void Program::OpenSelection(QWidget* over) {
  SelectionDialogWindow dialog(*corpus_, selection_, *windows_, settings_, store_,
                               over != nullptr ? over : contents_);
  dialog.exec();
  if (!dialog.Failure().empty()) Stop(dialog.Failure());
}

void Program::OpenSettings(QWidget* over) {
  SettingsDialogWindow dialog(settings_, store_, version_, over != nullptr ? over : contents_);
  dialog.ask = ask;
  bool exit = false;
  connect(&dialog, &SettingsDialogWindow::exitRequested, this, [&exit] { exit = true; });
  connect(&dialog, &SettingsDialogWindow::confirmed, this,
          [](const corpus::SettingsEffects& effects) {
            // The readers take the new compact mode and column lengths.
            for (QWidget* w : QApplication::topLevelWidgets()) {
              if (auto* form = qobject_cast<ReaderForm*>(w)) form->SettingsChanged(effects);
            }
          });
  dialog.exec();
  // Everything was deleted: the run ends the usual way.
  if (exit) End();
}

void Program::Stop(const std::string& message) {
  showError(QString::fromStdString(message));
  QTimer::singleShot(0, this, &Program::End);
}

void Program::End() {
  if (ending_) return;
  ending_ = true;
  // Every other window first, then the notes go back into the store.
  for (reader::OpenWindow* w : windows_->All()) {
    if (w->kind() != reader::FormKind::Form9) windows_->Unload(*w);
  }
  try {
    corpus::CloseStore(*corpus_, selection_, *journal_);
  } catch (const corpus::CorpusError& e) {
    showError(platform::Q(corpus::WriteBackFailure(e, *journal_)));
  }
  folderLock_.reset();
  if (contents_ != nullptr) contents_->close();
  QApplication::quit();
}

}  // namespace suizo::app
