#include "writings.h"

#include <algorithm>
#include <set>

#include "core/text/utf16.h"
#include "history.h"

namespace suizo::gen {
namespace {

using text::IntText;

// Phrases in which a short kana word is really that word, or only looks like
// it, so that the dictionary lookup of a selection has choices to make.
constexpr std::array<std::u16string_view, 24> kContexts = {
    u"あら悦ばしや",   u"あらふしぎや",     u"たましゐをみがき",   u"めしいたる人をみちびき",
    u"をやの恩",       u"親父の恩をおもふ", u"とがにあらず",       u"とがめられ候ふとも",
    u"さる程に",       u"さる事のあり",     u"これにまさる事なし", u"きうにまかりのぼり",
    u"ははの恩",       u"さどの国にて",     u"かうべをたれ",       u"つかうまつる",
    u"ことわりなり",   u"いやしき身",       u"そしる者あり",       u"しるしの候ふ",
    u"\uE256那梨の国", u"阿\uE298の文",     u"人々の御心",         u"時々にしたがひ"};

// Lines of a genealogy drawn with box characters.
constexpr std::array<std::u16string_view, 3> kDiagram = {u"師─┬─弟子甲", u"　　├─弟子乙",
                                                         u"　　└─弟子丙"};

constexpr std::array<std::u16string_view, 8> kBangouForms = {
    u"新加-36", u"4-追Ⅳ", u"付録-3", u"3-12  補", u"2-45", u"付録-5", u"3-20", u"2-48"};

// The writings' row keys are below 50000; the two rows the program treats as
// heads only in the system order have these fixed keys.
constexpr std::array<long, 2> kSystemOnlyHeads = {14611, 17450};

std::u16string Keinen(int year, int month, int day) {
  return EraLabel(year) + KanjiNumber(month) + u"月" + KanjiNumber(day) + u"日";
}

std::u16string UniqueTitle(Composer& composer, std::set<std::u16string>& used) {
  for (int tries = 0;; ++tries) {
    std::u16string t = composer.Title();
    if (tries > 4) t += KanjiNumber(tries);
    if (used.insert(t).second) return t;
  }
}

// A body line of a letter, with now and then an old kanji form, a later kana
// spelling, a context phrase, a number in either width.
std::u16string BodyLine(Composer& c, const Sizes& sizes) {
  Rng& rng = c.rng();
  std::u16string line = c.LetterLine(20, 120);
  if (rng.Percent(18)) {
    line.insert(0,
                std::u16string(rng.Pick(std::span<const std::u16string_view>(kContexts))) + u"、");
  }
  if (rng.Percent(6)) line.insert(line.size() - 1, rng.Percent(50) ? u"、第１の事" : u"、第1の事");
  line = WithOldForms(line, rng, 8);
  line = WithModernKana(line, rng, 10);
  (void)sizes;
  return line;
}

// Body rows of ordinary documents, the k-th of which gets a feature.
std::vector<DatRow*> BodyRows(Writings& w) {
  std::vector<DatRow*> rows;
  for (std::size_t d = 2; d < w.documents.size(); ++d) {
    const Document& doc = w.documents[d];
    if (doc.crossReference) continue;
    for (int k = 2; k < doc.rowCount - 1; ++k) {
      if (k == doc.splitRow) continue;
      rows.push_back(&w.rows[static_cast<std::size_t>(doc.firstRow + k)]);
    }
  }
  return rows;
}

// The conventions of the text that each view must be seen to handle, each on
// a few rows spread through the corpus.
void AddLineFeatures(Writings& w, Composer& composer) {
  Rng& rng = composer.rng();
  std::vector<DatRow*> body = BodyRows(w);
  std::size_t next = 0;
  const auto take = [&]() -> DatRow& {
    next = (next + 37) % body.size();
    return *body[next];
  };
  for (int i = 0; i < 3; ++i) take().f[8].insert(0, u"  ");  // indented
  for (int i = 0; i < 3; ++i) take().f[8] += u"／";          // ends with a line mark
  for (int i = 0; i < 4; ++i) {
    auto& f = take().f;
    f[8] += u"／" + composer.LetterLine(20, 60);
  }
  for (const auto line : kDiagram) take().f[8] = std::u16string(line);
  {
    // Longer than a bookmark keeps and than one vertical page holds.
    auto& f = take().f;
    f[8].clear();
    while (f[8].size() < 300) f[8] += composer.LetterLine(8, 14).substr(0, 9) + u"／";
  }
  take().f[8] = composer.LetterLine(150, 170);  // wider than the hit list's context
  for (int i = 0; i < 3; ++i) {
    auto& f = take().f;  // a row that belongs to no order
    f[8].clear();
    f[9].clear();
    f[10].clear();
  }
  {
    const Document& target = w.documents[5];
    auto& f = take().f;
    f[8] = u"この段は" + target.title + u"に移動／" +
           w.rows[static_cast<std::size_t>(target.firstRow)].f[2];
  }
  // Translations: no note, two, three; a leading blank; a number that links.
  for (int i = 0; i < 2; ++i) take().f[15].clear();
  for (int notes = 2; notes <= 3; ++notes) {
    auto& f = take().f;
    f[15] = composer.Rendering(30, 60, 0);
    for (int n = 0; n < notes; ++n)
      f[15] += u"＜注" + text::IntText(n + 1) + u"＞" + composer.Rendering(10, 20, 0);
  }
  take().f[15].insert(0, u" ");
  {
    const auto& ref = w.rows[static_cast<std::size_t>(w.documents[7].firstRow)].f[2];
    take().f[15] += u"（" + ref + u"を参照）";
  }
  // Index notes with page references, volume references and row keys.
  for (int i = 0; i < 6; ++i) {
    auto& f = take().f;
    const auto& ref =
        w.rows[static_cast<std::size_t>(w.documents[static_cast<std::size_t>(3 + i)].firstRow)]
            .f[2];
    const int page = rng.Between(100, 700);
    const int line = rng.Between(10, 99);
    f[52] = u"開結" + text::IntText(page) + u"." + text::IntText(line) + u"、大12.3a、" + ref +
            u"、成仏の文";
    if (i == 0) f[52] += u"、定本12.05、99999";
  }
  // Keys with a decimal place: rows added between two others after numbering.
  for (std::size_t d = 6; d < w.documents.size() && d < 30; d += 11) {
    const Document& doc = w.documents[d];
    if (doc.crossReference || doc.rowCount < 4) continue;
    auto& prev = w.rows[static_cast<std::size_t>(doc.firstRow + doc.rowCount - 2)].f[2];
    w.rows[static_cast<std::size_t>(doc.firstRow + doc.rowCount - 1)].f[2] = prev + u".5";
  }
}

}  // namespace

Writings ComposeWritings(const Sizes& sizes, Composer& composer, Registry& registry) {
  Writings w;
  Rng& rng = composer.rng();
  std::set<std::u16string> titles;

  // The documents: all ten classes in turn, dates rising with the system order.
  for (int d = 0; d < sizes.documents; ++d) {
    Document doc;
    doc.klass = d % 10;
    doc.year = 1253 + d * 30 / sizes.documents;
    doc.month = rng.Between(1, 12);
    doc.day = rng.Between(1, 28);
    doc.autograph = rng.Percent(40);
    doc.manuscript = rng.Percent(35);
    doc.rowCount = rng.Between(sizes.rowsMin, sizes.rowsMax);
    if (d == 0) {
      doc.title = u"聖愚問答抄";
    } else if (d == 1) {
      doc.title = u"御義口伝";
    } else {
      doc.title = UniqueTitle(composer, titles);
      if (d % 7 == 3) doc.title += u" 上";      // a title with a blank
      if (d % 11 == 5) doc.title += u"(別本)";  // a title with a bracket
    }
    doc.bangou = d % 9 == 4 && static_cast<std::size_t>(d / 9) < kBangouForms.size()
                     ? std::u16string(kBangouForms[static_cast<std::size_t>(d / 9)])
                     : u"1-" + IntText(101 + d);
    w.documents.push_back(std::move(doc));
  }
  for (int x = 0; x < sizes.crossReferences; ++x) {
    Document doc;
    doc.crossReference = true;
    doc.target = 2 + (x * 7) % (sizes.documents - 2);
    doc.title = UniqueTitle(composer, titles);
    doc.klass = w.documents[static_cast<std::size_t>(doc.target)].klass;
    doc.bangou = w.documents[static_cast<std::size_t>(doc.target)].bangou;
    doc.rowCount = 1;
    w.documents.push_back(std::move(doc));
  }
  // A row for the end notice, which the import takes out of every order.
  const long rowsTotal = [&] {
    long n = 1;
    for (const Document& doc : w.documents) n += doc.rowCount;
    return n;
  }();

  // Row keys: rising, with gaps between documents, spread far enough that the
  // system-only heads fall inside two documents, which are shifted to hold
  // them at a row past their title.
  std::vector<long> starts;
  {
    const long span = std::min<long>(49000 - 10001, std::max<long>(9000, rowsTotal * 13 / 10));
    const long gapMax =
        std::max<long>(1, 2 * (span - rowsTotal) / static_cast<long>(w.documents.size()));
    long next = 10001;
    for (const Document& doc : w.documents) {
      starts.push_back(next);
      next += doc.rowCount + 1 + rng.Between(0, static_cast<int>(gapMax));
    }
    for (const long target : kSystemOnlyHeads) {
      std::size_t d = 2;  // the two works with later heads keep theirs
      while (d + 1 < w.documents.size() && !w.documents[d + 1].crossReference &&
             starts[d + 1] <= target - 3)
        ++d;
      Document& doc = w.documents[d];
      const long offset = std::clamp<long>(target - starts[d], 2, doc.rowCount - 2);
      const long shift = target - offset - starts[d];
      for (std::size_t k = d; k < starts.size(); ++k) starts[k] += shift;
      doc.splitRow = static_cast<int>(offset);
    }
  }

  // The rows of each document: a title line, then the letter.
  for (std::size_t d = 0; d < w.documents.size(); ++d) {
    Document& doc = w.documents[d];
    doc.firstRow = static_cast<int>(w.rows.size());
    for (int k = 0; k < doc.rowCount; ++k) {
      DatRow row;
      auto& f = row.f;
      f[2] = IntText(starts[d] + k);
      f[3] = IntText(static_cast<long>(d) + 1);
      f[4] = doc.bangou;
      f[6] = doc.title;
      f[7] = IntText(doc.klass);
      f[18] = IntText(static_cast<long>(d) + 1);
      f[19] = DateText(doc.year, doc.month, doc.day);
      f[20] = Keinen(doc.year, doc.month, doc.day);
      f[21] = rng.Percent(70) ? u"和文" : u"漢文";
      if (doc.crossReference) {
        const Document& target = w.documents[static_cast<std::size_t>(doc.target)];
        f[8] = doc.title + u"(本文は番号" + target.bangou + u"に移動)／" +
               w.rows[static_cast<std::size_t>(target.firstRow)].f[2];
        f[9] = u"◆" + doc.title;
        f[15] = u"別名の見出しのみ。本文は" + target.title + u"に収める。";
      } else if (k == 0) {
        f[8] = doc.title;
        f[9] = u"◆" + doc.title;
        f[15] = doc.title + u"（題）";
      } else {
        f[8] = BodyLine(composer, sizes);
        if (rng.Percent(12)) f[9] = WithOldForms(f[8], rng, 60);  // a second form of the text
        f[15] = composer.Rendering(30, 160, 30);
      }
      if (!doc.crossReference && k > 0) {
        if (doc.autograph) {
          f[10] = WithOldForms(f[8], rng, 50);
          f[11] = f[8];
          if (rng.Percent(30)) f[13] = WithModernKana(f[8], rng, 40);
          if (rng.Percent(15)) {
            f[50] = u"真蹟は" + composer.Place() + u"の寺に蔵す。";
            f[50] += composer.Remark();
          }
        }
        if (doc.manuscript) {
          f[12] = WithModernKana(f[8], rng, 30);
          if (rng.Percent(15)) f[51] = u"写本：" + composer.Remark();
        }
        if (rng.Percent(6)) f[14] = composer.Remark();
        if (rng.Percent(5)) f[48] = u"作業の覚え／" + composer.Remark();
        if (rng.Percent(3)) f[49] = u"校合済み／再確認";
      }
      w.rows.push_back(std::move(row));
    }
    if (doc.splitRow > 0) {
      // Stored without a head mark: only the system order's placement adds one.
      w.rows[static_cast<std::size_t>(doc.firstRow + doc.splitRow)].f[9].clear();
    }
  }
  // The second parts of the two works whose later heads have no record.
  {
    auto& lower =
        w.rows[static_cast<std::size_t>(w.documents[0].firstRow + w.documents[0].rowCount / 2)].f;
    lower[8] = u"聖愚問答抄　下";
    lower[9].clear();  // the head mark comes from the corrections
    registry.corrections.push_back({u"Dat", lower[2], 9, u"head", u"", u"◆聖愚問答抄　下"});
    auto& second =
        w.rows[static_cast<std::size_t>(w.documents[1].firstRow + w.documents[1].rowCount / 2)].f;
    second[8] = u"御義口伝　下";
    second[9] = u"◆御義口伝　下";
    w.rows[static_cast<std::size_t>(w.documents[0].firstRow)].f[9] = u"◆聖愚問答抄　上";
    w.rows[static_cast<std::size_t>(w.documents[1].firstRow)].f[9] = u"◆御義口伝　上";
  }
  AddLineFeatures(w, composer);
  // The end notice.
  {
    DatRow last;
    last.f[2] = IntText(std::stol(text::ToUtf8(w.rows.back().f[2])) + 1);
    last.f[8] = u"これより後の遺文は本データには収録しておりません";
    w.rows.push_back(std::move(last));
  }
  return w;
}

}  // namespace suizo::gen
