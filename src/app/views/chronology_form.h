// `Form12`: the chronology as a grid beside the offices of each year, open
// or folded by era, and `Form14`, the dialog of the kinds of event listed.
// The form copies what the core's model holds into its controls, measures
// wrapped text for the row heights, and hands every click and key back.
#pragma once

#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QWidget>
#include <array>
#include <map>

#include "app/platform/grid.h"
#include "app/views/search_strip.h"
#include "core/views/chronology.h"

namespace suizo::app {

class Program;
class BalloonHelpQt;

// `Form14`: one box per kind of event; "確定" applies them.
class ChronologyFilterWindow : public QDialog {
  Q_OBJECT

 public:
  ChronologyFilterWindow(const views::NenSelection& nenSel, corpus::SettingsStore& store,
                         QWidget* opener);

  // True when "確定" changed the kinds; `nenSel` then holds them.
  bool Confirmed(views::NenSelection& nenSel) const;
  QCheckBox* Box(int i) const { return check2_[static_cast<std::size_t>(i)]; }

 protected:
  bool event(QEvent* event) override;
  void showEvent(QShowEvent* event) override;

 private:
  void Enable();

  views::ChronologyFilterDialog model_;
  QWidget* opener_;
  std::array<QCheckBox*, 8> check2_{};
  QPushButton* command1_ = nullptr;
  bool confirmed_ = false;
  bool pointerMoved_ = false;
};

class ChronologyForm : public QWidget {
  Q_OBJECT

 public:
  ChronologyForm(views::ChronologyWindow& window, Program& program);

  views::ChronologyWindow& window() { return window_; }
  views::Chronology& model() { return window_.model(); }
  const views::Chronology& model() const { return window_.model(); }
  // Copies the model into the controls: the cells when they were rebuilt,
  // else the rows that moved.
  void Show();
  platform::Grid* grid() const { return grid_; }
  QPlainTextEdit* edit() const { return edit_; }
  BalloonHelpQt* balloons() const { return balloons_; }

  // `Command7`: the kinds dialog, then the list anew on a change.
  void OpenFilter();

 protected:
  void closeEvent(QCloseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void Build();
  void Fill();
  void PaintRow(int row);
  void PlaceEdit();
  void Command(int number);
  // `KeyDownAll`: true when the key was the window's.
  bool KeyDownAll(int key, Qt::KeyboardModifiers modifiers);
  void Act(const views::ChronologyAction& action);
  void Search();
  // The height the hidden label `Lab` takes, in twips.
  double MeasureLab(std::u16string_view text, int col) const;
  int ColPixels(int col) const;
  void ReportHeight();
  void FitColumns();

  views::ChronologyWindow& window_;
  Program& program_;
  double scale_ = 1;
  int painted_ = -1;  // the generation of the cells in the grid
  int paintedRow_ = 0;
  bool showing_ = false;  // copying the model: the grid's signals are not the user's

  SearchStrip search_;
  ClevStrip clev_;
  QPushButton *pin_, *command13_;
  QLabel *label1_, *label4_, *label5_;
  std::map<int, QPushButton*> commands_;
  platform::Grid* grid_;
  QPlainTextEdit* edit_;
  BalloonHelpQt* balloons_ = nullptr;
};

}  // namespace suizo::app
