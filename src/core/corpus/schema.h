// The twelve tables of the corpus: their files, capacities, fields and load
// groups, and the columns that hold computed orders once the import is done.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

#include "core/text/normal_forms.h"

namespace suizo::corpus {

enum class TableId { Dat, Mok, Dic, Hok, Sok, Kam, Nen, Nek, Tyu, Hon, SDat, SMok };
inline constexpr int kTableCount = 12;

// `Loaded(0..10)`: one flag per load group, of which 0..6 have files.
inline constexpr int kLoadGroupFlags = 11;
inline constexpr int kLoadGroups = 7;
inline constexpr int kNoLoadGroup = -1;

struct TableSchema {
  TableId id;
  std::string_view name;                        // "Dat"
  std::string_view stem;                        // "翠典本文": gives <stem>.dat and <stem>.dax
  std::string_view key;                         // "dat": recorded, used for nothing
  int rowCapacity;                              // highest row number; rows run from 0
  std::span<const std::u16string_view> fields;  // field number = index; 0 is not data
  std::string_view fieldCounter;                // "DatCols"
  std::string_view rowCounter;                  // "DatRows"
  int loadGroup;                                // kNoLoadGroup: read at import only
  int firstRow;                                 // first row in the .dax: 0 for Dat and SDat, else 1
  bool numberedAtImport;  // the .dat reader writes the row number into field 0
  bool numberedAtLoad;    // the .dax reader does
  std::optional<text::NormalForm> normalForm;
  std::uint64_t normalFields;  // bit f: field f takes the normal form at import
  // Fields whose export columns the import cannot do without: an export
  // whose header lacks one is refused.
  std::span<const int> requiredColumns;
  // The fewest fields a store may have (0: all of them). A store is read by
  // position, so only fields at the end can be absent, and only those the
  // program can do without: notes and text no key, order or link rests on.
  int fewestFields = 0;

