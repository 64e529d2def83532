// The pieces the contents and the reference views share: a button that never
// takes the focus, the search strip, and the collection's class strip.
#pragma once

#include <QBoxLayout>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QWidget>
#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "core/search/driver.h"

namespace suizo::app {

// The views' buttons leave the focus where the reading is.
QPushButton* ViewButton(QWidget* parent, const QString& name, const QString& caption);

// The box `Combo1` with its history `Combo` behind `Command12` and the search
// `Command1`; then, where a view has them, the hit counter `Label3` and the
// refinement `Command14`, `RefineLevel`, `Command15`.
struct SearchStrip {
  // Adds the box, the history and the search button to `row`.
  void Build(QWidget* form, QBoxLayout* row);
  void AddCounter(QBoxLayout* row);
  void AddRefine(QBoxLayout* row);

  void ShowCounter(const std::u16string& text, std::uint32_t colour, bool enabled);
  void ShowRefine(const search::RefineControls& refine);
  // The box keeps what the user is typing.
  void ShowBox(const std::u16string& text, const std::vector<std::u16string>& history);
  void SelectBox();

  QLineEdit* combo1 = nullptr;
  QComboBox* combo = nullptr;
  QPushButton* command12 = nullptr;
  QPushButton* command1 = nullptr;
  QPushButton* label3 = nullptr;
  QPushButton* command14 = nullptr;
  QLabel* refineLevel = nullptr;
  QPushButton* command15 = nullptr;
};

// `Picture3` with the classes `Clev(0..10)`; a click on any of it reaches
// `filter`, which opens the collection dialog.
struct ClevStrip {
  void Build(QWidget* form, QObject* filter);
  void Paint(const std::array<std::uint32_t, 11>& colours);
  bool Contains(const QObject* watched) const;

  QWidget* picture3 = nullptr;
  std::array<QLabel*, 11> clev{};
};

}  // namespace suizo::app
