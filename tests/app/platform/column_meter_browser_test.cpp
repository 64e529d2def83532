// The default column meter against the browser: lines of the sample corpus,
// made as the vertical page makes them, measured in the measuring frame.
#include <QStringList>
#include <QTest>
#include <QVariantList>
#include <algorithm>
#include <cmath>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "../dialogs/sample_corpus.h"
#include "app/platform/html_pane.h"
#include "app_test.h"
#include "core/corpus/schema.h"
#include "core/corpus/settings.h"
#include "core/reader/column_meter.h"
#include "core/reader/frame.h"
#include "core/reader/highlight.h"
#include "core/reader/line_text.h"
#include "core/reader/links.h"
#include "core/reader/vertical.h"
#include "core/text/utf16.h"
#include "pane_eval.h"

using suizo::platform::HtmlPane;
namespace reader = suizo::reader;
namespace text = suizo::text;

namespace {

constexpr double kColumnPx = 24;  // 16px text at line height 1.5em

QString Q(std::u16string_view t) {
  return QString::fromStdU16String(std::u16string(t));
}

using suizo::apptest::Eval;

// One line as the page hands it to the meter, and where it came from.
struct Measured {
  std::u16string html;  // without the wrapper
  int heightPx = 0;
  QString origin;
  bool probe = false;   // made up rather than taken from the sample
  double browser = -1;  // the wrapper's width in pixels
};

bool HasHalfWidth(std::u16string_view t) {
  return std::any_of(t.begin(), t.end(), [](char16_t c) {
    return (c > 0x20 && c < 0x7F) || (c >= 0xFF61 && c <= 0xFF9F);
  });
}
bool HasLatin(std::u16string_view t) {
  return std::any_of(t.begin(), t.end(), [](char16_t c) {
    return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z');
  });
}
// Words the sample holds often, so that many lines carry hit marks.
const std::vector<std::u16string> kWords = {u"供養の功徳", u"候", u"の道", u"母"};

// Latin and half-width kana the sample lacks, set into its lines at each
// place near a column's end.
const std::u16string_view kForeign[] = {
    u"Lotus Sutra", u"Namu-myoho-renge-kyo", u"Saddharmapundarikasutranamamahayanasutra",
    u"ｼｽﾃﾑ版",      u"(1253.12.23)",         u"p.12, l.3"};

std::vector<Measured> SampleLines(const suizo::apptest::SampleCorpus& sample) {
  const suizo::corpus::Corpus& corpus = *sample.corpus;
  const suizo::corpus::Settings settings;
  const reader::VerticalSettings vs{settings.GmL1, settings.GmL2, settings.Gcm1};
  const reader::VerticalSpec normal = reader::WritingsVerticalSpec(vs, 0);
  const reader::VerticalSpec one = reader::WritingsVerticalSpec(vs, 1);
  reader::VerticalSettings compactSettings = vs;
  compactSettings.Gcm1 = 1;
  const reader::VerticalSpec compact = reader::WritingsVerticalSpec(compactSettings, 0);
  const int gk = sample.selection.Gk;

  std::vector<Measured> lines;
  int k = 0;
  const auto add = [&](const std::u16string& marked, int height, const QString& origin) {
    lines.push_back({reader::MeasuredLine(marked), height, origin});
  };
  for (int l = 1; l <= corpus.DasMaxY; ++l) {
    const int row = corpus.DatOrder[static_cast<std::size_t>(l)];
    const std::u16string raw(corpus.Dat().Get(row, suizo::corpus::dat::kMain));
    const QString origin = QStringLiteral("main %1").arg(row);
    std::u16string t = reader::VerticalMainText(raw, normal, gk);
    if (++k % 2 == 0) t = reader::MarkWords(t, kWords, static_cast<int>(kWords.size()), 0);
    add(t, normal.height1, origin);
    add(t, one.height1, origin + QStringLiteral(" whole height"));
    // A stub as the page shows it: cut in a printed collection, linked in
    // the system's own.
    if (text::Contains(t, reader::kStubMark)) {
      add(reader::VerticalMainText(raw, normal, 1), normal.height1,
          origin + QStringLiteral(" cut"));
      add(reader::LinkLines(t), normal.height1, origin + QStringLiteral(" linked"));
    }
    if (k % 5 == 0) {
      add(std::u16string(reader::kGreyOpen) + t + std::u16string(reader::kGreyClose),
          normal.height1, origin + QStringLiteral(" grey"));
    }
  }
  for (int l = 1; l <= corpus.DasMaxY; ++l) {
    const int row = corpus.DatOrder[static_cast<std::size_t>(l)];
    const std::u16string raw(corpus.Dat().Get(row, suizo::corpus::dat::kTranslation));
    const QString origin = QStringLiteral("translation %1").arg(row);
    std::u16string t = reader::VerticalSecondText(raw, normal);
    if (++k % 2 == 0) t = reader::MarkWords(t, kWords, static_cast<int>(kWords.size()), 0);
    add(t, normal.height2, origin);
    add(t, compact.height2, origin + QStringLiteral(" compact"));
  }
  // The foreign words at every place from one column's end to the next.
  const std::u16string base(corpus.Dat().Get(corpus.DatOrder[2], suizo::corpus::dat::kMain));
  int f = 0;
  for (const std::u16string_view word : kForeign) {
    for (std::size_t at = 10; at <= 17; ++at, ++f) {
      const std::size_t cut = at + static_cast<std::size_t>(f % 3);
      std::u16string t = reader::VerticalMainText(
          base.substr(0, cut) + std::u16string(word) + base.substr(cut), normal, gk);
      if (f % 4 == 0) t = reader::MarkWords(t, kWords, static_cast<int>(kWords.size()), 0);
      add(t, f % 2 == 0 ? normal.height1 : normal.height2,
          QStringLiteral("row %1 with %2 at %3").arg(corpus.DatOrder[2]).arg(Q(word)).arg(at));
    }
  }
  return lines;
}

// Each sign where a column of 256 pixels ends, so that the count tells
// whether the browser breaks before it (the sign then opens the second
// column and 15 characters fill it) or after it (it closes the first column
// and 16 fill the second); Latin signs between letters and between digits.
std::vector<Measured> BreakProbes() {
  const std::u16string k15(15, u'本'), k16(16, u'本');
  std::vector<Measured> probes;
  const auto add = [&](const std::u16string& t, const QString& what) {
    probes.push_back({t, 256, QStringLiteral("%1 at a column's end").arg(what), true});
  };
  for (const char16_t c : std::u16string_view(
           u"、。・！？」）ぁっャーｯｰ…‥々ゝ〜～―‐–％℃°′″‰¢＄￥£±“”‘’「（〝〟\u3000")) {
    const std::u16string sign(1, c);
    add(k16 + sign + k15, Q(sign) + QStringLiteral(" before"));
    add(k15 + sign + k16, Q(sign) + QStringLiteral(" after"));
  }
  for (char16_t c = 0x21; c < 0x7F; ++c) {
    if (c == u'<' || c == u'&') continue;  // they begin markup
    const std::u16string sign(1, c);
    add(k15 + u"a" + sign + k16, Q(sign) + QStringLiteral(" before a kanji"));
    add(k16 + sign + u"a" + k15, Q(sign) + QStringLiteral(" after a kanji"));
    add(k15 + u"a" + sign + u"bb" + k15, Q(sign) + QStringLiteral(" between letters"));
    add(k15 + u"1" + sign + u"22" + k15, Q(sign) + QStringLiteral(" between digits"));
  }
  return probes;
}

}  // namespace

