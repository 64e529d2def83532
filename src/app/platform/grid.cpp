#include "app/platform/grid.h"

#include <QGuiApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPointer>
#include <QScreen>
#include <QScrollBar>
#include <QStyledItemDelegate>
#include <algorithm>
#include <cmath>
#include <utility>

namespace suizo::platform {

namespace {

Qt::Alignment AlignmentOf(GridAlign align) {
  switch (align) {
    case GridAlign::LeftTop:
      return Qt::AlignLeft | Qt::AlignTop;
    case GridAlign::LeftCentre:
      return Qt::AlignLeft | Qt::AlignVCenter;
    case GridAlign::Centre:
      return Qt::AlignCenter;
  }
  return Qt::AlignLeft | Qt::AlignVCenter;
}

constexpr int kTextMargin = 3;

}  // namespace

int TwipsToPixels(double twips) {
  const QScreen* screen = QGuiApplication::primaryScreen();
  const double dpi = screen != nullptr ? screen->logicalDotsPerInchX() : 96.0;
  return static_cast<int>(std::lround(twips * dpi / 1440.0));
}

QColor FromBgr(std::uint32_t bgr) {
  return QColor(static_cast<int>(bgr & 0xFF), static_cast<int>((bgr >> 8) & 0xFF),
                static_cast<int>((bgr >> 16) & 0xFF));
}

QColor ColourOf(std::uint32_t colour, const QPalette& palette) {
  if ((colour & 0x80000000u) == 0) return FromBgr(colour);
  switch (colour & 0xFFu) {
    case 5:
      return palette.color(QPalette::Base);
    case 8:
      return palette.color(QPalette::Text);
    default:
      return palette.color(QPalette::Button);
  }
}

QString Css(std::uint32_t colour, const QWidget* w) {
  return ColourOf(colour, w->palette()).name();
}

// The fixed row or column: the table's own header, so that it stands still
// while the cells scroll, painted as cells with the grid's colours.
class FixedHeader : public QHeaderView {
 public:
  FixedHeader(Qt::Orientation orientation, Grid* grid)
      : QHeaderView(orientation, grid), grid_(grid) {
    setSectionResizeMode(QHeaderView::Fixed);
    setMinimumSectionSize(0);
    setSectionsClickable(false);
    setHighlightSections(false);
    setTextElideMode(Qt::ElideNone);
  }

 protected:
  void paintSection(QPainter* painter, const QRect& rect, int logicalIndex) const override {
    if (orientation() == Qt::Horizontal)
      grid_->PaintFixed(painter, rect, 0, logicalIndex + grid_->fixedCols_);
    else
      grid_->PaintFixed(painter, rect, logicalIndex + grid_->fixedRows_, 0);
  }
  // A click on the header neither sorts nor selects: it is reported as a cell.
  void mousePressEvent(QMouseEvent* event) override {
    grid_->setFocus(Qt::MouseFocusReason);
    event->accept();
  }
  void mouseReleaseEvent(QMouseEvent* event) override {
    const auto [row, col] = CellAt(event->position().toPoint());
    emit grid_->gridClicked(row, col);
  }
  void mouseDoubleClickEvent(QMouseEvent* event) override {
    const auto [row, col] = CellAt(event->position().toPoint());
    emit grid_->gridDoubleClicked(row, col);
  }

 private:
  std::pair<int, int> CellAt(QPoint pos) const {
    const int index = logicalIndexAt(pos);
    if (orientation() == Qt::Horizontal) return {0, index < 0 ? -1 : index + grid_->fixedCols_};
    return {index < 0 ? -1 : index + grid_->fixedRows_, 0};
  }
  Grid* grid_;
};

// The cell that is both in the fixed row and the fixed column.
class GridCorner : public QWidget {
 public:
  explicit GridCorner(Grid* grid) : QWidget(grid), grid_(grid) {}

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    grid_->PaintFixed(&painter, rect(), 0, 0);
  }
  void mousePressEvent(QMouseEvent* event) override {
    grid_->setFocus(Qt::MouseFocusReason);
    event->accept();
  }
  void mouseReleaseEvent(QMouseEvent*) override { emit grid_->gridClicked(0, 0); }
  void mouseDoubleClickEvent(QMouseEvent*) override { emit grid_->gridDoubleClicked(0, 0); }

