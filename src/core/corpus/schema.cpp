#include "core/corpus/schema.h"

namespace suizo::corpus {
namespace {

constexpr std::u16string_view kDatFields[] = {
    u"通番",      u"基礎No",    u"ｼｽﾃﾑNo.",    u"ｼｽﾃﾑ番号",    u"番号",     u"接続",
    u"書名",      u"C",         u"ｼｽﾃﾑ版翠典", u"ｼｽﾃﾑ版翠典2", u"真蹟直読", u"真蹟活用",
    u"門下写本",  u"原型活用",  u"ｼｽﾃﾑ備考",   u"現代語訳",    u"語訳担当", u"参考訳",
    u"定番",      u"年月日",    u"系年",       u"文体",        u"定頁行",   u"新頁行",
    u"縮頁行",    u"全頁行",    u"内頁行",     u"外頁行",      u"編頁行",   u"修頁行",
    u"書頁行",    u"対頁行",    u"X対頁行",    u"対照録1",     u"対照録2",  u"集頁行",
    u"X集頁行",   u"集成1",     u"集成2",      u"集成3",       u"集成4",    u"継頁行",
    u"継師写本1", u"継師写本2", u"継師写本3",  u"継師写本4",   u"注",       u"調査対象",
    u"作業2",     u"作業3",     u"直読備考",   u"写本備考",    u"引用索引", u"印",
};
constexpr std::u16string_view kMokFields[] = {
    u"通し番号",   u"絶対位置",   u"ｼｽﾃﾑ番号",   u"ｼｽﾃﾑNo.",    u"番号",       u"定番",
    u"対番",       u"新番",       u"接続",       u"C",          u"書名",       u"語訳",
    u"系年",       u"対告",       u"解題研室",   u"書名研室",   u"書名備考",   u"系年研室",
    u"系年備考",   u"対告研室",   u"対告備考",   u"真蹟備考",   u"真蹟所在",   u"写本備考",
    u"其他備考",   u"よみ",       u"年月日",     u"年月日2",    u"年号",       u"定系年",
    u"真系年",     u"新系年",     u"研系年",     u"月日",       u"日",         u"聖寿",
    u"場所",       u"文体",       u"平講",       u"龍講",       u"文段",       u"印",
    u"定本始位置", u"新定始位置", u"縮冊始位置", u"全集始位置", u"録内始位置", u"録外始位置",
    u"新編始位置", u"新修始位置", u"対録始位置", u"集成始位置", u"鎌倉遺文",
};
constexpr std::u16string_view kDicFields[] = {
    u"よみソート順",   u"辞基本No", u"見出No",   u"見出項目", u"見出項目元",
    u"見出項目旧字分", u"見出よみ", u"語義解説", u"印",       u"備考",
    u"史料番号",       u"分類",     u"事類",
};
constexpr std::u16string_view kHokFields[] = {
    u"ダミー",   u"法華No.",  u"注経No.",      u"裏注経No.", u"行頭句",       u"裏行頭句",
    u"句位置",   u"裏句位置", u"経名",         u"品名",      u"蔵経頁行",     u"開結頁行",
    u"対訳頁行", u"開結真読", u"開結真読(元)", u"開結訓読",  u"開結訓読(元)", u"現代語訳",
    u"蔵経真読", u"蔵経活用", u"検索経文",     u"甲訳",      u"乙訳",         u"丙訳",
    u"正字体",   u"常用体",   u"書出翠典",     u"分割",      u"改偈",         u"元改偈",
    u"印",       u"備考",     u"数値1",        u"数値2",     u"真読字数",     u"蔵経頁行n",
    u"文字列1",
};
constexpr std::u16string_view kSokFields[] = {
    u"ダミー",  u"經名",    u"品名",     u"印",       u"科文",     u"法華No.",
    u"注経No.", u"総科No.", u"蔵経頁行", u"開結頁行", u"対訳頁行",
};
constexpr std::u16string_view kKamFields[] = {
    u"ダミー",  u"經名",    u"品名",     u"印",       u"科文",
    u"法華No.", u"科文No.", u"蔵経頁行", u"開結頁行", u"対訳頁行",
};
constexpr std::u16string_view kNenFields[] = {
    u"ダミー", u"年基礎No", u"年表No",     u"年号",     u"年号2",  u"南年号",   u"月日",
    u"年月日", u"系年",     u"年月日自動", u"月日2",    u"日",     u"str",      u"西暦",
    u"事項",   u"分類",     u"事類",       u"C",        u"改元",   u"関連ﾃﾞｰﾀ", u"ｼｽﾃﾑNo.",
    u"番号",   u"ｼｽﾃﾑ番号", u"史料番号",   u"尊基礎No", u"本尊No", u"尊基礎No", u"尊基礎No",
};
constexpr std::u16string_view kNekFields[] = {
    u"ダミー",     u"西暦",       u"年号",     u"前年号",   u"年数",     u"干支",     u"改元",
    u"天皇",       u"前天皇",     u"天皇即位", u"院政",     u"前院政",   u"院政就任", u"摂関",
    u"前摂関",     u"摂関就任",   u"将軍",     u"前将軍",   u"将軍就任", u"執権",     u"前執権",
    u"執権就任",   u"北年号",     u"北年数",   u"北前年号", u"北改元",   u"北天皇",   u"北前天皇",
    u"北天皇即位", u"南年号",     u"南前年号", u"南年数",   u"南改元",   u"南天皇",   u"南前天皇",
    u"南天皇即位", u"聖寿・聖滅", u"歴代",     u"隠尊",     u"備考",
};
constexpr std::u16string_view kTyuFields[] = {
    u"ダミー",   u"注経No.",   u"通読注経No.", u"法華No.",
    u"経題品名", u"品名",      u"巻紙",        u"巻紙2",
    u"表裏面",   u"番号",      u"注経番号",    u"経文",
    u"継続",     u"訓下本文",  u"原文漢文",    u"情報",
    u"指経文",   u"出典",      u"注記",        u"印",
    u"訓下頁",   u"定本頁",    u"集成頁",      u"集成1",
    u"集成2",    u"訓下本文2", u"文字数",      u"行数",
    u"n",        u"nn",        u"X",           u"分割分の順番番号",
    u"原字",     u"常用",
};
constexpr std::u16string_view kHonFields[] = {
    u"未使用",   u"尊基礎No", u"本尊No",   u"出典",     u"書顕", u"形態",   u"系年",
    u"年号",     u"西暦",     u"月日",     u"年月日",   u"脇書", u"授与者", u"讃文",
    u"図顕讃文", u"所蔵",     u"寸法",     u"紙数",     u"通称", u"真影",   u"真影（旧分）",
    u"参考資料", u"備考",     u"検索用",   u"検索ﾀﾞﾐｰ", u"印",   u"作業1",  u"作業2",
    u"ダミー",   u"n",        u"旧本尊No", u"備考2",
};
constexpr std::u16string_view kSDatFields[] = {
    u"未使用", u"基礎No",   u"ｼｽﾃﾑNo.",  u"ｼｽﾃﾑ番号", u"史料番号", u"作業1", u"書名", u"著者",
    u"備考",   u"読下本文", u"原型活用", u"漢文成形", u"年月日",   u"系年",  u"印",
};
constexpr std::u16string_view kSMokFields[] = {
    u"未使用", u"ｼｽﾃﾑ番号", u"史料番号", u"ｼｽﾃﾑNo.", u"書名",   u"書名よみ", u"系年",
    u"年号",   u"年月日",   u"著者",     u"蔵所",    u"刊行本", u"印",
};

// The columns each import reads and cannot do without: keys, links, the
// text, and in `Dat` the page fields of the ten collections (22 to 35).
constexpr int kDatRequired[] = {dat::kSysNo, dat::kBangou, dat::kTitle, dat::kClass, dat::kMain,
                                22,          23,           24,          25,          26,
                                27,          28,           29,          31,          35};

constexpr bool RequiresEveryPageField() {
  for (const Collection& c : kCollections) {
    if (c.datField == 0) continue;
    bool found = false;
    for (int f : kDatRequired) found = found || f == c.datField;
    if (!found) return false;
  }
  return true;
}
static_assert(RequiresEveryPageField(),
              "every collection's page field is required of 翠典本文.dat");

constexpr int kMokRequired[] = {mok::kSysNo,  mok::kBangou,    mok::kClass, mok::kTitle,
                                mok::kDating, mok::kRecipient, mok::kDate};
constexpr int kDicRequired[] = {dic::kKey, dic::kHeadNo, dic::kHeadWord, dic::kReading,
                                dic::kExplanation};
constexpr int kHokRequired[] = {hok::kNumber, hok::kSutraName, hok::kChapter, hok::kKaiketsuPage};
constexpr int kOutlineRequired[] = {outline::kHeading, outline::kHokNo};
constexpr int kNenRequired[] = {nen::kBaseNo, nen::kNumber, nen::kDate, nen::kEvent};
constexpr int kNekRequired[] = {1};     // 西暦
constexpr int kTyuRequired[] = {1};     // 注経No.
constexpr int kHonRequired[] = {1, 2};  // 尊基礎No, 本尊No
constexpr int kSDatRequired[] = {sdat::kSysNo, 4, sdat::kReading, sdat::kShaped};  // 4: 史料番号
constexpr int kSMokRequired[] = {smok::kNumber, smok::kSysNo, 4, smok::kDate};     // 4: 書名

// How short a store of an older version may be. `Dat` may lack the notes,
// the remark panes and 印 after its last order column (47); `Mok` the 鎌倉遺文
// after its last start position (51); `Hok` its note column 文字列1. Elsewhere
// the last field is a key, a link, an order or a mark the lists rest on, or
// (`SDat`) an older version lacked a field in the middle: the note column 備考,
// before 0.8. A short store of those cannot be read by position.
constexpr int kDatFewest = 47;
constexpr int kMokFewest = 51;
constexpr int kHokFewest = 35;

constexpr bool FewestKeepOrders() {
  for (const Collection& c : kCollections) {
    if (c.datOrderColumn > kDatFewest || c.mokStartField > kMokFewest) return false;
  }
  return true;
}
static_assert(FewestKeepOrders(), "a short store still holds every order and start position");

constexpr std::uint64_t Fields(std::initializer_list<int> list) {
  std::uint64_t mask = 0;
  for (int f : list) mask |= std::uint64_t{1} << f;
  return mask;
}

constexpr std::uint64_t Range(int first, int last) {
  std::uint64_t mask = 0;
  for (int f = first; f <= last; ++f) mask |= std::uint64_t{1} << f;
  return mask;
}

using text::NormalForm;
constexpr auto kNone = std::nullopt;

constexpr std::array<TableSchema, kTableCount> kSchemas{{
    {TableId::Dat, "Dat", "翠典本文", "dat", 35000, kDatFields, "DatCols", "DatRows", 0, 0, true,
     true, NormalForm::A, Fields({6}) | Range(8, 15) | Range(48, 52), kDatRequired, kDatFewest},
    {TableId::Mok, "Mok", "翠典資料", "mok", 1050, kMokFields, "MokCols", "MokRows", 0, 1, true,
     true, NormalForm::A, Fields({10}) | Range(14, 25), kMokRequired, kMokFewest},
    {TableId::Dic, "Dic", "辞書事典", "dic", 40000, kDicFields, "DicCols", "DicRows", 1, 1, true,
     true, NormalForm::A, Fields({3, 6, 7}), kDicRequired},
    {TableId::Hok, "Hok", "法華経", "hok", 3000, kHokFields, "HokCols", "HokRows", 2, 1, true,
     false, NormalForm::B, Fields({36}) | Range(13, 23), kHokRequired, kHokFewest},
    {TableId::Sok, "Sok", "法華経総科", "sok", 80, kSokFields, "SokCols", "SokRows", 2, 1, false,
     false, kNone, 0, kOutlineRequired},
    {TableId::Kam, "Kam", "法華経科文", "kam", 1360, kKamFields, "KamCols", "KamRows", 2, 1, false,
     false, kNone, 0, kOutlineRequired},
    {TableId::Nen, "Nen", "年表", "nen", 7200, kNenFields, "NenCols", "NenRows", 3, 1, false, false,
     NormalForm::A, Fields({14}), kNenRequired},
    {TableId::Nek, "Nek", "年表関連", "nek", 700, kNekFields, "NekCols", "NekRows", kNoLoadGroup, 1,
     false, false, kNone, 0, kNekRequired},
    {TableId::Tyu, "Tyu", "注経本文", "tyu", 3100, kTyuFields, "TyuCols", "TyuRows", 4, 1, false,
     false, kNone, 0, kTyuRequired},
    {TableId::Hon, "Hon", "本尊資料", "hon", 200, kHonFields, "HonCols", "HonRows", 5, 1, false,
     false, kNone, 0, kHonRequired},
    {TableId::SDat, "SDat", "史料本文", "sat", 38000, kSDatFields, "SDatCols", "SDatRows", 6, 0,
     true, true, NormalForm::A, Range(6, 11), kSDatRequired},
    {TableId::SMok, "SMok", "史料目次", "sak", 950, kSMokFields, "SMokCols", "SMokRows", 6, 1, true,
     true, NormalForm::A, Fields({4, 5, 9, 10, 11}), kSMokRequired},
}};

constexpr TableId kGroup0[] = {TableId::Dat, TableId::Mok};
constexpr TableId kGroup1[] = {TableId::Dic};
constexpr TableId kGroup2[] = {TableId::Hok, TableId::Sok, TableId::Kam};
constexpr TableId kGroup3[] = {TableId::Nen};
constexpr TableId kGroup4[] = {TableId::Tyu};
constexpr TableId kGroup5[] = {TableId::Hon};
constexpr TableId kGroup6[] = {TableId::SDat, TableId::SMok};

}  // namespace

const TableSchema& SchemaOf(TableId id) {
  return kSchemas[static_cast<std::size_t>(id)];
}

std::span<const TableSchema, kTableCount> Schemas() {
  return kSchemas;
}

std::span<const TableId> GroupTables(int group) {
  switch (group) {
    case 0:
      return kGroup0;
    case 1:
      return kGroup1;
    case 2:
      return kGroup2;
    case 3:
      return kGroup3;
    case 4:
      return kGroup4;
    case 5:
      return kGroup5;
    case 6:
      return kGroup6;
    default:
      return {};
  }
}

const Collection* FindCollection(int gk) {
  for (const Collection& c : kCollections) {
    if (c.gk == gk) return &c;
  }
  return nullptr;
}

}  // namespace suizo::corpus
