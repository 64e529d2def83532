#include "app/corpus/settings_dialog_window.h"

#include <QCoreApplication>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QResizeEvent>
#include <QVBoxLayout>
#include <cmath>

#include "app/platform/plain_text.h"
#include "app/platform/proportional_resize.h"
#include "app/platform/qt_text.h"
#include "app/platform/yes_no.h"
#include "app/views/balloon_help_qt.h"

namespace suizo::app {

using platform::Q;
namespace {}  // namespace

SettingsDialogWindow::SettingsDialogWindow(corpus::Settings& settings, corpus::SettingsStore& store,
                                           std::u16string_view version, QWidget* parent)
    : QDialog(parent),
      ask(platform::YesNoDialog::Ask),
      settings_(settings),
      store_(store),
      model_(settings) {
  setObjectName(QStringLiteral("Form13"));
  setWindowTitle(Q(corpus::kSettingsDialogCaption));
  setModal(true);
  Build();
  const QString versionText = version.empty() ? QCoreApplication::applicationVersion() : Q(version);
  label1_->setText(Q(corpus::VersionLine(versionText.toStdU16String())));
  Fill();

  adjustSize();
  aspect_ = static_cast<double>(height()) / std::max(1, width());
  if (const auto w = corpus::StoredWidth(store_, corpus::kSettingsSection)) {
    resize(std::max(*w, minimumSizeHint().width()), height());
  }
  balloons_ = new BalloonHelpQt(this, settings_);
  balloons_->Load();
}

void SettingsDialogWindow::Build() {
  auto* layout = new QVBoxLayout(this);
  const std::u16string_view checkCaptions[] = {corpus::kAutoDivCaption, corpus::kItaijiCaption,
                                               corpus::kHelperCaption, corpus::kCompactCaption};
  for (std::size_t i = 0; i < checks_.size(); ++i) {
    checks_[i] = new QCheckBox(Q(checkCaptions[i]), this);
    checks_[i]->setObjectName(QStringLiteral("Check%1").arg(i + 1));
  }
  for (std::size_t i = 0; i < combos_.size(); ++i) {
    combos_[i] = new QComboBox(this);
    combos_[i]->setObjectName(QStringLiteral("Combo%1").arg(i + 1));
    const auto list = i == 0 ? corpus::FontSizeList() : corpus::VerticalList();
    for (const std::u16string_view item : list) combos_[i]->addItem(Q(item));
  }

  layout->addWidget(checks_[0]);
  layout->addWidget(checks_[1]);
  layout->addWidget(checks_[2]);
  // The balloons' font size hangs under the balloon switch.
  auto* fontRow = new QHBoxLayout;
  auto* text1 = platform::PlainLabel(Q(corpus::kFontSizeCaption), this);
  text1->setObjectName(QStringLiteral("Text1"));
  fontRow->addSpacing(20);
  fontRow->addWidget(text1);
  fontRow->addWidget(combos_[0]);
  fontRow->addStretch();
  layout->addLayout(fontRow);
  layout->addWidget(checks_[3]);

  frame1_ = new QGroupBox(Q(corpus::kVerticalFrameCaption), this);
  frame1_->setObjectName(QStringLiteral("Frame1"));
  auto* grid = new QGridLayout(frame1_);
  for (std::size_t row = 0; row < corpus::kVerticalRowCaptions.size(); ++row) {
    auto* caption = platform::PlainLabel(Q(corpus::kVerticalRowCaptions[row]), frame1_);
    caption->setObjectName(QStringLiteral("Label%1").arg(row + 2));
    const int r = static_cast<int>(row);
    grid->addWidget(caption, r, 0);
    // Inside the frame: the frame's balloon also stands over its combos.
    grid->addWidget(combos_[1 + 2 * row], r, 1);
    grid->addWidget(combos_[2 + 2 * row], r, 2);
  }
  grid->setColumnStretch(3, 1);
  layout->addWidget(frame1_);

  label1_ = platform::PlainLabel(this);
  label1_->setObjectName(QStringLiteral("Label1"));
  layout->addWidget(label1_);

  command1_ = new QPushButton(Q(corpus::kDeleteAllCaption), this);
  command1_->setObjectName(QStringLiteral("Command1"));
  command2_ = new QPushButton(Q(corpus::kCloseCaption), this);
  command2_->setObjectName(QStringLiteral("Command2"));
  command3_ = new QPushButton(Q(corpus::kConfirmSettingsCaption), this);
  command3_->setObjectName(QStringLiteral("Command3"));
  command3_->setDefault(true);
  auto* buttons = new QHBoxLayout;
  buttons->addWidget(command1_);
  buttons->addStretch();
  buttons->addWidget(command3_);
  buttons->addWidget(command2_);
  layout->addLayout(buttons);

  connect(command1_, &QPushButton::clicked, this, &SettingsDialogWindow::Command1);
  connect(command2_, &QPushButton::clicked, this, &QDialog::reject);
  connect(command3_, &QPushButton::clicked, this, &SettingsDialogWindow::Command3);
}

void SettingsDialogWindow::Fill() {
  const int checks[] = {model_.Check1, model_.Check2, model_.Check3, model_.Check4};
  for (std::size_t i = 0; i < checks_.size(); ++i) checks_[i]->setChecked(checks[i] == 1);
  const int combos[] = {model_.Combo1, model_.Combo2, model_.Combo3, model_.Combo4,
                        model_.Combo5, model_.Combo6, model_.Combo7};
  for (std::size_t i = 0; i < combos_.size(); ++i) combos_[i]->setCurrentIndex(combos[i]);
}

void SettingsDialogWindow::Read() {
  int* checks[] = {&model_.Check1, &model_.Check2, &model_.Check3, &model_.Check4};
  for (std::size_t i = 0; i < checks_.size(); ++i) *checks[i] = checks_[i]->isChecked() ? 1 : 0;
  int* combos[] = {&model_.Combo1, &model_.Combo2, &model_.Combo3, &model_.Combo4,
                   &model_.Combo5, &model_.Combo6, &model_.Combo7};
  for (std::size_t i = 0; i < combos_.size(); ++i) *combos[i] = combos_[i]->currentIndex();
}

void SettingsDialogWindow::Command3() {
  Read();
  const corpus::SettingsEffects effects = model_.Command3(settings_, store_);
  BalloonHelpQt::SettingsChangedEverywhere();
  emit confirmed(effects);
  accept();
}

void SettingsDialogWindow::Command1() {
  const bool yes = model_.Command1(
      store_, [this](std::u16string_view question) { return ask && ask(this, Q(question)); });
  if (!yes) return;
  // Closed first: the program's end unloads every window.
  done(QDialog::Rejected);
  emit exitRequested();
}

void SettingsDialogWindow::done(int result) {
  // Nothing is written once everything was deleted: the next start is a first.
  if (!model_.ExitRequested()) corpus::StoreWidth(store_, corpus::kSettingsSection, width());
  QDialog::done(result);
}

void SettingsDialogWindow::resizeEvent(QResizeEvent* event) {
  QDialog::resizeEvent(event);
  // The window keeps its proportions; the layout does the rest.
  platform::FitHeightToWidth(*this, aspect_, *event, fitting_);
}

}  // namespace suizo::app
