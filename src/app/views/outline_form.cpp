#include "app/views/outline_form.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

#include "app/platform/kept_place.h"
#include "app/platform/keys.h"
#include "app/platform/plain_text.h"
#include "app/platform/qt_text.h"
#include "app/views/reader_form.h"

namespace suizo::app {

using platform::Q;

namespace {

constexpr std::u16string_view kSection = u"@総科";
constexpr int kDesignWidth = 820;
constexpr int kDesignHeight = 620;

}  // namespace

OutlineForm::OutlineForm(const corpus::Corpus& corpus, corpus::SettingsStore& store)
    : QWidget(nullptr, Qt::Window), model_(corpus), store_(store) {
  setObjectName("Form8");
  auto* top = new QVBoxLayout(this);
  top->setContentsMargins(6, 6, 6, 6);
  auto* strip = new QHBoxLayout;
  label1_ = platform::PlainLabel(this);
  label1_->setObjectName("Label1");
  strip->addWidget(label1_);
  strip->addStretch(1);
  const auto button = [this, strip](const char* name, const QString& caption) {
    auto* b = new QPushButton(caption, this);
    b->setObjectName(name);
    b->setFocusPolicy(Qt::NoFocus);
    strip->addWidget(b);
    return b;
  };
  QPushButton* command1 = button("Command1", QStringLiteral("切替"));
  QPushButton* command2 = button("Command2", QStringLiteral("経文"));
  QPushButton* command11 = button("Command11", QStringLiteral("閉じる"));
  top->addLayout(strip);
  for (int index = 0; index < 2; ++index) {
    auto* grid = new platform::Grid(this);
    grid->setObjectName(QStringLiteral("Grid_%1").arg(index));
    grids_[static_cast<std::size_t>(index)] = grid;
    top->addWidget(grid, 1);
    const scripture::OutlineGrid& g = model_.Grid(index);
    grid->SetRedraw(false);
    grid->SetShape(g.Rows, scripture::kOutlineCols, 1, 0);
    grid->SetRowHeight(0, scripture::kOutlineHeaderHeight);
    for (int c = 0; c < scripture::kOutlineCols; ++c) {
      grid->SetColWidth(c, scripture::kOutlineColWidths[static_cast<std::size_t>(c)]);
      grid->SetColAlignment(c, scripture::OutlineColCentred(c) ? platform::GridAlign::Centre
                                                               : platform::GridAlign::LeftCentre);
    }
    grid->SetCellFont(0, 0, scripture::kOutlineHeaderFontSize, true);
    for (int r = 0; r < g.Rows; ++r) {
      for (int c = 0; c < scripture::kOutlineCols; ++c) grid->SetText(r, c, g.TextMatrix(r, c));
    }
    grid->SetRedraw(true);
    connect(grid, &platform::Grid::rowChanged, this, [this, index](int row) {
      if (showing_ || row < 1) return;
      model_.RowChange(index, row);
      Paint(index);
    });
    connect(grid, &platform::Grid::topRowChanged, this, [this, index](int row) {
      if (!showing_) model_.Scroll(index, row);
    });
    connect(grid, &platform::Grid::gridDoubleClicked, this, [this](int row, int) {
      if (row >= 1) SutraGo();
    });
    connect(grid, &platform::Grid::keyPressed, this,
            [this](int key, Qt::KeyboardModifiers, bool& handled) {
              switch (scripture::OutlineKeyAction(platform::KeyCode(key))) {
                case scripture::OutlineKey::Switch:
                  model_.Command1();
                  Show();
                  handled = true;
                  return;
                case scripture::OutlineKey::Go:
                  SutraGo();
                  handled = true;
                  return;
                case scripture::OutlineKey::None:
                  return;
              }
            });
  }
  connect(command1, &QPushButton::clicked, this, [this] {
    model_.Command1();
    Show();
  });
  connect(command2, &QPushButton::clicked, this, [this] { SutraGo(); });
  connect(command11, &QPushButton::clicked, this, [this] { hide(); });
  new platform::KeptPlace(*this, store_, std::u16string(kSection));
  resize(kDesignWidth, kDesignHeight);
  if (const auto g = corpus::ReadGeometry(store_, kSection)) setGeometry(g->x, g->y, g->w, g->h);
}

void OutlineForm::Open(int skFlag, int hkNo) {
  model_.SKflag = skFlag;
  model_.HKno = hkNo;
  show();
  ReportMetrics();
  model_.InitSub();
  Show();
  raise();
  activateWindow();
}

void OutlineForm::Show() {
  setWindowTitle(Q(model_.Caption));
  label1_->setText(Q(model_.Label1));
  label1_->setStyleSheet(QStringLiteral("font-size:18px; font-weight:bold; color:%1;")
                             .arg(Css(model_.Label1Colour, this)));
  const int shown = model_.ShownGrid();
  for (int index = 0; index < 2; ++index) {
    grids_[static_cast<std::size_t>(index)]->setVisible(index == shown);
    Paint(index);
  }
  grids_[static_cast<std::size_t>(shown)]->setFocus();
}

void OutlineForm::Paint(int index) {
  const scripture::OutlineGrid& g = model_.Grid(index);
  platform::Grid* grid = grids_[static_cast<std::size_t>(index)];
  showing_ = true;
  grid->SetRedraw(false);
  grid->SetText(0, 0, g.Header());
  for (int r = 1; r < g.Rows; ++r) {
    for (int c = 0; c < scripture::kOutlineCols; ++c)
      grid->SetBackColor(r, c, g.CellBackColor(r, c));
  }
  if (g.Row >= 1) grid->SetRow(g.Row);
  if (g.TopRow >= 1) grid->SetTopRow(g.TopRow);
  grid->SetRedraw(true);
  showing_ = false;
}

void OutlineForm::ReportMetrics() {
  platform::Grid* grid = grids_[static_cast<std::size_t>(model_.ShownGrid())];
  model_.metrics = {.height = static_cast<double>(grid->viewport()->height()),
                    .rowHeight = static_cast<double>(std::max(1, grid->CellRect(1, 0).height())),
                    .headerHeight = static_cast<double>(grid->CellRect(0, 0).height())};
}

void OutlineForm::SutraGo() {
  const std::optional<search::Position> place = model_.SutraGo();
  if (!place) return;
  hide();
  if (onSutraGo) onSutraGo(*place);
}

void OutlineForm::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  ReportMetrics();
  model_.Layout();
  Paint(model_.ShownGrid());
}

}  // namespace suizo::app
