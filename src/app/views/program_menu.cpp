#include "app/views/program_menu.h"

#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPointer>
#include <array>

#include "app/corpus/program.h"
#include "app/platform/clipboard.h"
#include "app/platform/html_pane.h"
#include "app/platform/popup_menu.h"
#include "app/platform/qt_text.h"

namespace suizo::app {

using platform::U;

namespace {

// The selected text of a menu's target: a pane's selection or a box's.
QString SelectionOf(QWidget* target) {
  if (auto* pane = qobject_cast<platform::HtmlPane*>(target)) return pane->SelectedText();
  if (auto* line = qobject_cast<QLineEdit*>(target)) return line->selectedText();
  if (auto* edit = qobject_cast<QPlainTextEdit*>(target)) return edit->textCursor().selectedText();
  return {};
}

void MenuGo(Program& program, QWidget* target, const reader::MenuState& menu, int n,
            const reader::MenuOwner& owner);

}  // namespace

void ShowProgramMenu(Program& program, QWidget* over, QWidget* target, QPoint at,
                     const reader::MenuOwner& owner) {
  const bool pane = qobject_cast<platform::HtmlPane*>(target) != nullptr;
  reader::MenuState menu =
      reader::MenuShow(pane ? reader::MenuTarget::Pane : reader::MenuTarget::TextBox,
                       U(SelectionOf(target)), U(platform::Clipboard::Text()));
  // A lookup in a view this build has no window for is not offered.
  constexpr std::array<std::pair<int, reader::FormKind>, 3> kViews = {
      {{1, reader::FormKind::Form6}, {3, reader::FormKind::Form7}, {4, reader::FormKind::Form16}}};
  for (const auto& [item, kind] : kViews) {
    if (!program.Builds(kind)) menu.MenuEnabled[static_cast<std::size_t>(item)] = 0;
  }
  platform::PopupMenu* shown = platform::PopupMenu::ShowAt(menu, at, over);
  const QPointer<QWidget> alive(target);
  QObject::connect(shown, &platform::PopupMenu::chosen, over,
                   [&program, alive, menu, owner](int n) {
                     if (alive) MenuGo(program, alive, menu, n, owner);
                   });
}

namespace {

void MenuGo(Program& program, QWidget* target, const reader::MenuState& menu, int n,
            const reader::MenuOwner& owner) {
  const reader::MenuChoice choice = reader::MenuGo(menu, n, U(SelectionOf(target)), owner);
  auto* pane = qobject_cast<platform::HtmlPane*>(target);
  if (choice.clearPaneSelection && pane != nullptr) pane->ClearSelection();
  if (choice.kind != reader::MenuChoice::Kind::Edit) {
    reader::RunLookup(program.navigator(), choice);
    return;
  }
  if (pane != nullptr) {
    if (choice.execWB == reader::kExecCopy) platform::Clipboard::SetText(pane->SelectedText());
    return;
  }
  auto* line = qobject_cast<QLineEdit*>(target);
  auto* edit = qobject_cast<QPlainTextEdit*>(target);
  switch (choice.message) {
    case reader::kWmCut:
      if (line) line->cut();
      if (edit) edit->cut();
      break;
    case reader::kWmCopy:
      if (line) line->copy();
      if (edit) edit->copy();
      break;
    case reader::kWmPaste:
      if (line) line->paste();
      if (edit) edit->paste();
      break;
    default:
      break;
  }
}

}  // namespace

}  // namespace suizo::app
