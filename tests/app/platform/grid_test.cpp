// The grid: cells as the program addresses them, the fixed header that stays
// in place, colours as painted, keys before the table's own moves.
#include <QScreen>
#include <QSignalSpy>
#include <QTest>

#include "app/platform/grid.h"
#include "app_test.h"

using suizo::platform::FromBgr;
using suizo::platform::Grid;
using suizo::platform::GridAlign;
using suizo::platform::TwipsToPixels;

namespace {

QColor PixelAt(QWidget& widget, QPoint at) {
  return widget.grab().toImage().pixelColor(at);
}

// A blank spot of a cell with short left-aligned text: its right end.
QPoint RightEnd(const QRect& cell) {
  return {cell.right() - 4, cell.center().y()};
}

// Whether any pixel of the band is far from the background.
bool HasInk(const QImage& image, const QRect& band, const QColor& back) {
  for (int y = band.top(); y <= band.bottom(); ++y)
    for (int x = band.left(); x <= band.right(); ++x) {
      const QColor c = image.pixelColor(x, y);
      if (qAbs(c.red() - back.red()) + qAbs(c.green() - back.green()) +
              qAbs(c.blue() - back.blue()) >
          150)
        return true;
    }
  return false;
}

void Fill(Grid& grid, int rows, int cols) {
  grid.SetShape(rows, cols, 1, 1);
  for (int c = 0; c < cols; ++c) grid.SetColWidth(c, 1500);
  for (int r = 0; r < rows; ++r) {
    grid.SetRowHeight(r, 300);
    for (int c = 0; c < cols; ++c)
      grid.SetText(r, c,
                   (QString::number(r) + QLatin1Char(':') + QString::number(c)).toStdU16String());
  }
}

}  // namespace

class GridTest : public QObject {
  Q_OBJECT

 private slots:
  void cellsAreAddressedWithTheFixedOnesIncluded() {
    Grid grid;
    Fill(grid, 30, 4);
    grid.SetText(0, 0, u"ｼｽﾃﾑNo");
    grid.SetText(0, 3, u"翠　典　名");
    grid.SetText(5, 0, u"5");
    grid.SetText(7, 2, u"竹林抄");
    QCOMPARE(grid.Rows(), 30);
    QCOMPARE(grid.Cols(), 4);
    QCOMPARE(grid.Text(0, 0), QStringLiteral("ｼｽﾃﾑNo"));
    QCOMPARE(grid.Text(0, 3), QStringLiteral("翠　典　名"));
    QCOMPARE(grid.Text(5, 0), QStringLiteral("5"));
    QCOMPARE(grid.Text(7, 2), QStringLiteral("竹林抄"));
    QCOMPARE(grid.Text(30, 0), QString());
    QCOMPARE(grid.Text(-1, 2), QString());
    grid.SetText(99, 99, u"外");  // outside: ignored
    grid.SetBackColor(-3, 0, 0);
    // A new shape keeps the cells that remain.
    grid.SetShape(10, 4, 1, 1);
    QCOMPARE(grid.Text(7, 2), QStringLiteral("竹林抄"));
    QCOMPARE(grid.Text(0, 3), QStringLiteral("翠　典　名"));
  }

  void fixedHeaderStaysWhileTheCellsScroll() {
    Grid grid;
    Fill(grid, 60, 4);
    grid.resize(420, 220);
    grid.SetFixedBackColor(0xCCCCCC);
    grid.SetBackColor(0, 2, 65535);  // yellow
    grid.SetText(0, 2, u"頁");
    grid.show();
    QVERIFY(QTest::qWaitForWindowExposed(&grid));
    const QRect header = grid.CellRect(0, 2);
    QVERIFY(!header.isEmpty());
    QCOMPARE(grid.TopRow(), 1);
    QSignalSpy tops(&grid, &Grid::topRowChanged);
    grid.SetTopRow(25);
    QCOMPARE(grid.TopRow(), 25);
    QVERIFY(!tops.isEmpty());
    QCOMPARE(tops.last().at(0).toInt(), 25);
    QCOMPARE(grid.CellRect(0, 2), header);
    // Row 25 now stands right below the header, its fixed cell beside it.
    QCOMPARE(grid.CellRect(25, 2).top(), header.bottom() + 1);
    QCOMPARE(grid.CellRect(25, 0).top(), grid.CellRect(25, 2).top());
    const QImage shot = grid.grab().toImage();
    QCOMPARE(shot.pixelColor(RightEnd(header)), QColor(255, 255, 0));
    QCOMPARE(shot.pixelColor(RightEnd(grid.CellRect(0, 1))), QColor(0xCC, 0xCC, 0xCC));
    QCOMPARE(shot.pixelColor(RightEnd(grid.CellRect(25, 0))), QColor(0xCC, 0xCC, 0xCC));
    QVERIFY(HasInk(shot, grid.CellRect(0, 2), QColor(255, 255, 0)));  // its text
  }