 private:
  Grid* grid_;
};

// The cells: the program paints the current row itself, so neither the
// selection nor the focus frame is drawn; word wrap is by column.
class CellDelegate : public QStyledItemDelegate {
 public:
  explicit CellDelegate(Grid* grid) : QStyledItemDelegate(grid), grid_(grid) {}

 protected:
  void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override {
    QStyledItemDelegate::initStyleOption(option, index);
    option->state &= ~(QStyle::State_HasFocus | QStyle::State_Selected);
    if (grid_->Wraps(index.column() + grid_->fixedCols_))
      option->features |= QStyleOptionViewItem::WrapText;
    else
      option->features &= ~QStyleOptionViewItem::WrapText;
  }

 private:
  Grid* grid_;
};

Grid::Grid(QWidget* parent)
    : QTableWidget(parent), cornerItem_(std::make_unique<QTableWidgetItem>()) {
  top_ = new FixedHeader(Qt::Horizontal, this);
  side_ = new FixedHeader(Qt::Vertical, this);
  setHorizontalHeader(top_);
  setVerticalHeader(side_);
  corner_ = new GridCorner(this);
  setCornerButtonEnabled(false);
  setItemDelegate(new CellDelegate(this));
  setEditTriggers(QAbstractItemView::NoEditTriggers);
  setSelectionMode(QAbstractItemView::NoSelection);
  setTabKeyNavigation(false);
  setTextElideMode(Qt::ElideNone);
  setWordWrap(false);
  setVerticalScrollMode(QAbstractItemView::ScrollPerItem);
  fixedBack_ = palette().color(QPalette::Button);

  connect(this, &QTableWidget::currentCellChanged, this,
          [this](int row, int, int previousRow, int) {
            if (!quiet_ && row >= 0 && row != previousRow) emit rowChanged(row + fixedRows_);
          });
  connect(verticalScrollBar(), &QScrollBar::valueChanged, this,
          [this] { emit topRowChanged(TopRow()); });
  SetShape(0, 0, 0, 0);
}

Grid::~Grid() = default;

void Grid::SetShape(int rows, int cols, int fixedRows, int fixedCols) {
  rows = std::max(rows, 0);
  cols = std::max(cols, 0);
  fixedRows_ = std::clamp(fixedRows, 0, std::min(rows, 1));
  fixedCols_ = std::clamp(fixedCols, 0, std::min(cols, 1));
  quiet_ = true;
  setRowCount(rows - fixedRows_);
  setColumnCount(cols - fixedCols_);
  // Without items of their own the headers would show section numbers.
  if (fixedRows_ == 1)
    for (int c = 0; c < columnCount(); ++c)
      if (horizontalHeaderItem(c) == nullptr) setHorizontalHeaderItem(c, new QTableWidgetItem);
  if (fixedCols_ == 1)
    for (int r = 0; r < rowCount(); ++r)
      if (verticalHeaderItem(r) == nullptr) setVerticalHeaderItem(r, new QTableWidgetItem);
  wrap_.resize(static_cast<std::size_t>(cols), false);
  colAlign_.resize(static_cast<std::size_t>(cols), 0);
  top_->setVisible(fixedRows_ == 1);
  side_->setVisible(fixedCols_ == 1);
  if (currentRow() < 0 && rowCount() > 0 && columnCount() > 0) SetRowQuietly(0, 0);
  quiet_ = false;
  updateGeometries();
}

int Grid::Rows() const {
  return rowCount() + fixedRows_;
}
int Grid::Cols() const {
  return columnCount() + fixedCols_;
}

