#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

#include "core/corpus/dax_file.h"
#include "core/corpus/import.h"
#include "core/corpus/note_journal.h"
#include "core/corpus/orders.h"
#include "core/corpus/startup.h"
#include "test_support.h"

namespace suizo::corpus {
namespace {

using testing::TempDir;

constexpr std::u16string_view kVersion = u"0.1.0";

// A converted store of the sample; each test opens it as a start does.
class Notes : public ::testing::Test {
 protected:
  Notes() {
    std::filesystem::copy(std::filesystem::path(SUIZO_SOURCE_DIR) / "data" / "sample", dir.path(),
                          std::filesystem::copy_options::recursive);
    Corpus first(dir.path());
    Open(first);
  }
  StartupReport Open(Corpus& corpus) {
    NoOutsideDatabase outside;
    const StartupReport report = OpenStore(corpus, kVersion, ImportOptionsFor(dir.path()), outside);
    InitialOrders(corpus, selection);
    return report;
  }
  std::string Store(TableId id) {
    return testing::ReadBytes(dir / (std::string(SchemaOf(id).stem) + ".dax"));
  }
  TempDir dir;
  Selection selection;
};

TEST_F(Notes, TheExitWritesOnlyTheStoresWhoseNotesChanged) {
  const std::string dat = Store(TableId::Dat), hok = Store(TableId::Hok),
                    sdat = Store(TableId::SDat);
  {
    Corpus corpus(dir.path());
    Open(corpus);
    for (const int gk : {31, 22}) {  // a collection's head marks must not reach the store
      selection.Gk = gk;
      selection.MokRedo = 1;
      ApplySelection(corpus, selection);
    }
    CloseStore(corpus, selection, NoteJournal(dir.path()));
  }
  EXPECT_EQ(Store(TableId::Dat), dat);
  EXPECT_EQ(Store(TableId::Hok), hok);
  EXPECT_EQ(Store(TableId::SDat), sdat);
  {
    Corpus corpus(dir.path());
    Open(corpus);
    selection.Gk = 35;
    selection.MokRedo = 1;
    ApplySelection(corpus, selection);
    NoteJournal journal(dir.path());
    EditNote(corpus, journal, TableId::Hok, 7, 36, u"異読あり");
    CloseStore(corpus, selection, journal);
    EXPECT_FALSE(journal.Exists());
  }
  EXPECT_EQ(Store(TableId::Dat), dat);  // still clean
  EXPECT_NE(Store(TableId::Hok), hok);
  {
    Corpus corpus(dir.path());
    Open(corpus);
    NoteJournal journal(dir.path());
    EditNote(corpus, journal, TableId::Dat, 12, 48, u"読み直す");
    CloseStore(corpus, selection, journal);
  }
  Corpus after(dir.path());
  after.ReadData(0);
  EXPECT_EQ(after.Dat().Get(12, 48), u"読み直す");
  Corpus imported(dir.path());
  ReadDax(dir / "翠典本文.dax", imported.Dat());
  Table original(SchemaOf(TableId::Dat));
  testing::WriteBytes(dir / "before.dax", dat);
  ReadDax(dir / "before.dax", original);
  for (int row = 1; row <= original.rows(); ++row) {
    ASSERT_EQ(imported.Dat().Get(row, dat::kMain2), original.Get(row, dat::kMain2))
        << row;  // neutral marks
  }
}

TEST_F(Notes, ANoteEditedJustBeforeACrashIsThereAtTheNextStart) {
  const pid_t child = ::fork();
  ASSERT_GE(child, 0);
  if (child == 0) {
    Corpus corpus(dir.path());
    Open(corpus);
    NoteJournal journal(dir.path());
    EditNote(corpus, journal, TableId::Dat, 12, 48, u"落ちる前の覚え");
    EditNote(corpus, journal, TableId::SDat, 5, 8, u"翻刻\t注\\記");
    ::kill(::getpid(), SIGKILL);  // no exit, no write-back
  }
  int status = 0;
  ASSERT_EQ(::waitpid(child, &status, 0), child);
  ASSERT_TRUE(WIFSIGNALED(status));
  Corpus corpus(dir.path());
  const StartupReport report = Open(corpus);
  EXPECT_EQ(report.journalEntries, 2);
  EXPECT_EQ(corpus.Dat().Get(12, 48), u"落ちる前の覚え");
  EXPECT_EQ(corpus.SDat().Get(5, 8), u"翻刻\t注\\記");
  EXPECT_EQ(corpus.DatDirty + corpus.SDatDirty, 2);
  CloseStore(corpus, selection, NoteJournal(dir.path()));
  EXPECT_FALSE(NoteJournal(dir.path()).Exists());
  Corpus clean(dir.path());
  EXPECT_EQ(Open(clean).journalEntries, 0);
  EXPECT_EQ(clean.SDat().Get(5, 8), u"翻刻\t注\\記");
}

TEST_F(Notes, AnEditCutOffInTheMiddleOfItsLineIsIgnored) {
  NoteJournal journal(dir.path());
  {
    Corpus corpus(dir.path());
    Open(corpus);
    EditNote(corpus, journal, TableId::Hok, 3, 36, u"全き行");
  }
  std::string bytes = testing::ReadBytes(journal.path());
  testing::WriteBytes(journal.path(), bytes + "Hok\t4\t36\t半");
  {
    Corpus corpus(dir.path());
    EXPECT_EQ(Open(corpus).journalEntries, 1);
    EXPECT_EQ(corpus.Hok().Get(3, 36), u"全き行");
    EXPECT_EQ(corpus.Hok().Get(4, 36), u"");
    // The torn piece is gone from the file, so the next line stands alone.
    EditNote(corpus, journal, TableId::Hok, 5, 36, u"次の行");
  }
  Corpus corpus(dir.path());
  EXPECT_EQ(Open(corpus).journalEntries, 2);
  EXPECT_EQ(corpus.Hok().Get(5, 36), u"次の行");
}

// A journal from someone else's folder puts back notes and nothing else: a
// line naming a text field, another table, a path or a row no table has is
// passed over.
TEST_F(Notes, AJournalFromElsewhereChangesOnlyNotes) {
  const std::string before = Store(TableId::Dat);
  testing::WriteBytes(dir / "notes.journal",
                      "Dat\t10006\t8\t<script>x</script>\n"
                      "Mok\t10006\t14\tx\n"
                      "../../etc/passwd\t10006\t48\tx\n"
                      "Dat\t/etc/passwd\t48\tx\n"
                      "Dat\t10006\t48\t届いた覚え\n");
  Corpus corpus(dir.path());
  EXPECT_EQ(Open(corpus).journalEntries, 1);
  const int row = SysNo(corpus, u"10006");
  EXPECT_EQ(corpus.Dat().Get(row, 48), u"届いた覚え");
  EXPECT_EQ(corpus.Dat().Get(row, 8).find(u"<script>"), std::u16string_view::npos);
  EXPECT_EQ(Store(TableId::Dat), before);  // nothing is written before the exit
}

}  // namespace
}  // namespace suizo::corpus
