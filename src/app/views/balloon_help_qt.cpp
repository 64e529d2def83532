#include "app/views/balloon_help_qt.h"

#include <QAbstractItemView>
#include <QAbstractScrollArea>
#include <QApplication>
#include <QEvent>
#include <QFontMetrics>
#include <QPainter>
#include <QPainterPath>
#include <QScreen>
#include <QStyle>
#include <algorithm>
#include <cmath>

namespace suizo::app {

QString ControlObjectName(std::u16string_view control) {
  QString name = QString::fromStdU16String(std::u16string(control));
  const qsizetype open = name.indexOf(u'(');
  if (open > 0 && name.endsWith(u')')) {
    name = name.left(open) + u'_' + name.mid(open + 1, name.size() - open - 2);
  }
  return name;
}

namespace {

QColor FromBgr(std::uint32_t bgr) {
  return QColor(static_cast<int>(bgr & 0xFF), static_cast<int>((bgr >> 8) & 0xFF),
                static_cast<int>((bgr >> 16) & 0xFF));
}

// The desktop's status font, as the platform theme reports it.
views::StatusFont DesktopStatusFont(const QWidget* form) {
  const QFont font = QApplication::font("QStatusBar");
  views::StatusFont status;
  status.name = font.family().toStdU16String();
  if (font.pointSize() > 0) {
    status.points = font.pointSize();
  } else if (font.pixelSize() > 0) {
    status.points = static_cast<int>(std::lround(font.pixelSize() * 72.0 / form->logicalDpiY()));
  }
  return status;
}

QFont ToQFont(const views::TipFont& tip) {
  QFont font = QApplication::font();
  if (!tip.name.empty()) font.setFamily(QString::fromStdU16String(tip.name));
  font.setPixelSize(std::max(1, tip.pixels));
  font.setBold(tip.bold);
  font.setItalic(tip.italic);
  return font;
}

constexpr int kMargin = 8;
constexpr int kStem = 8;
constexpr int kIcon = 16;
constexpr int kRadius = 6;

}  // namespace

// The balloon itself: a rounded box with a stem towards its control, a
// title line with the icon, and the text in its lines.
class BalloonTip : public QWidget {
 public:
  explicit BalloonTip(QWidget* parent) : QWidget(parent, Qt::ToolTip | Qt::FramelessWindowHint) {
    setObjectName(QStringLiteral("Balloon"));
    setAttribute(Qt::WA_ShowWithoutActivating);
    setAttribute(Qt::WA_TransparentForMouseEvents);
  }

  const QString& text() const { return text_; }

  void Show(const views::Tooltip& tip, const QString& text, QWidget* control) {
    text_ = text;
    title_ = QString::fromStdU16String(tip.Title()).trimmed();
    back_ = FromBgr(tip.BackColor());
    fore_ = FromBgr(views::kInfoTextColor);  // the tip's own getter only ever answers black
    setFont(ToQFont(tip.Font()));
    icon_ = QPixmap();
    if (tip.Icon() >= 1 && tip.Icon() <= 3) {
      static constexpr QStyle::StandardPixmap kIcons[] = {QStyle::SP_MessageBoxInformation,
                                                          QStyle::SP_MessageBoxWarning,
                                                          QStyle::SP_MessageBoxCritical};
      icon_ = style()->standardIcon(kIcons[tip.Icon() - 1]).pixmap(kIcon, kIcon);
    }
    Layout(tip.MaxTipWidth(), control);
    show();
    raise();
    update();
  }

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter p(this);
    p.setRenderHint(QPainter::Antialiasing);
    p.fillPath(Outline(), back_);
    p.setPen(fore_);
    p.drawPath(Outline());
    const int top = (stemUp_ ? kStem : 0) + kMargin;
    int y = top;
    if (header_ > 0) {
      int x = kMargin;
      if (!icon_.isNull()) {
        p.drawPixmap(x, y + (header_ - kIcon) / 2, icon_);
        x += kIcon + 4;
      }
      QFont bold = font();
      bold.setBold(true);
      p.setFont(bold);
      p.drawText(QRect(x, y, width() - x - kMargin, header_), Qt::AlignVCenter, title_);
      p.setFont(font());
      y += header_ + 4;
    }
    p.drawText(QRect(kMargin, y, width() - 2 * kMargin, textSize_.height()),
               Qt::AlignLeft | Qt::TextWordWrap | Qt::TextExpandTabs, text_);
  }

