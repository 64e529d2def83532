// The program's own pop-up menu, one for every view: the selected text goes
// to the dictionary, the writings, the sutra or the sources, beside cut,
// copy and paste. The window draws and places it; what is offered, what can
// be chosen and what a choice does are decided here. Also the two small
// message windows: the yes/no question and the "not found" toast.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "core/reader/navigation.h"
#include "core/search/driver.h"

namespace suizo::reader {

inline constexpr int kMenuItemCount = 9;
// Index 0 stays empty; "-" is the separator line.
inline constexpr std::array<std::u16string_view, kMenuItemCount> kMenuItems = {
    u"", u"辞書", u"翠典", u"法華経", u"史料", u"-", u"切り取り", u"コピー", u"貼り付け"};

// `MenuTarget`: the control whose menu it is.
enum class MenuTarget { Pane, TextBox };

// What `MenuShow` prepares.
struct MenuState {
  MenuTarget target = MenuTarget::Pane;
  std::array<std::u16string_view, kMenuItemCount> MenuItems = kMenuItems;
  std::array<int, kMenuItemCount> MenuEnabled{};  // 1: the item can be chosen
};

// `selection` is the target's selected text (a pane's as read through the
// clipboard, a box's `SelText`); `clipboard` the clipboard's text.
MenuState MenuShow(MenuTarget target, std::u16string_view selection, std::u16string_view clipboard);

// Messages to a text box and commands to a pane.
inline constexpr int kWmCut = 768;
inline constexpr int kWmCopy = 769;
inline constexpr int kWmPaste = 770;
inline constexpr int kExecCopy = 12;
inline constexpr int kExecClearSelection = 18;

// The window that owns the menu: its family goes with every lookup.
struct MenuOwner {
  FormKind kind = FormKind::Form2;
  std::u16string ParentForm;
  int Muki1 = 0;
};

// What `MenuGo(n)` does.
struct MenuChoice {
  enum class Kind { None, Jisho, Honbun, Kyou, Shiryou, Edit };
  Kind kind = Kind::None;
  // A lookup: the jump's text, family and layout.
  std::u16string text;
  std::u16string family;
  int muki = 0;
  // A pane's selection is cleared once read.
  bool clearPaneSelection = false;
  // An edit: a message to the text box, or a command to the pane.
  int message = 0;
  int execWB = 0;
  bool caretToEnd = false;  // after a paste, Home or End puts the caret behind the new text
};

// `MenuGo(n)`, with the target's selection read anew. An item that cannot
// be chosen does nothing.
MenuChoice MenuGo(const MenuState& menu, int n, std::u16string_view selection,
                  const MenuOwner& owner);

// Runs a lookup through the jumps; an edit or nothing is no jump.
JumpOutcome RunLookup(Navigator& navigator, const MenuChoice& choice);

// While the menu is open, a key in a pane other than Esc closes it and goes
// no further; Esc goes on to the window's cancel button.
inline constexpr int kEscape = 27;
inline bool PaneKeyClosesMenu(int keyCode, bool menuOpen) {
  return menuOpen && keyCode != kEscape;
}

// `Form10`, the yes/no question: `Command2` answers 1, `Command1` 0.
inline constexpr std::u16string_view kConfirmCaption = u"確認";
inline constexpr std::u16string_view kConfirmYes = u"はい";
inline constexpr std::u16string_view kConfirmNo = u"いいえ";

// `Form11`, the toast: it blinks between the button face and yellow and
// goes after its fourth tick.
class Toast {
 public:
  static constexpr int kIntervalMs = 140;
  static constexpr std::uint32_t kBlink = 65535;

  std::u16string_view text() const { return search::kNotFound; }
  std::uint32_t ComColour() const { return colour_; }
  // One tick of `Timer1`; false when the toast unloads.
  bool Tick();

 private:
  std::uint32_t colour_ = search::kButtonFace;
  int count_ = 0;
};

}  // namespace suizo::reader
