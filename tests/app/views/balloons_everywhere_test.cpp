#include <QApplication>
#include <QCursor>
#include <QEnterEvent>
#include <QTemporaryDir>
#include <QTest>
#include <filesystem>
#include <map>

#include "app/corpus/program.h"
#include "app/views/balloon_help_qt.h"
#include "app/views/contents_form.h"
#include "app_test.h"
#include "core/corpus/settings.h"
#include "core/views/balloons.h"
#include "started_program.h"

namespace suizo::app {

namespace {

void Hover(QWidget* control) {
  const QPointF centre = QRectF(control->rect()).center();
  QEnterEvent enter(centre, centre, control->mapToGlobal(centre));
  QApplication::sendEvent(control, &enter);
}

}  // namespace

// Every view of the program, as a scholar reaches it, with the balloons its
// controls carry.
class BalloonsEverywhereTest : public QObject {
  Q_OBJECT

 private:
  QTemporaryDir data_;

  std::filesystem::path Path() const { return data_.path().toStdString(); }

  std::unique_ptr<Program> Started(corpus::MemorySettings& store, int helper) {
    corpus::Settings settings = corpus::ReadSettings(store);
    settings.Helper = helper;
    corpus::WriteSettings(store, settings);
    std::unique_ptr<Program> program = apptest::StartedProgram(Path(), store);
    if (!program) return nullptr;
    reader::Navigator& go = program->navigator();
    go.GoHonbun(u"", 3, 0, search::Method::And, 0, reader::kWritingsFamily);
    go.GoKyou(u"", 0, reader::kWritingsFamily);
    go.GoShiryou(u"", 1, 0, search::Method::And, 0, reader::kSourcesFamily);
    go.GoMok(u"", 3, reader::kWritingsFamily);
    go.GoJisho(u"法華経", reader::kWritingsFamily);
    go.GoNen(u"", 3, reader::kWritingsFamily);
    go.GoSMok(u"");
    return program;
  }

  // The open views by form name.
  static std::map<QString, QWidget*> Views() {
    std::map<QString, QWidget*> views;
    for (const std::u16string_view form : views::BalloonForms()) {
      for (QWidget* w : QApplication::topLevelWidgets()) {
        if (w->isVisible() && w->objectName() == QString::fromStdU16String(std::u16string(form))) {
          views[w->objectName()] = w;
        }
      }
    }
    return views;
  }

 private slots:
  void initTestCase() {
    QVERIFY(data_.isValid());
    std::filesystem::copy(SUIZO_SAMPLE_DIR, Path(), std::filesystem::copy_options::recursive);
  }

  void everyControlTheyNameCarriesItsBalloon() {
    corpus::MemorySettings store;
    std::unique_ptr<Program> program = Started(store, 1);
    QVERIFY(program);
    const std::map<QString, QWidget*> views = Views();
    // The two dialogs are tested on their own; every view is open here.
    for (const char* form :
         {"Form9", "Form15", "Form2", "Form7", "Form16", "Form6", "Form5", "Form12"}) {
      QVERIFY2(views.count(QLatin1String(form)) == 1, form);
    }
    QStringList missing;
    for (const auto& [name, form] : views) {
      auto* help = form->findChild<BalloonHelpQt*>();
      QVERIFY2(help != nullptr && help->Showing(), qPrintable(name));
      for (const views::BalloonTool& tool : views::FormBalloons(name.toStdU16String())) {
        QWidget* control = form->findChild<QWidget*>(ControlObjectName(tool.control));
        // The dictionary shares the search strip's balloons but keeps no refinement.
        const bool refine = tool.control == u"Command14" || tool.control == u"Command15" ||
                            tool.control == u"RefineLevel";
        if (control == nullptr && name == QStringLiteral("Form6") && refine) continue;
        if (control == nullptr) {
          missing << name + ":" + QString::fromStdU16String(tool.control);
          continue;
        }
        const QString text = help->TextOf(control);
        // The dictionary tells its class box's text itself.
        if (name == QStringLiteral("Form6") && tool.control == u"Text3") {
          QVERIFY(text.startsWith(QString::fromStdU16String(tool.text)));
        } else {
          QCOMPARE(text, QString::fromStdU16String(tool.text));
        }
      }
    }
    QVERIFY2(missing.isEmpty(), qPrintable(missing.join(QStringLiteral(", "))));

    // And one shows over its control.
    QWidget* chronology = views.at(QStringLiteral("Form12"));
    auto* help = chronology->findChild<BalloonHelpQt*>();
    // The pointer itself goes there, or the window under it takes the hover back.
    QWidget* fold = chronology->findChild<QWidget*>(QStringLiteral("Command13"));
    QCursor::setPos(fold->mapToGlobal(fold->rect().center()));
    Hover(fold);
    QTRY_VERIFY(help->VisibleBalloon() != nullptr);
    QCOMPARE(help->ShownText(),
             QString::fromStdU16String(*views::BalloonText(u"Form12", u"Command13")));
    program->End();
  }

  void noneAppearsWithHelperOff() {
    corpus::MemorySettings store;
    std::unique_ptr<Program> program = Started(store, 0);
    QVERIFY(program);
    for (const auto& [name, form] : Views()) {
      auto* help = form->findChild<BalloonHelpQt*>();
      QVERIFY2(help != nullptr, qPrintable(name));
      QVERIFY2(!help->Showing(), qPrintable(name));
      for (const views::BalloonTool& tool : views::FormBalloons(name.toStdU16String())) {
        if (QWidget* control = form->findChild<QWidget*>(ControlObjectName(tool.control))) {
          Hover(control);
          QVERIFY(help->TextOf(control).isEmpty());
        }
      }
      QTest::qWait(30);
      QVERIFY2(help->VisibleBalloon() == nullptr, qPrintable(name));
    }
    program->End();
  }
};

SUIZO_APP_TEST(BalloonsEverywhereTest);

}  // namespace suizo::app

#include "balloons_everywhere_test.moc"
