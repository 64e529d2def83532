#include <algorithm>
#include <cstdio>

#include "core/text/utf16.h"
#include "writings.h"

namespace suizo::gen {
namespace {

enum class Order { ByYear, ByYearSwapped, ByClass, Shuffled, ByBangou };

struct CollectionPlan {
  int field;      // page-and-line field of the collection
  int percent;    // chance that a document is printed in it
  int extentCut;  // every n-th document lacks its last row here; 0 for none
  Order order;
  int linesPerPage;
};

constexpr std::array<CollectionPlan, 10> kPlans = {{
    {22, 92, 0, Order::ByYear, 16},
    {23, 85, 5, Order::ByYearSwapped, 18},
    {24, 80, 0, Order::ByClass, 20},
    {25, 85, 0, Order::ByClass, 17},
    {26, 50, 0, Order::Shuffled, 12},
    {27, 50, 0, Order::Shuffled, 12},
    {28, 75, 7, Order::ByYear, 16},
    {29, 88, 0, Order::ByYearSwapped, 18},
    {31, 65, 0, Order::ByBangou, 15},
    {35, 100, 0, Order::Shuffled, 10},
}};

std::u16string Ascii(const char* s) {
  return std::u16string(s, s + std::char_traits<char>::length(s));
}

// A page and line in the form of the collection's field.
std::u16string PageLine(int field, int page, int line) {
  char buffer[32];
  switch (field) {
    case 24:  // a volume digit before a four-digit page
      std::snprintf(buffer, sizeof buffer, "%d%04d.%02d", 1 + page / 600, page % 600 + 1, line);
      break;
    case 26:
    case 27:  // volume and a two-digit page
      std::snprintf(buffer, sizeof buffer, "%d%02d.%02d", 1 + page / 99, page % 99 + 1, line);
      break;
    default:
      std::snprintf(buffer, sizeof buffer, "%d.%02d", page, line);
      break;
  }
  return Ascii(buffer);
}

// The printed form the page boxes of 対録 and 集成 show: volume, page (and a
// plate's part), line.
std::u16string PrintedForm(int field, int page, int line, bool part) {
  char buffer[32];
  if (field == 31) {
    std::snprintf(buffer, sizeof buffer, "%d-%03d.%02d", 1 + page / 300, page % 300 + 1, line);
  } else if (part) {
    std::snprintf(buffer, sizeof buffer, "%d-%03d-%d.%02d", 1 + page / 200, page % 200 + 1, 2,
                  line);
  } else {
    std::snprintf(buffer, sizeof buffer, "%d-%03d.%02d", 1 + page / 200, page % 200 + 1, line);
  }
  return Ascii(buffer);
}

// A run of rows printed together: a document, or part of one.
struct Run {
  int document;
  int first;  // row offset within the document
  int count;
};

std::vector<int> Members(const Writings& w, const CollectionPlan& plan, Rng& rng) {
  std::vector<int> members;
  for (std::size_t d = 0; d < w.documents.size(); ++d) {
    const Document& doc = w.documents[d];
    if (doc.crossReference) continue;
    bool in = rng.Percent(plan.percent);
    if (plan.field == 35) in = doc.autograph;
    if (plan.field == 26) in = in && d % 2 == 0;  // the two 録 collections hardly overlap
    if (plan.field == 27) in = in && d % 2 == 1;
    if (d == 2 && plan.field != 35) in = true;  // one document stands in every collection
    // 対録 and 集成 place documents by 番号, cut at a blank: keep such numbers out.
    if (plan.field >= 31 && doc.bangou.find(u' ') != std::u16string::npos) in = false;
    if (in) members.push_back(static_cast<int>(d));
  }
  return members;
}

void Arrange(std::vector<int>& members, const Writings& w, const CollectionPlan& plan, Rng& rng) {
  const auto& docs = w.documents;
  switch (plan.order) {
    case Order::ByYear:
      std::stable_sort(members.begin(), members.end(), [&](int a, int b) {
        return docs[static_cast<std::size_t>(a)].year < docs[static_cast<std::size_t>(b)].year;
      });
      break;
    case Order::ByYearSwapped:
      for (std::size_t i = 1; i + 1 < members.size(); i += 4) std::swap(members[i], members[i + 1]);
      break;
    case Order::ByClass:
      std::stable_sort(members.begin(), members.end(), [&](int a, int b) {
        return docs[static_cast<std::size_t>(a)].klass < docs[static_cast<std::size_t>(b)].klass;
      });
      break;
    case Order::Shuffled:
      for (std::size_t i = members.size(); i > 1; --i) {
        std::swap(members[i - 1],
                  members[static_cast<std::size_t>(rng.Between(0, static_cast<int>(i) - 1))]);
      }
      break;
    case Order::ByBangou:
      std::stable_sort(members.begin(), members.end(), [&](int a, int b) {
        return docs[static_cast<std::size_t>(a)].bangou < docs[static_cast<std::size_t>(b)].bangou;
      });
      break;
  }
}

std::vector<Run> Runs(const Writings& w, const std::vector<int>& members,
                      const CollectionPlan& plan) {
  std::vector<Run> runs;
  for (std::size_t m = 0; m < members.size(); ++m) {
    const int d = members[m];
    const Document& doc = w.documents[static_cast<std::size_t>(d)];
    // A title line that points here is printed just before the document.
    if (plan.field <= 29) {
      for (std::size_t x = 0; x < w.documents.size(); ++x) {
        const Document& ref = w.documents[x];
        if (ref.crossReference && ref.target == d &&
            (x + static_cast<std::size_t>(plan.field)) % 3 != 0) {
          runs.push_back({static_cast<int>(x), 0, 1});
        }
      }
    }
    int count = doc.rowCount;
    if (plan.extentCut > 0 && m % static_cast<std::size_t>(plan.extentCut) == 1 && count > 3)
      --count;
    runs.push_back({d, 0, count});
  }
  // In 対録 and 集成 one document is printed in two places.
  if (plan.field >= 31 && runs.size() > 4) {
    Run& split = runs[runs.size() / 3];
    if (split.count >= 6) {
      const int half = split.count / 2;
      runs.push_back({split.document, half, split.count - half});
      split.count = half;
    }
  }
  return runs;
}

}  // namespace

void PlaceInCollections(Writings& w, Rng& rng) {
  for (const CollectionPlan& plan : kPlans) {
    std::vector<int> members = Members(w, plan, rng);
    Arrange(members, w, plan, rng);
    int page = plan.field == 24 ? 40 : 1;
    int line = 0;
    int tiesLeft = 1;  // one pair of rows on the same line
    for (const Run& run : Runs(w, members, plan)) {
      const Document& doc = w.documents[static_cast<std::size_t>(run.document)];
      for (int k = run.first; k < run.first + run.count; ++k) {
        auto& f = w.rows[static_cast<std::size_t>(doc.firstRow + k)].f;
        const bool tie = tiesLeft > 0 && plan.field == 22 && k == 2 && run.count > 4;
        if (!tie) ++line;
        if (tie) --tiesLeft;
        if (line > plan.linesPerPage) {
          ++page;
          line = 1;
        }
        f[static_cast<std::size_t>(plan.field)] = PageLine(plan.field, page, line);
        if (plan.field == 31) f[32] = PrintedForm(31, page, line, false);
        if (plan.field == 35) f[36] = PrintedForm(35, page, line, run.document % 3 == 0);
      }
      // Documents start on a new page now and then.
      if (rng.Percent(30)) line = plan.linesPerPage;
    }
  }
  // A document the 対照録 marks as absent.
  for (const Document& doc : w.documents) {
    if (doc.crossReference) continue;
    if (!w.rows[static_cast<std::size_t>(doc.firstRow)].f[31].empty()) continue;
    for (int k = 0; k < doc.rowCount; ++k)
      w.rows[static_cast<std::size_t>(doc.firstRow + k)].f[32] = u"ﾅｼ";
    break;
  }
  // Other printed references, kept and shown as they stand.
  for (std::size_t d = 0; d < w.documents.size(); d += 3) {
    const Document& doc = w.documents[d];
    auto& f = w.rows[static_cast<std::size_t>(doc.firstRow)].f;
    f[30] = PageLine(30, 10 + static_cast<int>(d), 1);
    if (!f[31].empty()) f[33] = u"対照録" + text::IntText(1 + static_cast<long>(d) % 3) + u"巻";
    if (!f[35].empty()) {
      f[37] = u"図版" + text::IntText(static_cast<long>(d) + 1);
      f[38] = u"第" + text::IntText(1 + static_cast<long>(d) % 4) + u"紙";
    }
  }
}

}  // namespace suizo::gen
