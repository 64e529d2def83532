// `Form13`: the settings dialog. It shows the core's settings dialog model
// in its controls and hands the three buttons back to it.
#pragma once

#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QString>
#include <array>
#include <functional>
#include <string_view>

#include "core/corpus/settings.h"
#include "core/corpus/settings_dialog.h"

namespace suizo::app {

class BalloonHelpQt;

class SettingsDialogWindow : public QDialog {
  Q_OBJECT

 public:
  // `settings` are the program's own, which "確定" changes; `store` holds
  // "@設定". `version` is the program's, as "0.1.0".
  SettingsDialogWindow(corpus::Settings& settings, corpus::SettingsStore& store,
                       std::u16string_view version, QWidget* parent = nullptr);

  // The yes/no question before deleting everything, `Form10` unless the
  // program or a test puts another here.
  std::function<bool(QWidget* over, const QString& question)> ask;

  const corpus::SettingsDialog& model() const { return model_; }
  BalloonHelpQt* balloons() const { return balloons_; }

 signals:
  // "確定" stored the settings. Every open window's balloons have been set
  // up anew or taken away already; the fonts, the compact mode and the
  // vertical text of the open windows are the program's to carry out.
  void confirmed(const suizo::corpus::SettingsEffects& effects);
  // Everything deleted: the program is to end.
  void exitRequested();

 protected:
  void resizeEvent(QResizeEvent* event) override;
  void done(int result) override;

 private:
  void Build();
  void Fill();
  void Read();
  void Command1();
  void Command3();

  corpus::Settings& settings_;
  corpus::SettingsStore& store_;
  corpus::SettingsDialog model_;
  std::array<QCheckBox*, 4> checks_{};  // Check1 to Check4
  std::array<QComboBox*, 7> combos_{};  // Combo1 to Combo7
  QGroupBox* frame1_ = nullptr;
  QLabel* label1_ = nullptr;
  QPushButton* command1_ = nullptr;
  QPushButton* command2_ = nullptr;
  QPushButton* command3_ = nullptr;
  BalloonHelpQt* balloons_ = nullptr;
  double aspect_ = 0;  // height over width, kept while resized
  bool fitting_ = false;
};

}  // namespace suizo::app
