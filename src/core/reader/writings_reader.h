// The writings reader as a model: everything the window decides. The window
// hands it the user's actions and shows what `Hyouji` returns; it only has
// to put texts into controls and bodies into panes.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "core/corpus/corpus.h"
#include "core/corpus/note_journal.h"
#include "core/corpus/selection.h"
#include "core/corpus/settings.h"
#include "core/reader/column_meter.h"
#include "core/reader/highlight.h"
#include "core/reader/links.h"
#include "core/reader/navigation.h"
#include "core/reader/page_boxes.h"
#include "core/reader/reader_base.h"
#include "core/reader/texts.h"
#include "core/search/driver.h"

namespace suizo::reader {

// What the writings window shows after a render.
using WritingsView = ReaderView;

class WritingsReader : public ReaderBase {
 public:
  // `journal` records note edits; without it an edit only marks `Dat` dirty.
  WritingsReader(corpus::Corpus& corpus, corpus::Selection& selection, corpus::Settings& settings,
                 corpus::NoteJournal* journal = nullptr, int muki = 0);

  // --- state, under the window's names ---
  std::u16string OldLsys, OldMsys;
  int SinSya = 0, TyoKat = 0;
  int TateOne = 0;
  int GcmShow = 1;
  int CompactSwap = 0;
  bool Kakko = false;  // pressed: keep the first text form on a hit line

  // Puts the reader on a line: its work is found from it.
  void GoToLine(int lpos);
  // On a work's first line.
  void GoToWork(int mpos);

  // --- rendering ---
  ReaderView Hyouji() override;

  // --- actions ---
  ReaderOutcome KeyDownAll(int keyCode, int shift) override;
  ReaderOutcome SinSyaButton();
  ReaderOutcome TyoKatButton();
  ReaderOutcome Command10();
  ReaderOutcome Command13();
  ReaderOutcome Command16();
  ReaderOutcome KakkoClick();
  ReaderOutcome LinkClick(std::u16string_view href);
  // Ctrl+double click on panes 5, 6 and 7: the note to edit, with line ends
  // for "／"; nothing for the other panes.
  std::optional<std::u16string> StartNoteEdit(int pane) const;
  // The edit box lost the focus: a changed text is stored in the line.
  ReaderOutcome EndNoteEdit(int pane, std::u16string_view startText, std::u16string_view text);
  // The window loses activation: what outlives a change of orders.
  void Deactivate();
  // After a change of collection or order: the position found again.
  void FindPlaceAgain();

  // The caption of `TyoKatButton`: the other form.
  std::u16string TyoKatCaption() const { return TyoKat == 0 ? u"活" : u"直"; }
  // Which `Web(3)` and `Web(4)` tabs are shown for the side and form.
  std::vector<bool> TabVisibility() const;
};

// Double click in a pane selects the run of kanji around the click: the
// range [start, end) of `text` grown to it. `vertical` only changes how the
// window reports the range, so it is not needed here.
std::pair<std::size_t, std::size_t> KanjiRunAround(std::u16string_view text, std::size_t start,
                                                   std::size_t end);

}  // namespace suizo::reader
