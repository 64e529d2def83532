#include "core/reader/context_menu.h"

namespace suizo::reader {
namespace {

enum Item { kJisho = 1, kHonbun, kKyou, kShiryou, kSeparator, kCut, kCopy, kPaste };

}  // namespace

MenuState MenuShow(MenuTarget target, std::u16string_view selection,
                   std::u16string_view clipboard) {
  MenuState menu;
  menu.target = target;
  const int selected = selection.empty() ? 0 : 1;
  const bool box = target == MenuTarget::TextBox;
  for (const int i : {kJisho, kHonbun, kKyou, kShiryou, kCopy}) menu.MenuEnabled[i] = selected;
  menu.MenuEnabled[kSeparator] = 0;
  // A pane's text cannot change: no cut, no paste.
  menu.MenuEnabled[kCut] = box ? selected : 0;
  menu.MenuEnabled[kPaste] = box && !clipboard.empty() ? 1 : 0;
  return menu;
}

MenuChoice MenuGo(const MenuState& menu, int n, std::u16string_view selection,
                  const MenuOwner& owner) {
  MenuChoice choice;
  if (n < 1 || n >= kMenuItemCount || menu.MenuEnabled[static_cast<std::size_t>(n)] != 1) {
    return choice;
  }
  const bool pane = menu.target == MenuTarget::Pane;
  if (n >= kJisho && n <= kShiryou) {
    choice.text = selection;
    choice.family = owner.ParentForm;
    choice.clearPaneSelection = pane;
    // The writings open in the owner's layout, except from the sutra, whose
    // vertical page is of another measure: there they open as the writings
    // reader opens by itself.
    choice.muki = owner.kind == FormKind::Form7 && n == kHonbun ? 0 : owner.Muki1;
    choice.kind = n == kJisho    ? MenuChoice::Kind::Jisho
                  : n == kHonbun ? MenuChoice::Kind::Honbun
                  : n == kKyou   ? MenuChoice::Kind::Kyou
                                 : MenuChoice::Kind::Shiryou;
    return choice;
  }
  choice.kind = MenuChoice::Kind::Edit;
  if (n == kCut) choice.message = kWmCut;
  if (n == kCopy) {
    if (pane) {
      choice.execWB = kExecCopy;
    } else {
      choice.message = kWmCopy;
    }
  }
  if (n == kPaste) {
    choice.message = kWmPaste;
    choice.caretToEnd = true;
  }
  return choice;
}

JumpOutcome RunLookup(Navigator& navigator, const MenuChoice& c) {
  switch (c.kind) {
    case MenuChoice::Kind::Jisho:
      return navigator.GoJisho(c.text, c.family);
    case MenuChoice::Kind::Honbun:
      return navigator.GoHonbun(c.text, 0, 0, search::Method::And, c.muki, c.family);
    case MenuChoice::Kind::Kyou:
      return navigator.GoKyou(c.text, 0, c.family);
    case MenuChoice::Kind::Shiryou:
      return navigator.GoShiryou(c.text, 0, 0, search::Method::And, c.muki, c.family);
    case MenuChoice::Kind::None:
    case MenuChoice::Kind::Edit:
      break;
  }
  return {};
}

bool Toast::Tick() {
  colour_ = colour_ == search::kButtonFace ? kBlink : search::kButtonFace;
  ++count_;
  return count_ <= 3;
}

}  // namespace suizo::reader
