// `Form4`: the hit list of a text window's search, page by page. The window
// copies what the core's `HitList` renders into its labels and its pane and
// hands every click and key back to it; a click on a hit puts the owner on
// it, and the owner redraws itself through `onJump`.
#pragma once

#include <QLabel>
#include <QPoint>
#include <QPushButton>
#include <QRadioButton>
#include <QWidget>
#include <array>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "app/platform/html_pane.h"
#include "core/corpus/corpus.h"
#include "core/corpus/selection.h"
#include "core/corpus/settings.h"
#include "core/reader/highlight.h"
#include "core/reader/hit_list.h"
#include "core/search/driver.h"

namespace suizo::platform {
class ProportionalResize;
}

namespace suizo::app {

class HitListWindow : public QWidget {
  Q_OBJECT

 public:
  // The owner's search, highlighter and main-text form (`Nok`, read at each
  // render), the corpus and selection it reads, the shared "@設定" values
  // (`DispN`) and the store they and the window's place are kept in. The
  // window keeps its place under `HitListParent(ownerCaption, ownerId)`.
  // `owner`, if given, is the Qt parent: the list goes with it.
  HitListWindow(search::SearchEngine& engine, reader::Highlighter& highlighter,
                const corpus::Corpus& corpus, const corpus::Selection& selection,
                corpus::Settings& settings, const int& Nok, corpus::SettingsStore& store,
                std::u16string_view ownerCaption, std::u16string_view ownerId,
                QWidget* owner = nullptr);

  reader::HitList& model() { return model_; }
  // The settings section of the window, "@結果" and the owner's identity.
  const std::u16string& Parent() const { return parent_; }
  platform::HtmlPane* pane() const { return web1_; }

  // Renders the owner's page `PageNo` (after a search, before showing).
  void Hyouji();
  // `MenuGo(1)`: clears the selection of the pane.
  void ClearSelection();

  // A hit was clicked: the owner already stands on it (`SrnPos`, `Mpos`,
  // `Lpos`) and now redraws itself and comes to the front. The list stays.
  std::function<void()> onJump;
  // A right click in the pane, at a global place: the program's pop-up menu.
  std::function<void(QPoint)> onContextMenu;
  // The pop-up menu's modal rule: while it is open, a key in the pane only
  // closes it. Both may stay unset when there is no menu.
  std::function<bool()> menuOpen;
  std::function<void()> closeMenu;

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void Build();
  void Show(const reader::HitListPage& page);
  void Shown(const std::optional<reader::HitListPage>& page);
  void CheckOption();
  void Opt(int index);
  void PaneKey(int key, Qt::KeyboardModifiers modifiers, bool& handled);
  void LinkClick(const QString& href);
  void Zoom(double widthRatio);

  reader::HitList model_;
  corpus::Settings& settings_;
  corpus::SettingsStore& store_;
  std::u16string parent_;

  QLabel* label1_ = nullptr;
  QLabel* label2_ = nullptr;
  std::array<QPushButton*, 4> commands_{};  // `Command2` to `Command5`
  std::array<QRadioButton*, 4> opt_{};
  platform::HtmlPane* web1_ = nullptr;
  platform::ProportionalResize* resize_ = nullptr;
};

}  // namespace suizo::app
