#include "core/scripture/scripture_reader.h"

#include "core/text/utf16.h"

namespace suizo::scripture {

ReaderOutcome ScriptureReader::Check1Click() {
  Check1 = 1 - Check1;
  CompactFlip[static_cast<std::size_t>(1 - Check1)] = 0;
  TateInit();
  return Redraw();
}

ReaderOutcome ScriptureReader::FlipCompact() {
  if (settings_->Gcm1 != 1) return {.focusPanel = true};
  int& flip = CompactFlip[static_cast<std::size_t>(Check1)];
  flip = 1 - flip;
  TateInit();
  return Redraw();
}

std::optional<std::u16string> ScriptureReader::StartNoteEdit(int pane) const {
  if (pane != 4) return std::nullopt;
  return text::ReplaceAll(table_.Text(Lpos(), NoteColumn()), u"／", u"\r\n");
}

ReaderOutcome ScriptureReader::EndNoteEdit(int pane, std::u16string_view startText,
                                           std::u16string_view text) {
  const int row = NoteRow();
  if (pane != 4 || row == 0) return {};
  ReaderOutcome out = Redraw();
  out.message = StoreNote(NoteTable(), row, NoteColumn(), startText, text);
  return out;
}

void ScriptureReader::HorizontalPanes(ReaderView& v, const std::array<std::u16string, 4>& texts,
                                      reader::Highlighter& marks) {
  for (int pane = 1; pane <= 4; ++pane) {
    reader::PaneView& p = v.panes[static_cast<std::size_t>(pane)];
    p.body = marks.HiLight(texts[static_cast<std::size_t>(pane - 1)], pane - 1, Lpos());
    p.written = true;
  }
  v.scrollPanesToTop = true;
}

void ScriptureReader::VerticalPanes(ReaderView& v, const reader::VerticalSpec& shape,
                                    reader::Highlighter& marks) {
  const auto hiLight = [&](std::u16string_view t, int pane, int at) {
    return marks.HiLight(t, pane, at);
  };
  reader::VerticalPage page =
      reader::HyoujiTate(table_, {&engine_.pos, engine_.Limit, &BackFill, &BlockLines, 0}, shape, 0,
                         0, hiLight, meter());
  v.panes[1].body = std::move(page.main);
  v.panes[1].written = true;
  v.panes[1].scrollRight = 10000;
  reader::PaneView& second = v.panes[static_cast<std::size_t>(SecondPane())];
  second.body = std::move(page.translation);
  second.written = true;
  second.scrollRight = 100000;
  v.secondPane = SecondPane();
  v.height1 = shape.height1;
  v.height2 = shape.height2;
  v.mainEmpty = shape.mainEmpty;
}

void ScriptureReader::FinishView(ReaderView& v) const {
  v.BlockLines = BlockLines;
  SearchView(v);
  v.tabVisible.assign(4, true);
  v.Check1Visible = Muki1 == 1;
  v.Check1 = Check1 == 1;
  v.compactTop = CompactFlip[static_cast<std::size_t>(Check1)] == 1 ? SecondPane() : 1;
}

}  // namespace suizo::scripture
