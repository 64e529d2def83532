// The hit list window `Form4`: the hits of its owner's search, page by page,
// with title, class, date and place of each and the hit line between its
// neighbours, so that the reader can scan them and jump to one. The page is
// the owner's `HitListPage`, which the search itself sets back to 1; the size
// of a page is the shared setting `DispN`.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

#include "core/corpus/corpus.h"
#include "core/corpus/selection.h"
#include "core/corpus/settings.h"
#include "core/reader/highlight.h"
#include "core/search/driver.h"

namespace suizo::reader {

inline constexpr std::u16string_view kHitListBody =
    u"<body bgcolor='white' scroll=auto style='width:98%; margin:auto; margin-top:5px; "
    u"line-height:1.4em; "
    u"font-size:14px; font-family:ＭＳ ゴシック;'>";

// `Opt(0)` to `Opt(3)`; with no option set a page holds 50.
inline constexpr std::array<int, 4> kHitPageSizes = {5, 10, 20, 50};
int HitPageSize(int dispN);

// Written whole at each render: doctype, the two styles, the body tag.
std::u16string HitListFrame();

// The settings section of the list: "@結果" and the owner's identity, or
// plain "@結果" under a contents window (a caption starting "目次").
std::u16string HitListParent(std::u16string_view ownerCaption, std::u16string_view ownerId);

// What the window shows after `Hyouji`.
struct HitListPage {
  std::u16string Label1;  // "検索結果" Srn "件"
  std::u16string Label2;  // PageNo "/" PageCount "ページ"
  int PageNo = 1;
  int PageCount = 0;
  std::u16string frame;
  std::u16string body;  // the pane's inner HTML
};

// What one render reads of the owner and the corpus.
struct HitListSource {
  const search::SearchEngine& owner;
  Highlighter& highlighter;  // the owner's `HiLight`
  const corpus::Corpus& corpus;
  const corpus::Selection& selection;  // `Gk` is the collection of the places shown
  int Nok = 0;                         // 0: pane 0 shows column 8, else column 9
};

// Page `pageNo` of the owner's hits, `dispN` choosing the page size. With no
// hits the page is 1; a page past the last shows the hits that exist.
HitListPage RenderHitList(const HitListSource& source, int dispN, int pageNo);

// The hit an href names: the digits behind its last ":" (or the whole href
// when it has none). Nothing for any other href.
std::optional<int> HitOfHref(std::u16string_view href);

// The window's model over one owner.
class HitList {
 public:
  // `Nok` is the owner's, read at each render; `settings` holds `DispN`.
  HitList(search::SearchEngine& owner, Highlighter& highlighter, const corpus::Corpus& corpus,
          const corpus::Selection& selection, corpus::Settings& settings, const int& Nok);

  // Renders the owner's page `PageNo`.
  HitListPage Hyouji();

  // First, previous, next and last page: nothing when the page would not
  // change; else the page shown, which the caller scrolls to the top.
  std::optional<HitListPage> Command2();
  std::optional<HitListPage> Command3();
  std::optional<HitListPage> Command4();
  std::optional<HitListPage> Command5();

  // A page-size option: kept in `DispN`, back to page 1.
  HitListPage Opt(int index);

  // Right (39) is the next page, Left (37) the previous; other keys nothing.
  std::optional<HitListPage> KeyDownAll(int keyCode, int shift);

  // A click on a link of the list. For a hit number the navigation is
  // cancelled and the owner stands on that hit (`SrnPos`, `Mpos`, `Lpos`);
  // the caller then redraws the owner with `Hyouji` and raises it. Nothing
  // for any other href, or a number that names no hit.
  std::optional<int> LinkClick(std::u16string_view href);

  int PageNo() const { return owner_->HitListPage; }
  // Of the owner's hits as they are now, at the size of `DispN`.
  int PageCount() const;

 private:
  std::optional<HitListPage> GoTo(int page);

  search::SearchEngine* owner_;
  Highlighter* highlighter_;
  const corpus::Corpus* corpus_;
  const corpus::Selection* selection_;
  corpus::Settings* settings_;
  const int* nok_;
};

}  // namespace suizo::reader
