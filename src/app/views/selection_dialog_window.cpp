#include "app/views/selection_dialog_window.h"

#include <QEvent>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QResizeEvent>
#include <QVBoxLayout>
#include <algorithm>
#include <cmath>

#include "app/platform/dialog_place.h"
#include "app/platform/proportional_resize.h"
#include "app/platform/qt_text.h"
#include "app/views/balloon_help_qt.h"
#include "core/corpus/errors.h"
#include "core/corpus/settings_dialog.h"

namespace suizo::app {
namespace {

using platform::Q;

constexpr std::u16string_view kCancelCaption = u"キャンセル";
constexpr int kClasses = 10;
constexpr int kAutograph = 10;  // `Check2(10)`, outside the frame of classes

std::u16string_view Section() {
  return reader::DefaultParent(reader::FormKind::Form3);
}

}  // namespace

SelectionDialogWindow::SelectionDialogWindow(corpus::Corpus& corpus, corpus::Selection& selection,
                                             reader::WindowRegistry& windows,
                                             const corpus::Settings& settings,
                                             corpus::SettingsStore& store, QWidget* opener)
    : QDialog(opener),
      corpus_(corpus),
      selection_(selection),
      windows_(windows),
      store_(store),
      model_(selection),
      opener_(opener) {
  setObjectName(QStringLiteral("Form3"));
  setWindowTitle(Q(views::kSelectionCaption));
  setModal(true);
  Build();
  Fill();

  adjustSize();
  aspect_ = static_cast<double>(height()) / std::max(1, width());
  if (const auto w = corpus::StoredWidth(store_, Section())) {
    resize(std::max(*w, minimumSizeHint().width()), height());
  }
  balloons_ = new BalloonHelpQt(this, settings);
  balloons_->Load();
}

void SelectionDialogWindow::Build() {
  auto* layout = new QVBoxLayout(this);

  frame1_ = new QGroupBox(Q(views::kCollectionFrame), this);
  frame1_->setObjectName(QStringLiteral("Frame1"));
  auto* options = new QGridLayout(frame1_);
  const int half = static_cast<int>(option1_.size() + 1) / 2;
  for (std::size_t i = 0; i < option1_.size(); ++i) {
    option1_[i] = new QRadioButton(Q(views::kCollectionOptions[i].caption), frame1_);
    option1_[i]->setObjectName(QStringLiteral("Option1_%1").arg(i));
    const int n = static_cast<int>(i);
    options->addWidget(option1_[i], n % half, n / half);
  }
  layout->addWidget(frame1_);

  frame2_ = new QGroupBox(Q(views::kClassFrame), this);
  frame2_->setObjectName(QStringLiteral("Frame2"));
  auto* classes = new QGridLayout(frame2_);
  for (int c = 0; c < kClasses; ++c) {
    check2_[static_cast<std::size_t>(c)] = new QCheckBox(Q(views::ClassCaption(c)), frame2_);
    classes->addWidget(check2_[static_cast<std::size_t>(c)], c / 5, c % 5);
  }
  layout->addWidget(frame2_);
  check2_[kAutograph] = new QCheckBox(Q(views::kAutographCaption), this);
  for (std::size_t c = 0; c < check2_.size(); ++c) {
    check2_[c]->setObjectName(QStringLiteral("Check2_%1").arg(c));
  }
  check1_ = new QCheckBox(Q(views::kDateOrderCaption), this);
  check1_->setObjectName(QStringLiteral("Check1"));
  auto* switches = new QHBoxLayout;
  switches->addWidget(check2_[kAutograph]);
  switches->addWidget(check1_);
  switches->addStretch();
  layout->addLayout(switches);

  command1_ = new QPushButton(Q(views::kConfirmCaption), this);
  command1_->setObjectName(QStringLiteral("Command1"));
  command1_->setDefault(true);
  command2_ = new QPushButton(Q(kCancelCaption), this);
  command2_->setObjectName(QStringLiteral("Command2"));
  auto* buttons = new QHBoxLayout;
  buttons->addStretch();
  buttons->addWidget(command1_);
  buttons->addWidget(command2_);
  layout->addLayout(buttons);

  connect(command1_, &QPushButton::clicked, this, &SelectionDialogWindow::Command1);
  connect(command2_, &QPushButton::clicked, this, &QDialog::reject);
}

void SelectionDialogWindow::Fill() {
  const auto option = static_cast<std::size_t>(model_.Option1);
  if (option < option1_.size()) option1_[option]->setChecked(true);
  check1_->setChecked(model_.Check1 == 1);
  for (std::size_t c = 0; c < check2_.size(); ++c) check2_[c]->setChecked(model_.Check2[c] == 1);
}

void SelectionDialogWindow::Read() {
  for (std::size_t i = 0; i < option1_.size(); ++i) {
    if (option1_[i]->isChecked()) model_.Option1 = static_cast<int>(i);
  }
  model_.Check1 = check1_->isChecked() ? 1 : 0;
  for (std::size_t c = 0; c < check2_.size(); ++c)
    model_.Check2[c] = check2_[c]->isChecked() ? 1 : 0;
}

void SelectionDialogWindow::Command1() {
  Read();
  model_.Command1(selection_);
  try {
    views::ConvSui(corpus_, selection_, windows_);
  } catch (const corpus::CorpusError& e) {
    failure_ = e.what();
  }
  accept();
}

void SelectionDialogWindow::done(int result) {
  // Anything but "確定" leaves the selection as it was.
  cancelled_ = result != QDialog::Accepted;
  corpus::StoreWidth(store_, Section(), width());
  QDialog::done(result);
}

bool SelectionDialogWindow::event(QEvent* event) {
  // On activation the pointer stands on "確定": Enter or a click confirms.
  if (event->type() == QEvent::WindowActivate && !pointerMoved_) {
    pointerMoved_ = true;
    platform::PointerOn(*command1_);
  }
  return QDialog::event(event);
}

void SelectionDialogWindow::showEvent(QShowEvent* event) {
  QDialog::showEvent(event);
  pointerMoved_ = false;
  cancelled_ = false;
  platform::CentreOnOpener(*this, opener_);
}

void SelectionDialogWindow::resizeEvent(QResizeEvent* event) {
  QDialog::resizeEvent(event);
  // The dialog keeps its aspect ratio; only its width is stored.
  platform::FitHeightToWidth(*this, aspect_, *event, fitting_);
}

}  // namespace suizo::app
