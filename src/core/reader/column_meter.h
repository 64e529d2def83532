// How many columns of vertical text a line takes. The vertical page stacks
// lines until 28 columns are used, so the count must be the browser's: the
// window measures in a hidden pane, the core and its tests use the default.
#pragma once

#include <string_view>

namespace suizo::reader {

class ColumnMeter {
 public:
  virtual ~ColumnMeter() = default;
  // The columns `html` (a line's text, "<BR>" for its breaks, marks and
  // links included) takes in a column `heightPx` pixels high: the measured
  // width divided by 24. A fraction is kept.
  virtual double Columns(std::u16string_view html, int heightPx) const = 0;
};

// The default: 16 pixels per full-width character and half of that for a
// half-width one (ASCII, half-width kana) along a column, tags take no room,
// an entity is one character, each "<BR>" starts a new column; an empty text
// takes none. It breaks where a browser does: blanks collapse, a Latin word
// is split only after a hyphen or a question mark, a closing mark or small
// kana never begins a column nor an opening mark ends it, and ideographic
// spaces at a column's end hang past it.
class TextColumnMeter : public ColumnMeter {
 public:
  double Columns(std::u16string_view html, int heightPx) const override;
};

}  // namespace suizo::reader
