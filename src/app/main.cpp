#include <QApplication>
#include <QStringList>
#include <cstdlib>
#include <filesystem>
#include <optional>

#include "app/corpus/program.h"
#include "app/platform/qt_settings.h"
#include "app/platform/single_instance.h"
#include "app/platform/web_engine_setup.h"
#include "core/corpus/data_path.h"

namespace {

// "--data DIR" names the data folder; the program takes no other argument.
std::optional<std::filesystem::path> DataArgument(const QStringList& args) {
  const qsizetype at = args.indexOf(QStringLiteral("--data"));
  if (at < 0 || at + 1 >= args.size()) return std::nullopt;
  return std::filesystem::path(args[at + 1].toStdString());
}

}  // namespace

int main(int argc, char** argv) {
  suizo::platform::PrepareWebEngine();
  QApplication app(argc, argv);
  suizo::platform::ChooseRenderer();
  QApplication::setApplicationName(QStringLiteral("翠蔵Viewer"));
  QApplication::setOrganizationName(QStringLiteral("翠蔵Viewer"));

  // A second start ends at once, without a word.
  suizo::platform::SingleInstance instance;
  if (!instance.IsFirst()) return 0;

  const std::filesystem::path programFolder =
      std::filesystem::path(QApplication::applicationDirPath().toStdString());
  const std::filesystem::path dataPath = suizo::corpus::ResolveDataPath(
      DataArgument(QApplication::arguments()), std::getenv("SUIZO_DATA"), programFolder);

  suizo::platform::QtSettingsStore store;
  suizo::app::Program program(dataPath, store, u"" SUIZO_VERSION_U16);
  if (!program.Start()) return 2;
  return QApplication::exec();
}