  int FieldMax() const { return static_cast<int>(fields.size()) - 1; }
  int FewestFields() const { return fewestFields > 0 ? fewestFields : FieldMax(); }
  bool Normalised(int field) const { return normalForm && (normalFields >> field & 1); }
};

const TableSchema& SchemaOf(TableId id);
std::span<const TableSchema, kTableCount> Schemas();

// The tables of a load group, in the order their files are read; empty for a
// group without files.
std::span<const TableId> GroupTables(int group);

// The printed collections (`Gk`) with their labels, fields and stored orders.
struct Collection {
  int gk;
  std::u16string_view label;    // `SetLabel`
  std::u16string_view caption;  // option caption in the selection dialog
  int datField;                 // page-and-line field of `Dat`; 0 for the system order
  int mokStartField;            // `SetMokCol`: start position field of `Mok`
  int datOrderColumn;           // `Dat` column that holds the order; its count is in row 0
};

inline constexpr std::array<Collection, 11> kCollections{{
    {0, u"ｼｽﾃﾑ", u"システム", 0, 0, 1},
    {22, u"定本", u"定本遺文", 22, 42, 5},
    {23, u"新定", u"新定翠典", 23, 43, 16},
    {24, u"縮冊", u"縮刷遺文", 24, 44, 17},
    {25, u"全集", u"翠典全集", 25, 45, 41},
    {26, u"録内", u"刊本録内", 26, 46, 42},
    {27, u"録外", u"刊本録外", 27, 47, 43},
    {28, u"新編", u"新編翠典", 28, 48, 44},
    {29, u"新修", u"平成新修", 29, 49, 45},
    {31, u"対録", u"対照録", 31, 50, 46},
    {35, u"集成", u"真蹟集成", 35, 51, 47},
}};

// The collection of a `Gk`, or nothing for a number that names none.
const Collection* FindCollection(int gk);

// `PaneCol`: the `Dat` text fields in the order of the reader's tabs.
inline constexpr std::array<int, 12> kPaneCol = {8, 15, 10, 11, 12, 13, 50, 51, 48, 49, 52, 9};

// Field numbers used across subsystems.
namespace dat {
inline constexpr int kSysNo = 2;       // ｼｽﾃﾑNo.
inline constexpr int kBangou = 4;      // 番号
inline constexpr int kClass = 7;       // C
inline constexpr int kMain = 8;        // ｼｽﾃﾑ版翠典
inline constexpr int kMain2 = 9;       // ｼｽﾃﾑ版翠典2; a leading "◆" marks a head row
inline constexpr int kAutograph = 10;  // 真蹟直読: empty where no autograph survives
inline constexpr int kAutographApplied = 11;  // 真蹟活用
inline constexpr int kCopy = 12;              // 門下写本
inline constexpr int kCopyApplied = 13;       // 原型活用
inline constexpr int kTranslation = 15;       // 現代語訳
inline constexpr int kTitle = 6;              // 書名
inline constexpr int kNote2 = 48;             // 作業2, the reader's notes
inline constexpr int kNote3 = 49;             // 作業3
inline constexpr int kAutographNote = 50;     // 直読備考
inline constexpr int kCopyNote = 51;          // 写本備考
inline constexpr int kQuotations = 52;        // 引用索引
inline constexpr int kDate = 19;              // 年月日
inline constexpr int kDating = 20;            // 系年
inline constexpr int kOrderRow = 0;           // row 0 holds the order counts
}  // namespace dat

namespace mok {
inline constexpr int kPosition = 1;  // 絶対位置: the first reading position of the document
inline constexpr int kSysNo = 3;
inline constexpr int kBangou = 4;      // 番号
inline constexpr int kClass = 9;       // C
inline constexpr int kTitle = 10;      // 書名
inline constexpr int kDating = 12;     // 系年
inline constexpr int kRecipient = 13;  // 対告
inline constexpr int kNote = 14;       // 解題研室
inline constexpr int kDate = 26;       // 年月日, the key of the date order
inline constexpr int kMark = 41;       // 印: 0 keeps the row in the narrowed list
}  // namespace mok

namespace dic {
inline constexpr int kKey = 1;     // 辞基本No
inline constexpr int kHeadNo = 2;  // 見出No
inline constexpr int kHeadWord = 3;  // 見出項目; in row 1 it gives way to the count of entries kept
inline constexpr int kCountRow = 1;
inline constexpr int kKeptColumn = 4;     // `DicOrder`
inline constexpr int kReadingColumn = 5;  // `DicYomi`
inline constexpr int kReading = 6;        // 見出よみ
inline constexpr int kExplanation = 7;    // 語義解説
inline constexpr int kLookupKey = 8;      // 印
inline constexpr int kClass = 11;         // 分類
inline constexpr int kClassLabel = 12;    // 事類
}  // namespace dic

namespace hok {
inline constexpr int kNumber = 1;         // 法華No.
inline constexpr int kKaiketsuPage = 11;  // 開結頁行: page and line in the sutra edition
inline constexpr int kChapter = 9;        // 品名
inline constexpr int kSutraName = 8;      // 経名
inline constexpr int kFascicle = 31;      // 備考, the fascicle's label once imported
inline constexpr int kNote = 36;          // 文字列1, the reader's notes
}  // namespace hok

namespace outline {
inline constexpr int kHeading = 4;  // 科文, in both outlines
inline constexpr int kHokNo = 5;    // 法華No., the sutra row of the heading
}  // namespace outline

namespace nen {
inline constexpr int kBaseNo = 1;      // 年基礎No
inline constexpr int kNumber = 2;      // 年表No, the chronology's order
inline constexpr int kDate = 7;        // 年月日: the year first, or "★"
inline constexpr int kMonthDay2 = 10;  // 月日2, compared with accession days
inline constexpr int kEvent = 14;      // 事項
inline constexpr int kClass = 17;      // C
inline constexpr int kLink = 19;       // 関連ﾃﾞｰﾀ
inline constexpr int kSysNo = 20;      // ｼｽﾃﾑNo.
inline constexpr int kToldFlag = 22;   // 1 when the event is only told
inline constexpr int kSourceNo = 23;   // 史料番号
inline constexpr int kRowLink = 24;    // the `Dat` or `SMok` row linked
inline constexpr int kMandalaNo = 25;  // 本尊No
inline constexpr int kShown = 26;      // display mark
inline constexpr int kMokRow = 27;     // the `Mok` row linked
// Office columns, written with "@" between characters in the store.
inline constexpr std::array<int, 5> kOfficeFields = {9, 12, 16, 18, 21};
}  // namespace nen

namespace sdat {
inline constexpr int kSysNo = 2;
inline constexpr int kReading = 9;      // 読下本文; a leading "◆" marks a head row
inline constexpr int kShaped = 11;      // 漢文成形: a row without it joins no order
inline constexpr int kNote = 8;         // 備考, the reader's notes
inline constexpr int kOrderColumn = 1;  // source order; its count is in row 0
inline constexpr int kOrderRow = 0;
}  // namespace sdat

namespace smok {
inline constexpr int kPosition = 1;  // 絶対位置 in `SDatOrder`
inline constexpr int kNumber = 2;    // 史料番号
inline constexpr int kSysNo = 3;
inline constexpr int kDate = 8;   // 年月日
inline constexpr int kMark = 12;  // 印: 0 keeps the row in the list
}  // namespace smok

}  // namespace suizo::corpus
