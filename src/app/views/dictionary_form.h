// `Form6`: one entry of the dictionary, found by the ranked lookup of a
// reader's selection. One window per word: the navigation reuses a window
// whose box holds the word. The form copies what the model shows and hands
// every click, key and link back to it.
#pragma once

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QWidget>
#include <array>

#include "app/platform/html_pane.h"
#include "app/views/search_strip.h"
#include "core/views/dictionary.h"

namespace suizo::app {

class Program;
class BalloonHelpQt;

class DictionaryForm : public QWidget {
  Q_OBJECT

 public:
  DictionaryForm(views::DictionaryWindow& window, Program& program);

  views::DictionaryWindow& window() { return window_; }
  views::Dictionary& model() { return window_.model(); }
  void Show(const views::DictionaryDisplay& display);
  platform::HtmlPane* Pane() const { return web_; }

 protected:
  void closeEvent(QCloseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  // Runs what an action asked: a redraw, the toast, or a jump.
  void Follow(const views::DictionaryOutcome& outcome);

  views::DictionaryWindow& window_;
  Program& program_;
  QLabel *text4_, *label1_, *text2_, *text3_;
  SearchStrip search_;
  QPushButton *command2_, *command3_, *command4_, *pin_;
  std::array<QPushButton*, 2> sel_{};
  std::array<QPushButton*, views::kKanrenCount + 1> kanren_{};
  platform::HtmlPane* web_;
  BalloonHelpQt* balloons_ = nullptr;
};

}  // namespace suizo::app
