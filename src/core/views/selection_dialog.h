// The choice of the frame of reference: which printed collection, in which
// order, which classes of document. The dialog edits the selection, and the
// change is carried into the store's orders and every open window.
#pragma once

#include <array>
#include <string_view>

#include "core/corpus/corpus.h"
#include "core/corpus/selection.h"
#include "core/reader/navigation.h"

namespace suizo::views {

// The options of the dialog in their order on the screen.
struct CollectionOption {
  std::u16string_view caption;
  int gk;
};
inline constexpr std::array<CollectionOption, 11> kCollectionOptions = {{
    {u"システム", 0},
    {u"定本遺文", 22},
    {u"新定翠典", 23},
    {u"翠典全集", 25},
    {u"新編翠典", 28},
    {u"平成新修", 29},
    {u"縮刷遺文", 24},
    {u"刊本録内", 26},
    {u"刊本録外", 27},
    {u"対照録", 31},
    {u"真蹟集成", 35},
}};

inline constexpr std::u16string_view kSelectionCaption = u"選択";
inline constexpr std::u16string_view kCollectionFrame = u"遺文集選択";
inline constexpr std::u16string_view kClassFrame = u"部類選択";
inline constexpr std::u16string_view kDateOrderCaption = u"系年順";
inline constexpr std::u16string_view kAutographCaption = u"真蹟検索";
inline constexpr std::u16string_view kConfirmCaption = u"確定";
// "C0" to "C9" and, for the autograph scope, "S" on the views' class strips.
std::u16string ClassCaption(int klass);

// `Form3`: the dialog's controls, set from the selection when it opens.
class SelectionDialog {
 public:
  explicit SelectionDialog(const corpus::Selection& current);

  int Option1 = 0;               // the collection's option
  int Check1 = 0;                // 1: date order
  std::array<int, 11> Check2{};  // classes 0..9, and 10 the autograph scope

  // "確定": the choices go into the selection; a new collection asks for
  // the placements to be made anew. Returns whether anything changed.
  bool Command1(corpus::Selection& selection) const;

 private:
  int oldGk_;
};

// `ConvSui`: the changed selection carried into the store's orders (the
// placements made anew when `MokRedo` asks, else the class filter alone)
// and into each open window, in the order the windows depend on: the
// chronology, the contents and record views, the writings readers, the
// dictionary.
void ConvSui(corpus::Corpus& corpus, corpus::Selection& selection, reader::WindowRegistry& windows);
// The windows' part alone, for a selection the store has taken already;
// `rebuilt` when the placements were made anew.
void FollowSelection(reader::WindowRegistry& windows, bool rebuilt);

}  // namespace suizo::views