class ColumnMeterBrowserTest : public QObject {
  Q_OBJECT

 private slots:
  void initTestCase() {
    suizo::apptest::SampleCorpus sample;
    lines_ = SampleLines(sample);
    const std::vector<Measured> probes = BreakProbes();
    lines_.insert(lines_.end(), probes.begin(), probes.end());

    pane_ = std::make_unique<HtmlPane>();
    pane_->resize(800, 600);
    pane_->show();
    QVERIFY(QTest::qWaitForWindowExposed(pane_.get()));
    pane_->WriteFrame(Q(reader::MeasuringFrame(reader::WheelStep(96))));
    QTRY_VERIFY_WITH_TIMEOUT(pane_->FrameReady(), 15000);

    // The mapped faces load on first use: measure only once both have, and
    // never in a fallback font.
    pane_->RunScript(QStringLiteral(
        "window.faces='';Promise.all([document.fonts.load('16px \"ＭＳ ゴシック\"','経a'),"
        "document.fonts.load('bold 16px \"ＭＳ ゴシック\"','経a')])"
        ".then(function(f){window.faces=f[0].length+' '+f[1].length;});"));
    QString faces;
    QTRY_VERIFY_WITH_TIMEOUT(
        !(faces = Eval(*pane_, QStringLiteral("window.faces")).value_or(QString()).toString())
             .isEmpty(),
        15000);
    QCOMPARE(faces, QStringLiteral("1 1"));

    // Each line alone after its wrapper, never closed, as the measuring pane
    // takes it.
    QStringList htmls;
    for (const Measured& m : lines_)
      htmls << suizo::platform::JsString(Q(reader::VerticalWrapper(m.heightPx) + m.html));
    const auto widths =
        Eval(*pane_, QStringLiteral("(function(){var l=[%1],w=[];"
                                    "for(var i=0;i<l.length;i++){document.body.innerHTML=l[i];"
                                    "w.push(document.getElementsByTagName('DIV')[0]"
                                    ".getBoundingClientRect().width);}return w;})()")
                         .arg(htmls.join(QLatin1Char(','))));
    QVERIFY(widths.has_value());
    const QVariantList list = widths->toList();
    QCOMPARE(list.size(), static_cast<qsizetype>(lines_.size()));
    for (qsizetype i = 0; i < list.size(); ++i)
      lines_[static_cast<std::size_t>(i)].browser = list[i].toDouble();
  }

