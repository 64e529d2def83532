// A data folder brought from another installation, without exports: the
// start asks in `Form10` whether to read the store as it is. "いいえ" ends
// the start with nothing written; "はい" opens it with the notes and
// bookmarks it holds, and only an edited note is ever written to it.
#include <QLabel>
#include <QObject>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <filesystem>
#include <map>

#include "app/corpus/program.h"
#include "app/platform/qt_text.h"
#include "app_test.h"
#include "core/corpus/bookmarks.h"
#include "core/corpus/dax_file.h"
#include "core/corpus/file_io.h"
#include "core/corpus/note_journal.h"
#include "core/corpus/profile.h"
#include "core/corpus/settings.h"
#include "started_program.h"

namespace suizo::app {

namespace fs = std::filesystem;

class ExistingFolderTest : public QObject {
  Q_OBJECT

 private:
  QTemporaryDir other_;
  fs::path dir_;
  corpus::MemorySettings settings_;
  bool declined_ = false;

  static std::map<std::string, std::string> Files(const fs::path& dir) {
    std::map<std::string, std::string> files;
    for (const auto& entry : fs::directory_iterator(dir)) {
      files[entry.path().filename().string()] = corpus::ReadFileBytes(entry.path());
    }
    return files;
  }

  // Starts on the folder and answers the question with the button named.
  std::unique_ptr<Program> StartAnswering(const char* button, QString& question,
                                          QStringList& told) {
    auto program = std::make_unique<Program>(dir_, settings_, u"0.1.0");
    program->showError = [&told](const QString& message) { told << message; };
    program->toast = [](QWidget*) {};
    bool started = false;
    apptest::WithDialog([&] { started = program->Start(); },
                        [&](QDialog& dialog) {
                          QCOMPARE(dialog.objectName(), QStringLiteral("Form10"));
                          question = dialog.findChild<QLabel*>(QStringLiteral("Text1"))->text();
                          dialog.findChild<QPushButton*>(QLatin1String(button))->click();
                        });
    declined_ = !started && program->Declined();
    if (!started) program.reset();
    return program;
  }

 private slots:
  void initTestCase() {
    QVERIFY(other_.isValid());
    dir_ = other_.path().toStdString();
    fs::copy(SUIZO_SAMPLE_DIR, dir_, fs::copy_options::recursive);
    {
      auto first = apptest::StartedProgram(dir_, settings_);
      QVERIFY(first);
      corpus::EditNote(first->corpus(), *first->journal(), corpus::TableId::Dat, 20, 48,
                       u"前の環境の覚え");
      first->End();
    }
    corpus::ProfileFile bookmarks(dir_ / "suiten.ini");
    corpus::Bookmark mark = corpus::ReadBookmark(bookmarks, corpus::BookmarkKind::Sources, 2, {});
    mark.T1 = u"前の環境のしおり";
    corpus::WriteBookmark(bookmarks, corpus::BookmarkKind::Sources, 2, mark);
    // As the other installation leaves it: its version, no exports.
    for (const auto& entry : fs::directory_iterator(dir_)) {
      if (entry.path().extension() == ".dat") fs::remove(entry.path());
    }
    corpus::WriteFileWhole(dir_ / "ver.dax", "2.31\r\n");
  }

  void noEndsTheStartWithNothingWritten() {
    const auto before = Files(dir_);
    QString question;
    QStringList told;
    QVERIFY(!StartAnswering("Command1", question, told));
    QVERIFY(declined_);  // the viewer then ends with status 0
    QVERIFY2(question.contains(QStringLiteral("2.31")) &&
                 question.contains(QStringLiteral("このまま開きますか")),
             qPrintable(question));
    QVERIFY2(told.isEmpty(), qPrintable(told.join(QLatin1Char('\n'))));
    QVERIFY(Files(dir_) == before);
  }

  void yesOpensTheStoreWithItsNotesAndBookmarks() {
    const auto before = Files(dir_);
    QString question;
    QStringList told;
    auto program = StartAnswering("Command2", question, told);
    QVERIFY2(program, qPrintable(told.join(QLatin1Char('\n'))));
    QVERIFY(!program->Converted());
    QCOMPARE(platform::Q(program->corpus().Dat().Get(20, 48)), QStringLiteral("前の環境の覚え"));
    const corpus::ProfileFile bookmarks(dir_ / "suiten.ini");
    QCOMPARE(platform::Q(corpus::ReadBookmark(bookmarks, corpus::BookmarkKind::Sources, 2, {}).T1),
             QStringLiteral("前の環境のしおり"));
    program->End();
    QVERIFY(Files(dir_) == before);

    // A note edited is written; ver.dax stays the other installation's.
    program = StartAnswering("Command2", question, told);
    QVERIFY(program);
    corpus::EditNote(program->corpus(), *program->journal(), corpus::TableId::Hok, 4, 36,
                     u"開いてから書いた覚え");
    program->End();
    const auto after = Files(dir_);
    QCOMPARE(after.at("ver.dax"), std::string("2.31\r\n"));
    for (const auto& [name, bytes] : after) {
      if (name != "法華経.dax") QVERIFY2(bytes == before.at(name), name.c_str());
    }
    corpus::Table hok(corpus::SchemaOf(corpus::TableId::Hok));
    corpus::ReadStore(dir_ / "法華経.dax", hok);
    QCOMPARE(platform::Q(hok.Get(4, 36)), QStringLiteral("開いてから書いた覚え"));
  }
};

SUIZO_APP_TEST(ExistingFolderTest);

}  // namespace suizo::app

#include "existing_folder_test.moc"
