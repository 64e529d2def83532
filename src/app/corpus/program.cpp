#include "app/corpus/program.h"

#include <QApplication>
#include <QMessageBox>

#include "app/corpus/settings_dialog_window.h"
#include "app/corpus/splash_window.h"
#include "app/platform/toast.h"
#include "app/platform/yes_no.h"
#include "app/views/balloon_help_qt.h"
#include "app/views/selection_dialog_window.h"
#include "app/views/contents_form.h"
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

// The contents window of the registry with its form: the form goes when the
// registry lets the window go.
class WritingsContents : public views::ContentsWindow {
 public:
  WritingsContents(Program& program)
      : views::ContentsWindow(views::ContentsKind::Writings, program.corpus(), program.selection(),
                              program.settings()),
        form_(std::make_unique<ContentsForm>(*this, program)) {}
  ContentsForm* form() const { return form_.get(); }

 private:
  std::unique_ptr<ContentsForm> form_;
};

}  // namespace

Program::Program(std::filesystem::path dataPath, corpus::SettingsStore& store,
                 std::u16string version)
    : dataPath_(std::move(dataPath)), store_(store), version_(std::move(version)) {
  showError = [](const QString& message) {
    QMessageBox::critical(nullptr, QStringLiteral("翠蔵Viewer"), message);
  };
  toast = [](QWidget* over) { platform::Toast::Show(over); };
  ask = [](QWidget* over, const QString& question) { return platform::YesNoDialog::Ask(over, question); };
}

Program::~Program() = default;

std::unique_ptr<reader::OpenWindow> Program::MakeWindow(reader::FormKind kind) {
  if (kind == reader::FormKind::Form9) return std::make_unique<WritingsContents>(*this);
  return nullptr;  // the registry reports a kind this build has no window for
}

bool Program::Start() {
  try {
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
    converted_ = decision.path != corpus::StartupPath::Current;
    if (converted_) {
      splash_->ShowLog();
      if (decision.path == corpus::StartupPath::Reconvert) {
        splash_->Append(u"『翠蔵』データの再構成を行います\nしばらくお待ちください\n");
      }
    }
    corpus::NoOutsideDatabase outside;
    corpus::OpenStore(*corpus_, version_, options, outside);
    if (converted_) splash_->Append(u"\n変換作業が完了しました\n『翠蔵Viewer』を起動します");
    corpus::InitialOrders(*corpus_, selection_);
    journal_ = std::make_unique<corpus::NoteJournal>(dataPath_);

    windows_ = std::make_unique<reader::WindowRegistry>(
        [this](reader::FormKind kind) { return MakeWindow(kind); });
    navigator_ = std::make_unique<reader::Navigator>(*corpus_, *windows_);
    navigator_->DoEvents = [] { QApplication::processEvents(); };

    auto& window =
        static_cast<WritingsContents&>(windows_->Single(reader::FormKind::Form9));
    contents_ = window.form();
    contents_->toast = [this](QWidget* over) {
      if (toast) toast(over);
    };
    contents_->openSelection = [this] { OpenSelection(); };
    contents_->openSettings = [this] { OpenSettings(); };
    window.model().ConvSui = [this] { views::ConvSui(*corpus_, selection_, *windows_); };
    window.Hyouji();
    window.Show();
    window.model().ClevWrite();
    window.Hyouji();
    splash_.reset();
    return true;
  } catch (const corpus::CorpusError& e) {
    splash_.reset();
    showError(QString::fromUtf8(e.what()));
  } catch (const corpus::SettingsError& e) {
    splash_.reset();
    showError(QString::fromUtf8(e.what()));
  }
  return false;
}

void Program::OpenSelection() {
  SelectionDialogWindow dialog(*corpus_, selection_, *windows_, settings_, store_, contents_);
  dialog.exec();
}

void Program::OpenSettings() {
  SettingsDialogWindow dialog(settings_, store_, version_, contents_);
  dialog.ask = ask;
  bool exit = false;
  connect(&dialog, &SettingsDialogWindow::exitRequested, this, [&exit] { exit = true; });
  dialog.exec();
  // Everything was deleted: the run ends the usual way.
  if (exit) End();
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
    showError(QString::fromUtf8(e.what()));
  }
  if (contents_ != nullptr) contents_->close();
  QApplication::quit();
}

}  // namespace suizo::app