  void cleanupTestCase() { pane_.reset(); }

  void theLinesCoverWhatBreaksDifferently() {
    int lines = 0, breaks = 0, halfWidth = 0, latin = 0, marks = 0, links = 0, several = 0;
    for (const Measured& m : lines_) {
      if (m.probe) continue;
      ++lines;
      breaks += text::Contains(m.html, u"<BR>") ? 1 : 0;
      halfWidth += HasHalfWidth(m.html) ? 1 : 0;
      latin += HasLatin(m.html) ? 1 : 0;
      marks += text::Contains(m.html, u"<span>") ? 1 : 0;
      links += text::Contains(m.html, u"<a href=") ? 1 : 0;
      several += m.browser > 3 * kColumnPx ? 1 : 0;
    }
    QVERIFY(lines >= 120);
    QVERIFY(breaks >= 10);
    QVERIFY(halfWidth >= 20);
    QVERIFY(latin >= 20);
    QVERIFY(marks >= 20);
    QVERIFY(links >= 2);
    QVERIFY(several >= 20);
  }

  // A column is as wide as a line is high, so the width is whole columns.
  void browserColumnsAreWhole() {
    QStringList odd;
    for (const Measured& m : lines_) {
      const double columns = m.browser / kColumnPx;
      if (std::abs(columns - std::round(columns)) > 1e-6) {
        odd << QStringLiteral("%1 (%2px): %3px").arg(m.origin).arg(m.heightPx).arg(m.browser);
      }
    }
    QVERIFY2(odd.isEmpty(), qPrintable(odd.join(QLatin1Char('\n'))));
  }

  // The page adds the counts and stops at 28, and pads by whole columns:
  // one column off moves a line to the next page or the panes out of level.
  void meterCountsTheBrowsersColumns() {
    QStringList wrong;
    double largest = 0;
    for (const Measured& m : lines_) {
      const double meter = reader::TextColumnMeter().Columns(m.html, m.heightPx);
      const double browser = m.browser / kColumnPx;
      largest = std::max(largest, std::abs(meter - browser));
      if (std::abs(meter - browser) > 1e-6) {
        wrong << QStringLiteral("%1 (%2px): browser %3, meter %4: %5")
                     .arg(m.origin)
                     .arg(m.heightPx)
                     .arg(browser)
                     .arg(meter)
                     .arg(Q(m.html));
      }
    }
    const auto probes =
        std::count_if(lines_.begin(), lines_.end(), [](const Measured& m) { return m.probe; });
    qInfo("%d texts measured (%d break probes), %d agree, largest difference %g columns",
          static_cast<int>(lines_.size()), static_cast<int>(probes),
          static_cast<int>(lines_.size()) - static_cast<int>(wrong.size()), largest);
    QVERIFY2(wrong.isEmpty(), qPrintable(wrong.join(QLatin1Char('\n'))));
  }

 private:
  std::vector<Measured> lines_;
  std::unique_ptr<HtmlPane> pane_;
};

SUIZO_APP_TEST(ColumnMeterBrowserTest);

#include "column_meter_browser_test.moc"
