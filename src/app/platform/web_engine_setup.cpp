#include "app/platform/web_engine_setup.h"

#include <unistd.h>

#include <QByteArray>
#include <QOffscreenSurface>
#include <QOpenGLContext>
#include <QOpenGLFunctions>
#include <QQuickWindow>
#include <QWebEngineUrlScheme>
#include <QtGlobal>
#include <algorithm>
#include <array>
#include <cctype>
#include <string>

namespace suizo::platform {

void PrepareWebEngine() {
  QWebEngineUrlScheme scheme(kPaneScheme);
  scheme.setSyntax(QWebEngineUrlScheme::Syntax::Path);
  // Local, so that pages of other schemes cannot reach it; without local
  // access, so that its pages cannot reach the user's files.
  scheme.setFlags(QWebEngineUrlScheme::SecureScheme | QWebEngineUrlScheme::LocalScheme);
  QWebEngineUrlScheme::registerScheme(scheme);
  // The browser will not start as root with its sandbox, and this Qt reads
  // no switch from the command line: the environment is the only way.
  if (::geteuid() == 0) qputenv("QTWEBENGINE_DISABLE_SANDBOX", "1");
}

bool SoftwareRasterizer(std::string_view glRenderer) {
  std::string name(glRenderer);
  std::transform(name.begin(), name.end(), name.begin(),
                 [](unsigned char c) { return std::tolower(c); });
  constexpr std::array<std::string_view, 5> kSoftware = {"llvmpipe", "softpipe",
                                                         "software rasterizer", "swrast", "swr"};
  return std::any_of(kSoftware.begin(), kSoftware.end(),
                     [&](std::string_view s) { return name.find(s) != std::string::npos; });
}

void ChooseRenderer() {
  if (qEnvironmentVariableIsSet("QT_QUICK_BACKEND") || qEnvironmentVariableIsSet("QSG_RHI_BACKEND"))
    return;
  QOpenGLContext context;
  QOffscreenSurface surface;
  bool software = true;  // no OpenGL at all draws in software as well
  if (context.create()) {
    surface.setFormat(context.format());
    surface.create();
    if (context.makeCurrent(&surface)) {
      const auto* name =
          reinterpret_cast<const char*>(context.functions()->glGetString(GL_RENDERER));
      software = name == nullptr || SoftwareRasterizer(name);
      context.doneCurrent();
    }
  }
  if (software) QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
}

}  // namespace suizo::platform
