// One run of the program: the store opened at the start, the scholar's
// selection, the registry of open windows and the jumps between them, and
// the end through "終了" that writes back what changed.
#pragma once

#include <QCloseEvent>
#include <QObject>
#include <QWidget>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "core/corpus/corpus.h"
#include "core/corpus/folder_lock.h"
#include "core/corpus/note_journal.h"
#include "core/corpus/selection.h"
#include "core/corpus/settings.h"
#include "core/reader/navigation.h"
#include "core/views/dictionary_lookup.h"

namespace suizo::app {

class SplashWindow;
class ContentsForm;
class WritingsForm;

class Program : public QObject {
  Q_OBJECT

 public:
  // `store` holds the per-user settings; it outlives the program.
  Program(std::filesystem::path dataPath, corpus::SettingsStore& store, std::u16string version);
  ~Program() override;

  // The start: the data folder held against other writers, the splash, the
  // store opened (built first when it must be), the orders of the default
  // selection, then the contents window. False when another program holds
  // the folder (nothing written then) or the data has a fault; the message
  // has been shown and nothing was written half.
  bool Start();
  // "終了": every other window goes, the notes edited are written back, the
  // data folder is let go and the application quits.
  void End();
  // The two dialogs, modal over the window that asked (the contents window
  // when none is given).
  void OpenSelection(QWidget* over = nullptr);
  void OpenSettings(QWidget* over = nullptr);
  // Whether this build has a window for the kind: a view without one is
  // not reached.
  bool Builds(reader::FormKind kind) const;
  // The store took another collection (a bookmark's): every open window
  // finds its place again in it.
  void FollowSelection();
  // A contents list (`Form9` or `Form15`) shown at a document, as a
  // reader's contents button asks; 0 leaves its place.
  void ShowContentsAt(reader::FormKind kind, int mpos);
  // A view closed by the user: it goes from the registry once its events
  // are done, and the view the user returns to comes forward.
  void Closed(reader::OpenWindow& window);
  // A view's close event: refused while its pin is down, unless the run is
  // ending; else accepted and the view goes as `Closed` says. True when it
  // closes.
  bool CloseView(reader::OpenWindow& window, QCloseEvent& event);
  bool Ending() const { return ending_; }
  // A fault in the data met while running, as a damaged store or record
  // gives: its message, then the end as "終了" makes it, once the events
  // under way are done.
  void Stop(const std::string& message);

  corpus::Corpus& corpus() { return *corpus_; }
  corpus::Selection& selection() { return selection_; }
  corpus::Settings& settings() { return settings_; }
  corpus::SettingsStore& store() { return store_; }
  reader::WindowRegistry& windows() { return *windows_; }
  reader::Navigator& navigator() { return *navigator_; }
  corpus::NoteJournal* journal() { return journal_.get(); }
  ContentsForm* contents() const { return contents_; }
  // What the start did: the fast path, or a conversion first.
  bool Converted() const { return converted_; }
  // Whether the start ended because the user chose not to open another
  // installation's store as it is.
  bool Declined() const { return declined_; }

  // What fills the data folder on its first use: the sample installed with
  // the program, when the data folder is the user's own. Empty otherwise.
  std::filesystem::path seed;
  // The message box of a fault; tests replace it.
  std::function<void(const QString&)> showError;
  // The toast "** 見つかりません **"; tests replace it.
  std::function<void(QWidget*)> toast;
  // The yes/no question (`Form10`) of the start and of the settings dialog;
  // tests replace it.
  std::function<bool(QWidget*, const QString&)> ask;

 private:
  std::unique_ptr<reader::OpenWindow> MakeWindow(reader::FormKind kind);
  void HoldDataFolder();
  // The dialogs, the toast and the views a contents list's buttons reach.
  void WireContents(ContentsForm& form);

  std::filesystem::path dataPath_;
  corpus::SettingsStore& store_;
  std::u16string version_;
  // Held from the start until the notes are written back at the end.
  std::optional<corpus::DataFolderLock> folderLock_;
  std::unique_ptr<corpus::Corpus> corpus_;
  corpus::Selection selection_;
  corpus::Settings settings_;
  std::unique_ptr<corpus::NoteJournal> journal_;
  // Before the windows, which hold on to it.
  std::unique_ptr<views::DictionaryLookup> lookup_;
  std::unique_ptr<reader::WindowRegistry> windows_;
  std::unique_ptr<reader::Navigator> navigator_;
  std::unique_ptr<SplashWindow> splash_;
  ContentsForm* contents_ = nullptr;  // owned by its core window's registry entry
  bool converted_ = false;
  bool declined_ = false;
  bool ending_ = false;
};

}  // namespace suizo::app
