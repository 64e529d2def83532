// A store damaged after the start went well: the fault is met when a window
// or a collection first needs the damaged part. The run then ends as "終了"
// ends it, with its message, and the notes edited so far are written.
#include <QApplication>
#include <QDialog>
#include <QPushButton>
#include <QRadioButton>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

#include "app/corpus/program.h"
#include "app/platform/qt_text.h"
#include "app_test.h"
#include "core/corpus/note_journal.h"
#include "core/corpus/orders.h"
#include "core/corpus/settings.h"
#include "started_program.h"

namespace suizo::app {

namespace fs = std::filesystem;

class DamagedDataTest : public QObject {
  Q_OBJECT

 private:
  QTemporaryDir converted_;
  corpus::MemorySettings settings_;

  // A converted copy of the sample, damaged by `damage`, with the program
  // started on it, a note edited and every message kept in `told`.
  std::unique_ptr<Program> StartDamaged(const fs::path& dir, void (*damage)(const fs::path&),
                                        QStringList& told) {
    fs::copy(converted_.path().toStdString(), dir, fs::copy_options::recursive);
    damage(dir);
    auto program = std::make_unique<Program>(dir, settings_, u"0.1.0");
    program->showError = [&told](const QString& message) { told << message; };
    program->toast = [](QWidget*) {};
    if (!program->Start()) return nullptr;
    corpus::EditNote(program->corpus(), *program->journal(), corpus::TableId::Dat, 12, 48,
                     u"残す覚え");
    return program;
  }

  static void KeepsTheNote(const fs::path& dir) {
    corpus::Corpus after(dir);
    after.ReadData(0);
    QCOMPARE(platform::Q(after.Dat().Get(12, 48)), QStringLiteral("残す覚え"));
  }

  // Cuts a store at the row end halfway through its rows.
  static void CutAtARowEnd(const fs::path& file) {
    std::ifstream in(file, std::ios::binary);
    const std::string bytes((std::istreambuf_iterator<char>(in)), {});
    std::vector<std::size_t> ends;  // the byte after each line feed
    for (std::size_t at = 2; at + 1 < bytes.size(); at += 2) {
      if (bytes[at] == '\n' && bytes[at + 1] == 0) ends.push_back(at + 2);
    }
    std::string first;
    for (std::size_t at = 2; bytes[at] != '\r'; at += 2) first += bytes[at];
    const std::size_t fields = std::stoul(first);
    const std::size_t keep = 1 + fields * ((ends.size() - 1) / fields / 2);
    std::ofstream(file, std::ios::binary | std::ios::trunc)
        .write(bytes.data(), static_cast<std::streamsize>(ends[keep - 1]));
  }

 private slots:
  void initTestCase() {
    QVERIFY(converted_.isValid());
    fs::copy(SUIZO_SAMPLE_DIR, converted_.path().toStdString(), fs::copy_options::recursive);
    corpus::MemorySettings settings;
    Program first(converted_.path().toStdString(), settings, u"0.1.0");
    first.showError = [](const QString& message) { QFAIL(qPrintable(message)); };
    QVERIFY(first.Start());
    first.End();
  }

  void aDamagedChronologyEndsTheRunWhenItsWindowOpens() {
    QTemporaryDir data;
    const fs::path dir = data.path().toStdString();
    QStringList told;
    auto program = StartDamaged(
        dir,
        [](const fs::path& d) {
          const fs::path nen = d / fs::u8path("年表.dax");
          fs::resize_file(nen, fs::file_size(nen) / 2 + 1);  // inside a row
        },
        told);
    QVERIFY(program);
    const int work = corpus::FindContentsPlace(program->corpus(), u"10154").Mpos;
    program->navigator().GoNen(u"", work, reader::kFromWritingsContents);
    QCOMPARE(told.size(), 1);
    QVERIFY2(told[0].contains(QStringLiteral("年表.dax")), qPrintable(told[0]));
    QTRY_VERIFY(program->Ending());
    KeepsTheNote(dir);
  }

  void aCollectionTheDamagedRecordsCannotPlaceEndsTheRun() {
    QTemporaryDir data;
    const fs::path dir = data.path().toStdString();
    QStringList told;
    auto program = StartDamaged(
        dir, [](const fs::path& d) { CutAtARowEnd(d / fs::u8path("翠典本文.dax")); }, told);
    QVERIFY2(program, qPrintable(told.join(QLatin1Char('\n'))));
    apptest::WithDialog(
        [&] { program->OpenSelection(); },
        [](QDialog& dialog) {
          dialog.findChild<QRadioButton*>(QStringLiteral("Option1_9"))->setChecked(true);  // 対照録
          dialog.findChild<QPushButton*>(QStringLiteral("Command1"))->click();
        });
    QCOMPARE(told.size(), 1);
    QVERIFY2(told[0].contains(QStringLiteral("翠典資料")), qPrintable(told[0]));
    QTRY_VERIFY(program->Ending());
    KeepsTheNote(dir);
  }
};

SUIZO_APP_TEST(DamagedDataTest);

}  // namespace suizo::app

#include "damaged_data_test.moc"
