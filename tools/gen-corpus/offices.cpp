#include "offices.h"

namespace suizo::gen {
namespace {

constexpr MonthDay D(int month, int day) {
  return {month, day, false};
}
constexpr MonthDay Leap(int month, int day) {
  return {month, day, true};
}

// Accession (践祚) days.
constexpr RealAccession kEmperors[] = {
    {1183, D(8, 20), u"後鳥羽", 82}, {1198, D(1, 11), u"土御門", 83},
    {1210, D(11, 25), u"順徳", 84},  {1221, D(4, 20), u"仲恭", 85},
    {1221, D(7, 9), u"後堀河", 86},  {1232, D(10, 4), u"四条", 87},
    {1242, D(1, 20), u"後嵯峨", 88}, {1246, D(1, 29), u"後深草", 89},
    {1259, D(11, 26), u"亀山", 90},  {1274, D(1, 26), u"後宇多", 91},
    {1287, D(10, 21), u"伏見", 92},  {1298, D(7, 22), u"後伏見", 93},
    {1301, D(1, 21), u"後二条", 94},
};

// Rule from the cloister; an empty name where it lapsed at a death or a
// defeat and the reigning emperor ruled himself.
constexpr RealAccession kCloisters[] = {
    {1158, D(8, 11), u"後白河"}, {1192, D(3, 13), u""},       {1198, D(1, 11), u"後鳥羽"},
    {1221, D(7, 8), u""},        {1221, D(8, 16), u"後高倉"}, {1223, D(5, 14), u""},
    {1232, D(10, 4), u"後堀河"}, {1234, D(8, 6), u""},        {1246, D(1, 29), u"後嵯峨"},
    {1272, D(2, 17), u""},       {1274, D(1, 26), u"亀山"},   {1287, D(10, 21), u"後深草"},
    {1290, D(2, 11), u""},       {1298, D(7, 22), u"伏見"},   {1301, D(1, 21), u"後宇多"},
};

// Regents for a child emperor (摂政) and for a grown one (関白); a change of
// title is an appointment of its own.
constexpr RealAccession kRegents[] = {
    {1196, D(11, 25), u"関白:近衛基通"}, {1198, D(1, 11), u"摂政:近衛基通"},
    {1202, D(12, 25), u"摂政:九条良経"}, {1206, D(3, 10), u"摂政:近衛家実"},
    {1208, D(12, 17), u"関白:近衛家実"}, {1221, D(4, 20), u"摂政:九条道家"},
    {1221, D(7, 8), u"摂政:近衛家実"},   {1223, D(12, 14), u"関白:近衛家実"},
    {1228, D(12, 24), u"関白:九条道家"}, {1231, D(7, 5), u"関白:九条教実"},
    {1232, D(10, 4), u"摂政:九条教実"},  {1235, D(3, 28), u"摂政:九条道家"},
    {1237, D(3, 10), u"摂政:近衛兼経"},  {1242, D(1, 20), u"関白:近衛兼経"},
    {1242, D(3, 25), u"関白:二条良実"},  {1246, D(1, 28), u"関白:一条実経"},
    {1246, D(1, 29), u"摂政:一条実経"},  {1247, D(1, 19), u"摂政:近衛兼経"},
    {1252, D(10, 3), u"摂政:鷹司兼平"},  {1254, D(12, 2), u"関白:鷹司兼平"},
    {1261, D(4, 29), u"関白:二条良実"},  {1265, Leap(4, 18), u"関白:一条実経"},
    {1267, D(12, 9), u"関白:近衛基平"},  {1268, D(12, 10), u"関白:鷹司基忠"},
    {1273, D(5, 5), u"関白:九条忠家"},   {1274, D(1, 26), u"摂政:九条忠家"},
    {1274, D(6, 20), u"摂政:一条家経"},  {1275, D(10, 21), u"摂政:鷹司兼平"},
    {1287, D(8, 11), u"関白:二条師忠"},  {1289, D(4, 13), u"関白:近衛家基"},
    {1291, D(5, 27), u"関白:九条忠教"},  {1293, D(2, 25), u"関白:近衛家基"},
    {1296, D(7, 24), u"関白:鷹司兼忠"},  {1298, D(7, 22), u"摂政:鷹司兼忠"},
    {1298, D(12, 20), u"摂政:二条兼基"},
};

// Appointment as 征夷大将軍; vacant between a death and the next appointment.
constexpr RealAccession kShoguns[] = {
    {1192, D(7, 12), u"源頼朝"},   {1199, D(1, 13), u""},        {1202, D(7, 22), u"源頼家"},
    {1203, D(9, 7), u"源実朝"},    {1219, D(1, 27), u""},        {1226, D(1, 27), u"藤原頼経"},
    {1244, D(4, 28), u"藤原頼嗣"}, {1252, D(4, 1), u"宗尊親王"}, {1266, D(7, 24), u"惟康親王"},
    {1289, D(10, 9), u"久明親王"},
};

constexpr RealAccession kShikken[] = {
    {1203, D(10, 9), u"北条時政"}, {1205, Leap(7, 20), u"北条義時"}, {1224, D(6, 28), u"北条泰時"},
    {1242, D(6, 15), u"北条経時"}, {1246, D(3, 23), u"北条時頼"},    {1256, D(11, 22), u"北条長時"},
    {1264, D(8, 11), u"北条政村"}, {1268, D(3, 5), u"北条時宗"},     {1284, D(7, 7), u"北条貞時"},
    {1301, D(8, 22), u"北条師時"},
};

struct EraChange {
  int year;
  MonthDay date;
};

constexpr EraChange kEraChanges[] = {
    {1199, D(4, 27)}, {1201, D(2, 13)},  {1204, D(2, 20)},  {1206, D(4, 27)}, {1207, D(10, 25)},
    {1211, D(3, 9)},  {1213, D(12, 6)},  {1219, D(4, 12)},  {1222, D(4, 13)}, {1224, D(11, 20)},
    {1225, D(4, 20)}, {1227, D(12, 10)}, {1229, D(3, 5)},   {1232, D(4, 2)},  {1233, D(4, 15)},
    {1234, D(11, 5)}, {1235, D(9, 19)},  {1238, D(11, 23)}, {1239, D(2, 7)},  {1240, D(7, 16)},
    {1243, D(2, 26)}, {1247, D(2, 28)},  {1249, D(3, 18)},  {1256, D(10, 5)}, {1257, D(3, 14)},
    {1259, D(3, 26)}, {1260, D(4, 13)},  {1261, D(2, 20)},  {1264, D(2, 28)}, {1275, D(4, 25)},
    {1278, D(2, 29)}, {1288, D(4, 28)},  {1293, D(8, 5)},   {1299, D(4, 25)},
};

}  // namespace

std::span<const RealAccession> RealAccessions(Office office) {
  switch (office) {
    case Office::Emperor:
      return kEmperors;
    case Office::Cloister:
      return kCloisters;
    case Office::Regent:
      return kRegents;
    case Office::Shogun:
      return kShoguns;
    case Office::Shikken:
      return kShikken;
  }
  return {};
}

std::optional<MonthDay> RealEraChange(int year) {
  for (const EraChange& e : kEraChanges) {
    if (e.year == year) return e.date;
  }
  return std::nullopt;
}

}  // namespace suizo::gen
