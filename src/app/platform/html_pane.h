// The program's browser pane: a frame is written once, and from then on only
// the body's inner HTML, its colour, scroll and zoom change. Links are never
// followed: each is handed to the window, which asks its model what it means.
#pragma once

#include <QKeyEvent>
#include <QPointer>
#include <QString>
#include <QUrl>
#include <QVariant>
#include <QWebEnginePage>
#include <QWidget>
#include <cstdint>
#include <functional>
#include <set>
#include <vector>

class QWebEngineLoadingInfo;
class QWebEngineProfile;
class QWebEngineView;

namespace suizo::platform {

// The base every frame is written under: a link "D17" of a frame navigates to
// "suizo://pane/D17".
inline constexpr char kPaneBase[] = "suizo://pane/";

// The one off-the-record profile all panes share, with the frames' scheme
// installed. Needs the application object.
QWebEngineProfile* PaneProfile();

// The href as the frame wrote it, from the address a link navigated to.
QString LinkTarget(const QUrl& url);

// A JavaScript string literal holding `text` exactly.
QString JsString(const QString& text);

// The frame with the font the frames name, "ＭＳ ゴシック", mapped to an
// installed monospaced Japanese font; the rest stands as written.
QString WithFontMapping(const QString& html);

// The frame with a content security policy at its head that lets run only
// the frame's own scripts, each given a nonce fresh for this frame, and lets
// load nothing but fonts and images of the program's scheme. The frame must
// be the program's own text: data reaches a page only through its body.
QString WithSecurityPolicy(const QString& frame);

// The page under a pane: it lets through only the frame it was told to load
// and "about:blank", and reports every other navigation as a link.
class PanePage : public QWebEnginePage {
  Q_OBJECT

 public:
  PanePage(QWebEngineProfile* profile, QObject* parent);
  void SetFrameUrl(const QUrl& url) { frameUrl_ = url; }

 signals:
  void linkClicked(const QString& target);

 protected:
  bool acceptNavigationRequest(const QUrl& url, NavigationType type, bool isMainFrame) override;
  // The frames' own scripts are not ours to report on.
  void javaScriptConsoleMessage(JavaScriptConsoleMessageLevel, const QString&, int,
                                const QString&) override {}

 private:
  QUrl frameUrl_;
};

class HtmlPane : public QWidget {
  Q_OBJECT

 public:
  explicit HtmlPane(QWidget* parent = nullptr);
  ~HtmlPane() override;

  // Loads `html` as the pane's document. Every call below made before the
  // frame has loaded waits for it and then runs, in the order made.
  void WriteFrame(const QString& html);
  // Whether the last frame written has finished loading.
  bool FrameReady() const { return ready_; }

  // Replaces `document.body.innerHTML`.
  void SetBody(const QString& html);
  // The body's colour, 0xBBGGRR.
  void SetBackground(std::uint32_t bgr);
  void ScrollTo(int x, int y);
  void ScrollBy(int dx, int dy);
  // The body's zoom, a text such as "100%" or "125%"; anything else is ignored.
  void SetZoom(const QString& percent);
  // A style sheet added to the document's head: it outlives body changes.
  void AddStyle(const QString& css);
  // Scroll bars on or off (the frames' `scroll=auto` or "no").
  void SetScrollBars(bool on);
  // The text selected in the page now.
  QString SelectedText() const;
  void ClearSelection();
  // Copies the selection to the clipboard; the browser does it a moment later.
  void Copy();
  // Runs `js` in the page; `callback`, if any, gets its value.
  void RunScript(const QString& js, std::function<void(const QVariant&)> callback = {});

  QWebEngineView* View() const { return view_; }
  PanePage* Page() const { return page_; }

 signals:
  // The frame written last has loaded and the waiting calls have been sent.
  void frameLoaded();
  // A link of the page, its href as written ("D17", "12345", "-14601").
  void linkClicked(const QString& target);
  // A key, before the browser sees it: set `handled` to keep it from the page.
  void keyPressed(int key, Qt::KeyboardModifiers modifiers, bool& handled);
  // A right click (or the menu key): the place for the program's own menu.
  void contextMenuRequested(QPoint globalPos);
  void doubleClicked();
  // The left button let go over the page, after a click or a selection.
  void clicked();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  // The view hands back the keys the page left alone; the window had its
  // turn before the page, so they end here.
  void keyPressEvent(QKeyEvent* event) override { event->accept(); }
  void keyReleaseEvent(QKeyEvent* event) override { event->accept(); }

 private:
  struct Call {
    QString js;
    std::function<void(const QVariant&)> callback;
  };
  void Run(const QString& js, std::function<void(const QVariant&)> callback = {});
  void Send(const Call& call);
  void Watch(QObject* object);
  void OnLoading(const QWebEngineLoadingInfo& info);
  bool OnKey(QEvent* event);

  QWebEngineView* view_ = nullptr;
  PanePage* page_ = nullptr;
  QUrl frameUrl_;
  int frameId_ = 0;
  bool ready_ = false;
  std::vector<Call> waiting_;
  std::set<int> swallowedKeys_;  // their releases are kept from the page too
};

}  // namespace suizo::platform
