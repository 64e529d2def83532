#include "core/scripture/scripture_window.h"

namespace suizo::scripture {

void SourcesWindow::FollowSelection() {
  search::SearchEngine& engine = reader_.engine();
  engine.GetBack(0);
  if (!engine.Combo1.empty()) toastDue = engine.Kensaku(0).toast;
  reader_.FindPlaceAgain();
  Hyouji();
}

}  // namespace suizo::scripture
