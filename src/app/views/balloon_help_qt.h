// Balloon help on a real window: the core decides which control says what
// and when the balloons are there; this puts them on the widgets. Controls
// are found by object name, a control array element "Check2(10)" as
// "Check2_10". Any window can carry one: make it with the window as parent
// once the controls exist, then call Load.
#pragma once

#include <QObject>
#include <QPointer>
#include <QString>
#include <QTimer>
#include <QWidget>
#include <memory>
#include <string_view>
#include <vector>

#include "core/corpus/settings.h"
#include "core/views/balloons.h"

namespace suizo::app {

// The object name of a control: "Check2(10)" is "Check2_10".
QString ControlObjectName(std::u16string_view control);

class BalloonTip;

class BalloonHelpQt : public QObject {
  Q_OBJECT

 public:
  // `form`'s object name is its form name ("Form3"); `settings` are the
  // program's, read again at each step, so they must outlive the window.
  BalloonHelpQt(QWidget* form, const corpus::Settings& settings);
  ~BalloonHelpQt() override;

  // At the window's load: made when `Helper` is 1.
  void Load();
  // Any key in the window takes the balloons away.
  void KeyDown();
  // Over the grid or `Picture1`: they come back.
  void MouseMove();
  // The layout switched and brought other controls.
  void LayoutChanged();
  // The settings dialog confirmed: anew with the new font, or away.
  void SettingsChanged();

  // A balloon whose text the window tells at each display.
  void SetText(std::u16string_view control, std::u16string_view text);

  // Moves over this area bring the balloons back too, beside the window's
  // grids and `Picture1`, which are watched by themselves.
  void WatchMouseMoves(QWidget* area);

  bool Showing() const { return model_.Showing(); }
  const views::BalloonHelp& model() const { return model_; }
  // What the control's balloon says now; empty when it has none.
  QString TextOf(const QWidget* control) const;
  // The balloon on the screen, or null when none shows.
  QWidget* VisibleBalloon() const;
  // What it says; empty when none shows.
  QString ShownText() const;
  // The control whose balloon shows or is about to.
  QWidget* Pending() const { return owner_; }

  // Every open window's balloons, after the settings changed.
  static void SettingsChangedEverywhere();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  struct Installed {
    QPointer<QWidget> control;
    QString text;
  };

  // Copies what the model holds onto the widgets.
  void Apply();
  const Installed* ToolOf(const QWidget* widget) const;
  // The control with a balloon under `widget`: itself or its nearest parent.
  QWidget* OwnerOf(QWidget* widget) const;
  bool InWakeArea(QWidget* widget) const;
  bool InForm(const QWidget* widget) const;
  void Hover(QWidget* owner);
  void ShowBalloon();
  void HideBalloon();
  void Watch(QWidget* area);

  QPointer<QWidget> form_;
  views::BalloonHelp model_;
  std::vector<Installed> installed_;
  std::vector<QPointer<QWidget>> wakeAreas_;
  QPointer<QWidget> owner_;
  QTimer delay_;
  QTimer visible_;
  BalloonTip* tip_ = nullptr;  // a child of the form: goes with it
};

}  // namespace suizo::app
