#include "app/platform/web_engine_setup.h"

#include <unistd.h>

#include <QWebEngineUrlScheme>
#include <QtGlobal>

namespace suizo::platform {

void PrepareWebEngine() {
  QWebEngineUrlScheme scheme(kPaneScheme);
  scheme.setSyntax(QWebEngineUrlScheme::Syntax::Path);
  scheme.setFlags(QWebEngineUrlScheme::SecureScheme | QWebEngineUrlScheme::LocalScheme |
                  QWebEngineUrlScheme::LocalAccessAllowed);
  QWebEngineUrlScheme::registerScheme(scheme);
  // The browser will not start as root with its sandbox, and this Qt reads
  // no switch from the command line: the environment is the only way.
  if (::geteuid() == 0) qputenv("QTWEBENGINE_DISABLE_SANDBOX", "1");
}

}  // namespace suizo::platform