 private:
  // Sized to the text, no wider than the tip's limit, centred under the
  // control, or over it when the screen ends below.
  void Layout(int maxTipWidth, QWidget* control) {
    const QScreen* screen = control->screen();
    const QRect area = screen != nullptr ? screen->availableGeometry() : QRect(0, 0, 1600, 1000);
    const int limit =
        (maxTipWidth > 0 ? std::min(maxTipWidth, area.width()) : area.width()) - 2 * kMargin;
    const QFontMetrics fm(font());
    textSize_ = fm.boundingRect(QRect(0, 0, std::max(limit, 1), 1 << 20),
                                Qt::AlignLeft | Qt::TextWordWrap | Qt::TextExpandTabs, text_)
                    .size();
    header_ = 0;
    int headerWidth = 0;
    if (!title_.isEmpty() || !icon_.isNull()) {
      QFont bold = font();
      bold.setBold(true);
      const QFontMetrics bm(bold);
      header_ = std::max(icon_.isNull() ? 0 : kIcon, bm.height());
      headerWidth = (icon_.isNull() ? 0 : kIcon + 4) + bm.horizontalAdvance(title_);
    }
    const int w = std::max({textSize_.width(), headerWidth, 2 * kStem}) + 2 * kMargin;
    const int h = kStem + 2 * kMargin + (header_ > 0 ? header_ + 4 : 0) + textSize_.height();
    resize(w, h);

    const QRect c(control->mapToGlobal(QPoint(0, 0)), control->size());
    stemUp_ = c.bottom() + h <= area.bottom() || c.top() - h < area.top();
    int x = c.center().x() - w / 2;
    x = std::clamp(x, area.left(), std::max(area.left(), area.right() - w));
    const int stemMin = kRadius + kStem;
    stemX_ = std::clamp(c.center().x() - x, stemMin, std::max(stemMin, w - stemMin));
    move(x, stemUp_ ? c.bottom() + 1 : c.top() - h);
    // Without a compositor the corners would show the desktop's black.
    setMask(QRegion(Outline().toFillPolygon().toPolygon()));
  }

  QPainterPath Outline() const {
    const QRectF box(0.5, stemUp_ ? kStem + 0.5 : 0.5, width() - 1.0, height() - kStem - 1.0);
    QPainterPath path;
    path.addRoundedRect(box, kRadius, kRadius);
    QPainterPath stem;
    if (stemUp_) {
      stem.moveTo(stemX_ - kStem, box.top() + 1);
      stem.lineTo(stemX_, 0.5);
      stem.lineTo(stemX_ + kStem, box.top() + 1);
    } else {
      stem.moveTo(stemX_ - kStem, box.bottom() - 1);
      stem.lineTo(stemX_, height() - 0.5);
      stem.lineTo(stemX_ + kStem, box.bottom() - 1);
    }
    stem.closeSubpath();
    return path.united(stem);
  }

  QString text_;
  QString title_;
  QPixmap icon_;
  QColor back_;
  QColor fore_;
  QSize textSize_;
  int header_ = 0;
  int stemX_ = 0;
  bool stemUp_ = true;
};

BalloonHelpQt::BalloonHelpQt(QWidget* form, const corpus::Settings& settings)
    : QObject(form),
      form_(form),
      model_(settings, form->objectName().toStdU16String(), DesktopStatusFont(form),
             form->logicalDpiY(), [form = QPointer<QWidget>(form)](std::u16string_view control) {
               return form && form->findChild<QWidget*>(ControlObjectName(control)) != nullptr;
             }) {
  setObjectName(QStringLiteral("BalloonHelp"));
  delay_.setSingleShot(true);
  visible_.setSingleShot(true);
  connect(&delay_, &QTimer::timeout, this, &BalloonHelpQt::ShowBalloon);
  connect(&visible_, &QTimer::timeout, this, &BalloonHelpQt::HideBalloon);
  // Keys and moves reach the control under focus or mouse, not the form.
  qApp->installEventFilter(this);
}

BalloonHelpQt::~BalloonHelpQt() {
  qApp->removeEventFilter(this);
}

void BalloonHelpQt::Load() {
  if (form_) {
    if (QWidget* picture = form_->findChild<QWidget*>(QStringLiteral("Picture1"))) Watch(picture);
    for (QAbstractItemView* grid : form_->findChildren<QAbstractItemView*>()) Watch(grid);
  }
  model_.Load();
  Apply();
}

void BalloonHelpQt::KeyDown() {
  model_.KeyDown();
  Apply();
}

void BalloonHelpQt::MouseMove() {
  model_.MouseMove();
  Apply();
}

void BalloonHelpQt::LayoutChanged() {
  model_.LayoutChanged();
  Apply();
}

void BalloonHelpQt::SettingsChanged() {
  model_.SettingsChanged();
  HideBalloon();  // the next one takes the new font
  Apply();
}

void BalloonHelpQt::SetText(std::u16string_view control, std::u16string_view text) {
  model_.SetToolText(control, text);
  Apply();
}

void BalloonHelpQt::WatchMouseMoves(QWidget* area) {
  if (area != nullptr) Watch(area);
}

void BalloonHelpQt::Watch(QWidget* area) {
  if (std::find(wakeAreas_.begin(), wakeAreas_.end(), area) != wakeAreas_.end()) return;
  wakeAreas_.emplace_back(area);
  // A move without a button reaches a widget only when it tracks the mouse.
  area->setMouseTracking(true);
  if (auto* scroll = qobject_cast<QAbstractScrollArea*>(area))
    scroll->viewport()->setMouseTracking(true);
}

