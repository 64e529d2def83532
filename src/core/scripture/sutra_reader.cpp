#include "core/scripture/sutra_reader.h"

#include "core/reader/highlight.h"
#include "core/reader/vertical.h"
#include "core/text/numbers.h"
#include "core/text/utf16.h"

namespace suizo::scripture {

using reader::key::kCtrl;
using text::ReplaceAll;

namespace {
constexpr int kReading = 15;      // 開結訓読
constexpr int kTranslation = 17;  // 現代語訳
constexpr int kChinese = 13;      // 開結真読
constexpr int kCompactChars = 26;
constexpr int kMaxRows = 20;
}  // namespace

SutraReader::SutraReader(corpus::Corpus& corpus, corpus::Selection& selection,
                         corpus::Settings& settings, corpus::NoteJournal* journal, int muki)
    : ScriptureReader(corpus, selection, settings, journal,
                      (corpus.ReadData(2), search::TextTable::Sutra(corpus, selection)), muki) {
  GoToRow(1);
}

std::u16string_view SutraReader::ChapterOf(int row) const {
  const corpus::Table& hok = corpus_->table(corpus::TableId::Hok);
  return row >= 1 && row <= hok.rows() ? hok.Get(row, corpus::hok::kChapter)
                                       : std::u16string_view();
}

void SutraReader::GoToRow(int row) {
  engine_.pos.Lpos = row;
  engine_.pos.Mpos = 0;
  engine_.pos.chapter = std::u16string(ChapterOf(row));
}

reader::ReaderView SutraReader::Hyouji() {
  ReaderView v;
  v.Muki1 = Muki1;
  const int second = SecondPane();
  WriteFrames(v, 4, {1, second}, {5 - second, 4});

  const int row = Lpos();
  const auto col = [&](int field) { return table_.Text(row, field); };
  v.caption = u"経文「" + std::u16string(col(corpus::hok::kSutraName)) + u" " +
              std::u16string(Chapter()) + u"」";
  v.pageBoxes = {{1, std::u16string(col(corpus::hok::kNumber))},
                 {10, std::u16string(col(10))},
                 {11, text::Format(col(corpus::hok::kKaiketsuPage), text::kShortPageFormat)},
                 {12, text::Format(col(12), text::kShortPageFormat)}};
  v.Text4 =
      std::u16string(col(corpus::hok::kSutraName)) + std::u16string(col(corpus::hok::kFascicle));
  v.Text5 = col(corpus::hok::kChapter);

  reader::Highlighter highlighter(engine_, settings_->Itaiji);
  if (Muki1 == 0) {
    HorizontalPanes(v,
                    {reader::PaneText(col(kReading), false, false),
                     reader::PaneText(col(kTranslation), true, true),
                     reader::PaneText(col(kChinese), false, false),
                     ReplaceAll(col(NoteColumn()), u"／", u"<BR>")},
                    highlighter);
  } else {
    reader::VerticalSpec shape;
    shape.mainColumn = kReading;
    shape.secondColumn = Check1 == 1 ? kChinese : kTranslation;
    shape.mainPane = 0;
    shape.secondPane = Check1 == 1 ? 2 : 1;
    const bool compact = settings_->Gcm1 != 0;
    shape.chars1 = compact ? kCompactChars : Check1 == 1 ? settings_->HmL2 : settings_->HmL1;
    shape.chars2 = compact ? kCompactChars : Check1 == 1 ? settings_->HmL1 : settings_->HmL2;
    shape.height1 = shape.chars1 * 16;
    shape.height2 = shape.chars2 * 16;
    shape.maxLines = kMaxRows;
    shape.writings = false;
    VerticalPanes(v, shape, highlighter);
  }
  FinishView(v);
  return v;
}

reader::ReaderOutcome SutraReader::KeyDownAll(int keyCode, int shift) {
  if (auto common = CommonKey(keyCode, shift)) return *common;
  switch (keyCode) {
    case reader::key::kA:
      return Command13();
    case reader::key::kS:
      return Muki1 == 1 ? Check1Click() : ReaderOutcome{};
    default:
      break;
  }
  if (keyCode != reader::key::kUp && keyCode != reader::key::kDown) return {};
  if (shift != kCtrl) return LineKey(keyCode, shift);
  search::Position& p = engine_.pos;
  if (keyCode == reader::key::kUp) {
    // To the chapter's first row, or the previous chapter's from a first row.
    if (p.Lpos <= 1) return Redraw();
    do {
      --p.Lpos;
      p.chapter = std::u16string(ChapterOf(p.Lpos));
    } while (p.Lpos > 1 && ChapterOf(p.Lpos - 1) == p.chapter);
    return Redraw();
  }
  // The last chapter has no next one: the walk would run off the table.
  if (p.chapter == kLastChapter) return {};
  const int rows = corpus_->table(corpus::TableId::Hok).rows();
  do {
    ++p.Lpos;
    p.chapter = std::u16string(ChapterOf(p.Lpos));
  } while (p.Lpos < rows && ChapterOf(p.Lpos - 1) == p.chapter);
  return Redraw();
}

int SutraReader::NoteRow() const {
  return Lpos() >= 1 && Lpos() <= corpus_->table(corpus::TableId::Hok).rows() ? Lpos() : 0;
}

}  // namespace suizo::scripture
