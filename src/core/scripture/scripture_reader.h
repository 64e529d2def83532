// What the sutra and the sources readers share beyond the writings' plan:
// four panes, `Check1` choosing the vertical page's second text, the pane
// flip of the compact layout per state of `Check1`, the notes in pane 4.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

#include "core/reader/highlight.h"
#include "core/reader/reader_base.h"
#include "core/reader/vertical.h"

namespace suizo::scripture {

using reader::ReaderOutcome;
using reader::ReaderView;

class ScriptureReader : public reader::ReaderBase {
 public:
  using ReaderBase::ReaderBase;

  // `Check1`: the vertical page's second text is the other one.
  int Check1 = 0;
  // In the compact layout, per state of `Check1`: 1 when the second pane
  // lies on top of the main one.
  std::array<int, 2> CompactFlip{};

  ReaderOutcome Check1Click();
  // The notes pane, 4: its text with line ends for "／"; nothing elsewhere.
  std::optional<std::u16string> StartNoteEdit(int pane) const;
  ReaderOutcome EndNoteEdit(int pane, std::u16string_view startText, std::u16string_view text);

 protected:
  // The pane the vertical page's second text goes to.
  virtual int SecondPane() const = 0;
  // Where the notes of the current line are kept; row 0 when there is none.
  virtual corpus::TableId NoteTable() const = 0;
  virtual int NoteRow() const = 0;
  virtual int NoteColumn() const = 0;

  // The compact layout's pane flip for the present state of `Check1`.
  ReaderOutcome FlipCompact();
  // Panes 1 to 4 in the horizontal layout, each text marked for its pane.
  void HorizontalPanes(ReaderView& v, const std::array<std::u16string, 4>& texts,
                       reader::Highlighter& marks);
  // The vertical page into the main pane and the second one.
  void VerticalPanes(ReaderView& v, const reader::VerticalSpec& shape, reader::Highlighter& marks);
  // What every render ends with.
  void FinishView(ReaderView& v) const;
};

}  // namespace suizo::scripture
