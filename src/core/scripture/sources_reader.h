// The sources reader: the writings reader's plan on the historical sources,
// four panes over `SDat` in the order of `SMok`'s documents.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

#include "core/scripture/scripture_reader.h"

namespace suizo::scripture {

class SourcesReader : public ScriptureReader {
 public:
  SourcesReader(corpus::Corpus& corpus, corpus::Selection& selection, corpus::Settings& settings,
                corpus::NoteJournal* journal = nullptr, int muki = 0);

  std::u16string OldLsys, OldMsys;
  // `Check1` ("漢文") pairs the main text with the shaped Chinese text
  // instead of the reading on the vertical page.
  // 1: the vertical page shows the reading alone, over the whole height.
  int TateOne = 0;

  void GoToLine(int lpos);
  void GoToWork(int mpos);

  reader::ReaderView Hyouji() override;
  reader::ReaderOutcome KeyDownAll(int keyCode, int shift) override;
  reader::ReaderOutcome Command13();
  // "切替": the compact layout's pane flip.
  reader::ReaderOutcome Command16() { return FlipCompact(); }
  // "--": no action.
  reader::ReaderOutcome Command6() { return {}; }
  // `Command13` is shown in the vertical layout only, outside the compact
  // one and with `Check1` off; hidden, it does not hold `TateOne`.
  bool Command13Shown() const { return Muki1 == 1 && settings_->Gcm1 != 1 && Check1 == 0; }
  void Deactivate();
  void FindPlaceAgain();

 protected:
  int SecondPane() const override { return Check1 == 1 ? 2 : 3; }
  corpus::TableId NoteTable() const override { return corpus::TableId::SDat; }
  int NoteRow() const override;
  int NoteColumn() const override { return 8; }  // 備考
};

}  // namespace suizo::scripture
