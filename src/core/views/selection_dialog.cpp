#include "core/views/selection_dialog.h"

#include "core/corpus/orders.h"

namespace suizo::views {

std::u16string ClassCaption(int klass) {
  if (klass == 10) return u"S";
  return u"C" + std::u16string(1, static_cast<char16_t>(u'0' + klass));
}

SelectionDialog::SelectionDialog(const corpus::Selection& current) : oldGk_(current.Gk) {
  for (std::size_t i = 0; i < kCollectionOptions.size(); ++i) {
    if (kCollectionOptions[i].gk == current.Gk) Option1 = static_cast<int>(i);
  }
  Check1 = current.Kn == 1 ? 1 : 0;
  Check2 = current.CSel;
}

bool SelectionDialog::Command1(corpus::Selection& selection) const {
  const corpus::Selection before = selection;
  selection.Gk = kCollectionOptions[static_cast<std::size_t>(Option1)].gk;
  selection.Kn = Check1;
  selection.CSel = Check2;
  if (selection.Gk != oldGk_) selection.MokRedo = 1;
  return selection.Gk != before.Gk || selection.Kn != before.Kn || selection.CSel != before.CSel;
}

void ConvSui(corpus::Corpus& corpus, corpus::Selection& selection,
             reader::WindowRegistry& windows) {
  const bool rebuilt = selection.MokRedo == 1;
  corpus::ApplySelection(corpus, selection);
  FollowSelection(windows, rebuilt);
}

void FollowSelection(reader::WindowRegistry& windows, bool rebuilt) {
  using reader::FormKind;
  if (rebuilt) {
    for (reader::OpenWindow* window : windows.OfKind(FormKind::Form9)) window->PlacementsRebuilt();
  }
  for (const FormKind kind :
       {FormKind::Form12, FormKind::Form9, FormKind::Form5, FormKind::Form2, FormKind::Form6}) {
    for (reader::OpenWindow* window : windows.OfKind(kind)) window->FollowSelection();
  }
}

}  // namespace suizo::views
