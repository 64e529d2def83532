// What the scholar has chosen: the printed collection that is the frame of
// reference, the order of the contents, the classes in play.
#pragma once

#include <array>

namespace suizo::corpus {

struct Selection {
  int Gk = 0;   // collection: 0 is the system order, else the `Dat` page field
  int Kn = 0;   // contents order: 0 page and line (ｼｽﾃﾑNo. in the system order), 1 date
  int SKn = 0;  // sources' contents order: 0 source order, 1 date
  // Classes 0..9 shown when 1; entry 10 limits every search to rows with an autograph.
  std::array<int, 11> CSel = {1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 0};
  int MokRedo = 0;  // 1 asks `ConvMok` to place the documents in `Gk` anew

  // Whether a class number is shown; outside 0..9 it is not.
  bool Shows(int klass) const {
    return klass >= 0 && klass <= 9 && CSel[static_cast<std::size_t>(klass)] == 1;
  }
};

}  // namespace suizo::corpus
