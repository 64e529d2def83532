// The page boxes of the reader: where the line stands in each printed
// collection, in the form each collection prints its page and line.
#pragma once

#include <array>
#include <string>
#include <string_view>

#include "core/corpus/table.h"

namespace suizo::reader {

// The boxes, by the `Dat` column they show; `Page(0)` shows the ｼｽﾃﾑNo.
inline constexpr std::array<int, 11> kPageBoxes = {0, 22, 23, 24, 25, 26, 27, 28, 29, 32, 36};
// Enter in these searches the page; the others take the same keys and do nothing.
inline constexpr std::array<int, 6> kSearchablePageBoxes = {0, 22, 23, 25, 28, 29};
// The label of a box: its own index, except for the two whose label stands
// one below (`PageTitle(31)`, `PageTitle(35)`).
inline constexpr int PageTitleOf(int box) {
  return box == 32 || box == 36 ? box - 1 : box;
}

// The text of box `box` for the column text `s`; an empty column leaves it empty.
std::u16string PageBoxText(int box, std::u16string_view s);

// Every box of a `Dat` row, in the order of kPageBoxes.
std::array<std::u16string, kPageBoxes.size()> PageBoxTexts(const corpus::Table& dat, int row);

// What a key does in a page box: digits, "-", Backspace, Ctrl+C and Ctrl+V
// are taken; everything else, the point included, is dropped.
bool PageBoxTakes(char16_t key);
// The sutra's and the sources' boxes take the point instead of "-".
bool ScripturePageBoxTakes(char16_t key);

}  // namespace suizo::reader
