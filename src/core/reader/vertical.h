// `hyoujiTate`: a page of vertical text. From the current line it takes as
// many lines of the work as fit into 28 columns (35 at most, the first
// always), main text and translation side by side and kept level line for
// line; backwards from the line when the reader stepped back a page. The
// sutra and the sources use it with their own columns and limits.
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "core/reader/column_meter.h"
#include "core/reader/texts.h"

namespace suizo::reader {

struct VerticalState {
  Position* pos;    // moved to the page's first line when filling backwards
  bool limit;       // `Limit`: `Up` and `Down` stay in the work
  int* BackFill;    // 1: fill backwards from the line; cleared at the end.
                    // Any value but 0 and 1 shows no line and stays.
  int* BlockLines;  // the lines the page holds, written
  int TateOne;      // 1: the main text takes the whole height, no translation
};

struct VerticalSettings {
  int GmL1 = 16;  // characters per column of the main text
  int GmL2 = 18;  // of the translation
  int Gcm1 = 0;   // compact layout: the translation column is 26 characters
};

// What differs between the readers' vertical pages.
struct VerticalSpec {
  int mainColumn = 8;
  int secondColumn = 15;
  int mainPane = 0;  // the kinds the marks are made for
  int secondPane = 1;
  int chars1 = 16;  // characters per column of each pane
  int chars2 = 18;
  int height1 = 256;  // column heights in pixels
  int height2 = 288;
  int maxLines = 35;
  bool second = true;      // a second pane is written
  bool mainEmpty = false;  // the main text is left out (the sources' one-pane form)
  // The writings: the shorter text of a line is levelled by empty columns
  // after it, stubs and notes are edited, numbers linked, lines without an
  // autograph greyed. The others level by padding the shorter text with
  // ideographic spaces and show their texts as they stand.
  bool writings = true;
};

// The writings' page: columns 8 and 15, the heights from the settings.
VerticalSpec WritingsVerticalSpec(const VerticalSettings& settings, int tateOne);

// "<DIV style='height:...px; writing-mode:tb-rl;'>": the block of a pane, and
// what a line is measured in.
std::u16string VerticalWrapper(int heightPx);
// A line's texts as the page takes them from the table, before the marks:
// blanks full-width, no closing "／"; the writings' stub is cut under a
// printed collection `gk`, and the notes leave their translation.
std::u16string VerticalMainText(std::u16string_view raw, const VerticalSpec& shape, int gk);
std::u16string VerticalSecondText(std::u16string_view raw, const VerticalSpec& shape);
// What the meter is handed for a marked line: each "／" a new column.
std::u16string MeasuredLine(std::u16string_view marked);

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
using LineMarker = std::function<std::u16string(std::u16string_view, int, int)>;
VerticalPage HyoujiTate(const TextTable& table, VerticalState state, const VerticalSpec& shape,
                        int gk, int authenticScope, const LineMarker& hiLight,
                        const ColumnMeter& meter);
// The writings' page from their settings.
inline VerticalPage HyoujiTate(const TextTable& table, VerticalState state,
                               const VerticalSettings& settings, int gk, int authenticScope,
                               const LineMarker& hiLight, const ColumnMeter& meter) {
  return HyoujiTate(table, state, WritingsVerticalSpec(settings, state.TateOne), gk, authenticScope,
                    hiLight, meter);
}

}  // namespace suizo::reader
