// Bookmarks: ten places in each text reader, kept in suiten.ini with the
// collection they were read in, so that reading one restores the frame.
#pragma once

#include <string>

#include "core/corpus/corpus.h"
#include "core/corpus/errors.h"
#include "core/corpus/profile.h"
#include "core/corpus/selection.h"

namespace suizo::corpus {

enum class BookmarkKind { Writings, Sutra, Sources };  // BMark, HMark, SMark

struct Bookmark {
  std::u16string Gk, Kn, CSel;  // the writings' only
  std::u16string Mpos, Lpos;
  std::u16string T1, T2;  // the caption lines shown in the dialog
};

inline constexpr int kBookmarks = 10;
inline constexpr std::u16string_view kUnsetCaption = u"---";

// "BMark01".."BMark10", "HMark01"..., "SMark01"...
std::u16string BookmarkSection(BookmarkKind kind, int index);

// The class flags as stored: one digit a flag, 0..10.
std::u16string CSelText(const Selection& selection);
void ApplyCSelText(std::u16string_view text, Selection& selection);

// The place an unset bookmark stands for: the current collection, the first
// document (or the first chapter of the sutra, the first source).
Bookmark FirstRunBookmark(BookmarkKind kind, const Corpus& corpus, const Selection& selection);

// A bookmark as stored, each key falling back on `unset`'s.
Bookmark ReadBookmark(const ProfileFile& file, BookmarkKind kind, int index, const Bookmark& unset);
void WriteBookmark(ProfileFile& file, BookmarkKind kind, int index, const Bookmark& bookmark);

// The first-run fill of `RegInit`: when a kind's first bookmark is unset, all
// ten of that kind are written with the first-run place. True when any was.
bool FillBookmarksOnFirstRun(ProfileFile& file, const Corpus& corpus, const Selection& selection);

// How many bookmarks of all kinds the user has set (a caption other than
// the unset one).
int CountSetBookmarks(const ProfileFile& file);

// Told when suiten.ini cannot be read or written.
std::u16string BookmarksFailure(const CorpusError& error);

}  // namespace suizo::corpus