const QTableWidgetItem* Grid::CellAt(int row, int col) const {
  if (row < 0 || col < 0 || row >= Rows() || col >= Cols()) return nullptr;
  if (row < fixedRows_ && col < fixedCols_) return cornerItem_.get();
  if (row < fixedRows_) return horizontalHeaderItem(col - fixedCols_);
  if (col < fixedCols_) return verticalHeaderItem(row - fixedRows_);
  return item(row - fixedRows_, col - fixedCols_);
}

QTableWidgetItem* Grid::Cell(int row, int col) {
  if (row < 0 || col < 0 || row >= Rows() || col >= Cols()) return nullptr;
  if (QTableWidgetItem* found = const_cast<QTableWidgetItem*>(CellAt(row, col))) return found;
  auto* made = new QTableWidgetItem;
  if (row < fixedRows_) {
    setHorizontalHeaderItem(col - fixedCols_, made);
  } else if (col < fixedCols_) {
    setVerticalHeaderItem(row - fixedRows_, made);
  } else {
    if (const int align = colAlign_[static_cast<std::size_t>(col)]; align != 0)
      made->setTextAlignment(Qt::Alignment(align));
    setItem(row - fixedRows_, col - fixedCols_, made);
  }
  return made;
}

// The corner is no item of the table: it repaints by itself.
void Grid::CellChanged(int row, int col) {
  if (row < fixedRows_ && col < fixedCols_) corner_->update();
}

void Grid::SetText(int row, int col, std::u16string_view text) {
  QTableWidgetItem* cell = Cell(row, col);
  if (cell == nullptr) return;
  cell->setText(QString::fromUtf16(text.data(), static_cast<qsizetype>(text.size())));
  CellChanged(row, col);
}

QString Grid::Text(int row, int col) const {
  const QTableWidgetItem* cell = CellAt(row, col);
  return cell != nullptr ? cell->text() : QString();
}

void Grid::SetColWidth(int col, int twips) {
  if (col < 0 || col >= Cols()) return;
  const int pixels = std::max(TwipsToPixels(twips), 0);
  if (col < fixedCols_) {
    side_->setFixedWidth(pixels);
  } else {
    setColumnHidden(col - fixedCols_, pixels == 0);
    if (pixels > 0) setColumnWidth(col - fixedCols_, pixels);
  }
  updateGeometries();
}

void Grid::SetRowHeight(int row, int twips) {
  if (row < 0 || row >= Rows()) return;
  const int pixels = std::max(TwipsToPixels(twips), 0);
  if (row < fixedRows_) {
    top_->setFixedHeight(pixels);
  } else {
    setRowHidden(row - fixedRows_, pixels == 0);
    if (pixels > 0) setRowHeight(row - fixedRows_, pixels);
  }
  updateGeometries();
}

void Grid::SetAlignment(int row, int col, GridAlign align) {
  if (QTableWidgetItem* cell = Cell(row, col)) {
    cell->setTextAlignment(AlignmentOf(align));
    CellChanged(row, col);
  }
}

void Grid::SetColAlignment(int col, GridAlign align) {
  if (col < 0 || col >= Cols()) return;
  colAlign_[static_cast<std::size_t>(col)] = static_cast<int>(AlignmentOf(align));
  for (int row = fixedRows_; row < Rows(); ++row) SetAlignment(row, col, align);
}

void Grid::SetBackColor(int row, int col, std::uint32_t bgr) {
  if (QTableWidgetItem* cell = Cell(row, col)) {
    cell->setBackground(ColourOf(bgr, palette()));
    CellChanged(row, col);
  }
}

void Grid::SetForeColor(int row, int col, std::uint32_t bgr) {
  if (QTableWidgetItem* cell = Cell(row, col)) {
    cell->setForeground(ColourOf(bgr, palette()));
    CellChanged(row, col);
  }
}

