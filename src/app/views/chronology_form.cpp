#include "app/views/chronology_form.h"

#include <QCloseEvent>
#include <QFontMetrics>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QScrollBar>
#include <QTextDocument>
#include <QTimer>
#include <QToolTip>
#include <QVBoxLayout>
#include <algorithm>
#include <cmath>
#include <numeric>

#include "app/corpus/program.h"
#include "app/platform/dialog_place.h"
#include "app/platform/input_method.h"
#include "app/platform/kept_place.h"
#include "app/platform/keys.h"
#include "app/platform/plain_text.h"
#include "app/platform/qt_text.h"
#include "app/views/balloon_help_qt.h"
#include "app/views/reader_form.h"
#include "core/corpus/settings.h"
#include "core/views/contents.h"

namespace suizo::app {

using platform::Q;
using platform::U;

namespace {

constexpr std::u16string_view kCancelCaption = u"キャンセル";
// The size a window opens at when it kept none.
constexpr int kDesignWidth = 1080;
constexpr double kFontPoints = 9;
constexpr int kCellMargin = 6;  // pixels a wrapped cell keeps free beside its text

platform::GridAlign AlignOf(int col) {
  if (col == views::kEraCol) return platform::GridAlign::LeftTop;
  if (col == views::kDayCol || col == views::kEventCol || col == views::kLinkCol) {
    return platform::GridAlign::LeftCentre;
  }
  return platform::GridAlign::Centre;
}

double PixelsToTwips(double pixels, const QWidget* w) {
  return pixels * 1440.0 / std::max(1, w->logicalDpiY());
}

}  // namespace

// --- Form14 ---

ChronologyFilterWindow::ChronologyFilterWindow(const views::NenSelection& nenSel,
                                               corpus::SettingsStore& store, QWidget* opener)
    : QDialog(opener), model_(nenSel), opener_(opener) {
  setObjectName(QStringLiteral("Form14"));
  setWindowTitle(Q(views::kFilterCaption));
  setModal(true);
  auto* top = new QVBoxLayout(this);
  for (std::size_t i = 0; i < check2_.size(); ++i) {
    auto* box = new QCheckBox(Q(views::kNenSelCaptions[i]), this);
    box->setObjectName(QStringLiteral("Check2_%1").arg(i));
    box->setChecked(model_.Check2[i] == 1);
    check2_[i] = box;
    top->addWidget(box);
    connect(box, &QCheckBox::toggled, this, [this, i](bool on) {
      model_.Check2[i] = on ? 1 : 0;
      Enable();
    });
  }
  command1_ = new QPushButton(Q(views::kFilterConfirm), this);
  command1_->setObjectName(QStringLiteral("Command1"));
  command1_->setDefault(true);
  auto* command2 = new QPushButton(Q(kCancelCaption), this);
  command2->setObjectName(QStringLiteral("Command2"));
  auto* buttons = new QHBoxLayout;
  buttons->addStretch();
  buttons->addWidget(command1_);
  buttons->addWidget(command2);
  top->addLayout(buttons);
  connect(command1_, &QPushButton::clicked, this, [this] {
    confirmed_ = true;
    accept();
  });
  connect(command2, &QPushButton::clicked, this, &QDialog::reject);
  Enable();
  adjustSize();
  new platform::KeptPlace(*this, store,
                          std::u16string(reader::DefaultParent(reader::FormKind::Form14)));
}

void ChronologyFilterWindow::Enable() {
  for (std::size_t i = 0; i < check2_.size(); ++i) {
    check2_[i]->setEnabled(model_.Check2Enabled(static_cast<int>(i)));
  }
}

bool ChronologyFilterWindow::Confirmed(views::NenSelection& nenSel) const {
  return confirmed_ && model_.Command1(nenSel);
}

bool ChronologyFilterWindow::event(QEvent* event) {
  // As with the collection dialog, the pointer stands on "確定".
  if (event->type() == QEvent::WindowActivate && !pointerMoved_) {
    pointerMoved_ = true;
    platform::PointerOn(*command1_);
  }
  return QDialog::event(event);
}

void ChronologyFilterWindow::showEvent(QShowEvent* event) {
  QDialog::showEvent(event);
  platform::CentreOnOpener(*this, opener_);
}

// --- Form12 ---

ChronologyForm::ChronologyForm(views::ChronologyWindow& window, Program& program)
    : QWidget(nullptr, Qt::Window), window_(window), program_(program) {
  setObjectName("Form12");
  setWindowTitle(Q(views::kChronologyCaption));
  setFocusPolicy(Qt::StrongFocus);
  Build();
  model().MeasureLab = [this](std::u16string_view text, int col) { return MeasureLab(text, col); };
  window_.onView = [this] { Show(); };
  window_.onShow = [this] { show(); };
  window_.onRaise = [this] {
    showNormal();
    raise();
    activateWindow();
  };
  new platform::KeptPlace(*this, program_.store(), std::u16string(views::kChronologySection),
                          [this] { return program_.Ending(); });
  resize(kDesignWidth, 700);
  if (const auto g = corpus::ReadGeometry(program_.store(), views::kChronologySection)) {
    setGeometry(g->x, g->y, g->w, g->h);
  }
  balloons_ = new BalloonHelpQt(this, program_.settings());
  balloons_->WatchMouseMoves(grid_);
  balloons_->Load();
  Show();
}

void ChronologyForm::Build() {
  auto* top = new QVBoxLayout(this);
  top->setContentsMargins(6, 6, 6, 6);
  top->setSpacing(4);

  // The search strip.
  auto* strip = new QHBoxLayout;
  search_.Build(this, strip);
  search_.AddCounter(strip);
  search_.AddRefine(strip);
  strip->addStretch(1);
  pin_ = ViewButton(this, "Pin", QStringLiteral("固定"));
  pin_->setCheckable(true);
  strip->addWidget(pin_);
  top->addLayout(strip);

  // The collection strip, the counts, the current event and the folding.
  auto* state = new QHBoxLayout;
  clev_.Build(this, this);
  state->addWidget(clev_.picture3);
  label1_ = platform::PlainLabel(this);
  label1_->setObjectName("Label1");
  label1_->setMargin(3);
  label1_->installEventFilter(this);
  state->addWidget(label1_);
  label5_ = platform::PlainLabel(this);
  label5_->setObjectName("Label5");
  state->addWidget(label5_);
  state->addStretch(1);
  auto* number = platform::PlainLabel(QStringLiteral("年表No"), this);
  state->addWidget(number);
  label4_ = platform::PlainLabel(this);
  label4_->setObjectName("Label4");
  label4_->setMinimumWidth(48);
  label4_->setStyleSheet("background:white; border:1px solid #999; padding:1px 4px;");
  label4_->setTextInteractionFlags(Qt::TextSelectableByMouse);
  state->addWidget(label4_);
  commands_[7] = ViewButton(this, "Command7", QStringLiteral("表示事項"));
  state->addWidget(commands_[7]);
  command13_ = ViewButton(this, "Command13", {});
  command13_->setMaximumWidth(32);
  state->addWidget(command13_);
  top->addLayout(state);

  grid_ = new platform::Grid(this);
  grid_->setObjectName("Grid1");
  grid_->SetFontSize(kFontPoints);
  grid_->viewport()->setMouseTracking(true);
  grid_->viewport()->installEventFilter(this);
  top->addWidget(grid_, 1);
  // `Edit` lies over the current event so that its text can be selected.
  edit_ = new QPlainTextEdit(grid_->viewport());
  edit_->setObjectName("Edit");
  edit_->setReadOnly(true);
  edit_->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  edit_->setFrameShape(QFrame::NoFrame);
  edit_->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  edit_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  edit_->document()->setDocumentMargin(0);
  edit_->installEventFilter(this);
  edit_->hide();

  // The views, each a button.
  auto* buttons = new QHBoxLayout;
  const std::array<std::pair<int, QString>, 8> views = {{{2, QStringLiteral("目次")},
                                                         {4, QStringLiteral("翠典")},
                                                         {5, QStringLiteral("資料")},
                                                         {9, QStringLiteral("史料")},
                                                         {10, QStringLiteral("本尊")},
                                                         {6, QStringLiteral("法華")},
                                                         {3, QStringLiteral("注経")},
                                                         {8, QStringLiteral("辞書")}}};
  for (const auto& [n, caption] : views) {
    commands_[n] = ViewButton(this, QStringLiteral("Command%1").arg(n), caption);
    buttons->addWidget(commands_[n]);
  }
  buttons->addStretch(1);
  top->addLayout(buttons);

  platform::InputMethodOnlyInCombo1(this);

  for (const auto& [n, button] : commands_) {
    connect(button, &QPushButton::clicked, this, [this, c = n] { Command(c); });
  }
  connect(search_.combo1, &QLineEdit::returnPressed, this, [this] { Search(); });
  connect(search_.command1, &QPushButton::clicked, this, [this] { Search(); });
  connect(search_.label3, &QPushButton::clicked, this, [this] {
    model().Label3Click();
    Show();
    grid_->setFocus();
  });
  connect(command13_, &QPushButton::clicked, this, [this] { Command(13); });
  connect(search_.command14, &QPushButton::clicked, this, [this] { Command(14); });
  connect(search_.command15, &QPushButton::clicked, this, [this] { Command(15); });
  connect(pin_, &QPushButton::toggled, this, [this](bool down) { window_.Pin = down; });

  connect(grid_, &platform::Grid::rowChanged, this, [this](int row) {
    if (showing_ || row < 1) return;
    model().RowChange(row);
    Show();
  });
  connect(grid_, &platform::Grid::gridClicked, this, [this](int row, int col) {
    if (row < 1) return;
    window_.Click(row, col, program_.navigator());
  });
  connect(grid_, &platform::Grid::gridDoubleClicked, this, [this](int row, int col) {
    if (row < 1) return;
    // Below the header by construction: the grid reports data rows only.
    model().DblClick(col, model().Grid().RowHeight(0) + 1);
    Show();
  });
  connect(grid_, &platform::Grid::keyPressed, this,
          [this](int key, Qt::KeyboardModifiers modifiers, bool& handled) {
            handled = KeyDownAll(key, modifiers);
          });
  connect(grid_, &platform::Grid::topRowChanged, this, [this](int row) {
    if (!showing_) model().Scroll(row);
    PlaceEdit();
  });
  connect(grid_->verticalScrollBar(), &QScrollBar::valueChanged, this, [this] { PlaceEdit(); });
}

int ChronologyForm::ColPixels(int col) const {
  return platform::TwipsToPixels(model().Grid().ColWidth(col) * scale_);
}

double ChronologyForm::MeasureLab(std::u16string_view text, int col) const {
  QFont font = grid_->font();
  font.setPointSizeF(kFontPoints);
  const QFontMetrics metrics(font);
  const int width = std::max(1, ColPixels(col) - kCellMargin);
  const QRect r = metrics.boundingRect(QRect(0, 0, width, 1 << 20), Qt::TextWordWrap, Q(text));
  return PixelsToTwips(r.height() + 4, this);
}

void ChronologyForm::ReportHeight() {
  model().GridHeight = PixelsToTwips(grid_->viewport()->height(), this);
}

void ChronologyForm::Fill() {
  const views::ChronologyGrid& g = model().Grid();
  grid_->SetRedraw(false);
  grid_->SetShape(g.Rows(), views::kNenCols, 1, 0);
  for (int c = 0; c < views::kNenCols; ++c) {
    grid_->SetColWidth(c, static_cast<int>(std::lround(g.ColWidth(c) * scale_)));
    grid_->SetWordWrap(c, g.WordWrap(c));
    grid_->SetColAlignment(c, AlignOf(c));
  }
  for (int r = 0; r < g.Rows(); ++r) {
    grid_->SetRowHeight(r, static_cast<int>(g.RowHeight(r)));
    for (int c = 0; c < views::kNenCols; ++c) {
      grid_->SetText(r, c, g.TextMatrix(r, c));
      grid_->SetBackColor(r, c, g.CellBackColor(r, c));
      grid_->SetForeColor(r, c, g.CellForeColor(r, c));
    }
  }
  grid_->SetRedraw(true);
  painted_ = g.generation;
  paintedRow_ = g.Row;
}

void ChronologyForm::PaintRow(int row) {
  const views::ChronologyGrid& g = model().Grid();
  if (row < 1 || row >= g.Rows()) return;
  grid_->SetRowHeight(row, static_cast<int>(g.RowHeight(row)));
  for (int c = 0; c < views::kNenCols; ++c) grid_->SetBackColor(row, c, g.CellBackColor(row, c));
}

void ChronologyForm::Show() {
  showing_ = true;
  const views::Chronology& m = model();
  const views::ChronologyGrid& g = m.Grid();
  if (g.generation != painted_) {
    Fill();
  } else if (paintedRow_ != g.Row) {
    PaintRow(paintedRow_);
  }
  PaintRow(g.Row);
  paintedRow_ = g.Row;
  if (g.Row >= 1) grid_->SetRow(g.Row);
  if (grid_->TopRow() != g.TopRow) grid_->SetTopRow(g.TopRow);

  search_.ShowCounter(m.Label3Text(), m.Label3Colour, m.Label3Enabled);
  label5_->setText(Q(m.Label5Text()));
  label4_->setText(Q(m.Label4()));
  label1_->setText(Q(m.Label1));
  clev_.Paint(m.Clev);
  command13_->setText(Q(m.Command13Caption()));
  search_.ShowRefine(m.controls);
  commands_[2]->setStyleSheet("background:" + Css(window_.Command2BackColor, this) + ";");
  commands_[4]->setEnabled(m.Command4Enabled);
  commands_[5]->setEnabled(m.Command5Enabled);
  commands_[9]->setEnabled(m.Command9Enabled);
  commands_[10]->setEnabled(m.Command10Enabled);
  search_.ShowBox(m.Combo1, m.Combo);
  showing_ = false;
  PlaceEdit();
}

void ChronologyForm::PlaceEdit() {
  const views::EditBox& e = model().Edit();
  const QRect cell = grid_->CellRect(e.row, views::kEventCol);
  if (!e.Visible || cell.isEmpty()) {
    edit_->hide();
    return;
  }
  // CellRect is in the grid's own pixels; `Edit` lives in its viewport.
  const QPoint at = grid_->viewport()->mapFrom(grid_, cell.topLeft());
  const int top = platform::TwipsToPixels(e.Top);
  const int height = std::max(platform::TwipsToPixels(e.Height), edit_->fontMetrics().height());
  QPalette palette = edit_->palette();
  palette.setColor(QPalette::Base, platform::FromBgr(views::kCurrentBack));
  palette.setColor(QPalette::Text, platform::FromBgr(e.ForeColor));
  edit_->setPalette(palette);
  QFont font = grid_->font();
  font.setPointSizeF(kFontPoints);
  edit_->setFont(font);
  if (edit_->toPlainText() != Q(e.Text)) edit_->setPlainText(Q(e.Text));
  edit_->setGeometry(at.x() + kCellMargin / 2, at.y() + std::max(0, top),
                     cell.width() - kCellMargin, std::min(height, cell.height()));
  edit_->show();
}

void ChronologyForm::Search() {
  model().Combo1 = U(search_.combo1->text());
  Act(window_.Command(1, u"", program_.navigator()));
  grid_->setFocus();
}

void ChronologyForm::Command(int number) {
  if (number == 7) {
    OpenFilter();
    return;
  }
  const QString selection = edit_->isVisible() ? edit_->textCursor().selectedText() : QString();
  Act(window_.Command(number, U(selection), program_.navigator()));
  if (number >= 13) grid_->setFocus();
}

void ChronologyForm::Act(const views::ChronologyAction& action) {
  if (action.toast && program_.toast) program_.toast(this);
  if (action.openSettings) program_.OpenSettings(this);
  if (action.openFilter) OpenFilter();
  if (action.focusBox) search_.SelectBox();
  if (action.contents) program_.ShowContentsAt(action.contentsKind, action.contentsMpos);
}

void ChronologyForm::OpenFilter() {
  ChronologyFilterWindow dialog(model().NenSel, program_.store(), this);
  dialog.exec();
  if (dialog.Confirmed(model().NenSel)) {
    window_.toastDue = model().FilterChanged();
    if (window_.toastDue && program_.toast) program_.toast(this);
    Show();
  }
  grid_->setFocus();
}

bool ChronologyForm::KeyDownAll(int key, Qt::KeyboardModifiers modifiers) {
  balloons_->KeyDown();
  const views::ChronologyAction action = window_.KeyDownAll(
      platform::KeyCode(key), platform::ShiftState(modifiers), program_.navigator());
  Act(action);
  return action.handled;
}

bool ChronologyForm::eventFilter(QObject* watched, QEvent* event) {
  if (watched == grid_->viewport() && event->type() == QEvent::Resize) {
    FitColumns();
    // The first real height: the current row comes to rest at its third.
    const bool first = model().GridHeight <= 0;
    ReportHeight();
    if (first && model().GridHeight > 0) {
      model().Hyouji2();
      Show();
    }
  }
  if (watched == grid_->viewport() && event->type() == QEvent::MouseMove) {
    // Over a live link the pointer is the hand.
    const QPoint at = static_cast<QMouseEvent*>(event)->position().toPoint();
    const int row = grid_->rowAt(at.y()) + 1, col = grid_->columnAt(at.x());
    grid_->viewport()->setCursor(model().HandCursor(row, col) ? Qt::PointingHandCursor
                                                              : Qt::ArrowCursor);
    // The office columns are narrow: the names they cut stand in a tip.
    const views::ChronologyGrid& g = model().Grid();
    if (row >= 1 && row < g.Rows() && col >= 0 && col < views::kEraCol &&
        !g.TextMatrix(row, col).empty()) {
      QToolTip::showText(grid_->viewport()->mapToGlobal(at),
                         platform::PlainTip(Q(g.TextMatrix(row, col))), grid_->viewport());
    } else {
      QToolTip::hideText();
    }
  }
  if (watched == edit_ && event->type() == QEvent::KeyPress) {
    auto* key = static_cast<QKeyEvent*>(event);
    if (key->key() == Qt::Key_Escape) {
      keyPressEvent(key);
      return true;
    }
    if (key->key() == Qt::Key_Up || key->key() == Qt::Key_Down) {
      // The rows are the grid's to walk.
      grid_->setFocus();
      const int row = model().Grid().Row + (key->key() == Qt::Key_Up ? -1 : 1);
      model().RowChange(row);
      Show();
      return true;
    }
    return KeyDownAll(key->key(), key->modifiers());
  }
  if (event->type() == QEvent::MouseButtonRelease &&
      (clev_.Contains(watched) || watched == label1_)) {
    program_.OpenSelection(this);
    return true;
  }
  return QWidget::eventFilter(watched, event);
}

void ChronologyForm::keyPressEvent(QKeyEvent* event) {
  if (focusWidget() == search_.combo1) {
    QWidget::keyPressEvent(event);
    return;
  }
  if (event->key() == Qt::Key_Escape && window_.CancelOnEsc && !window_.Pin) {
    close();
    return;
  }
  if (!KeyDownAll(event->key(), event->modifiers())) QWidget::keyPressEvent(event);
}

void ChronologyForm::closeEvent(QCloseEvent* event) {
  program_.CloseView(window_, *event);
}

void ChronologyForm::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  PlaceEdit();
}

void ChronologyForm::FitColumns() {
  // The columns fill the grid: the window's scale is the viewport's width
  // over the designed widths, each column rounded on its own.
  const int designed = platform::TwipsToPixels(
      std::accumulate(views::kNenColWidths.begin(), views::kNenColWidths.end(), 0));
  const int room = std::max(grid_->viewport()->width() - views::kNenCols, designed / 2);
  const double scale = static_cast<double>(room) / std::max(1, designed);
  if (std::abs(scale - scale_) < 0.002) return;
  scale_ = scale;
  const views::ChronologyGrid& g = model().Grid();
  for (int c = 0; c < views::kNenCols; ++c) {
    grid_->SetColWidth(c, static_cast<int>(std::lround(g.ColWidth(c) * scale_)));
  }
}

}  // namespace suizo::app
