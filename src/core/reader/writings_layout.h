// Where the writings reader's panes and tabs lie, in design pixels at 96
// dots per inch: the window scales the whole by its width. The layout
// routines decide which panes are seen and how tall the window is; the
// vertical panes are as tall as the columns the settings ask for.
#pragma once

#include <array>
#include <vector>

namespace suizo::reader {

struct LayoutRect {
  int x = 0, y = 0, w = 0, h = 0;
  bool visible = false;
  int bottom() const { return y + h; }
  int right() const { return x + w; }
};

struct WritingsLayoutState {
  int Muki1 = 0;
  int Gcm1 = 0;
  int GcmShow = 1;
  int TateOne = 0;
  int CompactSwap = 0;
  int GmL1 = 16, GmL2 = 18;
  std::vector<bool> tabVisible;  // as the reader gives them, 11 tabs
};

struct WritingsLayout {
  int width = 0, height = 0;        // the client area
  int stripHeight = 0;              // the controls above the panes (`Pic1`)
  std::array<LayoutRect, 8> panes;  // `Web(1)` to `Web(7)`; index 0 unused
  std::array<LayoutRect, 11> tabs;  // `TagT(i)`, beside its pane (four in the scripture readers)
  int paneOnTop = 1;                // compact vertical: the pane lying over the other
  bool Command10 = false, Command13 = false, Command16 = false;
};

inline constexpr int kDesignWidth = 1200;

WritingsLayout LayOutWritings(const WritingsLayoutState& state);

// The sutra's and the sources' four panes: across, the texts on the left
// and the Chinese text and notes on the right; down, the main page over
// the second one, each as tall as its columns, or both on one place in
// the compact layout; an empty main text gives the second the whole height.
struct ScriptureLayoutState {
  int Muki1 = 0;
  int Gcm1 = 0;
  int secondPane = 2;
  int compactTop = 1;
  int height1 = 256, height2 = 288;  // the vertical pages' column heights
  bool mainEmpty = false;
};
WritingsLayout LayOutScripture(const ScriptureLayoutState& state);

}  // namespace suizo::reader
