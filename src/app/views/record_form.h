// `Form5`: one document's record, its numbers in every printed series and
// seven panes of commentary with links. It walks the contents' list: the
// arrows go from document to document. A double click in a right pane
// shows it in the large left one until a click there brings it back.
#pragma once

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QWidget>
#include <array>
#include <map>

#include "app/platform/html_pane.h"
#include "app/views/search_strip.h"
#include "core/views/record.h"

namespace suizo::app {

class Program;
class BalloonHelpQt;

class RecordForm : public QWidget {
  Q_OBJECT

 public:
  RecordForm(views::RecordWindow& window, Program& program);

  views::RecordWindow& window() { return window_; }
  views::DocumentRecord& model() { return window_.model(); }
  void Show(const views::RecordDisplay& display);
  platform::HtmlPane* Pane(int i) const { return panes_[static_cast<std::size_t>(i)]; }

 protected:
  void closeEvent(QCloseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  // Runs what an action asked: a redraw, the toast, a focus, or a jump.
  void Follow(const views::RecordOutcome& outcome);
  void PlacePic();
  QString Selection() const;

  views::RecordWindow& window_;
  Program& program_;
  std::map<QString, QLabel*> fields_;  // `Bangou`, `Text1` to `Text9` by name
  std::map<int, QLineEdit*> pages_;    // `Page(box)`
  std::map<int, QLabel*> pageTitles_;  // `PageTitle(title)`
  ClevStrip clev_;
  std::array<QPushButton*, views::kRecordPanes + 1> labels_{};  // `Text4` (0) and `Label1(1..7)`
  std::array<platform::HtmlPane*, views::kRecordPanes + 1> panes_{};
  QLabel* pic_;
  SearchStrip search_;
  QPushButton* pin_;
  std::map<int, QPushButton*> commands_;
  int picPane_ = 0;
  BalloonHelpQt* balloons_ = nullptr;
};

}  // namespace suizo::app