void Grid::SetGridBackColor(std::uint32_t bgr) {
  QPalette colours = palette();
  colours.setColor(QPalette::Base, ColourOf(bgr, palette()));
  setPalette(colours);
}

void Grid::SetFixedBackColor(std::uint32_t bgr) {
  fixedBack_ = ColourOf(bgr, palette());
  top_->viewport()->update();
  side_->viewport()->update();
  corner_->update();
}

QColor Grid::CellBackColor(int row, int col) const {
  const QTableWidgetItem* cell = CellAt(row, col);
  const bool fixed = row < fixedRows_ || col < fixedCols_;
  if (cell != nullptr && cell->background().style() != Qt::NoBrush)
    return cell->background().color();
  return fixed ? fixedBack_ : palette().color(QPalette::Base);
}

QColor Grid::CellForeColor(int row, int col) const {
  const QTableWidgetItem* cell = CellAt(row, col);
  if (cell != nullptr && cell->foreground().style() != Qt::NoBrush)
    return cell->foreground().color();
  const bool fixed = row < fixedRows_ || col < fixedCols_;
  return palette().color(fixed ? QPalette::ButtonText : QPalette::Text);
}

void Grid::SetWordWrap(int col, bool wrap) {
  if (col < 0 || col >= Cols()) return;
  wrap_[static_cast<std::size_t>(col)] = wrap;
  viewport()->update();
  top_->viewport()->update();
}

bool Grid::Wraps(int col) const {
  return col >= 0 && col < static_cast<int>(wrap_.size()) && wrap_[static_cast<std::size_t>(col)];
}

void Grid::SetFontSize(double points) {
  QFont grown = font();
  grown.setPointSizeF(std::max(points, 1.0));
  setFont(grown);
}

void Grid::SetCellFont(int row, int col, double points, bool bold) {
  if (QTableWidgetItem* cell = Cell(row, col)) {
    QFont own = font();
    own.setPointSizeF(std::max(points, 1.0));
    own.setBold(bold);
    cell->setFont(own);
    CellChanged(row, col);
  }
}

void Grid::PaintFixed(QPainter* painter, const QRect& rect, int row, int col) const {
  const QTableWidgetItem* cell = CellAt(row, col);
  painter->save();
  painter->fillRect(rect, CellBackColor(row, col));
  painter->setPen(palette().color(QPalette::Dark));
  painter->drawLine(rect.topRight(), rect.bottomRight());
  painter->drawLine(rect.bottomLeft(), rect.bottomRight());
  if (cell != nullptr && !cell->text().isEmpty()) {
    const QVariant own = cell->data(Qt::FontRole);
    painter->setFont(own.isValid() ? own.value<QFont>() : font());
    painter->setPen(CellForeColor(row, col));
    const QVariant align = cell->data(Qt::TextAlignmentRole);
    int flags =
        align.isValid() ? align.toInt() : static_cast<int>(Qt::AlignLeft | Qt::AlignVCenter);
    if (Wraps(col)) flags |= Qt::TextWordWrap;
    painter->setClipRect(rect);
    painter->drawText(rect.adjusted(kTextMargin, 1, -kTextMargin, -1), flags, cell->text());
  }
  painter->restore();
}

void Grid::SetRowQuietly(int dataRow, int dataCol) {
  const bool wasQuiet = quiet_;
  const bool scrolls = hasAutoScroll();
  quiet_ = true;
  setAutoScroll(false);
  setCurrentCell(dataRow, dataCol);
  setAutoScroll(scrolls);
  quiet_ = wasQuiet;
}

void Grid::SetRow(int row) {
  if (row < fixedRows_ || row >= Rows() || columnCount() == 0) return;
  SetRowQuietly(row - fixedRows_, std::max(currentColumn(), 0));
}

int Grid::Row() const {
  if (currentRow() >= 0) return currentRow() + fixedRows_;
  return rowCount() > 0 ? fixedRows_ : 0;
}

int Grid::Col() const {
  if (currentColumn() >= 0) return currentColumn() + fixedCols_;
  return columnCount() > 0 ? fixedCols_ : 0;
}

