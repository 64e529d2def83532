#include "app/platform/html_pane.h"

#include <QBuffer>
#include <QChildEvent>
#include <QContextMenuEvent>
#include <QCoreApplication>
#include <QKeyEvent>
#include <QRandomGenerator>
#include <QRegularExpression>
#include <QUrlQuery>
#include <QVBoxLayout>
#include <QWebEngineLoadingInfo>
#include <QWebEngineProfile>
#include <QWebEngineSettings>
#include <QWebEngineUrlRequestJob>
#include <QWebEngineUrlSchemeHandler>
#include <QWebEngineView>
#include <QWheelEvent>
#include <map>
#include <utility>

#include "app/platform/grid.h"
#include "app/platform/web_engine_setup.h"
#include "core/text/json.h"

namespace suizo::platform {

namespace {

constexpr char kFrameKey[] = "frame";

// Serves each pane's frame under the pane scheme, so that the frame's
// relative links resolve under it. One frame per pane is kept, for reloads.
class FrameServer : public QWebEngineUrlSchemeHandler {
 public:
  explicit FrameServer(QObject* parent) : QWebEngineUrlSchemeHandler(parent) { current = this; }
  ~FrameServer() override { current = nullptr; }

  void Put(int id, QByteArray html) { frames_[id] = std::move(html); }
  void Drop(int id) { frames_.erase(id); }

  void requestStarted(QWebEngineUrlRequestJob* job) override {
    const int id = QUrlQuery(job->requestUrl()).queryItemValue(kFrameKey).toInt();
    const auto frame = frames_.find(id);
    if (frame == frames_.end()) {
      job->fail(QWebEngineUrlRequestJob::UrlNotFound);
      return;
    }
    auto* body = new QBuffer(job);
    body->setData(frame->second);
    body->open(QIODevice::ReadOnly);
    job->reply("text/html", body);
  }

  static inline FrameServer* current = nullptr;

