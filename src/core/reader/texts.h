// The texts a reader shows are the texts a search walks: the readers take
// the search's positions, orders and tables under their own names.
#pragma once

#include "core/search/position.h"
#include "core/search/text_table.h"

namespace suizo::reader {

using search::Down;
using search::kFirstChapter;
using search::LineOrder;
using search::Position;
using search::SutraDown;
using search::SutraUp;
using search::TextKind;
using search::TextTable;
using search::Up;

}  // namespace suizo::reader
