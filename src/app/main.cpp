#include <QApplication>
#include <QStandardPaths>
#include <QStringList>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <string_view>

#include "app/corpus/program.h"
#include "app/platform/qt_settings.h"
#include "app/platform/single_instance.h"
#include "app/platform/web_engine_setup.h"
#include "core/corpus/data_path.h"

namespace {

constexpr const char* kUsage =
    "usage: suizo-viewer [--data DIR]\n"
    "\n"
    "翠蔵Viewer: the reader of the corpus of letters and treatises, with their\n"
    "records, the dictionary, the Lotus Sutra with its outlines, the sources and\n"
    "the chronology.\n"
    "\n"
    "  --data DIR   the data folder; else $SUIZO_DATA, else Data/ beside the\n"
    "               program, or, for an installed program, the user's own\n"
    "               ~/.local/share/翠蔵Viewer/Data, filled with the bundled\n"
    "               sample on its first use\n"
    "  --help       print this text and end\n"
    "  --version    print the version and end\n"
    "\n"
    "Qt's own options, such as -platform, are taken as well.\n";

// --help and --version are answered before anything needs a display.
bool Answered(int argc, char** argv) {
  for (int i = 1; i < argc; ++i) {
    const std::string_view a = argv[i];
    if (a == "--help" || a == "-h") {
      std::fputs(kUsage, stdout);
      return true;
    }
    if (a == "--version") {
      std::printf("suizo-viewer %s\n", SUIZO_VERSION);
      return true;
    }
  }
  return false;
}

// "--data DIR" names the data folder; the program takes no other argument.
std::optional<std::filesystem::path> DataArgument(const QStringList& args) {
  const qsizetype at = args.indexOf(QStringLiteral("--data"));
  if (at < 0 || at + 1 >= args.size()) return std::nullopt;
  return std::filesystem::path(args[at + 1].toStdString());
}

}  // namespace

int main(int argc, char** argv) {
  if (Answered(argc, argv)) return 0;
  suizo::platform::PrepareWebEngine();
  QApplication app(argc, argv);
  suizo::platform::ChooseRenderer();
  QApplication::setApplicationName(QStringLiteral("翠蔵Viewer"));
  QApplication::setOrganizationName(QStringLiteral("翠蔵Viewer"));
  // The desktop matches the windows to the installed desktop file by it.
  QGuiApplication::setDesktopFileName(QStringLiteral("org.suizo.viewer"));

  // A second start ends at once, without a word.
  suizo::platform::SingleInstance instance;
  if (!instance.IsFirst()) return 0;

  const std::filesystem::path programFolder =
      std::filesystem::path(QApplication::applicationDirPath().toStdString());
  const QString userData = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) +
                           QStringLiteral("/翠蔵Viewer/Data");
  const suizo::corpus::DataPlace place =
      suizo::corpus::FindDataPlace({.commandLine = DataArgument(QApplication::arguments()),
                                    .environment = std::getenv("SUIZO_DATA"),
                                    .programFolder = programFolder,
                                    .userFolder = std::filesystem::path(userData.toStdString()),
                                    .writable = {}});

  suizo::platform::QtSettingsStore store;
  suizo::app::Program program(place.folder, store, u"" SUIZO_VERSION_U16);
  program.seed = place.seed;
  // The user may choose not to open another installation's store: no fault.
  if (!program.Start()) return program.Declined() ? 0 : 2;
  return QApplication::exec();
}
