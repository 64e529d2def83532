// `Form8`: the sutra's two outlines in two grids, one shown at a time. It
// belongs to one sutra reader: it shows where the reader's row stands in
// the outline, moves by groups, and leads back into the reader.
#pragma once

#include <QLabel>
#include <QPushButton>
#include <QWidget>
#include <array>
#include <functional>

#include "app/platform/grid.h"
#include "core/corpus/settings.h"
#include "core/scripture/outline.h"

namespace suizo::app {

class OutlineForm : public QWidget {
  Q_OBJECT

 public:
  OutlineForm(const corpus::Corpus& corpus, corpus::SettingsStore& store);

  scripture::Outline& model() { return model_; }
  // The reader's `Command5` (`SKflag` 0) and `Command6` (1) at its row.
  void Open(int skFlag, int hkNo);
  platform::Grid* GridAt(int index) const { return grids_[static_cast<std::size_t>(index)]; }

  // `SutraGo`: the reader takes the place and comes forward.
  std::function<void(const search::Position&)> onSutraGo;

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  void Show();
  void ShowGrid(int index);
  void Paint(int index);
  void ReportMetrics();
  void SutraGo();

  scripture::Outline model_;
  corpus::SettingsStore& store_;
  bool showing_ = false;  // the model moves the grid: its signals are not the user's
  QLabel* label1_;
  std::array<platform::Grid*, 2> grids_{};
};

}  // namespace suizo::app
