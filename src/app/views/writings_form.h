// `Form2`: the writings reader. Seven panes side by side, or two in true
// vertical writing, with the search strip, the page boxes and the buttons to
// the other views. Every click and key goes to the core's reader model; the
// form copies back what a render returns and places the controls by the
// core's layout, scaled to the window's width.
#pragma once

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPointer>
#include <QPushButton>
#include <QWidget>
#include <array>
#include <functional>
#include <map>
#include <memory>
#include <optional>

#include "app/platform/html_pane.h"
#include "core/reader/context_menu.h"
#include "core/reader/highlight.h"
#include "core/reader/writings_layout.h"
#include "core/reader/writings_window.h"
#include "core/views/contents.h"

namespace suizo::app {

class Program;
class BalloonHelpQt;
class HitListWindow;

class WritingsForm : public QWidget {
  Q_OBJECT

 public:
  WritingsForm(reader::WritingsWindow& window, Program& program);
  ~WritingsForm() override;

  reader::WritingsWindow& window() { return window_; }
  reader::WritingsReader& reader() { return window_.reader(); }
  // Copies a render into the controls and lays them out for its layout.
  void Show(const reader::WritingsView& view);
  // What an action asks of the window beyond the model.
  void Apply(const reader::ReaderOutcome& outcome);

  // `KeyDownAll` of the window: true when the key was taken.
  bool KeyDownAll(int qtKey, Qt::KeyboardModifiers modifiers);
  // The text selected in any pane, trimmed; the clipboard is not touched.
  QString GetSelection() const;
  platform::HtmlPane* Pane(int i) const { return panes_[static_cast<std::size_t>(i)]; }
  // Whether every pane has loaded its frame and run what was sent to it.
  bool PanesSettled() const;

  // Ctrl+double click on pane 5, 6 or 7: the note of the line in the edit box.
  bool StartNoteEdit(int pane);
  QPlainTextEdit* EditBox() const { return editBox_; }
  // A double click in a pane: the selection grows over the run of kanji.
  void SelectKanjiRun(int pane);

  // `Command2`: the hit list of this window's search, made at the first call.
  void OpenHitList();
  HitListWindow* HitList() const { return hitList_.get(); }
  // `BMark`: the bookmark dialog, modal over the window.
  void OpenBookmarks();

  // `MenuShow`: the program's pop-up menu for a pane or a text box of this
  // window (or of its hit list), at a place on the screen.
  void ShowMenu(QWidget* target, QPoint at);

 protected:
  void closeEvent(QCloseEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void moveEvent(QMoveEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  void Build();
  QPushButton* Button(const char* name, const QString& caption, QRect design);
  QLabel* Field(const char* name, QRect design);
  void Put(QWidget* w, QRect design);
  void LayOut();
  void Place();
  void Search(int divMode);
  void PaneKey(int pane, int qtKey, Qt::KeyboardModifiers modifiers, bool& handled);
  void EndNoteEdit();
  void Link(const QString& href);
  void Jump(int command);
  void MenuGo(QWidget* target, const reader::MenuState& menu, int n);
  void SaveGeometry();
  void FocusPanel() { setFocus(); }
  bool TypingIn(QWidget* w) const;

  reader::WritingsWindow& window_;
  Program& program_;
  reader::WritingsLayout layout_;
  double scale_ = 1;
  bool placing_ = false;  // a resize the form makes itself (`SkipResize`)
  int muki_ = -1;
  std::map<QWidget*, QRect> design_;
  std::map<QWidget*, double> fontPx_;

  std::array<platform::HtmlPane*, 8> panes_{};  // `Web(1)` to `Web(7)`
  // What a pane is to show, kept while it is out of sight.
  struct Held {
    QString body;
    std::optional<std::uint32_t> colour;
    int scrollRight = 0;
    bool toTop = false;
    bool due = false;
  };
  std::array<Held, 8> held_{};
  std::array<QLabel*, 11> tagT_{};
  std::array<QPushButton*, 11> tagB_{};
  QLabel *bangou_, *text1_, *text4_, *text5_, *text6_;
  QLineEdit* combo1_;
  QComboBox* combo_;
  QPushButton *command12_, *command1_, *label3_, *command14_, *command15_;
  QLabel *refineLevel_, *label5_;
  std::map<int, QPushButton*> commands_;  // `Command2` to `Command16` by number
  QPushButton *sinSya_, *tyoKat_, *kakko_, *fav_, *bMark_, *pin_, *limit_, *btUp_, *btDown_;
  QCheckBox* okuri_;
  QWidget* picture3_;
  std::array<QLabel*, 11> clev_{};
  std::map<int, QLineEdit*> page_;        // `Page(i)` by box
  std::map<int, QLabel*> pageTitle_;      // `PageTitle(i)` by label index
  QPlainTextEdit* editBox_;
  int editPane_ = 0;
  QString editStart_;
  BalloonHelpQt* balloons_ = nullptr;
  std::unique_ptr<reader::Highlighter> highlighter_;  // the hit list's marks
  int nok_ = 0;                                       // the list shows column 8
  std::unique_ptr<HitListWindow> hitList_;
};

}  // namespace suizo::app
