// The grid the contents, the chronology and the outlines show: a table
// widget that copies what a core grid holds, cell by cell, in the program's
// own units (twips for sizes at 96 dots per inch, 0xBBGGRR for colours).
// Cells are addressed as the grid shows them, the fixed ones included: a
// fixed row stands still as the table's top header and a fixed column as its
// side header, so at most one of each is fixed.
#pragma once

#include <QColor>
#include <QRect>
#include <QTableWidget>
#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

namespace suizo::platform {

enum class GridAlign { LeftTop, LeftCentre, Centre };

class FixedHeader;

class Grid : public QTableWidget {
  Q_OBJECT

 public:
  explicit Grid(QWidget* parent = nullptr);
  ~Grid() override;

  // Rows and columns, the fixed header rows and columns included. A fixed
  // count above 1 is taken as 1; cells that stay in range keep their text.
  void SetShape(int rows, int cols, int fixedRows, int fixedCols);
  int Rows() const;
  int Cols() const;
  int FixedRows() const { return fixedRows_; }
  int FixedCols() const { return fixedCols_; }
  void SetText(int row, int col, std::u16string_view text);
  // The text of a cell (`TextMatrix`); empty outside the grid.
  QString Text(int row, int col) const;
  // A width or height of 0 hides the column or row.
  void SetColWidth(int col, int twips);
  void SetRowHeight(int row, int twips);
  void SetAlignment(int row, int col, GridAlign align);
  // Every cell of a column below the fixed rows, also those written later.
  void SetColAlignment(int col, GridAlign align);
  void SetBackColor(int row, int col, std::uint32_t bgr);
  void SetForeColor(int row, int col, std::uint32_t bgr);
  // The colour of cells that have none of their own (`BackColor`,
  // `BackColorFixed`).
  void SetGridBackColor(std::uint32_t bgr);
  void SetFixedBackColor(std::uint32_t bgr);
  QColor CellBackColor(int row, int col) const;
  QColor CellForeColor(int row, int col) const;
  void SetWordWrap(int col, bool wrap);
  void SetFontSize(double points);
  // One cell's font size and weight, over the grid's font.
  void SetCellFont(int row, int col, double points, bool bold);
  // The current row, without moving the view.
  void SetRow(int row);
  int Row() const;
  int Col() const;
  // The first data row shown at the top.
  void SetTopRow(int row);
  int TopRow() const;
  // The data rows that fit in the view.
  int VisibleRows() const;
  // A batch of changes without a repaint in between.
  void SetRedraw(bool on);
  // Where a cell stands in this widget, in pixels; empty outside the grid.
  QRect CellRect(int row, int col) const;

 signals:
  // The grid row and column under the mouse, or -1 outside the cells.
  void gridClicked(int row, int col);
  void gridDoubleClicked(int row, int col);
  // A key on the grid, before the table moves: Qt's key and modifiers.
  void keyPressed(int key, Qt::KeyboardModifiers modifiers, bool& handled);
  void topRowChanged(int row);
  // The current row moved by the user, with a key or the mouse.
  void rowChanged(int row);

 protected:
  bool event(QEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void updateGeometries() override;

 private:
  friend class FixedHeader;
  friend class GridCorner;
  friend class CellDelegate;

  QTableWidgetItem* Cell(int row, int col);
  const QTableWidgetItem* CellAt(int row, int col) const;
  void CellChanged(int row, int col);
  bool Wraps(int col) const;
  void PaintFixed(QPainter* painter, const QRect& rect, int row, int col) const;
  void SetRowQuietly(int dataRow, int dataCol);

  int fixedRows_ = 0, fixedCols_ = 0;
  std::vector<bool> wrap_;                        // by grid column
  std::vector<int> colAlign_;                     // by grid column; 0 for none
  std::unique_ptr<QTableWidgetItem> cornerItem_;  // the cell both fixed
  FixedHeader* top_ = nullptr;
  FixedHeader* side_ = nullptr;
  QWidget* corner_ = nullptr;
  QColor fixedBack_;
  bool quiet_ = false;  // the program, not the user, moves the current row
};

// Twips at 96 dots per inch to pixels on this screen.
int TwipsToPixels(double twips);
// A colour of the program, 0xBBGGRR.
QColor FromBgr(std::uint32_t bgr);
// The same, or one of the system's colours (the high bit set): the window's
// background (5) and text (8); any other stands for the button face.
QColor ColourOf(std::uint32_t colour, const QPalette& palette);
// As a style sheet value, in the widget's palette.
QString Css(std::uint32_t colour, const QWidget* w);

}  // namespace suizo::platform
