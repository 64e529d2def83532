#include "app/views/search_strip.h"

#include <algorithm>

#include "app/platform/grid.h"
#include "app/platform/plain_text.h"
#include "app/platform/qt_text.h"
#include "core/views/contents.h"

namespace suizo::app {

using platform::Q;

QPushButton* ViewButton(QWidget* parent, const QString& name, const QString& caption) {
  auto* b = new QPushButton(caption, parent);
  b->setObjectName(name);
  b->setFocusPolicy(Qt::NoFocus);
  return b;
}

void SearchStrip::Build(QWidget* form, QBoxLayout* row) {
  combo1 = new QLineEdit(form);
  combo1->setObjectName("Combo1");
  combo1->setMinimumWidth(220);
  row->addWidget(combo1, 2);
  command12 = ViewButton(form, "Command12", QStringLiteral("▼"));
  command12->setMaximumWidth(24);
  row->addWidget(command12);
  combo = new QComboBox(form);
  combo->setObjectName("Combo");
  combo->setFixedWidth(1);  // only its drop-down list is seen
  row->addWidget(combo);
  command1 = ViewButton(form, "Command1", QStringLiteral("検索"));
  row->addWidget(command1);
  QObject::connect(command12, &QPushButton::clicked, combo, [c = combo] { c->showPopup(); });
  QObject::connect(combo, qOverload<int>(&QComboBox::activated), combo1, [this](int index) {
    combo1->setText(combo->itemText(index));
    combo1->setFocus();
    combo1->end(false);
  });
}

void SearchStrip::AddCounter(QBoxLayout* row) {
  label3 = ViewButton(combo1->parentWidget(), "Label3", {});
  label3->setFlat(true);
  label3->setMinimumWidth(70);
  row->addWidget(label3);
}

void SearchStrip::AddRefine(QBoxLayout* row) {
  QWidget* form = combo1->parentWidget();
  command14 = ViewButton(form, "Command14", QStringLiteral("絞込"));
  refineLevel = platform::PlainLabel(form);
  refineLevel->setObjectName("RefineLevel");
  command15 = ViewButton(form, "Command15", QStringLiteral("解除"));
  row->addWidget(command14);
  row->addWidget(refineLevel);
  row->addWidget(command15);
}

void SearchStrip::ShowCounter(const std::u16string& text, std::uint32_t colour, bool enabled) {
  label3->setText(Q(text));
  label3->setStyleSheet("background:" + platform::Css(colour, label3) + "; border:1px solid #999;");
  label3->setEnabled(enabled);
}

void SearchStrip::ShowRefine(const search::RefineControls& refine) {
  command14->setVisible(refine.Command14Visible);
  command14->setEnabled(refine.Command14Enabled);
  command15->setVisible(refine.Command15Visible);
  command15->setEnabled(refine.Command15Enabled);
  refineLevel->setVisible(refine.RefineLevelVisible);
  refineLevel->setText(Q(refine.RefineLevel));
}

void SearchStrip::ShowBox(const std::u16string& text, const std::vector<std::u16string>& history) {
  if (!combo1->hasFocus()) combo1->setText(Q(text));
  combo->clear();
  for (const std::u16string& item : history) combo->addItem(Q(item));
}

void SearchStrip::SelectBox() {
  combo1->setFocus();
  combo1->selectAll();
}

void ClevStrip::Build(QWidget* form, QObject* filter) {
  picture3 = new QWidget(form);
  picture3->setObjectName("Picture3");
  auto* row = new QHBoxLayout(picture3);
  row->setContentsMargins(0, 0, 0, 0);
  row->setSpacing(2);
  for (int c = 0; c <= 10; ++c) {
    auto* l = platform::PlainLabel(Q(views::ClevCaption(c)), picture3);
    l->setObjectName(QStringLiteral("Clev_%1").arg(c));
    l->setAlignment(Qt::AlignCenter);
    l->setFixedSize(20, 20);
    l->installEventFilter(filter);
    row->addWidget(l);
    clev[static_cast<std::size_t>(c)] = l;
  }
  picture3->installEventFilter(filter);
}

void ClevStrip::Paint(const std::array<std::uint32_t, 11>& colours) {
  for (std::size_t c = 0; c < clev.size(); ++c) {
    clev[c]->setStyleSheet("background:" + platform::Css(colours[c], clev[c]) +
                           "; border:1px solid #666;");
  }
}

bool ClevStrip::Contains(const QObject* watched) const {
  return watched == picture3 || std::find(clev.begin(), clev.end(), watched) != clev.end();
}

}  // namespace suizo::app
