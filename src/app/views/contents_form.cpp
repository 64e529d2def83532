#include "app/views/contents_form.h"

#include <QCloseEvent>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QVBoxLayout>

#include "app/corpus/program.h"
#include "app/platform/input_method.h"
#include "app/platform/kept_place.h"
#include "app/platform/keys.h"
#include "app/platform/plain_text.h"
#include "app/platform/qt_text.h"
#include "app/views/balloon_help_qt.h"
#include "core/corpus/settings.h"

namespace suizo::app {

using platform::Q;
using platform::U;

namespace {

// The design size at 96 dots per inch; the grid's widths follow the window.
constexpr int kDesignWidth = 980;
constexpr int kDesignHeight = 640;
// Where each list keeps its place.
std::u16string_view SectionOf(views::ContentsKind kind) {
  return kind == views::ContentsKind::Writings ? u"@目次" : u"@史料目次";
}

using platform::Css;

platform::GridAlign AlignOf(views::CellAlign a) {
  switch (a) {
    case views::CellAlign::LeftTop:
      return platform::GridAlign::LeftTop;
    case views::CellAlign::LeftCentre:
      return platform::GridAlign::LeftCentre;
    case views::CellAlign::Centre:
      break;
  }
  return platform::GridAlign::Centre;
}

}  // namespace

ContentsForm::ContentsForm(views::ContentsWindow& window, Program& program)
    : QWidget(nullptr, Qt::Window), window_(window), program_(program) {
  setObjectName(Writings() ? "Form9" : "Form15");
  // Only "終了" ends the run: the main list's title bar offers no close.
  if (Writings()) setWindowFlag(Qt::WindowCloseButtonHint, false);
  Build();
  resize(kDesignWidth, kDesignHeight);
  if (const auto g = corpus::ReadGeometry(program_.store(), SectionOf(window_.model().kind()))) {
    setGeometry(g->x, g->y, g->w, g->h);
  }
  window_.onView = [this](const views::Contents& model) { Show(model); };
  window_.onSelectBox = [this] { search_.SelectBox(); };
  window_.onShow = [this] { show(); };
  new platform::KeptPlace(*this, program_.store(),
                          std::u16string(SectionOf(window_.model().kind())),
                          [this] { return program_.Ending(); });
  balloons_ = new BalloonHelpQt(this, program_.settings());
  balloons_->WatchMouseMoves(grid_);
  balloons_->Load();
  window_.onRaise = [this] {
    showNormal();
    raise();
    activateWindow();
  };
}

void ContentsForm::Build() {
  auto* top = new QVBoxLayout(this);
  top->setContentsMargins(6, 6, 6, 6);
  top->setSpacing(4);

  // The title and the search strip.
  auto* strip = new QHBoxLayout;
  label2_ = platform::PlainLabel(this);
  label2_->setObjectName("Label2");
  label2_->setStyleSheet("font-size:16px; font-weight:bold; color:#0A7576;");
  strip->addWidget(label2_);
  search_.Build(this, strip);
  search_.AddCounter(strip);
  search_.AddRefine(strip);
  strip->addStretch(1);
  pin_ = ViewButton(this, "Pin", QStringLiteral("固定"));
  pin_->setCheckable(true);
  strip->addWidget(pin_);
  top->addLayout(strip);

  // The class strip, the order and the count.
  auto* classes = new QHBoxLayout;
  clev_.Build(this, this);
  classes->addWidget(clev_.picture3);
  label1_ = platform::PlainLabel(this);
  label1_->setObjectName("Label1");
  label1_->setMargin(3);
  label1_->installEventFilter(this);
  classes->addWidget(label1_);
  check1_ = new QCheckBox(QStringLiteral("切替"), this);
  check1_->setObjectName("Check1");
  check1_->setFocusPolicy(Qt::NoFocus);
  classes->addWidget(check1_);
  label5_ = platform::PlainLabel(this);
  label5_->setObjectName("Label5");
  classes->addWidget(label5_);
  classes->addStretch(1);
  top->addLayout(classes);

  grid_ = new platform::Grid(this);
  grid_->setObjectName("Grid1");
  top->addWidget(grid_, 1);
  // The two search targets lie over their header cells (`SetSel`): the
  // switch `Sel` fills the cell, its caption `SelT` stands inset on it.
  for (int i = 0; i < 2; ++i) {
    QPushButton* b = ViewButton(this, i == 0 ? "Sel_0" : "Sel_1", {});
    b->setCheckable(true);
    b->setStyleSheet(
        "QPushButton{border:1px solid #999; background:#CCCCCC;}"
        "QPushButton:checked{background:#FFFFC0;}");
    sel_[static_cast<std::size_t>(i)] = b;
    auto* caption = platform::PlainLabel(b);
    caption->setObjectName(QStringLiteral("SelT_%1").arg(i));
    caption->setAlignment(Qt::AlignCenter);
    selT_[static_cast<std::size_t>(i)] = caption;
  }

  // The strip of buttons to the other views, then the settings and the end.
  auto* buttons = new QHBoxLayout;
  const std::array<std::pair<int, QString>, 9> views = {
      {{4, QStringLiteral("本文")},
       {5, QStringLiteral("資料")},
       {6, QStringLiteral("法華")},
       {7, QStringLiteral("年表")},
       {8, QStringLiteral("辞書")},
       {9, Writings() ? QStringLiteral("史料") : QStringLiteral("翠典")},
       {3, QStringLiteral("注経")},
       {10, QStringLiteral("本尊")},
       {11, QStringLiteral("設定")}}};
  for (const auto& [number, caption] : views) {
    const QByteArray name = "Command" + QByteArray::number(number);
    QPushButton* b = ViewButton(this, name.constData(), caption);
    commands_[static_cast<std::size_t>(number)] = b;
    buttons->addWidget(b);
    // The views come with their windows; until then their buttons are off.
    if (number >= 4 && number <= 9) SetViewAvailable(number, false);
    // Clang 14 captures no structured binding.
    connect(b, &QPushButton::clicked, this, [this, n = number] { Command(n); });
  }
  buttons->addStretch(1);
  commands_[2] = ViewButton(this, "Command2", QStringLiteral("終了"));
  buttons->addWidget(commands_[2]);
  commands_[2]->setVisible(Writings());  // the sources' list is closed like any view
  top->addLayout(buttons);

  // Only the search box takes Japanese input.
  platform::InputMethodOnlyInCombo1(this);

  connect(search_.combo1, &QLineEdit::returnPressed, this, [this] {
    FocusGrid();
    Search();
  });
  connect(search_.command1, &QPushButton::clicked, this, [this] { Search(); });
  connect(search_.label3, &QPushButton::clicked, this, [this] {
    const search::Outcome out = window_.model().Label3Click();
    window_.toastDue = out.toast;
    Show(window_.model());
    AfterSearch();
  });
  connect(search_.command14, &QPushButton::clicked, this, [this] {
    window_.model().Command14();
    Show(window_.model());
    FocusGrid();
  });
  connect(search_.command15, &QPushButton::clicked, this, [this] {
    window_.model().Command15();
    Show(window_.model());
    FocusGrid();
  });
  for (int i = 0; i < 2; ++i) {
    connect(sel_[static_cast<std::size_t>(i)], &QPushButton::clicked, this, [this, i] {
      window_.toastDue = window_.model().SelClick(i).toast;
      Show(window_.model());
      AfterSearch();
    });
  }
  connect(check1_, &QCheckBox::clicked, this, [this] {
    window_.model().Check1Click();
    Show(window_.model());
    FocusGrid();
  });
  connect(pin_, &QPushButton::toggled, this, [this](bool down) { window_.Pin = down; });
  connect(commands_[2], &QPushButton::clicked, this, [this] { program_.End(); });

  connect(grid_, &platform::Grid::rowChanged, this, [this](int row) {
    if (showing_ || row < 1) return;
    window_.model().EnterCell(row);
    Show(window_.model());
  });
  connect(grid_, &platform::Grid::gridDoubleClicked, this, [this](int row, int) {
    if (row >= 1) Command(4);
  });
  connect(grid_, &platform::Grid::keyPressed, this,
          [this](int key, Qt::KeyboardModifiers modifiers, bool& handled) {
            handled = KeyDownAll(key, modifiers);
          });
  connect(grid_, &platform::Grid::topRowChanged, this, [this](int row) {
    if (!showing_) window_.model().Scroll(row);
  });
}

void ContentsForm::SetViewAvailable(int command, bool available) {
  if (command < 2 || command > 11 || commands_[static_cast<std::size_t>(command)] == nullptr)
    return;
  QPushButton* b = commands_[static_cast<std::size_t>(command)];
  b->setEnabled(available);
  b->setProperty("viewAvailable", available);
}

void ContentsForm::Show(const views::Contents& model) {
  showing_ = true;
  const views::ContentsScreen s = model.Screen();
  setWindowTitle(Q(s.Caption));
  label2_->setText(Q(s.Label2));

  const views::ContentsGrid& g = model.Grid();
  grid_->SetRedraw(false);
  grid_->SetShape(g.Rows, views::kContentsCols, 1, 1);
  grid_->SetFontSize(g.FontSize * model.Scale);
  for (int c = 0; c < views::kContentsCols; ++c) {
    grid_->SetColWidth(c, g.ColWidth[static_cast<std::size_t>(c)]);
    grid_->SetWordWrap(c, false);
  }
  for (int r = 0; r < g.Rows; ++r) {
    grid_->SetRowHeight(r, g.RowHeightOf(r));
    for (int c = 0; c < views::kContentsCols; ++c) {
      grid_->SetText(r, c, g.TextMatrix(r, c));
      grid_->SetAlignment(r, c, AlignOf(g.CellAlignment(r, c)));
      grid_->SetBackColor(r, c, g.CellBackColor(r, c));
    }
  }
  if (!g.empty) grid_->SetRow(g.Row);
  grid_->SetTopRow(g.TopRow);
  grid_->SetRedraw(true);

  label1_->setText(Q(s.Label1));
  label1_->setStyleSheet("background:" + Css(s.Label1Back, this) + ";");
  clev_.picture3->setVisible(s.ClevVisible);
  clev_.Paint(s.ClevBack);
  search_.ShowCounter(s.Label3, s.Label3Back, s.Label3Enabled);
  label5_->setText(Q(s.Label5));
  label5_->setVisible(s.refine.Label5Visible || !s.refine.RefineLevelVisible);
  search_.ShowRefine(s.refine);
  check1_->setVisible(s.Check1Visible);
  check1_->setChecked(s.Check1);
  check1_->setStyleSheet("background:" + Css(s.Check1Back, this) + ";");
  for (std::size_t i = 0; i < 2; ++i) {
    selT_[i]->setText(Q(s.Sel[i].caption));
    selT_[i]->setStyleSheet(s.Sel[i].down ? QStringLiteral("font-weight:bold;") : QString());
    sel_[i]->setChecked(s.Sel[i].down);
  }
  search_.ShowBox(s.Combo1, s.Combo);
  showing_ = false;
  ReportMetrics();
  LayOutSel();
}

void ContentsForm::LayOutSel() {
  const views::ContentsLayout& layout = views::LayoutOf(window_.model().kind());
  for (std::size_t i = 0; i < 2; ++i) {
    const QRect cell = grid_->CellRect(0, layout.selColumns[i]);
    if (cell.isEmpty()) continue;
    const QPoint at = grid_->mapTo(this, cell.topLeft());
    const views::SelPlace place =
        views::SetSel({static_cast<double>(at.x()), static_cast<double>(at.y()),
                       static_cast<double>(cell.width()), static_cast<double>(cell.height())});
    sel_[i]->setGeometry(static_cast<int>(place.Sel.left), static_cast<int>(place.Sel.top),
                         static_cast<int>(place.Sel.width), static_cast<int>(place.Sel.height));
    selT_[i]->setGeometry(static_cast<int>(place.SelT.left - place.Sel.left),
                          static_cast<int>(place.SelT.top - place.Sel.top),
                          static_cast<int>(place.SelT.width), static_cast<int>(place.SelT.height));
    sel_[i]->raise();
  }
}

void ContentsForm::ReportMetrics() {
  views::GridMetrics& m = window_.model().metrics;
  m.height = grid_->viewport()->height();
  m.rowHeight = std::max(1, grid_->CellRect(1, 1).height());
  m.headerHeight = grid_->CellRect(0, 1).height();
}

void ContentsForm::Search() {
  window_.SetCombo1(U(search_.combo1->text()));
  window_.Kensaku(0);
  AfterSearch();
}

void ContentsForm::AfterSearch() {
  if (window_.toastDue && toast) toast(this);
  window_.toastDue = false;
  FocusGrid();
}

void ContentsForm::Command(int number) {
  FocusGrid();
  switch (number) {
    case 11:
      if (openSettings) openSettings();
      return;
    case 3:
    case 10:
      return;  // inert in this window
    default:
      break;
  }
  QPushButton* b = commands_[static_cast<std::size_t>(number)];
  // A view whose window this build does not have yet is not reached.
  if (b == nullptr || !b->property("viewAvailable").toBool()) return;
  const views::ContentsAction action =
      window_.Command(number, program_.navigator(), program_.windows());
  if (action.openSelection && openSelection) openSelection();
  if (action.openSettings && openSettings) openSettings();
  if (action.minimise) showMinimized();
}

bool ContentsForm::KeyDownAll(int key, Qt::KeyboardModifiers modifiers) {
  balloons_->KeyDown();
  const views::ContentsKey asked =
      window_.model().KeyDownAll(platform::KeyCode(key), platform::ShiftState(modifiers));
  if (asked.redraw) Show(window_.model());
  if (asked.openReader) Command(4);
  if (asked.openSettings && openSettings) openSettings();
  if (asked.focusBox) search_.SelectBox();
  return asked.handled;
}

void ContentsForm::FocusGrid() {
  grid_->setFocus();
}

bool ContentsForm::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::MouseButtonRelease) {
    const bool strip = clev_.Contains(watched) || watched == label1_;
    // The writings choose in the selection dialog; the sources switch
    // their order at once.
    if (strip && !window_.model().Label1Click()) {
      Show(window_.model());
      return true;
    }
    if (strip && openSelection) {
      openSelection();
      return true;
    }
  }
  return QWidget::eventFilter(watched, event);
}

void ContentsForm::closeEvent(QCloseEvent* event) {
  // Alt+F4 as well: only "終了" ends the run.
  if (program_.Ending()) {
    event->accept();
  } else if (Writings()) {
    event->ignore();
  } else {
    event->accept();
    program_.Closed(window_);
  }
}

void ContentsForm::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  views::Contents& model = window_.model();
  const double scale = static_cast<double>(width()) / kDesignWidth;
  if (std::abs(scale - model.Scale) > 0.01) {
    model.Scale = scale;
    model.KeepTop = grid_->TopRow();
    window_.Hyouji();
  }
  ReportMetrics();
  LayOutSel();
}

void ContentsForm::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (event->type() == QEvent::ActivationChange && !isActiveWindow()) window_.Deactivate();
}

}  // namespace suizo::app
