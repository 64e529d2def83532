#include "core/scripture/sources_reader.h"

#include "core/corpus/orders.h"
#include "core/reader/highlight.h"
#include "core/reader/vertical.h"
#include "core/text/utf16.h"

namespace suizo::scripture {

using reader::ReaderOutcome;
using reader::ReaderView;
using text::ReplaceAll;

namespace {
constexpr int kReading = 9;    // 読下本文
constexpr int kOriginal = 10;  // 原型活用
constexpr int kShaped = 11;    // 漢文成形
constexpr int kTitle = 6;      // 書名
constexpr int kNumber = 4;     // 史料番号
// `SMok`: the document's author, dating, keeper, editions.
constexpr int kDocDating = 6, kDocAuthor = 9, kDocKeeper = 10, kDocEditions = 11;
constexpr int kCompactChars = 26;
}  // namespace

SourcesReader::SourcesReader(corpus::Corpus& corpus, corpus::Selection& selection,
                             corpus::Settings& settings, corpus::NoteJournal* journal, int muki)
    : ScriptureReader(corpus, selection, settings, journal,
                      (corpus.ReadData(6), search::TextTable::Sources(corpus, selection)), muki) {
  const corpus::ReaderPlace place = corpus::FindSourceReaderPlace(corpus, u"");
  engine_.pos = {place.Mpos, place.Lpos, {}};
}

void SourcesReader::GoToLine(int lpos) {
  engine_.pos.Lpos = lpos;
  engine_.pos.Mpos = corpus::SLineToWork(*corpus_, lpos);
}

void SourcesReader::GoToWork(int mpos) {
  engine_.pos.Mpos = mpos;
  engine_.pos.Lpos = search::LineOrder::Sources(*corpus_).FirstLineOf(mpos);
}

ReaderView SourcesReader::Hyouji() {
  ReaderView v;
  v.Muki1 = Muki1;
  const int second = SecondPane();
  WriteFrames(v, 4, {1, second}, {5 - second, 4});

  const int lpos = Lpos();
  const auto col = [&](int field) { return table_.Text(lpos, field); };
  v.caption = u"史料 - " + std::u16string(col(kTitle));
  v.pageBoxes = {{1, std::u16string(col(corpus::sdat::kSysNo))},
                 {10, std::u16string(col(kNumber))}};
  v.Text4 = col(kTitle);
  if (Mpos() >= 1 && Mpos() <= corpus_->SMosMaxY) {
    const corpus::Table& smok = corpus_->SMok();
    const int doc = corpus_->SMokOrder[static_cast<std::size_t>(Mpos())];
    v.Text1 = smok.Get(doc, kDocKeeper);
    v.Text6 = smok.Get(doc, kDocAuthor);
    v.Text3 = smok.Get(doc, kDocDating);
    v.Text2 = ReplaceAll(smok.Get(doc, kDocEditions), u"／", u"\u3000");
  }

  reader::Highlighter highlighter(engine_, settings_->Itaiji);
  if (Muki1 == 0) {
    HorizontalPanes(
        v,
        {reader::PaneText(col(kOriginal), false, true), reader::PaneText(col(kShaped), true, true),
         reader::PaneText(col(kReading), false, true),
         reader::PaneText(col(NoteColumn()), false, true)},
        highlighter);
  } else {
    // A hidden `Command13` holds no one-pane form.
    const int tateOne = Command13Shown() ? TateOne : 0;
    reader::VerticalSpec shape;
    shape.mainColumn = kOriginal;
    shape.secondColumn = Check1 == 1 ? kShaped : kReading;
    shape.mainPane = 0;
    shape.secondPane = Check1 == 1 ? 1 : 2;
    if (settings_->Gcm1 != 0) {
      shape.chars1 = shape.chars2 = kCompactChars;
    } else if (Check1 == 0 && tateOne == 1) {
      shape.chars1 = shape.chars2 = settings_->SmL1 + settings_->SmL2 + 2;
    } else {
      shape.chars1 = settings_->SmL1;
      shape.chars2 = settings_->SmL2;
    }
    shape.height1 = shape.chars1 * 16;
    shape.height2 = shape.chars2 * 16;
    shape.mainEmpty = tateOne == 1;
    shape.writings = false;
    VerticalPanes(v, shape, highlighter);
  }
  FinishView(v);
  v.Command13Caption = TateOne == 1 ? u"△" : u"▽";
  return v;
}

ReaderOutcome SourcesReader::KeyDownAll(int keyCode, int shift) {
  if (Mpos() == 0) return {};
  if (auto common = CommonKey(keyCode, shift)) return *common;
  switch (keyCode) {
    case reader::key::kA:
      return Command16();
    case reader::key::kV:
      return Command13();
    case reader::key::kS:
      return Muki1 == 1 ? Check1Click() : ReaderOutcome{};
    default:
      break;
  }
  if (keyCode != reader::key::kUp && keyCode != reader::key::kDown) return {};
  if (shift != reader::key::kCtrl) return LineKey(keyCode, shift);
  const search::LineOrder order = search::LineOrder::Sources(*corpus_);
  if (keyCode == reader::key::kUp) {
    if (Lpos() == order.FirstLineOf(Mpos()) && Mpos() > 1) --Mpos();
    Lpos() = order.FirstLineOf(Mpos());
    return Redraw();
  }
  if (Mpos() >= corpus_->SMosMaxY) return {};
  ++Mpos();
  Lpos() = order.FirstLineOf(Mpos());
  return Redraw();
}

ReaderOutcome SourcesReader::Command13() {
  if (!Command13Shown()) return {};
  TateOne = 1 - TateOne;
  TateInit();
  return Redraw();
}

int SourcesReader::NoteRow() const {
  return Lpos() >= 1 && Lpos() <= corpus_->SDasMaxY
             ? corpus_->SDatOrder[static_cast<std::size_t>(Lpos())]
             : 0;
}

void SourcesReader::Deactivate() {
  OldMsys = Mpos() >= 1 && Mpos() <= corpus_->SMosMaxY
                ? std::u16string(corpus_->SMok().Get(
                      corpus_->SMokOrder[static_cast<std::size_t>(Mpos())], corpus::smok::kSysNo))
                : u"";
  OldLsys = std::u16string(table_.Text(Lpos(), corpus::sdat::kSysNo));
}

void SourcesReader::FindPlaceAgain() {
  const corpus::ReaderPlace place = corpus::FindSourceReaderPlace(*corpus_, OldLsys);
  engine_.pos.Mpos = place.Mpos;
  engine_.pos.Lpos = place.Lpos;
}

}  // namespace suizo::scripture
