// `Form9`: the writings contents, the window that carries the run. It copies
// what the core's contents model holds into its controls and hands every
// click and key back to it.
#pragma once

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QWidget>
#include <array>
#include <functional>

#include "app/platform/grid.h"
#include "app/views/search_strip.h"
#include "core/views/contents.h"

namespace suizo::app {

class Program;
class BalloonHelpQt;

class ContentsForm : public QWidget {
  Q_OBJECT

 public:
  ContentsForm(views::ContentsWindow& window, Program& program);

  views::ContentsWindow& window() { return window_; }
  // Copies the model into the controls.
  void Show(const views::Contents& model);
  // The views a button leads to that this build has windows for.
  void SetViewAvailable(int command, bool available);

  // The dialogs the strip opens; the program wires them.
  std::function<void()> openSelection, openSettings;
  // The toast "** 見つかりません **"; the program wires it.
  std::function<void(QWidget*)> toast;

 protected:
  void closeEvent(QCloseEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  void Build();
  void LayOutSel();
  void ReportMetrics();
  void Search();
  void AfterSearch();
  void Command(int number);
  // `KeyDownAll`: true when the key was the window's.
  bool KeyDownAll(int key, Qt::KeyboardModifiers modifiers);
  void FocusGrid();
  bool Writings() const { return window_.model().kind() == views::ContentsKind::Writings; }

  views::ContentsWindow& window_;
  Program& program_;
  bool showing_ = false;  // copying the model: the grid's signals are not the user's

  QLabel* label2_;
  SearchStrip search_;
  ClevStrip clev_;
  QLabel* label5_;
  QLabel* label1_;
  QCheckBox* check1_;
  QPushButton* pin_;
  std::array<QPushButton*, 12> commands_{};  // `Command2` to `Command11` by number
  std::array<QPushButton*, 2> sel_{};
  std::array<QLabel*, 2> selT_{};
  platform::Grid* grid_;
  BalloonHelpQt* balloons_ = nullptr;
};

}  // namespace suizo::app