void Grid::SetTopRow(int row) {
  if (rowCount() == 0 || columnCount() == 0) return;
  const int dataRow = std::clamp(row - fixedRows_, 0, rowCount() - 1);
  scrollTo(model()->index(dataRow, std::max(columnAt(0), 0)), QAbstractItemView::PositionAtTop);
}

int Grid::TopRow() const {
  const int dataRow = rowAt(0);
  return dataRow < 0 ? fixedRows_ : dataRow + fixedRows_;
}

int Grid::VisibleRows() const {
  const int room = viewport()->height();
  int used = 0, count = 0, last = 0;
  for (int r = std::max(rowAt(0), 0); r < rowCount(); ++r) {
    if (isRowHidden(r)) continue;
    last = rowHeight(r);
    if (used + last > room) return count;
    used += last;
    ++count;
  }
  // Past the last row the view would hold more of the same height.
  if (last <= 0) last = verticalHeader()->defaultSectionSize();
  return last > 0 ? count + (room - used) / last : count;
}

void Grid::SetRedraw(bool on) {
  setUpdatesEnabled(on);
  if (on) {
    viewport()->update();
    top_->viewport()->update();
    side_->viewport()->update();
    corner_->update();
  }
}

QRect Grid::CellRect(int row, int col) const {
  if (row < 0 || col < 0 || row >= Rows() || col >= Cols()) return {};
  if (row < fixedRows_ && col < fixedCols_) return corner_->geometry();
  if (row < fixedRows_) {
    const QRect header = top_->geometry();
    const int c = col - fixedCols_;
    return {header.left() + top_->sectionViewportPosition(c), header.top(), top_->sectionSize(c),
            header.height()};
  }
  // The whole cell, its grid lines included.
  const QPoint origin = viewport()->geometry().topLeft();
  const int r = row - fixedRows_;
  const int top = origin.y() + rowViewportPosition(r);
  if (col < fixedCols_) {
    const QRect header = side_->geometry();
    return {header.left(), top, header.width(), rowHeight(r)};
  }
  const int c = col - fixedCols_;
  return {origin.x() + columnViewportPosition(c), top, columnWidth(c), rowHeight(r)};
}

bool Grid::event(QEvent* event) {
  // Every key, Tab included, is the window's before the table moves.
  if (event->type() == QEvent::KeyPress) {
    const auto* key = static_cast<QKeyEvent*>(event);
    bool handled = false;
    const QPointer<Grid> alive(this);
    emit keyPressed(key->key(), key->modifiers(), handled);
    if (alive.isNull()) return true;
    if (handled) {
      event->accept();
      return true;
    }
  }
  return QTableWidget::event(event);
}

void Grid::mouseReleaseEvent(QMouseEvent* event) {
  QTableWidget::mouseReleaseEvent(event);
  const QPoint at = event->position().toPoint();
  const int row = rowAt(at.y()), col = columnAt(at.x());
  emit gridClicked(row < 0 ? -1 : row + fixedRows_, col < 0 ? -1 : col + fixedCols_);
}

void Grid::mouseDoubleClickEvent(QMouseEvent* event) {
  QTableWidget::mouseDoubleClickEvent(event);
  const QPoint at = event->position().toPoint();
  const int row = rowAt(at.y()), col = columnAt(at.x());
  emit gridDoubleClicked(row < 0 ? -1 : row + fixedRows_, col < 0 ? -1 : col + fixedCols_);
}

void Grid::updateGeometries() {
  QTableWidget::updateGeometries();
  if (corner_ == nullptr) return;
  const bool both = fixedRows_ == 1 && fixedCols_ == 1;
  corner_->setVisible(both);
  if (both) {
    corner_->setGeometry(side_->geometry().left(), top_->geometry().top(), side_->width(),
                         top_->height());
    corner_->raise();
  }
}

}  // namespace suizo::platform
