#include "core/reader/bookmark_dialog.h"

#include "core/corpus/orders.h"
#include "core/text/numbers.h"
#include "core/text/utf16.h"

namespace suizo::reader {
namespace {

using corpus::BookmarkKind;

constexpr std::u16string_view kDigits = u"①②③④⑤⑥⑦⑧⑨⑩";

// The captions a bookmark keeps of its line.
constexpr int kDatTitle = 6;     // 書名
constexpr int kSDatTitle = 6;    // 書名
constexpr int kHokReading = 15;  // 開結訓読, the text the sutra reader shows first

std::u16string Question(int i, std::u16string_view tail) {
  std::u16string q = u"≪しおり";
  if (i >= 1 && i <= corpus::kBookmarks) q += kDigits[static_cast<std::size_t>(i - 1)];
  q += u"≫";
  q += tail;
  return q;
}

int Number(std::u16string_view text) {
  return text::ValInt(text);
}

}  // namespace

std::u16string ReadQuestion(int i) {
  return Question(i, u"を読込み移動してもよろしいですか？");
}
std::u16string WriteQuestion(int i) {
  return Question(i, u"に保存してもよろしいですか？");
}

BookmarkDialog::BookmarkDialog(BookmarkKind owner, corpus::ProfileFile& file,
                               corpus::Corpus& corpus, corpus::Selection& selection)
    : owner_(owner), file_(file), corpus_(corpus), selection_(selection) {
  for (int i = 1; i <= corpus::kBookmarks; ++i) {
    const std::u16string section = corpus::BookmarkSection(owner_, i);
    BookmarkRow& r = rows_[static_cast<std::size_t>(i - 1)];
    r.Text1 = file_.Read(section, u"T1", corpus::kUnsetCaption);
    r.Text2 = file_.Read(section, u"T2", corpus::kUnsetCaption);
  }
}

void BookmarkDialog::Bm_Click(int i) {
  if (i < 1 || i > corpus::kBookmarks) return;
  chosen_ = i;
  for (int k = 1; k <= corpus::kBookmarks; ++k) {
    BookmarkRow& r = rows_[static_cast<std::size_t>(k - 1)];
    r.Text1BackColor = k == i ? kChosenText1 : kOtherText1;
    r.Text2BackColor = k == i ? kChosenText2 : kOtherText2;
  }
}

// A key that is not in the file stands for the first-run place.
corpus::Bookmark BookmarkDialog::Unset() const {
  return corpus::FirstRunBookmark(owner_, corpus_, selection_);
}

std::optional<BookmarkMove> BookmarkDialog::Command1(const Confirm& ask) {
  if (chosen_ == 0 || !ask(ReadQuestion(chosen_))) return std::nullopt;
  const corpus::Bookmark b = corpus::ReadBookmark(file_, owner_, chosen_, Unset());
  BookmarkMove move;
  if (owner_ == BookmarkKind::Writings) {
    // The numbers mean a line only in the collection they were kept in.
    selection_.Gk = Number(b.Gk);
    selection_.Kn = Number(b.Kn);
    corpus::ApplyCSelText(b.CSel, selection_);
    selection_.MokRedo = 1;
    corpus::ApplySelection(corpus_, selection_);
    move.selectionChanged = true;
  }
  move.place.Lpos = Number(b.Lpos);
  if (owner_ == BookmarkKind::Sutra) {
    move.place.chapter = b.Mpos;
  } else {
    move.place.Mpos = Number(b.Mpos);
  }
  return move;
}

corpus::Bookmark BookmarkDialog::Written(const Position& place) const {
  corpus::Bookmark b;
  b.Lpos = text::IntText(place.Lpos);
  switch (owner_) {
    case BookmarkKind::Writings: {
      b.Gk = text::IntText(selection_.Gk);
      b.Kn = text::IntText(selection_.Kn);
      b.CSel = corpus::CSelText(selection_);
      b.Mpos = text::IntText(place.Mpos);
      if (place.Lpos >= 1 && place.Lpos <= corpus_.DasMaxY) {
        const int row = corpus_.DatOrder[static_cast<std::size_t>(place.Lpos)];
        b.T1 = corpus_.Dat().Get(row, kDatTitle);
        b.T2 = corpus_.Dat().Get(row, corpus::dat::kMain);
      }
      break;
    }
    case BookmarkKind::Sources: {
      b.Mpos = text::IntText(place.Mpos);
      if (place.Lpos >= 1 && place.Lpos <= corpus_.SDasMaxY) {
        const int row = corpus_.SDatOrder[static_cast<std::size_t>(place.Lpos)];
        b.T1 = corpus_.SDat().Get(row, kSDatTitle);
        b.T2 = corpus_.SDat().Get(row, corpus::sdat::kReading);
      }
      break;
    }
    case BookmarkKind::Sutra: {
      b.Mpos = place.chapter;
      const corpus::Table& hok = corpus_.table(corpus::TableId::Hok);
      if (place.Lpos >= 1 && place.Lpos <= hok.rows()) {
        b.T1 = u" " + std::u16string(hok.Get(place.Lpos, corpus::hok::kSutraName));
        b.T2 = hok.Get(place.Lpos, kHokReading);
      }
      break;
    }
  }
  return b;
}

bool BookmarkDialog::Command3(const Confirm& ask, const Position& place) {
  if (chosen_ == 0 || !ask(WriteQuestion(chosen_))) return false;
  const corpus::Bookmark b = Written(place);
  corpus::WriteBookmark(file_, owner_, chosen_, b);
  BookmarkRow& r = rows_[static_cast<std::size_t>(chosen_ - 1)];
  r.Text1 = b.T1;
  r.Text2 = b.T2;
  return true;
}

}  // namespace suizo::reader
