#include "core/corpus/bookmarks.h"

#include "core/text/utf16.h"

namespace suizo::corpus {
namespace {

using Values = std::vector<std::pair<std::u16string, std::u16string>>;

// The key a first start looks for in the first bookmark of each kind.
std::u16string_view ProbeKey(BookmarkKind kind) {
  return kind == BookmarkKind::Writings ? u"Gk" : u"Lpos";
}

Values ValuesOf(BookmarkKind kind, const Bookmark& b) {
  if (kind == BookmarkKind::Writings) {
    return {{u"Gk", b.Gk},     {u"Kn", b.Kn}, {u"CSel", b.CSel}, {u"Mpos", b.Mpos},
            {u"Lpos", b.Lpos}, {u"T1", b.T1}, {u"T2", b.T2}};
  }
  if (kind == BookmarkKind::Sutra)
    return {{u"Lpos", b.Lpos}, {u"Mpos", b.Mpos}, {u"T1", b.T1}, {u"T2", b.T2}};
  return {{u"Mpos", b.Mpos}, {u"Lpos", b.Lpos}, {u"T1", b.T1}, {u"T2", b.T2}};
}

}  // namespace

std::u16string BookmarkSection(BookmarkKind kind, int index) {
  const std::u16string prefix = kind == BookmarkKind::Writings ? u"BMark"
                                : kind == BookmarkKind::Sutra  ? u"HMark"
                                                               : u"SMark";
  return prefix + (index < 10 ? u"0" : u"") + text::IntText(index);
}

std::u16string CSelText(const Selection& selection) {
  std::u16string out;
  for (const int flag : selection.CSel) out += flag == 1 ? u'1' : u'0';
  return out;
}

void ApplyCSelText(std::u16string_view text, Selection& selection) {
  for (std::size_t c = 0; c < selection.CSel.size(); ++c) {
    selection.CSel[c] = c < text.size() && text[c] == u'1' ? 1 : 0;
  }
}

Bookmark FirstRunBookmark(BookmarkKind kind, const Corpus& corpus, const Selection& selection) {
  Bookmark b;
  b.T1 = b.T2 = kUnsetCaption;
  switch (kind) {
    case BookmarkKind::Writings:
      b.Gk = text::IntText(selection.Gk);
      b.Kn = text::IntText(selection.Kn);
      b.CSel = CSelText(selection);
      b.Mpos = u"1";
      b.Lpos = corpus.MosMaxY > 0
                   ? std::u16string(corpus.Mok().Get(corpus.MokOrder[1], mok::kPosition))
                   : u"0";
      break;
    case BookmarkKind::Sutra:
      b.Lpos = u"1";
      b.Mpos = corpus.table(TableId::Hok).Get(1, hok::kChapter);
      break;
    case BookmarkKind::Sources:
      b.Mpos = u"1";
      b.Lpos = corpus.SMosMaxY > 0
                   ? std::u16string(corpus.SMok().Get(corpus.SMokOrder[1], smok::kPosition))
                   : u"0";
      break;
  }
  return b;
}

Bookmark ReadBookmark(const ProfileFile& file, BookmarkKind kind, int index,
                      const Bookmark& unset) {
  const std::u16string section = BookmarkSection(kind, index);
  Bookmark b = unset;
  for (auto [key, fallback] : ValuesOf(kind, unset)) {
    const std::u16string value = file.Read(section, key, fallback);
    if (key == u"Gk") b.Gk = value;
    if (key == u"Kn") b.Kn = value;
    if (key == u"CSel") b.CSel = value;
    if (key == u"Mpos") b.Mpos = value;
    if (key == u"Lpos") b.Lpos = value;
    if (key == u"T1") b.T1 = value;
    if (key == u"T2") b.T2 = value;
  }
  return b;
}

void WriteBookmark(ProfileFile& file, BookmarkKind kind, int index, const Bookmark& bookmark) {
  file.Write(BookmarkSection(kind, index), ValuesOf(kind, bookmark));
}

bool FillBookmarksOnFirstRun(ProfileFile& file, const Corpus& corpus, const Selection& selection) {
  std::vector<std::pair<std::u16string, Values>> sections;
  for (const BookmarkKind kind :
       {BookmarkKind::Writings, BookmarkKind::Sutra, BookmarkKind::Sources}) {
    if (file.Read(BookmarkSection(kind, 1), ProbeKey(kind), u"empty") != u"empty") continue;
    const Bookmark first = FirstRunBookmark(kind, corpus, selection);
    for (int i = 1; i <= kBookmarks; ++i)
      sections.emplace_back(BookmarkSection(kind, i), ValuesOf(kind, first));
  }
  if (sections.empty()) return false;
  file.Write(sections);
  return true;
}

int CountSetBookmarks(const ProfileFile& file) {
  int count = 0;
  for (const BookmarkKind kind :
       {BookmarkKind::Writings, BookmarkKind::Sutra, BookmarkKind::Sources}) {
    for (int i = 1; i <= kBookmarks; ++i) {
      count += file.Read(BookmarkSection(kind, i), u"T1", kUnsetCaption) != kUnsetCaption ? 1 : 0;
    }
  }
  return count;
}

std::u16string BookmarksFailure(const CorpusError& error) {
  return u"しおりのファイルを読み書きできませんでした。\n" + text::FromUtf8(error.what());
}

}  // namespace suizo::corpus
