// `Form3`: the choice of collection, order and classes. The controls show
// the core's selection dialog model; "確定" applies it and carries the
// change into the store's orders and every open window.
#pragma once

#include <QCheckBox>
#include <QDialog>
#include <QGroupBox>
#include <QPointer>
#include <QPushButton>
#include <QRadioButton>
#include <array>
#include <string>

#include "core/corpus/corpus.h"
#include "core/corpus/selection.h"
#include "core/corpus/settings.h"
#include "core/reader/navigation.h"
#include "core/views/selection_dialog.h"

namespace suizo::app {

class BalloonHelpQt;

class SelectionDialogWindow : public QDialog {
  Q_OBJECT

 public:
  // `opener` is the view the dialog was opened from: the dialog stands
  // centred on its `Picture3`, or on the view when it has none.
  SelectionDialogWindow(corpus::Corpus& corpus, corpus::Selection& selection,
                        reader::WindowRegistry& windows, const corpus::Settings& settings,
                        corpus::SettingsStore& store, QWidget* opener = nullptr);

  // The dialog closed without "確定": nothing was applied.
  bool Cancelled() const { return cancelled_; }
  // The fault the data gave while the collection was placed; empty when none.
  const std::string& Failure() const { return failure_; }
  const views::SelectionDialog& model() const { return model_; }
  BalloonHelpQt* balloons() const { return balloons_; }

 protected:
  bool event(QEvent* event) override;
  void showEvent(QShowEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void done(int result) override;

 private:
  void Build();
  void Fill();
  void Read();
  void Command1();

  corpus::Corpus& corpus_;
  corpus::Selection& selection_;
  reader::WindowRegistry& windows_;
  corpus::SettingsStore& store_;
  views::SelectionDialog model_;
  QPointer<QWidget> opener_;
  std::array<QRadioButton*, views::kCollectionOptions.size()> option1_{};
  std::array<QCheckBox*, 11> check2_{};
  QCheckBox* check1_ = nullptr;
  QGroupBox* frame1_ = nullptr;
  QGroupBox* frame2_ = nullptr;
  QPushButton* command1_ = nullptr;
  QPushButton* command2_ = nullptr;
  BalloonHelpQt* balloons_ = nullptr;
  bool cancelled_ = false;
  std::string failure_;
  bool pointerMoved_ = false;
  double aspect_ = 0;  // height over width, kept while resized
  bool fitting_ = false;
};

}  // namespace suizo::app
