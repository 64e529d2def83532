// `hyoujiTate`: a page of vertical text. From the current line it takes as
// many lines of the work as fit into 28 columns (35 at most, the first
// always), main text and translation side by side and kept level line for
// line; backwards from the line when the reader stepped back a page.
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "core/reader/column_meter.h"
#include "core/reader/position.h"
#include "core/reader/text_table.h"

namespace suizo::reader {

struct VerticalState {
  Position* pos;     // moved to the page's first line when filling backwards
  bool limit;        // `Limit`: `Up` and `Down` stay in the work
  int* BackFill;     // 1: fill backwards from the line; cleared at the end.
                     // Any value but 0 and 1 shows no line and stays.
  int* BlockLines;   // the lines the page holds, written
  int TateOne;       // 1: the main text takes the whole height, no translation
};

struct VerticalSettings {
  int GmL1 = 16;  // characters per column of the main text
  int GmL2 = 18;  // of the translation
  int Gcm1 = 0;   // compact layout: the translation column is 26 characters
};

// What the two panes receive: each is the wrapper "<DIV style='height:...px;
// writing-mode:tb-rl;'>" and the lines, never closed. `translation` is
// empty and `translationWritten` false with `TateOne` 1: the pane keeps
// what it had.
struct VerticalPage {
  std::u16string main;
  std::u16string translation;
  bool translationWritten = false;
};

// `hiLight(text, pane, lpos)` marks a line's text (pane 0 main, 1
// translation). `gk` is the collection (a stub line is cut in a printed
// one); `authenticScope` is `CSel(10)`, which greys lines without an
// autograph.
VerticalPage HyoujiTate(const TextTable& table, VerticalState state, const VerticalSettings& settings, int gk,
                        int authenticScope, const std::function<std::u16string(std::u16string_view, int, int)>& hiLight,
                        const ColumnMeter& meter);

}  // namespace suizo::reader
