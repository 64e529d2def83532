// The sutra reader: the writings reader's plan on the table of the Lotus
// Sutra. A position is a row and the chapter it lies in; four panes show
// the reading, the translation, the Chinese text and the reader's notes.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

#include "core/scripture/scripture_reader.h"

namespace suizo::scripture {

// The first and the last chapter of the table: the walks stop there.
inline constexpr std::u16string_view kFirstChapter = search::kFirstChapter;
inline constexpr std::u16string_view kLastChapter = u"仏説観普賢菩薩行法経";

class SutraReader : public ScriptureReader {
 public:
  SutraReader(corpus::Corpus& corpus, corpus::Selection& selection, corpus::Settings& settings,
              corpus::NoteJournal* journal = nullptr, int muki = 0);

  // `Check1` ("真訓") pairs the reading with the Chinese text instead of
  // the translation on the vertical page.

  // On a row, in its chapter.
  void GoToRow(int row);
  const std::u16string& Chapter() const { return engine_.pos.chapter; }

  ReaderView Hyouji() override;
  ReaderOutcome KeyDownAll(int keyCode, int shift) override;
  // "切替": the compact layout's pane flip.
  ReaderOutcome Command13() { return FlipCompact(); }
  // "注経": the commentary has no view; the focus goes back to the text.
  ReaderOutcome Command7() { return {.focusPanel = true}; }

 protected:
  int SecondPane() const override { return Check1 == 1 ? 3 : 2; }
  corpus::TableId NoteTable() const override { return corpus::TableId::Hok; }
  int NoteRow() const override;
  int NoteColumn() const override { return 36; }  // 文字列1

 private:
  std::u16string_view ChapterOf(int row) const;
};

}  // namespace suizo::scripture
