// The bookmark dialog of the three text readers: ten places of the reader
// that opened it, each with its title and first text, to read or to write.
// The owner's place comes in and the new place goes out; the owner sets it
// and redraws.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "core/corpus/bookmarks.h"
#include "core/corpus/corpus.h"
#include "core/corpus/profile.h"
#include "core/corpus/selection.h"
#include "core/reader/texts.h"

namespace suizo::reader {

// "≪しおり①≫を読込み移動してもよろしいですか？" and the like, for i from 1 to 10.
std::u16string ReadQuestion(int i);
std::u16string WriteQuestion(int i);

// Back colours of a row's two boxes: the chosen row and the others.
inline constexpr std::uint32_t kChosenText1 = 10079487;
inline constexpr std::uint32_t kChosenText2 = 14349299;
inline constexpr std::uint32_t kOtherText1 = 0xD0D0D0;
inline constexpr std::uint32_t kOtherText2 = 0xE0E0E0;

struct BookmarkRow {
  std::u16string Text1;  // `T1`
  std::u16string Text2;  // `T2`
  std::uint32_t Text1BackColor = kOtherText1;
  std::uint32_t Text2BackColor = kOtherText2;
};

// Where a read bookmark leads the owner.
struct BookmarkMove {
  Position place;  // the owner's `Mpos` and `Lpos` (the sutra's chapter in `chapter`)
  // The writings: the orders were rebuilt for the bookmark's collection.
  // Every open window follows the change first, then the owner takes `place`.
  bool selectionChanged = false;
};

// The yes/no question `Form10` asks; true for yes.
using Confirm = std::function<bool(std::u16string_view question)>;

class BookmarkDialog {
 public:
  // Loads the ten rows of the owner's sections.
  BookmarkDialog(corpus::BookmarkKind owner, corpus::ProfileFile& file, corpus::Corpus& corpus,
                 corpus::Selection& selection);

  std::u16string Parent{u"@しおり"};
  int MovX = 0;  // set by the owner's `BMark` button: the dialog opens beside it
  int MovY = 0;

  corpus::BookmarkKind owner() const { return owner_; }
  // Row i, 1 to 10.
  const BookmarkRow& row(int i) const { return rows_[static_cast<std::size_t>(i - 1)]; }
  // The chosen bookmark, or 0 before any choice.
  int chosen() const { return chosen_; }

  void Bm_Click(int i);

  // `Command1`: with a choice and a yes, the place to move to; the dialog
  // then closes. Nothing when there is no choice or the answer is no, and
  // the dialog stays.
  std::optional<BookmarkMove> Command1(const Confirm& ask);
  // `Command3`: writes the owner's place into the chosen bookmark. True when
  // written: the row shows it and the dialog closes.
  bool Command3(const Confirm& ask, const Position& place);

 private:
  corpus::Bookmark Unset() const;
  corpus::Bookmark Written(const Position& place) const;

  corpus::BookmarkKind owner_;
  corpus::ProfileFile& file_;
  corpus::Corpus& corpus_;
  corpus::Selection& selection_;
  std::array<BookmarkRow, corpus::kBookmarks> rows_;
  int chosen_ = 0;
};

}  // namespace suizo::reader
