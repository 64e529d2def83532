// Era names of the years the sample covers, for dating labels. Outside
// 1199-1302 the full-scale corpus uses made-up eras of ten years each.
#pragma once

#include <string>

namespace suizo::gen {

struct EraYear {
  std::u16string era;  // "文永"
  int number;          // year of the era, 1 for its first year
};

EraYear EraOf(int year);

// "文永元年", "文永十一年": the era with its year in kanji numerals.
std::u16string EraLabel(int year);

// A date as the tables write it for sorting: "1260.07.16".
std::u16string DateText(int year, int month, int day);

// A number in kanji numerals, 1 to 99: "十一".
std::u16string KanjiNumber(int n);

}  // namespace suizo::gen
