// A data folder that another program holds: the viewer names the folder and
// the holder, does not start and writes nothing there. Once the holder has
// let go, the same folder opens.
#include <QObject>
#include <QTemporaryDir>
#include <QTest>
#include <filesystem>
#include <map>
#include <memory>
#include <optional>

#include "app/corpus/program.h"
#include "app_test.h"
#include "core/corpus/file_io.h"
#include "core/corpus/folder_lock.h"
#include "core/corpus/settings.h"

namespace suizo::app {

namespace fs = std::filesystem;

class BusyFolderTest : public QObject {
  Q_OBJECT

 private:
  static std::map<std::string, std::string> Files(const fs::path& dir) {
    std::map<std::string, std::string> files;
    for (const auto& entry : fs::directory_iterator(dir)) {
      files[entry.path().filename().string()] = corpus::ReadFileBytes(entry.path());
    }
    return files;
  }

 private slots:
  void aHeldFolderIsNamedAndLeftAsItWas() {
    QTemporaryDir data;
    const fs::path dir = data.path().toStdString();
    // The exports alone: a start would convert them and write the store.
    fs::copy(SUIZO_SAMPLE_DIR, dir, fs::copy_options::recursive);
    // Held by a lock of its own: flock refuses another open of the same file
    // even in this process.
    std::optional<corpus::DataFolderLock> other =
        corpus::DataFolderLock::Acquire(dir, "suizo convert");
    const auto before = Files(dir);

    corpus::MemorySettings settings;
    QStringList told;
    const auto start = [&] {
      auto program = std::make_unique<Program>(dir, settings, u"0.1.0");
      program->showError = [&told](const QString& message) { told << message; };
      program->toast = [](QWidget*) {};
      if (!program->Start()) program.reset();
      return program;
    };
    const auto refusal = [&](const QString& holder) {
      return QStringLiteral(
                 "データフォルダ「%1」は別のプログラム（%2、プロセス %3）が使用中です。"
                 "そのプログラムを終えてから起動してください。")
          .arg(data.path(), holder, QString::number(QCoreApplication::applicationPid()));
    };
    QVERIFY(!start());
    QCOMPARE(told, QStringList{refusal(QStringLiteral("suizo convert"))});
    QVERIFY(Files(dir) == before);

    // Let go, the folder opens, and a second viewer on it is refused; the
    // end lets it go.
    other.reset();
    told.clear();
    auto first = start();
    QVERIFY2(first, qPrintable(told.join(QLatin1Char('\n'))));
    QVERIFY(!start());
    QCOMPARE(told, QStringList{refusal(QStringLiteral("suizo-viewer"))});
    first->End();
    QVERIFY(!fs::exists(dir / corpus::kLockFileName));
  }
};

SUIZO_APP_TEST(BusyFolderTest);

}  // namespace suizo::app

#include "busy_folder_test.moc"
