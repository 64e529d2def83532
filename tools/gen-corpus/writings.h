// The writings as the generator plans them before writing: documents, their
// rows, and where each row stands in each printed collection.
#pragma once

#include <array>
#include <string>
#include <vector>

#include "composer.h"
#include "registry.h"
#include "scale.h"

namespace suizo::gen {

inline constexpr int kDatFields = 54;  // 0..53
inline constexpr int kMokFields = 53;  // 0..52

struct DatRow {
  std::array<std::u16string, kDatFields> f;
};

struct Document {
  std::u16string title;
  std::u16string bangou;
  int klass = 0;
  int year = 0, month = 0, day = 0;
  bool autograph = false;   // 真蹟 columns filled
  bool manuscript = false;  // 門下写本 filled
  int firstRow = 0;         // index into the row list
  int rowCount = 0;
  int splitRow = -1;  // a part with a record of its own starts here (ｼｽﾃﾑ order only)
  bool crossReference = false;  // a title line that points to another document
  int target = -1;              // for a cross reference: the document it points to
};

struct Writings {
  std::vector<Document> documents;
  std::vector<DatRow> rows;
  std::vector<std::array<std::u16string, kMokFields>> records;
};

// Plans the documents and composes their rows (text, notes, ｼｽﾃﾑNo.).
Writings ComposeWritings(const Sizes& sizes, Composer& composer, Registry& registry);

// Gives every row its page and line in each printed collection.
void PlaceInCollections(Writings& writings, Rng& rng);

// The document records, one per document and one per part with its own record.
void ComposeRecords(Writings& writings, Composer& composer, Registry& registry);

}  // namespace suizo::gen
