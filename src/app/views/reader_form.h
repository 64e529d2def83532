// What the three text readers' windows share: the panes with their tabs,
// the search strip, the step buttons, the note editor, the pop-up menu, the
// bookmarks, the keys and the proportional resize. Every click and key goes
// to the core's reader model; the form copies back what a render returns
// and places the controls by the core's layout, scaled to its width. Each
// reader adds its own header fields and buttons.
#pragma once

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QWidget>
#include <array>
#include <cstdint>
#include <map>
#include <optional>
#include <string_view>
#include <vector>

#include "app/platform/grid.h"

#include "app/platform/html_pane.h"
#include "core/corpus/bookmarks.h"
#include "core/corpus/settings_dialog.h"
#include "core/reader/context_menu.h"
#include "core/reader/navigation.h"
#include "core/reader/reader_base.h"
#include "core/reader/writings_layout.h"

namespace suizo::app {

class Program;
class BalloonHelpQt;

// What tells one reader's window from another.
struct ReaderFormShape {
  const char* name = "";        // the form's object name
  std::u16string_view section;  // where the window keeps its place
  reader::FormKind kind = reader::FormKind::Form2;
  corpus::BookmarkKind bookmarks = corpus::BookmarkKind::Writings;
  std::vector<std::u16string_view> tabs;  // the captions of `TagT(i)`
  std::vector<std::uint32_t> tabColours;
  std::vector<int> paneOfTab;
  int panes = 7;
};

class ReaderForm : public QWidget {
  Q_OBJECT

 public:
  ReaderForm(reader::TextView& window, reader::ReaderBase& model, Program& program,
             ReaderFormShape shape);
  ~ReaderForm() override;

  reader::TextView& textView() { return window_; }
  // Copies a render into the controls and lays them out for its layout.
  void Show(const reader::ReaderView& view);
  // What an action asks of the window beyond the model.
  void Apply(const reader::ReaderOutcome& outcome);

  // `KeyDownAll` of the window: true when the key was taken.
  bool KeyDownAll(int qtKey, Qt::KeyboardModifiers modifiers);
  // The text selected in any pane, trimmed; the clipboard is not touched.
  QString GetSelection() const;
  platform::HtmlPane* Pane(int i) const { return panes_[static_cast<std::size_t>(i)]; }

  // Ctrl+double click on a notes pane: the note of the line in the edit box.
  bool StartNoteEdit(int pane);
  QPlainTextEdit* EditBox() const { return editBox_; }
  // A double click in a pane: the selection grows over the run of kanji.
  void SelectKanjiRun(int pane);
  // `BMark`: the bookmark dialog, modal over the window.
  void OpenBookmarks();
  // `MenuShow`: the program's pop-up menu for a pane or a text box of this
  // window (or of a list it owns), at a place on the screen.
  void ShowMenu(QWidget* target, QPoint at);
  // The settings dialog confirmed: the compact mode and the column
  // lengths may have changed.
  void SettingsChanged(const corpus::SettingsEffects& effects);

 protected:
  // Builds the shared controls, the reader's own (`BuildOwn`), then lays
  // out and restores the place: called once by each reader's constructor.
  void Init();
  virtual void BuildOwn() = 0;
  virtual void ShowOwn(const reader::ReaderView& view) = 0;
  virtual reader::WritingsLayout MakeLayout() const = 0;
  // After the shared controls were placed: the reader's own visibility.
  virtual void PlaceOwn() {}
  // The note of a pane and its end; nothing for a pane without notes.
  virtual std::optional<std::u16string> NoteText(int pane) const = 0;
  virtual reader::ReaderOutcome NoteEnd(int pane, std::u16string_view start,
                                        std::u16string_view text) = 0;
  // A link clicked in a pane.
  virtual void Link(const QString& href) { (void)href; }
  // Whether a page box takes a typed character.
  virtual bool PageTakes(char16_t c) const = 0;
  // The reader's own hit list, if it has one.
  virtual void CloseHitList() {}
  virtual void RefreshHitList() {}
  // A further filter for the reader's own controls.
  virtual bool OwnEvent(QObject* watched, QEvent* event) {
    (void)watched;
    (void)event;
    return false;
  }

  // The window's renders, shows and raises come to this form.
  template <class Window>
  void Hook(Window& window) {
    window.onView = [this](const reader::ReaderView& v) { Show(v); };
    window.onShow = [this] { show(); };
    window.onRaise = [this] {
      showNormal();
      raise();
      activateWindow();
    };
  }
  QPushButton* Button(const char* name, const QString& caption, QRect design);
  QLabel* Field(const char* name, QRect design);
  void Put(QWidget* w, QRect design);
  // A page box `Page(box)` with its title label, Enter searching the page.
  QLineEdit* AddPageBox(int box, const QString& title, const QString& titleName, QRect titleDesign,
                        QRect boxDesign);
  void FocusPanel() { setFocus(); }
  // The family the window's jumps carry.
  std::u16string Family() const;

  void closeEvent(QCloseEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;
  void changeEvent(QEvent* event) override;

  reader::TextView& window_;
  reader::ReaderBase& model_;
  Program& program_;
  ReaderFormShape shape_;
  reader::WritingsLayout layout_;
  // The vertical page of the last render, which the layout sizes panes to.
  reader::ScriptureLayoutState vertical_;
  double scale_ = 1;
  BalloonHelpQt* balloons_ = nullptr;

  std::array<platform::HtmlPane*, 8> panes_{};  // `Web(1)` to `Web(n)`
  std::vector<QLabel*> tagT_;
  std::vector<QPushButton*> tagB_;
  QLineEdit* combo1_ = nullptr;
  QComboBox* combo_ = nullptr;
  QPushButton *command12_ = nullptr, *command1_ = nullptr, *label3_ = nullptr,
              *command14_ = nullptr, *command15_ = nullptr;
  QLabel *refineLevel_ = nullptr, *label5_ = nullptr;
  std::map<int, QPushButton*> commands_;  // by number
  QPushButton *bMark_ = nullptr, *pin_ = nullptr, *limit_ = nullptr, *btUp_ = nullptr,
              *btDown_ = nullptr;
  QCheckBox* okuri_ = nullptr;
  std::map<int, QLineEdit*> page_;  // `Page(i)` by box
  QPlainTextEdit* editBox_ = nullptr;

 private:
  void BuildShared();
  void LayOut();
  void Place();
  void Search(int divMode);
  void PaneKey(int pane, int qtKey, Qt::KeyboardModifiers modifiers, bool& handled);
  void EndNoteEdit();
  bool TypingIn(QWidget* w) const;

  bool placing_ = false;  // a resize the form makes itself (`SkipResize`)
  int muki_ = -1;
  std::map<QWidget*, QRect> design_;
  std::map<QWidget*, double> fontPx_;
  int editPane_ = 0;
  QString editStart_;
  // What a pane is to show, kept while it is out of sight.
  struct Held {
    QString body;
    std::optional<std::uint32_t> colour;
    int scrollRight = 0;
    bool toTop = false;
    bool due = false;
  };
  std::array<Held, 8> held_{};
};

using platform::Css;

}  // namespace suizo::app
