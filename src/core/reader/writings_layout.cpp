#include "core/reader/writings_layout.h"

#include <algorithm>

namespace suizo::reader {

namespace {

constexpr int kMargin = 8;
constexpr int kTab = 24;  // the tab strip beside a pane
constexpr int kGap = 4;
constexpr int kStrip = 100;  // the controls above the panes
constexpr int kRow1 = 300;   // main text and pane 3
constexpr int kRow2 = 220;   // translation and pane 4
constexpr int kNotes = 130;  // the notes row (`Pic5`)
constexpr int kLeftWidth = 620;
constexpr int kPix16 = 16, kPix24 = 24, kPix32 = 32;
constexpr int kCompactHeight =
    26 * kPix16 + kPix32;  // `Pic13`: the compact translation's 26 characters

// The pane a tab stands beside.
constexpr std::array<int, 11> kPaneOfTab = {1, 2, 3, 3, 3, 3, 4, 4, 5, 6, 7};

LayoutRect At(int x, int y, int w, int h) {
  return {x, y, w, h, true};
}

// Across, the four panes of both plans: the texts on the left, pane 3 and 4
// on the right, the second row `row2Height` tall. The second row's top.
int AcrossQuadrants(WritingsLayout& l, int row2Height) {
  const int left = kMargin + kTab;
  const int right = left + kLeftWidth + kMargin + kTab;
  const int rightWidth = kDesignWidth - kMargin - right;
  const int row2 = kStrip + kRow1 + kGap;
  l.panes[1] = At(left, kStrip, kLeftWidth, kRow1);
  l.panes[2] = At(left, row2, kLeftWidth, row2Height);
  l.panes[3] = At(right, kStrip, rightWidth, kRow1);
  l.panes[4] = At(right, row2, rightWidth, row2Height);
  return row2;
}

}  // namespace

WritingsLayout LayOutWritings(const WritingsLayoutState& s) {
  WritingsLayout l;
  l.width = kDesignWidth;
  l.stripHeight = kStrip;
  const int left = kMargin + kTab;
  const int full = kDesignWidth - left - kMargin;

  if (s.Muki1 == 0) {
    const int row2 = AcrossQuadrants(l, kRow2);
    int notesTop = row2 + kRow2 + kGap;
    bool notes = true;
    if (s.Gcm1 == 1 && s.GcmShow == 1) {
      notes = false;  // the notes row lies outside the window
    } else if (s.Gcm1 == 1) {
      notesTop = row2;  // it moves up over the second row
      l.panes[2].visible = l.panes[4].visible = false;
    }
    const int noteWidth = (full - 2 * (kMargin + kTab)) / 3;
    for (int p = 5; p <= 7; ++p) {
      const int x = left + (p - 5) * (noteWidth + kMargin + kTab);
      l.panes[static_cast<std::size_t>(p)] =
          At(x, notesTop, p == 7 ? left + full - x : noteWidth, kNotes);
      l.panes[static_cast<std::size_t>(p)].visible = notes;
    }
    l.height = (notes ? notesTop + kNotes : row2 + kRow2) + kMargin;
    l.Command10 = s.Gcm1 == 1;
  } else {
    const int height1 = kPix16 * s.GmL1 + kPix24;
    const int height2 = kPix16 * s.GmL2 + kPix32;
    if (s.Gcm1 == 1) {
      l.panes[1] = At(left, kStrip, full, kCompactHeight);
      l.panes[2] = At(left, kStrip, full, kCompactHeight);
      l.paneOnTop = s.CompactSwap == 0 ? 1 : 2;
      l.Command16 = true;
    } else if (s.TateOne == 1) {
      l.panes[1] = At(left, kStrip, full, height1 + kGap + height2);
    } else {
      l.panes[1] = At(left, kStrip, full, height1);
      l.panes[2] = At(left, kStrip + height1 + kGap, full, height2);
    }
    l.height = std::max(l.panes[1].bottom(), l.panes[2].bottom()) + kMargin;
    l.Command13 = s.Gcm1 == 0;
  }

  for (std::size_t t = 0; t < l.tabs.size(); ++t) {
    const LayoutRect& pane = l.panes[static_cast<std::size_t>(kPaneOfTab[t])];
    const bool shown = t >= s.tabVisible.size() || s.tabVisible[t];
    l.tabs[t] = {pane.x - kTab, pane.y, kTab - 2, pane.h, pane.visible && shown};
  }
  // Compact vertical: one tab strip for the pane on top.
  if (s.Muki1 == 1 && s.Gcm1 == 1) l.tabs[l.paneOnTop == 1 ? 1 : 0].visible = false;
  return l;
}

WritingsLayout LayOutScripture(const ScriptureLayoutState& s) {
  WritingsLayout l;
  l.width = kDesignWidth;
  l.stripHeight = kStrip;
  const int left = kMargin + kTab;
  const int full = kDesignWidth - left - kMargin;
  if (s.Muki1 == 0) {
    // The notes row's height goes to the second row.
    const int rows = kRow2 + kNotes + kGap;
    l.height = AcrossQuadrants(l, rows) + rows + kMargin;
  } else {
    const int second = s.secondPane == 3 ? 3 : 2;
    const int height1 = s.height1 + kPix24;
    const int height2 = s.height2 + kPix32;
    if (s.Gcm1 != 0) {
      l.panes[1] = At(left, kStrip, full, kCompactHeight);
      l.panes[static_cast<std::size_t>(second)] = At(left, kStrip, full, kCompactHeight);
      l.paneOnTop = s.compactTop == second ? second : 1;
      l.Command16 = true;
    } else if (s.mainEmpty) {
      l.panes[static_cast<std::size_t>(second)] = At(left, kStrip, full, height2);
    } else {
      l.panes[1] = At(left, kStrip, full, height1);
      l.panes[static_cast<std::size_t>(second)] = At(left, kStrip + height1 + kGap, full, height2);
    }
    int bottom = 0;
    for (const LayoutRect& p : l.panes) bottom = std::max(bottom, p.visible ? p.bottom() : 0);
    l.height = bottom + kMargin;
  }
  for (std::size_t t = 0; t < 4; ++t) {
    const LayoutRect& pane = l.panes[t + 1];
    l.tabs[t] = {pane.x - kTab, pane.y, kTab - 2, pane.h, pane.visible};
  }
  if (l.Command16)
    l.tabs[static_cast<std::size_t>(l.paneOnTop == 1 ? s.secondPane - 1 : 0)].visible = false;
  return l;
}

}  // namespace suizo::reader
