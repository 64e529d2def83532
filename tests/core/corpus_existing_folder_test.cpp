// A data folder brought from another installation: its stores with that
// installation's version, often without the exports, sometimes written by an
// older version with fewer fields.
#include <gtest/gtest.h>

#include <map>
#include <set>

#include "core/corpus/bookmarks.h"
#include "core/corpus/conversion.h"
#include "core/corpus/dax_file.h"
#include "core/corpus/folder_check.h"
#include "core/corpus/note_journal.h"
#include "core/corpus/profile.h"
#include "core/corpus/startup.h"
#include "core/text/numbers.h"
#include "core/text/utf16.h"
#include "test_support.h"

namespace suizo::corpus {
namespace {

namespace fs = std::filesystem;
using testing::ReadBytes;
using testing::TempDir;
using testing::WriteBytes;

constexpr std::u16string_view kVersion = u"0.1.0";
constexpr int kNoteRow = 12;
constexpr std::u16string_view kNote = u"旧環境で書いた覚え";

fs::path StoreOf(const fs::path& dir, TableId id) {
  return dir / fs::u8path(std::string(SchemaOf(id).stem) + ".dax");
}

// The sample's store as another installation leaves it: its version, a note
// of the user's, a bookmark; with the exports only when `exports`.
void MakeOtherInstallation(const fs::path& dir, bool exports = false) {
  fs::copy(testing::SampleStore(), dir, fs::copy_options::recursive);
  for (const TableSchema& schema : Schemas()) {
    if (!exports) fs::remove(dir / fs::u8path(std::string(schema.stem) + ".dat"));
  }
  WriteBytes(dir / "ver.dax", "2.31\r\n");
  Table dat(SchemaOf(TableId::Dat));
  ReadDax(StoreOf(dir, TableId::Dat), dat);
  dat.Set(kNoteRow, dat::kNote2, kNote);
  WriteDax(StoreOf(dir, TableId::Dat), dat);
  ProfileFile bookmarks(dir / "suiten.ini");
  Bookmark mark;
  mark.Mpos = u"序品第一";
  mark.Lpos = u"5";
  mark.T1 = u"序品";
  mark.T2 = u"5";
  WriteBookmark(bookmarks, BookmarkKind::Sutra, 3, mark);
}

// Rewrites a store without the fields in `drop`, as a version with a
// shorter field list would have written it.
void RewriteWithout(const fs::path& dir, TableId id, const std::set<int>& drop) {
  Table table(SchemaOf(id));
  ReadDax(StoreOf(dir, id), table);
  std::u16string text = text::IntText(table.cols() - static_cast<int>(drop.size())) + u"\r\n";
  for (int row = SchemaOf(id).firstRow; row <= table.rows(); ++row) {
    for (int field = 1; field <= table.cols(); ++field) {
      if (drop.count(field) == 0) text += std::u16string(table.Get(row, field)) + u"\r\n";
    }
  }
  WriteBytes(StoreOf(dir, id), testing::Utf16le(text));
}

std::map<std::string, std::string> Files(const fs::path& dir) {
  std::map<std::string, std::string> files;
  for (const auto& entry : fs::directory_iterator(dir)) {
    files[entry.path().filename().string()] = ReadBytes(entry.path());
  }
  return files;
}

StartupReport Open(Corpus& corpus, const AskAsItIs& ask) {
  NoOutsideDatabase outside;
  return OpenStore(corpus, kVersion, ImportOptionsFor(corpus.dataPath()), outside, ask);
}

TEST(ExistingFolder, AStoreWithoutExportsOpensAsItIsOnlyWhenTheUserAgrees) {
  TempDir dir;
  MakeOtherInstallation(dir.path());
  WriteBytes(dir / kNotesPending, "");  // a conversion of ours was cut before its commit
  const auto before = Files(dir.path());
  {
    Corpus corpus(dir.path());
    EXPECT_THROW(Open(corpus, [](const StartupDecision&) { return false; }), StartDeclined);
    EXPECT_THROW(Open(corpus, {}), StartDeclined);
  }
  EXPECT_EQ(Files(dir.path()), before);

  std::u16string question;
  Corpus corpus(dir.path());
  const StartupReport report = Open(corpus, [&](const StartupDecision& found) {
    question = AsItIsQuestion(found);
    return true;
  });
  EXPECT_TRUE(report.openedAsItIs);
  EXPECT_NE(question.find(u"2.31"), std::u16string::npos);
  EXPECT_EQ(corpus.Dat().Get(kNoteRow, dat::kNote2), kNote);
  EXPECT_EQ(corpus.DatDirty + corpus.HokDirty + corpus.SDatDirty, 0);
  Selection selection;
  NoteJournal journal(dir.path());
  CloseStore(corpus, selection, journal);
  auto untouched = before;
  untouched.erase(kNotesPending);  // the store holds its notes: the mark says nothing more
  EXPECT_EQ(Files(dir.path()), untouched) << "nothing is written until a note is edited";

  // An edit writes that store alone; ver.dax stays the other installation's.
  Corpus again(dir.path());
  Open(again, [](const StartupDecision&) { return true; });
  EditNote(again, journal, TableId::Hok, 7, hok::kNote, u"後から足した覚え");
  CloseStore(again, selection, journal);
  for (const auto& [name, bytes] : Files(dir.path())) {
    if (name == "法華経.dax") continue;
    EXPECT_EQ(bytes, untouched[name]) << name;
  }
  Corpus last(dir.path());
  Open(last, [](const StartupDecision&) { return true; });
  EXPECT_EQ(last.Hok().Get(7, hok::kNote), u"後から足した覚え");
}

TEST(ExistingFolder, WithExportsTheStoreIsConvertedAndItsNotesKept) {
  TempDir dir;
  MakeOtherInstallation(dir.path(), true);
  Corpus corpus(dir.path());
  const StartupReport report = Open(corpus, [](const StartupDecision&) -> bool {
    ADD_FAILURE() << "asked although the exports are there";
    return false;
  });
  EXPECT_EQ(report.decision.path, StartupPath::Reconvert);
  EXPECT_TRUE(report.notesRestored);
  EXPECT_EQ(corpus.Dat().Get(kNoteRow, dat::kNote2), kNote);
  EXPECT_EQ(ReadStoredVersion(dir.path()), StoreVersion(kVersion));
}

// A store is read by position: fields may be missing only at its end, and
// only those the program can do without.
TEST(ExistingFolder, AShorterStoreOpensWhereItsMissingFieldsMayBeEmpty) {
  struct Case {
    const char* what;
    TableId table;
    std::set<int> drop;
    const char* refusal;  // nullptr: it opens
  };
  const Case cases[] = {
      {"the sutra without its note column", TableId::Hok, {36}, nullptr},
      {"the writings without notes and remarks", TableId::Dat, {48, 49, 50, 51, 52, 53}, nullptr},
      {"the sources without their note column",
       TableId::SDat,
       {8},
       "史料本文.dax: line 1, field 14 (印): the store has 13 fields"},
      {"the writings without an order",
       TableId::Dat,
       {47, 48, 49, 50, 51, 52, 53},
       "fields from 47 on are missing"},
      {"the dictionary without its class labels", TableId::Dic, {12}, "辞書事典.dax"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    TempDir dir;
    MakeOtherInstallation(dir.path());
    RewriteWithout(dir.path(), c.table, c.drop);
    const FolderFindings findings = CheckFolder(dir.path(), kVersion);
    Corpus corpus(dir.path());
    if (c.refusal != nullptr) {
      EXPECT_EQ(findings.verdict, FolderVerdict::Refused);
      EXPECT_NE(findings.reason.find(c.refusal), std::string::npos) << findings.reason;
      try {
        Open(corpus, [](const StartupDecision&) { return true; });
        ADD_FAILURE() << "opened";
      } catch (const CorpusError& e) {
        EXPECT_NE(std::string(e.what()).find(c.refusal), std::string::npos) << e.what();
      }
      continue;
    }
    EXPECT_EQ(findings.verdict, FolderVerdict::AsksFirst) << findings.reason;
    Open(corpus, [](const StartupDecision&) { return true; });
    EXPECT_EQ(corpus.table(c.table).Get(1, *c.drop.rbegin()), u"");
  }
  // A note typed where the short store had no field widens the store to it.
  TempDir dir;
  MakeOtherInstallation(dir.path());
  RewriteWithout(dir.path(), TableId::Hok, {36});
  Corpus corpus(dir.path());
  Open(corpus, [](const StartupDecision&) { return true; });
  NoteJournal journal(dir.path());
  Selection selection;
  EditNote(corpus, journal, TableId::Hok, 9, hok::kNote, u"新しい列の覚え");
  CloseStore(corpus, selection, journal);
  Table hok(SchemaOf(TableId::Hok));
  ReadStore(StoreOf(dir.path(), TableId::Hok), hok);
  EXPECT_EQ(hok.cols(), 36);
  EXPECT_EQ(hok.Get(9, hok::kNote), u"新しい列の覚え");
  EXPECT_EQ(hok.Get(9, hok::kNumber), corpus.Hok().Get(9, hok::kNumber));
}

TEST(ExistingFolder, TheCheckTellsWhatAStartWillDo) {
  struct Case {
    const char* what;
    void (*make)(const fs::path&);
    FolderVerdict verdict;
  };
  const Case cases[] = {
      {"an empty folder", [](const fs::path&) {}, FolderVerdict::Refused},
      {"the exports alone",
       [](const fs::path& d) {
         fs::copy(fs::path(SUIZO_SOURCE_DIR) / "data" / "sample", d, fs::copy_options::recursive);
       },
       FolderVerdict::Converts},
      {"our own store",
       [](const fs::path& d) {
         fs::copy(testing::SampleStore(), d, fs::copy_options::recursive);
         WriteVersion(d, StoreVersion(kVersion));
       },
       FolderVerdict::OpensDirectly},
      {"another installation's store", [](const fs::path& d) { MakeOtherInstallation(d); },
       FolderVerdict::AsksFirst},
      {"a store without ver.dax",
       [](const fs::path& d) {
         MakeOtherInstallation(d);
         fs::remove(d / "ver.dax");
       },
       FolderVerdict::AsksFirst},
      {"another installation's store and exports",
       [](const fs::path& d) { MakeOtherInstallation(d, true); }, FolderVerdict::Converts},
      {"a store missing a table",
       [](const fs::path& d) {
         MakeOtherInstallation(d);
         fs::remove(StoreOf(d, TableId::SMok));
       },
       FolderVerdict::Refused},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    TempDir dir;
    c.make(dir.path());
    const auto before = Files(dir.path());
    EXPECT_EQ(CheckFolder(dir.path(), kVersion).verdict, c.verdict);
    EXPECT_EQ(Files(dir.path()), before) << "the check wrote";
  }

  // What it finds besides: notes, bookmarks, leftovers, the corpus's font.
  TempDir dir;
  MakeOtherInstallation(dir.path());
  WriteBytes(dir / "翠典本文.dax.tmp", "cut");
  WriteBytes(dir / "EUDC.TTE", std::string("\0\1\0\0", 4) + "glyphs");
  const FolderFindings found = CheckFolder(dir.path(), kVersion);
  EXPECT_EQ(found.decision.storedVersion, u"2.31");
  Corpus corpus(dir.path());
  corpus.ReadData(0);
  int notes = 0;
  for (int row = 1; row <= corpus.Dat().rows(); ++row)
    notes += corpus.Dat().Get(row, dat::kNote2).empty() ? 0 : 1;
  ASSERT_FALSE(found.notes.empty());
  EXPECT_EQ(found.notes[0].table, TableId::Dat);
  EXPECT_EQ(found.notes[0].count, notes);
  EXPECT_EQ(found.bookmarks, 1);
  EXPECT_EQ(found.leftovers, std::vector<std::string>{"翠典本文.dax.tmp"});
  ASSERT_TRUE(found.font.has_value());
  EXPECT_EQ(found.font->filename(), "EUDC.TTE");
}

}  // namespace
}  // namespace suizo::corpus