 private:
  std::map<int, QByteArray> frames_;
};

QUrl FrameUrl(int id) {
  return QUrl(QString::fromLatin1(kPaneBase) + QStringLiteral("?%1=%2").arg(kFrameKey).arg(id));
}

// The fonts that may stand in for the frames' "ＭＳ ゴシック": monospaced
// Japanese faces, by the full and the PostScript names the browser matches.
constexpr char kRegularFaces[] =
    "local('Noto Sans Mono CJK JP'),local('NotoSansMonoCJKjp-Regular'),"
    "local('Source Han Code JP R'),local('IPAGothic'),local('TakaoGothic'),"
    "local('VL Gothic'),local('VL-Gothic-Regular')";
constexpr char kBoldFaces[] =
    "local('Noto Sans Mono CJK JP Bold'),local('NotoSansMonoCJKjp-Bold'),"
    "local('Source Han Code JP B'),local('IPAGothic'),local('TakaoGothic'),"
    "local('VL Gothic'),local('VL-Gothic-Regular')";

// What a page may run and load: the frame's own scripts, by the nonce they
// are given; styles inline; fonts and images from the program's scheme only.
// No other script, no inline handler or "javascript:" address, no frame,
// object, form, request or base of the data's.
QString SecurityPolicy(const QString& nonce) {
  return QStringLiteral(
             "<meta http-equiv=\"Content-Security-Policy\" content=\"default-src 'none'; "
             "script-src 'nonce-%1'; style-src 'unsafe-inline'; img-src %2:; font-src %2:; "
             "connect-src 'none'; frame-src 'none'; object-src 'none'; base-uri 'none'; "
             "form-action 'none'\">")
      .arg(nonce, QLatin1String(kPaneScheme));
}

// Where a frame's head matter goes: after the doctype, which must stay first
// for the page to keep its mode.
qsizetype HeadAt(const QString& html) {
  static const QRegularExpression doctype(QStringLiteral("^\\s*<!DOCTYPE[^>]*>"),
                                          QRegularExpression::CaseInsensitiveOption);
  const QRegularExpressionMatch match = doctype.match(html);
  return match.hasMatch() ? match.capturedEnd() : 0;
}

// A fresh nonce for each frame: text that came from the data cannot know it.
QString FreshNonce() {
  QByteArray bytes(18, '\0');
  QRandomGenerator::system()->generate(bytes.begin(), bytes.end());
  return QString::fromLatin1(bytes.toBase64(QByteArray::Base64UrlEncoding));
}

QString FontFaces() {
  return QStringLiteral(
             "<style>@font-face{font-family:'ＭＳ ゴシック';src:%1;}"
             "@font-face{font-family:'ＭＳ ゴシック';font-weight:bold;src:%2;}</style>")
      .arg(QLatin1String(kRegularFaces), QLatin1String(kBoldFaces));
}

}  // namespace

QWebEngineProfile* PaneProfile() {
  static QWebEngineProfile* const profile = [] {
    auto* made = new QWebEngineProfile(QCoreApplication::instance());  // off the record
    made->installUrlSchemeHandler(kPaneScheme, new FrameServer(made));
    QWebEngineSettings* settings = made->settings();
    settings->setAttribute(QWebEngineSettings::FocusOnNavigationEnabled, false);
    settings->setAttribute(QWebEngineSettings::ErrorPageEnabled, false);
    settings->setAttribute(QWebEngineSettings::JavascriptCanOpenWindows, false);
    settings->setAttribute(QWebEngineSettings::PluginsEnabled, false);
    // Nothing a page holds reaches the user's files or the network.
    settings->setAttribute(QWebEngineSettings::LocalContentCanAccessFileUrls, false);
    settings->setAttribute(QWebEngineSettings::LocalContentCanAccessRemoteUrls, false);
    settings->setAttribute(QWebEngineSettings::JavascriptCanAccessClipboard, false);
    settings->setAttribute(QWebEngineSettings::JavascriptCanPaste, false);
    settings->setAttribute(QWebEngineSettings::AllowRunningInsecureContent, false);
    settings->setAttribute(QWebEngineSettings::AllowGeolocationOnInsecureOrigins, false);
    settings->setAttribute(QWebEngineSettings::PdfViewerEnabled, false);
    return made;
  }();
  return profile;
}

QString LinkTarget(const QUrl& url) {
  QString address = url.toString(QUrl::FullyEncoded);
  const QString base = QString::fromLatin1(kPaneBase);
  if (address.startsWith(base)) address.remove(0, base.size());
  // An empty href resolves to the frame's own address.
  if (address.startsWith(QStringLiteral("?%1=").arg(kFrameKey))) return {};
  return QUrl::fromPercentEncoding(address.toUtf8());
}

QString JsString(const QString& text) {
  return QString::fromStdString(text::JsonString(text.toStdU16String()));
}

QString WithFontMapping(const QString& html) {
  const qsizetype at = HeadAt(html);
  return html.left(at) + FontFaces() + html.mid(at);
}

QString WithSecurityPolicy(const QString& frame) {
  // The frame is the program's own text: the data reaches a page only
  // through SetBody, after the policy is in force.
  const QString nonce = FreshNonce();
  static const QRegularExpression script(QStringLiteral("<script\\b"),
                                         QRegularExpression::CaseInsensitiveOption);
  QString out = frame;
  out.replace(script, QStringLiteral("<script nonce=\"%1\"").arg(nonce));
  const qsizetype at = HeadAt(out);
  return out.left(at) + SecurityPolicy(nonce) + out.mid(at);
}

PanePage::PanePage(QWebEngineProfile* profile, QObject* parent) : QWebEnginePage(profile, parent) {}

bool PanePage::acceptNavigationRequest(const QUrl& url, NavigationType type, bool isMainFrame) {
  if (url == QUrl(QStringLiteral("about:blank"))) return true;
  if (isMainFrame && url == frameUrl_ && type != NavigationTypeLinkClicked) return true;
  // Only a click is the user's: a refresh, a script, a form or a redirect
  // the data set off goes nowhere and means nothing.
  if (isMainFrame && type == NavigationTypeLinkClicked) emit linkClicked(LinkTarget(url));
  return false;
}

HtmlPane::HtmlPane(QWidget* parent) : QWidget(parent) {
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  view_ = new QWebEngineView(this);
  setFocusProxy(view_);
  view_->setContextMenuPolicy(Qt::PreventContextMenu);
  view_->setAcceptDrops(false);  // a dropped address would navigate
  layout->addWidget(view_);
  page_ = new PanePage(PaneProfile(), view_);
  view_->setPage(page_);

  // The link is handed over after the browser's navigation call has returned,
  // so that the window may write into this very pane.
  connect(page_, &PanePage::linkClicked, this, &HtmlPane::linkClicked, Qt::QueuedConnection);
  connect(page_, &QWebEnginePage::loadingChanged, this, &HtmlPane::OnLoading);
  // The browser's own widget is created and replaced as pages load: each
  // one is watched from the moment it joins the view.
  view_->installEventFilter(this);
  if (QWidget* proxy = view_->focusProxy()) Watch(proxy);
  for (QObject* child : view_->children()) Watch(child);
}

HtmlPane::~HtmlPane() {
  if (FrameServer::current != nullptr && frameId_ != 0) FrameServer::current->Drop(frameId_);
}

void HtmlPane::WriteFrame(const QString& html) {
  static int lastFrameId = 0;
  FrameServer* server = FrameServer::current;
  if (server == nullptr) return;  // the application is closing
  if (frameId_ != 0) server->Drop(frameId_);
  frameId_ = ++lastFrameId;
  // The mark makes the page read as UTF-8 and does not count as content.
  server->Put(frameId_,
              QByteArray("\xEF\xBB\xBF") + WithSecurityPolicy(WithFontMapping(html)).toUtf8());
  frameUrl_ = FrameUrl(frameId_);
  ready_ = false;
  page_->SetFrameUrl(frameUrl_);
  page_->load(frameUrl_);
}

void HtmlPane::OnLoading(const QWebEngineLoadingInfo& info) {
  if (ready_ || info.url() != frameUrl_) return;
  if (info.status() == QWebEngineLoadingInfo::LoadStartedStatus) return;
  ready_ = true;
  std::vector<Call> calls;
  calls.swap(waiting_);
  for (const Call& call : calls) Send(call);
  emit frameLoaded();
}

void HtmlPane::Run(const QString& js, std::function<void(const QVariant&)> callback) {
  Call call{js, std::move(callback)};
  if (ready_)
    Send(call);
  else
    waiting_.push_back(std::move(call));
}

void HtmlPane::Send(const Call& call) {
  if (call.callback)
    page_->runJavaScript(call.js, call.callback);
  else
    page_->runJavaScript(call.js);
}

void HtmlPane::SetBody(const QString& html) {
  Run(QStringLiteral("if(document.body)document.body.innerHTML=%1;").arg(JsString(html)));
}

void HtmlPane::SetBackground(std::uint32_t bgr) {
  Run(QStringLiteral("if(document.body)document.body.bgColor='%1';")
          .arg(FromBgr(bgr).name(QColor::HexRgb)));
}

void HtmlPane::ScrollTo(int x, int y) {
  Run(QStringLiteral("window.scrollTo(%1,%2);").arg(x).arg(y));
}

void HtmlPane::ScrollBy(int dx, int dy) {
  Run(QStringLiteral("window.scrollBy(%1,%2);").arg(dx).arg(dy));
}

void HtmlPane::SetZoom(const QString& percent) {
  static const QRegularExpression form(QStringLiteral("^\\s*(\\d{1,5}(?:\\.\\d+)?)\\s*%\\s*$"));
  const QRegularExpressionMatch match = form.match(percent);
  if (!match.hasMatch()) return;
  Run(QStringLiteral("if(document.body)document.body.style.zoom='%1%';").arg(match.captured(1)));
}

void HtmlPane::AddStyle(const QString& css) {
  Run(QStringLiteral("(function(){var s=document.createElement('style');s.textContent=%1;"
                     "(document.head||document.documentElement).appendChild(s);})();")
          .arg(JsString(css)));
}

void HtmlPane::SetScrollBars(bool on) {
  Run(QStringLiteral("document.documentElement.style.overflow='%1';")
          .arg(on ? QString() : QStringLiteral("hidden")));
}

QString HtmlPane::SelectedText() const {
  return page_->selectedText();
}

void HtmlPane::ClearSelection() {
  Run(QStringLiteral("window.getSelection().removeAllRanges();"));
}

void HtmlPane::Copy() {
  page_->triggerAction(QWebEnginePage::Copy);
}

void HtmlPane::RunScript(const QString& js, std::function<void(const QVariant&)> callback) {
  Run(js, std::move(callback));
}

void HtmlPane::Watch(QObject* object) {
  if (object != nullptr && object->isWidgetType()) object->installEventFilter(this);
}

bool HtmlPane::eventFilter(QObject* watched, QEvent* event) {
  if (watched == view_) {
    if (event->type() == QEvent::ChildAdded) Watch(static_cast<QChildEvent*>(event)->child());
    return false;
  }
  switch (event->type()) {
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
      return OnKey(event);
    case QEvent::Wheel:
      // The size of the text is the program's to set.
      return static_cast<QWheelEvent*>(event)->modifiers().testFlag(Qt::ControlModifier);
    case QEvent::NativeGesture:
      return true;
    case QEvent::ContextMenu:
      emit contextMenuRequested(static_cast<QContextMenuEvent*>(event)->globalPos());
      return true;
    case QEvent::MouseButtonDblClick:
      if (static_cast<QMouseEvent*>(event)->button() == Qt::LeftButton) emit doubleClicked();
      return false;
    case QEvent::MouseButtonRelease:
      if (static_cast<QMouseEvent*>(event)->button() == Qt::LeftButton) emit clicked();
      return false;
    default:
      return false;
  }
}

bool HtmlPane::OnKey(QEvent* event) {
  const auto* key = static_cast<QKeyEvent*>(event);
  if (event->type() == QEvent::KeyRelease) {
    if (key->isAutoRepeat()) return swallowedKeys_.count(key->key()) > 0;
    return swallowedKeys_.erase(key->key()) > 0;
  }
  bool handled = false;
  const QPointer<HtmlPane> alive(this);
  emit keyPressed(key->key(), key->modifiers(), handled);
  if (alive.isNull()) return true;
  if (handled)
    swallowedKeys_.insert(key->key());
  else
    swallowedKeys_.erase(key->key());
  return handled;
}

}  // namespace suizo::platform
