#include "app/views/reader_form.h"

#include <QApplication>
#include <QCloseEvent>
#include <QElapsedTimer>
#include <QKeyEvent>
#include <QMessageBox>
#include <QMouseEvent>
#include <QPointer>
#include <QTimer>
#include <cmath>

#include "app/corpus/program.h"
#include "app/platform/clipboard.h"
#include "app/platform/grid.h"
#include "app/platform/input_method.h"
#include "app/platform/kept_place.h"
#include "app/platform/keys.h"
#include "app/platform/plain_text.h"
#include "app/platform/popup_menu.h"
#include "app/platform/qt_text.h"
#include "app/views/balloon_help_qt.h"
#include "app/views/bookmark_window.h"
#include "app/views/program_menu.h"
#include "core/corpus/profile.h"
#include "core/corpus/settings.h"
#include "core/reader/frame.h"
#include "core/reader/writings_reader.h"

namespace suizo::app {

using platform::Q;
using platform::U;

namespace {

QString Downwards(std::u16string_view caption) {
  QString out;
  for (const char16_t c : caption) {
    if (!out.isEmpty()) out += QLatin1Char('\n');
    out += QChar(c);
  }
  return out;
}

QRect Scaled(QRect r, double s) {
  const auto at = [s](int v) { return static_cast<int>(std::lround(v * s)); };
  return {at(r.x()), at(r.y()), std::max(1, at(r.width())), std::max(1, at(r.height()))};
}

std::int64_t NowMs() {
  static QElapsedTimer clock = [] {
    QElapsedTimer t;
    t.start();
    return t;
  }();
  return clock.elapsed();
}

}  // namespace

ReaderForm::ReaderForm(reader::TextView& window, reader::ReaderBase& model, Program& program,
                       ReaderFormShape shape)
    : QWidget(nullptr, Qt::Window),
      window_(window),
      model_(model),
      program_(program),
      shape_(std::move(shape)) {
  setObjectName(shape_.name);
  setFocusPolicy(Qt::StrongFocus);  // the form itself is `Pic1`, the reading area's focus
  setAttribute(Qt::WA_InputMethodEnabled, false);
  model_.SetClock(&NowMs);
  model_.SetDpi(logicalDpiX());
}

ReaderForm::~ReaderForm() = default;

void ReaderForm::Init() {
  BuildShared();
  BuildOwn();
  platform::InputMethodOnlyInCombo1(this);
  // Made after the cut: notes are typed in Japanese too.
  editBox_ = new QPlainTextEdit(this);
  editBox_->setObjectName("EditBox");
  editBox_->hide();
  editBox_->installEventFilter(this);
  // The text boxes offer the program's menu, not their own.
  std::vector<QWidget*> boxes = {combo1_, editBox_};
  for (const auto& [box, page] : page_) boxes.push_back(page);
  for (QWidget* box : boxes) {
    box->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(box, &QWidget::customContextMenuRequested, this,
            [this, box](QPoint at) { ShowMenu(box, box->mapToGlobal(at)); });
  }
  LayOut();
  if (const auto g = corpus::ReadGeometry(program_.store(), shape_.section)) {
    move(g->x, g->y);
    if (g->w > 0)
      resize(g->w, static_cast<int>(std::lround(layout_.height * g->w / double(layout_.width))));
  }
  new platform::KeptPlace(*this, program_.store(), std::u16string(shape_.section),
                          [this] { return program_.Ending(); });
  balloons_ = new BalloonHelpQt(this, program_.settings());
  balloons_->Load();
}

void ReaderForm::Put(QWidget* w, QRect design) {
  design_[w] = design;
  const QFont f = w->font();
  fontPx_[w] = f.pixelSize() > 0 ? f.pixelSize() : f.pointSizeF() * 96.0 / 72.0;
}

QPushButton* ReaderForm::Button(const char* name, const QString& caption, QRect design) {
  auto* b = new QPushButton(caption, this);
  b->setObjectName(name);
  b->setFocusPolicy(Qt::NoFocus);
  Put(b, design);
  return b;
}

QLabel* ReaderForm::Field(const char* name, QRect design) {
  auto* l = platform::PlainLabel(this);
  l->setObjectName(name);
  l->setStyleSheet("background:white; border:1px solid #999; padding-left:2px;");
  l->setTextInteractionFlags(Qt::TextSelectableByMouse);
  Put(l, design);
  return l;
}

QLineEdit* ReaderForm::AddPageBox(int box, const QString& title, const QString& titleName,
                                  QRect titleDesign, QRect boxDesign) {
  auto* label = platform::PlainLabel(title, this);
  label->setObjectName(titleName);
  label->setAlignment(Qt::AlignCenter);
  Put(label, titleDesign);
  auto* page = new QLineEdit(this);
  page->setObjectName(QStringLiteral("Page_%1").arg(box));
  page->installEventFilter(this);
  Put(page, boxDesign);
  page_[box] = page;
  connect(page, &QLineEdit::returnPressed, this,
          [this, box, page] { Apply(model_.PageBoxEnter(box, U(page->text()))); });
  return page;
}

std::u16string ReaderForm::Family() const {
  return window_.ParentForm.empty() ? std::u16string(reader::kWritingsFamily) : window_.ParentForm;
}

void ReaderForm::BuildShared() {
  pin_ = Button("Pin", QStringLiteral("固定"), {1158, 6, 34, 24});
  pin_->setCheckable(true);

  // The search strip and the movement.
  combo1_ = new QLineEdit(this);
  combo1_->setObjectName("Combo1");
  combo1_->installEventFilter(this);
  Put(combo1_, {8, 36, 240, 26});
  command12_ = Button("Command12", QStringLiteral("▼"), {248, 36, 20, 26});
  combo_ = new QComboBox(this);
  combo_->setObjectName("Combo");
  Put(combo_, {8, 36, 260, 26});
  combo_->lower();  // only its list is seen
  command1_ = Button("Command1", QStringLiteral("検索"), {272, 36, 52, 26});
  command1_->installEventFilter(this);
  label3_ = Button("Label3", {}, {328, 36, 76, 26});
  label3_->setFlat(true);
  command14_ = Button("Command14", QStringLiteral("絞込"), {408, 36, 44, 26});
  refineLevel_ = platform::PlainLabel(this);
  refineLevel_->setObjectName("RefineLevel");
  Put(refineLevel_, {456, 36, 56, 26});
  command15_ = Button("Command15", QStringLiteral("解除"), {516, 36, 44, 26});
  label5_ = platform::PlainLabel(this);
  label5_->setObjectName("Label5");
  Put(label5_, {564, 36, 70, 26});
  limit_ = Button("Limit", {}, {686, 36, 26, 26});
  commands_[3] = Button("Command3", QStringLiteral("縦横"), {894, 36, 52, 26});
  bMark_ = Button("BMark", QStringLiteral("しおり"), {950, 36, 48, 26});
  btUp_ = Button("BTup", QStringLiteral("▲"), {1036, 36, 26, 26});
  btDown_ = Button("BTdown", QStringLiteral("▼"), {1066, 36, 26, 26});
  okuri_ = new QCheckBox(QStringLiteral("行送"), this);
  okuri_->setObjectName("Okuri");
  okuri_->setFocusPolicy(Qt::NoFocus);
  Put(okuri_, {1096, 36, 60, 26});

  // The panes and their tabs.
  for (std::size_t t = 0; t < shape_.tabs.size(); ++t) {
    auto* label = platform::PlainLabel(this);
    label->setObjectName(QStringLiteral("TagT_%1").arg(t));
    label->setStyleSheet("background:" + platform::FromBgr(shape_.tabColours[t]).name() +
                         "; border:1px solid #AAA;");
    label->installEventFilter(this);
    tagT_.push_back(label);
    auto* b = new QPushButton(Downwards(shape_.tabs[t]), label);
    b->setObjectName(QStringLiteral("TagB_%1").arg(t));
    b->setCheckable(true);
    b->setFocusPolicy(Qt::NoFocus);
    b->setStyleSheet(
        "QPushButton{border:none; background:transparent; color:#555; font-size:12px;}"
        "QPushButton:checked{background:#FFFFC0; color:black; font-weight:bold;}");
    tagB_.push_back(b);
    connect(b, &QPushButton::clicked, this,
            [this, t] { Apply(model_.TagBClick(static_cast<int>(t))); });
  }
  for (int p = 1; p <= shape_.panes; ++p) {
    auto* pane = new platform::HtmlPane(this);
    pane->setObjectName(QStringLiteral("Web_%1").arg(p));
    panes_[static_cast<std::size_t>(p)] = pane;
    pane->installEventFilter(this);
    connect(pane, &platform::HtmlPane::linkClicked, this,
            [this](const QString& href) { Link(href); });
    connect(pane, &platform::HtmlPane::keyPressed, this,
            [this, p](int key, Qt::KeyboardModifiers modifiers, bool& handled) {
              PaneKey(p, key, modifiers, handled);
            });
    connect(pane, &platform::HtmlPane::doubleClicked, this, [this, p] {
      if (QApplication::keyboardModifiers().testFlag(Qt::ControlModifier)) {
        StartNoteEdit(p);
      } else {
        // The browser selects its own word first; the run is grown after it.
        QTimer::singleShot(0, this, [this, p] { SelectKanjiRun(p); });
      }
    });
    connect(pane, &platform::HtmlPane::contextMenuRequested, this,
            [this, pane](QPoint at) { ShowMenu(pane, at); });
  }

  connect(command1_, &QPushButton::clicked, this, [this] { Search(0); });
  connect(command12_, &QPushButton::clicked, this, [this] { combo_->showPopup(); });
  connect(combo_, qOverload<int>(&QComboBox::activated), this, [this](int index) {
    combo1_->setText(combo_->itemText(index));
    combo1_->setFocus();
    combo1_->end(false);
  });
  connect(label3_, &QPushButton::clicked, this, [this] {
    Apply(model_.Label3Click());
    combo1_->setText(Q(model_.engine().Combo1));
  });
  connect(command14_, &QPushButton::clicked, this, [this] { Apply(model_.Command14()); });
  connect(command15_, &QPushButton::clicked, this, [this] {
    Apply(model_.Command15());
    combo1_->setText(Q(model_.engine().Combo1));
  });
  connect(limit_, &QPushButton::clicked, this, [this] { Apply(model_.LimitClick()); });
  connect(commands_[3], &QPushButton::clicked, this, [this] {
    Apply(model_.Command3(NowMs()));
    balloons_->LayoutChanged();
  });
  connect(bMark_, &QPushButton::clicked, this, [this] {
    OpenBookmarks();
    FocusPanel();
  });
  connect(pin_, &QPushButton::toggled, this, [this](bool down) { window_.Pin = down; });
  for (QPushButton* b : {btUp_, btDown_}) {
    b->installEventFilter(this);
    connect(b, &QPushButton::clicked, this, [this, b] {
      FocusPanel();
      Apply(b == btUp_ ? model_.BTup() : model_.BTdown());
    });
  }
  connect(okuri_, &QCheckBox::toggled, this, [this](bool on) { model_.Okuri = on ? 1 : 0; });
}

// --- showing a render ---

void ReaderForm::Show(const reader::ReaderView& v) {
  for (int p = 1; p <= shape_.panes; ++p) {
    const reader::PaneView& pv = v.panes[static_cast<std::size_t>(p)];
    platform::HtmlPane* pane = panes_[static_cast<std::size_t>(p)];
    if (pv.frame) {
      pane->WriteFrame(Q(*pv.frame));
      pane->SetZoom(Q(reader::ZoomText(96 * scale_)));
      // A vertical page starts at the pane's right edge and runs left, as
      // a printed page does; the browser would put it at the left.
      if (v.Muki1 == 1 && !pv.frame->empty())
        pane->AddStyle(QStringLiteral("body{direction:rtl}body>*{direction:ltr}"));
    }
    // A pane out of sight is written when it comes back: each page turn
    // costs only the panes that are seen.
    Held& held = held_[static_cast<std::size_t>(p)];
    if (pv.frame) held = {};
    if (pv.colourSet) held.colour = pv.colour;
    if (pv.written) held.body = Q(pv.body);
    held.scrollRight = pv.scrollRight;
    held.toTop = v.scrollPanesToTop && pv.written;
    held.due = held.due || pv.colourSet || pv.written;
  }
  vertical_.secondPane = v.secondPane;
  vertical_.compactTop = v.compactTop;
  if (v.height1 > 0) vertical_.height1 = v.height1;
  if (v.height2 > 0) vertical_.height2 = v.height2;
  vertical_.mainEmpty = v.mainEmpty;
  setWindowTitle(Q(v.caption));
  for (const auto& [box, text] : v.pageBoxes) {
    const auto page = page_.find(box);
    if (page != page_.end() && !page->second->hasFocus()) page->second->setText(Q(text));
  }
  label3_->setText(Q(v.Label3Text));
  label3_->setStyleSheet("background:" + Css(v.Label3Colour, this) + "; border:1px solid #999;");
  label3_->setEnabled(v.Label3Enabled);
  command14_->setVisible(v.refine.Command14Visible);
  command14_->setEnabled(v.refine.Command14Enabled);
  command15_->setVisible(v.refine.Command15Visible);
  command15_->setEnabled(v.refine.Command15Enabled);
  refineLevel_->setVisible(v.refine.RefineLevelVisible);
  refineLevel_->setText(Q(v.refine.RefineLevel));
  label5_->setVisible(v.refine.Label5Visible);
  command1_->setText(Q(model_.engine().Command1Caption()));
  limit_->setText(Q(model_.engine().LimitCaption()));
  for (std::size_t t = 0; t < tagB_.size(); ++t)
    tagB_[t]->setChecked(static_cast<int>(t) == v.tabDown);
  if (!combo1_->hasFocus()) combo1_->setText(Q(model_.engine().Combo1));
  combo_->clear();
  for (const std::u16string& item : model_.engine().Combo) combo_->addItem(Q(item));
  ShowOwn(v);
  LayOut();
}

void ReaderForm::LayOut() {
  const int oldHeight = layout_.height;
  layout_ = MakeLayout();
  for (int p = 1; p <= shape_.panes; ++p) {
    const reader::LayoutRect& l = layout_.panes[static_cast<std::size_t>(p)];
    design_[panes_[static_cast<std::size_t>(p)]] = {l.x, l.y, l.w, l.h};
  }
  for (std::size_t t = 0; t < tagT_.size(); ++t) {
    const reader::LayoutRect& l = layout_.tabs[t];
    design_[tagT_[t]] = {l.x, l.y, l.w, l.h};
  }
  if (oldHeight != layout_.height) {
    // The layout decides the window's height; the width stays.
    placing_ = true;
    resize(width() > 0 && isVisible() ? width()
                                      : static_cast<int>(std::lround(layout_.width * scale_)),
           static_cast<int>(std::lround(layout_.height * scale_)));
    placing_ = false;
  }
  Place();
}

void ReaderForm::Place() {
  for (const auto& [w, r] : design_) {
    w->setGeometry(Scaled(r, scale_));
    const auto f = fontPx_.find(w);
    if (f != fontPx_.end() && f->second > 0) {
      QFont font = w->font();
      font.setPixelSize(std::max(6, static_cast<int>(std::lround(f->second * scale_))));
      w->setFont(font);
    }
  }
  for (int p = 1; p <= shape_.panes; ++p) {
    const bool seen = layout_.panes[static_cast<std::size_t>(p)].visible;
    platform::HtmlPane* pane = panes_[static_cast<std::size_t>(p)];
    pane->setVisible(seen);
    Held& held = held_[static_cast<std::size_t>(p)];
    if (!seen || !held.due) continue;
    held.due = false;
    if (held.colour) pane->SetBackground(*held.colour);
    pane->SetBody(held.body);
    if (held.scrollRight != 0) pane->ScrollTo(held.scrollRight, 0);
    if (held.toTop) pane->ScrollTo(0, 0);
  }
  if (layout_.Command16) panes_[static_cast<std::size_t>(layout_.paneOnTop)]->raise();
  for (std::size_t t = 0; t < tagT_.size(); ++t) {
    tagT_[t]->setVisible(layout_.tabs[t].visible);
    tagB_[t]->setGeometry(1, 1, tagT_[t]->width() - 2,
                          std::min(tagT_[t]->height() - 2, static_cast<int>(150 * scale_)));
    tagT_[t]->raise();
  }
  if (editBox_->isVisible() && editPane_ != 0) {
    editBox_->setGeometry(panes_[static_cast<std::size_t>(editPane_)]->geometry());
  }
  PlaceOwn();
  if (muki_ != model_.Muki1) {
    muki_ = model_.Muki1;
    if (balloons_ != nullptr) balloons_->LayoutChanged();
  }
}

// --- actions ---

void ReaderForm::OpenBookmarks() {
  std::optional<corpus::ProfileFile> read;
  try {
    read.emplace(program_.corpus().dataPath() / "suiten.ini");
  } catch (const corpus::CorpusError& e) {
    platform::ShowMessage(this, QMessageBox::Warning, windowTitle(),
                          Q(corpus::BookmarksFailure(e)));
    return;
  }
  corpus::ProfileFile& file = *read;
  const QPoint mov = bMark_->mapToGlobal(QPoint(0, bMark_->height()));
  BookmarkWindow dialog(shape_.bookmarks, file, program_.corpus(), program_.selection(),
                        window_.Place(), program_.store(), mov, this);
  dialog.ask = program_.ask;
  dialog.exec();
  if (!dialog.failure().empty()) {
    program_.Stop(dialog.failure());
    return;
  }
  const std::optional<reader::BookmarkMove>& moved = dialog.moved();
  if (!moved) return;
  // The bookmark's collection is in force already: every open window
  // follows it, then this one takes the bookmark's place.
  if (moved->selectionChanged) program_.FollowSelection();
  window_.SetPlace(moved->place);
  window_.Hyouji();
}

void ReaderForm::SettingsChanged(const corpus::SettingsEffects& effects) {
  const bool vertical = model_.Muki1 == 1;
  if (effects.gcm1Change) model_.Gcm1Change();
  if (vertical && effects.tateRedraw) model_.TateInit();
  if (effects.gcm1Change || (vertical && effects.tateRedraw)) window_.Hyouji();
}

void ReaderForm::Apply(const reader::ReaderOutcome& out) {
  if (out.closeHitList) CloseHitList();
  if (out.redraw) window_.Hyouji();
  if (out.focusPanel) FocusPanel();
  if (out.focusSearchBox) {
    combo1_->setFocus();
    combo1_->selectAll();
  }
  if (!out.message.empty())
    platform::ShowMessage(this, QMessageBox::Information, windowTitle(), Q(out.message));
  if (out.openSettings) program_.OpenSettings(this);
  if (out.toast && program_.toast) program_.toast(this);
  RefreshHitList();
}

void ReaderForm::Search(int divMode) {
  search::SearchEngine& engine = model_.engine();
  engine.Combo1 = U(combo1_->text().remove(QLatin1Char('\n')));
  engine.DivMode = divMode;
  const QString selected = GetSelection();
  Apply(model_.Command1(U(selected)));
  if (!selected.isEmpty()) combo1_->setText(selected);
}

QString ReaderForm::GetSelection() const {
  QString out;
  for (int p = 1; p <= shape_.panes; ++p)
    out += panes_[static_cast<std::size_t>(p)]->SelectedText();
  return out.trimmed();
}

bool ReaderForm::TypingIn(QWidget* w) const {
  return w == combo1_ || w == editBox_ || qobject_cast<QLineEdit*>(w) != nullptr;
}

bool ReaderForm::KeyDownAll(int qtKey, Qt::KeyboardModifiers modifiers) {
  if (balloons_ != nullptr) balloons_->KeyDown();
  const int code = platform::KeyCode(qtKey);
  if (code == reader::kEscape) {
    if (platform::PopupMenu::CloseMenu()) return true;
    if (window_.CancelOnEsc) close();
    return window_.CancelOnEsc;
  }
  const reader::ReaderOutcome out = model_.KeyDownAll(code, platform::ShiftState(modifiers));
  Apply(out);
  return out.redraw || out.focusSearchBox || out.openSettings || out.focusPanel ||
         code == reader::key::kUp || code == reader::key::kDown || code == reader::key::kLeft ||
         code == reader::key::kRight;
}

void ReaderForm::keyPressEvent(QKeyEvent* event) {
  if (TypingIn(focusWidget())) {
    QWidget::keyPressEvent(event);
    return;
  }
  if (!KeyDownAll(event->key(), event->modifiers())) QWidget::keyPressEvent(event);
}

void ReaderForm::PaneKey(int pane, int qtKey, Qt::KeyboardModifiers modifiers, bool& handled) {
  const int code = platform::KeyCode(qtKey);
  const reader::PaneKey asked = reader::PaneKeyDown(
      code, modifiers.testFlag(Qt::ShiftModifier), modifiers.testFlag(Qt::ControlModifier),
      modifiers.testFlag(Qt::AltModifier), platform::PopupMenu::Open() != nullptr);
  using A = reader::PaneKey::Action;
  switch (asked.action) {
    case A::Pass:
      if (code == reader::kEscape) handled = KeyDownAll(qtKey, modifiers);
      return;
    case A::Swallow:
      handled = true;
      return;
    case A::CloseMenu:
      platform::PopupMenu::CloseMenu();
      handled = true;
      return;
    case A::FocusSearch:
      combo1_->setFocus();
      combo1_->selectAll();
      handled = true;
      return;
    case A::Copy:
      platform::Clipboard::SetText(panes_[static_cast<std::size_t>(pane)]->SelectedText());
      handled = true;
      return;
    case A::Move:
      if (balloons_ != nullptr) balloons_->KeyDown();
      Apply(model_.KeyDownAll(code, asked.shift));
      handled = true;
      return;
  }
}

// --- the pop-up menu ---

void ReaderForm::ShowMenu(QWidget* target, QPoint at) {
  ShowProgramMenu(program_, this, target, at,
                  {.kind = shape_.kind, .ParentForm = Family(), .Muki1 = model_.Muki1});
}

// --- double clicks and notes ---

void ReaderForm::SelectKanjiRun(int pane) {
  // The node under the selection and the offsets in it; the run is grown in
  // the core, which knows what a kanji is here.
  platform::HtmlPane* p = panes_[static_cast<std::size_t>(pane)];
  p->RunScript(
      QStringLiteral("(function(){var s=window.getSelection();if(!s.rangeCount)return null;"
                     "var r=s.getRangeAt(0);if(r.startContainer!==r.endContainer||"
                     "r.startContainer.nodeType!==3)return null;"
                     "return [r.startContainer.data,r.startOffset,r.endOffset];})()"),
      [p](const QVariant& result) {
        const QVariantList parts = result.toList();
        if (parts.size() != 3) return;
        const std::u16string text = U(parts[0].toString());
        const auto [start, end] =
            reader::KanjiRunAround(text, parts[1].toUInt(), parts[2].toUInt());
        p->RunScript(QStringLiteral("(function(){var s=window.getSelection();var r=s.getRangeAt(0);"
                                    "var n=r.startContainer;r.setStart(n,%1);r.setEnd(n,%2);"
                                    "s.removeAllRanges();s.addRange(r);})()")
                         .arg(start)
                         .arg(end));
      });
}

bool ReaderForm::StartNoteEdit(int pane) {
  const std::optional<std::u16string> note = NoteText(pane);
  if (!note) return false;
  editPane_ = pane;
  editStart_ = Q(*note);
  editBox_->setPlainText(editStart_);
  editBox_->setStyleSheet(pane == 7 ? "background:#FEF6EA;" : "background:white;");
  editBox_->setGeometry(panes_[static_cast<std::size_t>(pane)]->geometry());
  editBox_->show();
  editBox_->raise();
  editBox_->setFocus();
  editBox_->moveCursor(QTextCursor::End);
  return true;
}

void ReaderForm::EndNoteEdit() {
  if (editPane_ == 0) return;
  const int pane = editPane_;
  editPane_ = 0;
  editBox_->hide();
  QString text = editBox_->toPlainText();
  text.replace(QLatin1Char('\n'), QStringLiteral("\r\n"));
  QString start = editStart_;
  start.replace(QStringLiteral("\r\n"), QStringLiteral("\n"))
      .replace(QLatin1Char('\n'), QStringLiteral("\r\n"));
  Apply(NoteEnd(pane, U(start), U(text)));
}

// --- events ---

bool ReaderForm::eventFilter(QObject* watched, QEvent* event) {
  const QEvent::Type type = event->type();
  if (watched == editBox_) {
    if (type == QEvent::KeyPress) {
      auto* key = static_cast<QKeyEvent*>(event);
      if (key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter) {
        if (key->modifiers().testFlag(Qt::ControlModifier)) {
          editBox_->insertPlainText(QStringLiteral("\n"));
        } else {
          EndNoteEdit();
          FocusPanel();
        }
        return true;
      }
    }
    if (type == QEvent::FocusOut) EndNoteEdit();
    return false;
  }
  if (watched == combo1_ && type == QEvent::KeyPress) {
    auto* key = static_cast<QKeyEvent*>(event);
    if (key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter) {
      if (key->modifiers().testFlag(Qt::ControlModifier)) return true;  // a line feed is dropped
      FocusPanel();
      model_.engine().Combo1 = U(combo1_->text());
      Apply(model_.Combo1Enter());
      return true;
    }
    if (key->matches(QKeySequence::Paste)) {
      // Pasted without line ends; the clipboard keeps what it had.
      QString text = platform::Clipboard::Text();
      text.remove(QLatin1Char('\r')).remove(QLatin1Char('\n'));
      combo1_->insert(text);
      return true;
    }
    return false;
  }
  if (type == QEvent::KeyPress) {
    for (const auto& [box, page] : page_) {
      if (watched != page) continue;
      auto* key = static_cast<QKeyEvent*>(event);
      const QString typed = key->text();
      if (key->modifiers().testFlag(Qt::ControlModifier) || typed.isEmpty() ||
          key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter) {
        return false;
      }
      return !PageTakes(typed.at(0).unicode());
    }
  }
  if (watched == command1_ && type == QEvent::MouseButtonPress) {
    auto* mouse = static_cast<QMouseEvent*>(event);
    if (mouse->button() == Qt::LeftButton) {
      // Shift or Ctrl at the press: the split searches.
      const int divMode = mouse->modifiers().testFlag(Qt::ShiftModifier)     ? 1
                          : mouse->modifiers().testFlag(Qt::ControlModifier) ? 2
                                                                             : 0;
      if (divMode != 0) {
        model_.engine().SrMethod = search::Method::And;
        command1_->setDown(true);
        QTimer::singleShot(0, this, [this, divMode] {
          command1_->setDown(false);
          Search(divMode);
        });
        return true;
      }
    }
  }
  if (watched == command1_ && type == QEvent::MouseButtonRelease &&
      static_cast<QMouseEvent*>(event)->button() == Qt::RightButton) {
    model_.engine().StepMethod();
    command1_->setText(Q(model_.engine().Command1Caption()));
    return true;
  }
  if ((watched == btUp_ || watched == btDown_) && type == QEvent::MouseButtonPress) {
    model_.BTShift = platform::ShiftState(static_cast<QMouseEvent*>(event)->modifiers());
  }
  if (OwnEvent(watched, event)) return true;
  if (type == QEvent::MouseButtonRelease) {
    for (std::size_t t = 0; t < tagT_.size(); ++t) {
      if (watched == tagT_[t]) {
        tagB_[t]->click();
        return true;
      }
    }
  }
  if (type == QEvent::Enter) {
    // The focus follows the mouse into a pane, unless a box is being typed in.
    for (int p = 1; p <= shape_.panes; ++p) {
      platform::HtmlPane* pane = panes_[static_cast<std::size_t>(p)];
      if (watched == pane && isActiveWindow() && !TypingIn(focusWidget()) && !pane->hasFocus())
        pane->setFocus();
    }
  }
  if (type == QEvent::FocusIn) {
    for (int p = 1; p <= shape_.panes; ++p) {
      if (watched == panes_[static_cast<std::size_t>(p)]) model_.ActivePane = p;
    }
  }
  return QWidget::eventFilter(watched, event);
}

void ReaderForm::closeEvent(QCloseEvent* event) {
  if (platform::PopupMenu::CloseMenu()) {
    event->ignore();
    return;
  }
  if (program_.CloseView(window_, *event)) CloseHitList();
}

void ReaderForm::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  if (placing_ || isMinimized() || layout_.width == 0) return;
  if (isMaximized()) {
    showNormal();
    return;
  }
  // The window keeps its proportions: the height follows the width, or the
  // width the height when only that was dragged.
  const bool byHeight =
      event->oldSize().width() == width() && event->oldSize().height() != height();
  const double scale =
      byHeight ? double(height()) / layout_.height : double(width()) / layout_.width;
  if (scale <= 0.2) return;
  const QSize want(static_cast<int>(std::lround(layout_.width * scale)),
                   static_cast<int>(std::lround(layout_.height * scale)));
  const bool zoomed = std::abs(scale - scale_) > 0.001;
  scale_ = scale;
  if (size() != want) {
    placing_ = true;
    resize(want);
    placing_ = false;
  }
  Place();
  if (zoomed) {
    for (int p = 1; p <= shape_.panes; ++p)
      panes_[static_cast<std::size_t>(p)]->SetZoom(Q(reader::ZoomText(96 * scale_)));
  }
}

void ReaderForm::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (event->type() == QEvent::ActivationChange && !isActiveWindow()) window_.Deactivate();
}

}  // namespace suizo::app