  void cellColoursArePaintedAndCurrentRowIsNotOverdrawn() {
    Grid grid;
    Fill(grid, 10, 3);
    grid.resize(400, 260);
    grid.SetGridBackColor(0xDCE5EC);
    grid.SetBackColor(3, 1, 0x0000FF);  // 0xBBGGRR: red
    grid.SetForeColor(3, 1, 0xFF0000);  // blue
    grid.SetText(3, 1, u"■■■■");
    grid.SetRow(3);
    grid.show();
    QVERIFY(QTest::qWaitForWindowExposed(&grid));
    QCOMPARE(grid.CellBackColor(3, 1), QColor(255, 0, 0));
    QCOMPARE(grid.CellForeColor(3, 1), QColor(0, 0, 255));
    QCOMPARE(grid.CellBackColor(4, 1), QColor(0xEC, 0xE5, 0xDC));
    const QImage shot = grid.grab().toImage();
    const QRect cell = grid.CellRect(3, 1);
    QCOMPARE(shot.pixelColor(RightEnd(cell)), QColor(255, 0, 0));
    QCOMPARE(shot.pixelColor(RightEnd(grid.CellRect(4, 1))), QColor(0xEC, 0xE5, 0xDC));
    bool blue = false;
    for (int x = cell.left(); x < cell.center().x() && !blue; ++x)
      blue = shot.pixelColor(x, cell.center().y()) == QColor(0, 0, 255);
    QVERIFY(blue);
  }

  void sizesAreTwipsAtTheScreensDpi() {
    const double dpi = QGuiApplication::primaryScreen()->logicalDotsPerInchX();
    QCOMPARE(TwipsToPixels(1440), qRound(dpi));
    QCOMPARE(TwipsToPixels(0), 0);
    Grid grid;
    grid.SetShape(5, 3, 1, 1);
    grid.SetColWidth(0, 720);
    grid.SetColWidth(1, 1440);
    grid.SetRowHeight(0, 600);
    grid.SetRowHeight(2, 300);
    grid.resize(400, 300);
    grid.show();
    QVERIFY(QTest::qWaitForWindowExposed(&grid));
    QCOMPARE(grid.CellRect(2, 1).width(), qRound(dpi));
    QCOMPARE(grid.CellRect(2, 0).width(), qRound(dpi / 2));
    QCOMPARE(grid.CellRect(0, 1).height(), qRound(dpi * 600 / 1440));
    QCOMPARE(grid.CellRect(2, 1).height(), qRound(dpi * 300 / 1440));
    // A height of 0 hides the row: the next one takes its place.
    const int top = grid.CellRect(2, 1).top();
    grid.SetRowHeight(2, 0);
    QCOMPARE(grid.CellRect(3, 1).top(), top);
  }

  void wordWrapIsByColumn() {
    Grid grid;
    grid.SetShape(2, 3, 1, 0);
    grid.SetGridBackColor(0xFFFFFF);
    for (int c = 0; c < 3; ++c) grid.SetColWidth(c, 900);
    grid.SetRowHeight(1, 1800);
    for (int c = 1; c < 3; ++c) {
      grid.SetText(1, c, u"WW WW WW WW WW WW WW WW WW WW WW WW");
      grid.SetAlignment(1, c, GridAlign::LeftTop);
    }
    grid.SetWordWrap(1, true);
    grid.resize(400, 300);
    grid.show();
    QVERIFY(QTest::qWaitForWindowExposed(&grid));
    const QImage shot = grid.grab().toImage();
    // Below the first line only the wrapping column has text.
    auto band = [&](int col) {
      const QRect cell = grid.CellRect(1, col);
      return QRect(cell.left() + 2, cell.top() + cell.height() / 3, cell.width() - 4,
                   cell.height() / 3);
    };
    QVERIFY(HasInk(shot, band(1), Qt::white));
    QVERIFY(!HasInk(shot, band(2), Qt::white));
  }

  void keyTakenByTheWindowDoesNotMoveTheRow() {
    Grid grid;
    Fill(grid, 20, 3);
    grid.resize(300, 200);
    grid.show();
    QVERIFY(QTest::qWaitForWindowExposed(&grid));
    grid.SetRow(4);
    QCOMPARE(grid.Row(), 4);
    bool take = true;
    QList<int> keys;
    connect(&grid, &Grid::keyPressed, this, [&](int key, Qt::KeyboardModifiers, bool& handled) {
      keys << key;
      handled = take;
    });
    QSignalSpy rows(&grid, &Grid::rowChanged);
    QTest::keyClick(&grid, Qt::Key_Down);
    QTest::keyClick(&grid, Qt::Key_Tab);
    QCOMPARE(grid.Row(), 4);
    QCOMPARE(rows.count(), 0);
    take = false;
    QTest::keyClick(&grid, Qt::Key_Down);
    QCOMPARE(grid.Row(), 5);
    QCOMPARE(rows.count(), 1);
    QCOMPARE(rows.at(0).at(0).toInt(), 5);
    QCOMPARE(keys, (QList<int>{Qt::Key_Down, Qt::Key_Tab, Qt::Key_Down}));
  }

