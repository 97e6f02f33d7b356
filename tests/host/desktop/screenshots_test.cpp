// A picture of every screen, light, dark and with large text, for people to look at; and what can
// be checked of it without them: that no text is cut.
#include <gmock/gmock.h>

#include <QDir>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QTableView>

#include "host/desktop/binding/date_field.h"
#include "host/desktop/screens/import_page.h"
#include "host/desktop/screens/merge_page.h"
#include "host/desktop/shell/faults_dialog.h"
#include "tests/host/desktop/cut_texts.h"
#include "tests/host/desktop/desktop_fixture.h"

namespace qorhost::test {
namespace {

class Screenshots : public DesktopTest {
 protected:
  void Take(const QString& name, const QString& look) { Take(window(), name, look); }
  void Take(QWidget& widget, const QString& name, const QString& look) {
    const QDir folder(QStringLiteral(QORDESK_PICTURES));
    ASSERT_TRUE(folder.mkpath(QStringLiteral(".")));
    const QString file = folder.filePath(QStringLiteral("%1-%2.png").arg(name, look));
    const QPixmap picture = widget.grab();
    EXPECT_EQ(picture.width(), qRound(widget.width() * widget.devicePixelRatioF()));
    // As small as they get; those that documents show have a palette of 256 colours, too.
    EXPECT_TRUE(picture.save(file, "PNG", 0)) << file.toStdString();
  }
  void TakeTenants(const QString& look);
  void TakeReport(const QString& look);
  void TakeCalls(const QString& look);
  void TakeImport(const QString& look);
  void TakeMerge(const QString& look);
  void TakeBuilding(const QString& look);
  /// A person reads it without moving it sideways.
  void ExpectNotWider(const char* table, const std::string& where) {
    EXPECT_EQ(Find<QTableView>(table).horizontalScrollBar()->maximum(), 0) << where;
  }
  void ExpectNothingCut(const std::string& where) { test::ExpectNothingCut(window(), where); }
};

/// The first row of a table, and with Ctrl the second.
void ClickRows(QTableView& view, int count) {
  for (int row = 0; row < count; ++row) {
    QTest::mouseClick(view.viewport(), Qt::LeftButton,
                      row == 0 ? Qt::NoModifier : Qt::ControlModifier,
                      view.visualRect(view.model()->index(row, 1)).center());
  }
  Settle();
}

void Screenshots::TakeTenants(const QString& look) {
  window().ShowScreen(QStringLiteral("tenants"));
  ClickRows(Find<QTableView>("tenants"), 1);
  Take(QStringLiteral("tenant"), look);
  ClickRows(Find<QTableView>("tenants"), 2);
  Choose("schedule4", "Management");
  Take(QStringLiteral("several_tenants"), look);
  answers_->With([&](QDialog& dialog) {
    Take(dialog, QStringLiteral("changes"), look);
    test::ExpectNothingCut(dialog, "changes, " + look.toStdString());
    QTest::keyClick(&dialog, Qt::Key_Escape);
  });
  Click("saveButton");
  answers_->Click(QMessageBox::Yes);
  Click("newButton");
  ClickRows(Find<QTableView>("tenants"), 1);
  answers_->With([&](QDialog& dialog) {
    Take(dialog, QStringLiteral("lease_end"), look);
    test::ExpectNothingCut(dialog, "lease end, " + look.toStdString());
    QTest::keyClick(&dialog, Qt::Key_Escape);
  });
  Click("endButton");
}

void Screenshots::TakeReport(const QString& look) {
  window().ShowScreen(QStringLiteral("dir_code_report"));
  Choose("cboField_0", "Directory End Date");
  Choose("cboFilter_0", "between");
  Choose("cboField_1", "Display Name");
  Choose("cboField_2", "Directory Status");
  QTest::mouseClick(&Find<DateField>("dtpDateFrom_0").check(), Qt::LeftButton, Qt::NoModifier,
                    {8, 8});
  Click("runButton");
  EXPECT_THAT(Marked(), testing::StartsWith("dtpDateFrom_0: Condition 1"));
  Take(QStringLiteral("report_refusal"), look);
  ExpectNothingCut("report, " + look.toStdString());
}

void Screenshots::TakeCalls(const QString& look) {
  window().ShowScreen(QStringLiteral("credentials"));
  window().activateWindow();
  (void)QTest::qWaitForWindowActive(&window());
  QTest::keyClick(&window(), Qt::Key_L, Qt::ControlModifier);
  Settle();
  ASSERT_FALSE(window().calls().isHidden());
  CallLog& log = window().calls().log();
  log.Flush();
  int statement = 0;
  while (statement + 1 < log.rowCount() &&
         log.index(statement, CallLog::kMember).data().toString() !=
             QLatin1String("ExecuteSelect")) {
    ++statement;
  }
  auto& calls = Find<QTableView>("calls");
  const QModelIndex call = log.index(statement, CallLog::kMember);
  calls.scrollTo(call);
  QTest::mouseClick(calls.viewport(), Qt::LeftButton, Qt::NoModifier,
                    calls.visualRect(call).center());
  Settle();
  EXPECT_TRUE(Find<QPlainTextEdit>("wholeCall")
                  .toPlainText()
                  .contains(QLatin1String("ExecuteSelect(conn: ")));
  Take(QStringLiteral("call_log"), look);
  ExpectNothingCut("call log, " + look.toStdString());
  window().calls().hide();
  Settle();
}

void Screenshots::TakeImport(const QString& look) {
  const std::filesystem::path residents = WriteResidents();
  window().ShowScreen(QStringLiteral("import"));
  auto& import = dynamic_cast<ImportPage&>(page());
  import.Open(residents);
  Click("checkButton");
  Take(QStringLiteral("import_headings"), look);
  ExpectNothingCut("import with an unknown heading, " + look.toStdString());
  Choose("standsFor", "Name");
  Click("checkButton");
  Take(QStringLiteral("import_checked"), look);
  ExpectNothingCut("import, " + look.toStdString());
}

void Screenshots::TakeMerge(const QString& look) {
  const std::filesystem::path unit = WriteChangedUnit();
  window().ShowScreen(QStringLiteral("merge"));
  dynamic_cast<MergePage&>(page()).Open(unit);
  ClickRows(Find<QTableView>("differences"), 1);
  ClickRows(Find<QTableView>("differences"), 2);
  Click("acceptAllButton");
  Take(QStringLiteral("merge_differences"), look);
  ExpectNothingCut("merge, " + look.toStdString());
  Click("acceptNoneButton");
}

void Screenshots::TakeBuilding(const QString& look) {
  window().ShowScreen(QStringLiteral("building"));
  ClickRows(Find<QTableView>("doors"), 1);
  auto& schedules = Find<QTableView>("schedules");
  QTest::mouseClick(schedules.viewport(), Qt::LeftButton, Qt::NoModifier,
                    schedules.visualRect(schedules.model()->index(2, 2)).center());
  Take(QStringLiteral("schedule"), look);
  ExpectNothingCut("a schedule, " + look.toStdString());
  Table faults;
  faults.columns = {{"Unit", "unit"}, {"What is wrong", "fault"}, {"How to mend it", "advice"}};
  faults.rows = {
      {1, std::string("498 codes are in use, and the unit takes 400"),
       std::string("delete what is not needed: nothing can be added before")},
      {2, std::string("Corvin 30-Bit Card-1001 (RID 489) has the door 77, which is not there"),
       std::string("give it one of the unit's doors, from 1, or 0 for none; neither a screen nor "
                   "another command can load the card before: 'sql --write \"UPDATE "
                   "CredentialBank SET DOORCODE=0 WHERE RID=489\"'")},
      {qorcred::Null{}, std::string("the history: entry 7 is missing"),
       std::string("compare with a backup; what the rows hold is not touched by it")}};
  FaultsDialog dialog(&window(), faults);
  dialog.show();
  auto& table = *dialog.findChild<QTableView*>(QStringLiteral("faults"));
  table.selectRow(1);
  Settle();
  Take(dialog, QStringLiteral("faults"), look);
  test::ExpectNothingCut(dialog, "faults, " + look.toStdString());
}

struct Look {
  const char* name;
  Appearance appearance;
};

/// On a screen of twice the density one look tells whether it is laid out as on others.
std::vector<Look> LooksAt(double density) {
  if (density > 1) {
    return {{"high_dpi", {Theme::kLight, 100}}};
  }
  return {{"light", {Theme::kLight, 100}},
          {"dark", {Theme::kDark, 100}},
          {"large", {Theme::kLight, 150}}};
}

TEST_F(Screenshots, OfEveryScreenInEveryLook) {
  if (qEnvironmentVariableIsSet("QT_SCALE_FACTOR")) {
    ASSERT_EQ(window().devicePixelRatioF(), qEnvironmentVariable("QT_SCALE_FACTOR").toDouble());
  }
  for (const Look& look : LooksAt(window().devicePixelRatioF())) {
    window().SetAppearance(look.appearance);
    Settle();
    if (window().place() != nullptr) {
      answers_->Click(QMessageBox::Yes);  // the import's headings are left
    }
    EXPECT_TRUE(window().CloseStore());
    Settle();
    Take(QStringLiteral("start"), QString::fromLatin1(look.name));
    ExpectNothingCut(std::string("start, ") + look.name);
    if (std::filesystem::exists(File("building.db"))) {
      ASSERT_TRUE(window().OpenStore(File("building.db")));
      window().ShowUnit(kUnit);
    } else {
      OpenDemoAt(QStringLiteral("overview"));
      GiveACard("9021");  // so that steps and history have rows
    }
    for (const ScreenEntry& screen : Screens()) {
      window().ShowScreen(QString::fromLatin1(screen.key));
      if (std::string_view(screen.key) == "history") {
        ClickRows(Find<QTableView>("entries"), 1);
        ExpectNotWider("entries", look.name);
      }
      Settle();
      if (std::string_view(screen.key) == "tenants") {
        ExpectNotWider("tenants", look.name);
      }
      Take(QString::fromLatin1(screen.key), QString::fromLatin1(look.name));
      ExpectNothingCut(std::string(screen.key) + ", " + look.name);
      ExpectNoScrollingSideways(std::string(screen.key) + ", " + look.name);
    }
    window().ShowScreen(QStringLiteral("dir_codes"));
    ClickEntry("cbodirectorycode", "0101");
    Take(QStringLiteral("dir_code"), QString::fromLatin1(look.name));
    ExpectNothingCut(std::string("directory code, ") + look.name);
    window().ShowScreen(QStringLiteral("credentials"));
    Click("newButton");
    answers_->Click(QMessageBox::Ok);
    Click("saveButton");
    Take(QStringLiteral("refusal"), QString::fromLatin1(look.name));
    auto& list = Find<QListView>("cboCredentials");
    ClickEntry("cboCredentials", list.model()->index(3, 0).data().toString().toUtf8().constData());
    Take(QStringLiteral("credential"), QString::fromLatin1(look.name));
    ExpectNothingCut(std::string("credential, ") + look.name);
    TakeTenants(QString::fromLatin1(look.name));
    TakeReport(QString::fromLatin1(look.name));
    TakeCalls(QString::fromLatin1(look.name));
    TakeImport(QString::fromLatin1(look.name));
    TakeMerge(QString::fromLatin1(look.name));
    TakeBuilding(QString::fromLatin1(look.name));
  }
  window().SetAppearance({});
}

TEST_F(Screenshots, TextThatGrowsUnderAnOpenScreenIsNotCut) {
  OpenDemoAt(QStringLiteral("overview"));
  GiveACard("9021");
  for (const ScreenEntry& screen : Screens()) {
    window().SetAppearance({});
    window().ShowScreen(QString::fromLatin1(screen.key));
    Settle();
    window().SetAppearance({Theme::kLight, 150});
    LayOut();
    ExpectNothingCut(std::string(screen.key) + ", grown");
    window().SetAppearance({});
    LayOut();
    ExpectNothingCut(std::string(screen.key) + ", small again");
  }
}

}  // namespace
}  // namespace qorhost::test
