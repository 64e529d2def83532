#include "core/reader/writings_window.h"

namespace suizo::reader {

WritingsWindow::WritingsWindow(corpus::Corpus& corpus, corpus::Selection& selection,
                               corpus::Settings& settings, const Navigator& navigator,
                               corpus::NoteJournal* journal)
    : Hooked(FormKind::Form2),
      reader_(corpus, selection, settings, journal),
      navigator_(&navigator) {}

void WritingsWindow::Hyouji() {
  const WritingsView view = reader_.Hyouji();
  if (onView) onView(view);
}

void WritingsWindow::Kensaku(int mode) {
  reader_.engine().SrMethod = navigator_->JumpMethod();
  toastDue = reader_.engine().Kensaku(mode).toast;
  Hyouji();
}

void WritingsWindow::SetMuki1(int muki) {
  if (muki == 1) {
    reader_.TateInit();
  } else {
    reader_.YokoInit();
  }
}

void WritingsWindow::Hyouji2() {
  reader_.Hyouji2();
}

void WritingsWindow::FollowSelection() {
  search::SearchEngine& engine = reader_.engine();
  engine.GetBack(0);
  if (!engine.Combo1.empty()) toastDue = engine.Kensaku(0).toast;
  reader_.FindPlaceAgain();
  Hyouji();
}

ReaderOutcome WritingsWindow::LinkClick(Navigator& navigator, std::u16string_view href) {
  ReaderOutcome out = reader_.LinkClick(href);
  switch (out.jump) {
    case ReaderOutcome::Jump::WritingsLine:
      navigator.GoHonbun(u"", 0, out.jumpPosition, search::Method::And, reader_.Muki1, ParentForm);
      break;
    case ReaderOutcome::Jump::SutraRow:
      navigator.GoKyou(u"", out.jumpPosition, ParentForm);
      break;
    case ReaderOutcome::Jump::None:
      break;
  }
  return out;
}

}  // namespace suizo::reader