void BalloonHelpQt::SettingsChangedEverywhere() {
  for (QWidget* top : QApplication::topLevelWidgets()) {
    for (BalloonHelpQt* help : top->findChildren<BalloonHelpQt*>()) help->SettingsChanged();
  }
}

void BalloonHelpQt::Apply() {
  installed_.clear();
  if (form_ && model_.Showing()) {
    for (const views::Tooltip::Tool& tool : model_.ToolTip()->Tools()) {
      if (QWidget* control = form_->findChild<QWidget*>(ControlObjectName(tool.control))) {
        installed_.push_back({control, QString::fromStdU16String(tool.text)});
      }
    }
  }
  if (owner_ && ToolOf(owner_) == nullptr) {
    HideBalloon();
    owner_ = nullptr;
  }
}

const BalloonHelpQt::Installed* BalloonHelpQt::ToolOf(const QWidget* widget) const {
  for (const Installed& tool : installed_) {
    if (tool.control == widget) return &tool;
  }
  return nullptr;
}

QString BalloonHelpQt::TextOf(const QWidget* control) const {
  const Installed* tool = ToolOf(control);
  return tool != nullptr ? tool->text : QString();
}

QWidget* BalloonHelpQt::VisibleBalloon() const {
  return tip_ != nullptr && tip_->isVisible() ? tip_ : nullptr;
}

QString BalloonHelpQt::ShownText() const {
  return VisibleBalloon() != nullptr ? tip_->text() : QString();
}

bool BalloonHelpQt::InForm(const QWidget* widget) const {
  // Within the form's own window: the balloon is a window of its own.
  return form_ && widget != nullptr && (widget == form_ || form_->isAncestorOf(widget));
}

QWidget* BalloonHelpQt::OwnerOf(QWidget* widget) const {
  for (QWidget* w = widget; w != nullptr; w = w->parentWidget()) {
    if (ToolOf(w) != nullptr) return w;
    if (w == form_) break;
  }
  return nullptr;
}

bool BalloonHelpQt::InWakeArea(QWidget* widget) const {
  for (QWidget* w = widget; w != nullptr && w != form_; w = w->parentWidget()) {
    if (std::find(wakeAreas_.begin(), wakeAreas_.end(), w) != wakeAreas_.end()) return true;
  }
  return false;
}

void BalloonHelpQt::Hover(QWidget* owner) {
  if (owner == owner_) return;
  HideBalloon();
  owner_ = owner;
  if (owner_ && model_.Showing()) delay_.start(std::max(0, model_.ToolTip()->DelayTime()));
}

void BalloonHelpQt::ShowBalloon() {
  const Installed* tool = owner_ ? ToolOf(owner_) : nullptr;
  if (tool == nullptr || !model_.Showing() || !owner_->isVisible()) return;
  if (tip_ == nullptr) tip_ = new BalloonTip(form_);
  tip_->Show(*model_.ToolTip(), tool->text, owner_);
  visible_.start(std::max(0, model_.ToolTip()->VisibleTime()));
}

void BalloonHelpQt::HideBalloon() {
  delay_.stop();
  visible_.stop();
  if (tip_ != nullptr) tip_->hide();
}

bool BalloonHelpQt::eventFilter(QObject* watched, QEvent* event) {
  switch (event->type()) {
    case QEvent::KeyPress:
    case QEvent::MouseMove:
    case QEvent::HoverMove:
    case QEvent::Enter:
    case QEvent::Leave:
    case QEvent::MouseButtonPress:
    case QEvent::Hide:
      break;
    default:
      return false;
  }
  QWidget* widget = qobject_cast<QWidget*>(watched);
  if (!InForm(widget)) return false;
  switch (event->type()) {
    case QEvent::KeyPress:
      // The key goes up through the parents; taking them away once is enough.
      if (model_.Showing()) KeyDown();
      HideBalloon();
      owner_ = nullptr;
      break;
    case QEvent::MouseMove:
    case QEvent::HoverMove:
    case QEvent::Enter:
      // Once they are there a move adds nothing: the controls are the same.
      if (!model_.Showing() && InWakeArea(widget)) MouseMove();
      if (event->type() == QEvent::Enter) Hover(OwnerOf(widget));
      break;
    case QEvent::Leave:
      if (widget == owner_) {
        HideBalloon();
        owner_ = nullptr;
      }
      break;
    case QEvent::MouseButtonPress:
      HideBalloon();
      break;
    case QEvent::Hide:
      // The balloon is a window of its own and would outlive its form's.
      if (widget == form_ || widget == owner_) {
        HideBalloon();
        owner_ = nullptr;
      }
      break;
    default:
      break;
  }
  return false;
}

}  // namespace suizo::app