  void setRowNeitherScrollsNorReports() {
    Grid grid;
    Fill(grid, 80, 3);
    grid.resize(300, 200);
    grid.show();
    QVERIFY(QTest::qWaitForWindowExposed(&grid));
    QSignalSpy rows(&grid, &Grid::rowChanged);
    grid.SetRow(60);
    QCOMPARE(grid.Row(), 60);
    QCOMPARE(grid.TopRow(), 1);
    QCOMPARE(rows.count(), 0);
    grid.SetRow(0);  // a fixed row is no current row
    QCOMPARE(grid.Row(), 60);
  }

  void clicksGiveGridRowAndColumn() {
    Grid grid;
    Fill(grid, 6, 3);
    grid.resize(400, 300);
    grid.show();
    QVERIFY(QTest::qWaitForWindowExposed(&grid));
    QSignalSpy clicks(&grid, &Grid::gridClicked);
    QSignalSpy doubles(&grid, &Grid::gridDoubleClicked);
    QSignalSpy rows(&grid, &Grid::rowChanged);
    auto click = [&](QPoint at) {
      QWidget* target = grid.childAt(at);
      QVERIFY(target != nullptr);
      QTest::mouseClick(target, Qt::LeftButton, {}, target->mapFrom(&grid, at));
    };
    click(grid.CellRect(3, 2).center());
    click(grid.CellRect(0, 1).center());
    click(grid.CellRect(0, 0).center());
    click(QPoint(grid.CellRect(1, 2).center().x(), grid.height() - 30));  // below the rows
    QCOMPARE(clicks.count(), 4);
    QCOMPARE(clicks.at(0), (QList<QVariant>{3, 2}));
    QCOMPARE(clicks.at(1), (QList<QVariant>{0, 1}));
    QCOMPARE(clicks.at(2), (QList<QVariant>{0, 0}));
    QCOMPARE(clicks.at(3), (QList<QVariant>{-1, 2}));
    QCOMPARE(rows.count(), 1);  // only the cell moved the row
    QCOMPARE(grid.Row(), 3);
    const QPoint at = grid.CellRect(2, 1).center();
    QTest::mouseDClick(grid.viewport(), Qt::LeftButton, {}, grid.viewport()->mapFrom(&grid, at));
    QCOMPARE(doubles.count(), 1);
    QCOMPARE(doubles.at(0), (QList<QVariant>{2, 1}));
  }

  void visibleRowsCountWholeRows() {
    Grid grid;
    Fill(grid, 100, 3);
    grid.resize(300, 250);
    grid.show();
    QVERIFY(QTest::qWaitForWindowExposed(&grid));
    const int rowHeight = grid.CellRect(5, 1).height();
    QVERIFY(rowHeight > 0);
    QCOMPARE(grid.VisibleRows(), grid.viewport()->height() / rowHeight);
    Grid few;
    Fill(few, 3, 3);  // two data rows; the view holds as many more
    few.resize(300, 250);
    few.show();
    QVERIFY(QTest::qWaitForWindowExposed(&few));
    QCOMPARE(few.VisibleRows(), few.viewport()->height() / rowHeight);
  }

  void redrawOffHoldsPaintingUntilOn() {
    Grid grid;
    Fill(grid, 5, 3);
    grid.SetRedraw(false);
    QVERIFY(!grid.updatesEnabled());
    grid.SetBackColor(2, 2, 0x00FF00);
    grid.SetRedraw(true);
    QVERIFY(grid.updatesEnabled());
    grid.resize(300, 200);
    grid.show();
    QVERIFY(QTest::qWaitForWindowExposed(&grid));
    QCOMPARE(PixelAt(grid, RightEnd(grid.CellRect(2, 2))), QColor(0, 255, 0));
  }

  void coloursAreBgr() {
    QCOMPARE(FromBgr(65535), QColor(255, 255, 0));
    QCOMPARE(FromBgr(15987674), QColor(0xDA, 0xF3, 0xF3));
    QCOMPARE(FromBgr(0xFF8000), QColor(0x00, 0x80, 0xFF));
  }
};

SUIZO_APP_TEST(GridTest);

#include "grid_test.moc"
