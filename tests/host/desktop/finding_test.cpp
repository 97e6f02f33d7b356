// Rows are found by typing: in the line above them, at its pauses, and in the table itself.
#include <gmock/gmock.h>

#include <QTableView>
#include <QTableWidget>

#include "host/desktop/screens/table_finder.h"
#include "host/desktop/screens/typing_pause.h"
#include "tests/host/desktop/desktop_fixture.h"

namespace qorhost::test {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

class FindingRows : public DesktopTest {
 protected:
  [[nodiscard]] std::string ChosenIn(const char* table) {
    const auto& view = Find<QTableView>(table);
    const QModelIndexList rows = view.selectionModel()->selectedRows();
    if (rows.isEmpty()) {
      return "";
    }
    std::string text;
    for (int column = 0; column < view.model()->columnCount(); ++column) {
      if (!view.isColumnHidden(column)) {
        text += rows.front().siblingAtColumn(column).data().toString().toStdString() + "|";
      }
    }
    return text;
  }
};

TEST_F(FindingRows, ALineChoosesTheFirstUnitWithTheText) {
  OpenDemoAt(QStringLiteral("units"));
  window().activateWindow();
  QTest::keyClick(&window(), Qt::Key_F, Qt::AltModifier);
  ASSERT_EQ(window().focusWidget(), &Find<QLineEdit>("findUnit"));
  const std::string third = Cell("SELECT UnitName FROM Units WHERE UnitKey=3");
  FindBy("findUnit", third.c_str());
  EXPECT_EQ(TextIn("name"), third);
  EXPECT_EQ(Find<QTableView>("units").model()->rowCount(), 3) << "the others stay to be seen";
}

TEST_F(FindingRows, WhatIsTypedIsLookedForWhenTheKeysPause) {
  OpenDemoAt(QStringLiteral("units"));
  Type("findUnit", Cell("SELECT UnitName FROM Units WHERE UnitKey=3").c_str());
  EXPECT_TRUE(ComesTrue([this] { return Find<QLabel>("title").text().startsWith("Unit 3"); }));
}

TEST_F(FindingRows, AnEntryIsAskedAboutBeforeAnotherUnitIsChosen) {
  OpenDemoAt(QStringLiteral("units"));
  Type("name", "Elsewhere");
  answers_->Click(QMessageBox::No);
  FindBy("findUnit", Cell("SELECT UnitName FROM Units WHERE UnitKey=3").c_str());
  EXPECT_EQ(TextIn("name"), "Elsewhere");
  EXPECT_THAT(ChosenIn("units"), StartsWith("2|"));
}

TEST_F(FindingRows, LinesChooseDoorsAndSchedules) {
  OpenDemoAt(QStringLiteral("building"));
  window().activateWindow();
  const std::string door =
      Find<QTableView>("doors").model()->index(3, 1).data().toString().toStdString();
  QTest::keyClick(&window(), Qt::Key_F, Qt::AltModifier);
  ASSERT_EQ(window().focusWidget(), &Find<QLineEdit>("findDoor"));
  FindBy("findDoor", door.c_str());
  EXPECT_EQ(TextIn("doorName"), door);
  QTest::keyClick(&window(), Qt::Key_H, Qt::AltModifier);
  ASSERT_EQ(window().focusWidget(), &Find<QLineEdit>("findSchedule"));
  FindBy("findSchedule", "late sh");
  EXPECT_EQ(TextIn("scheduleName"), "Late Shift");
}

TEST_F(FindingRows, ALineChoosesRowsOfAReportOneAfterTheOther) {
  OpenDemoAt(QStringLiteral("credential_report"));
  const int rows = Find<QTableView>("rows").model()->rowCount();
  window().activateWindow();
  QTest::keyClick(&window(), Qt::Key_F, Qt::AltModifier);
  ASSERT_EQ(window().focusWidget(), &Find<QLineEdit>("findRow"));
  FindBy("findRow", "o'brien");
  const std::string first = ChosenIn("rows");
  EXPECT_THAT(first, HasSubstr("O'Brien"));
  QTest::keyClick(&Find<QLineEdit>("findRow"), Qt::Key_Return);
  EXPECT_THAT(ChosenIn("rows"), HasSubstr("O'Brien"));
  EXPECT_NE(ChosenIn("rows"), first);
  EXPECT_EQ(Find<QTableView>("rows").model()->rowCount(), rows);
  FindBy("findRow", "nobody has this");
  EXPECT_THAT(ChosenIn("rows"), HasSubstr("O'Brien")) << "what is not found chooses nothing";
}

TEST_F(FindingRows, TypingInTheTableChoosesRowsByAnyColumn) {
  OpenDemoAt(QStringLiteral("building"));
  auto& schedules = Find<QTableView>("schedules");
  schedules.setFocus();
  QTest::keyClicks(&schedules, QStringLiteral("late sh"));
  EXPECT_EQ(TextIn("scheduleName"), "Late Shift");
  QTest::keyClick(&schedules, Qt::Key_Up);  // the keys that go through the rows stay theirs
  EXPECT_NE(TextIn("scheduleName"), "Late Shift");
}

TEST_F(FindingRows, TypingFindsInTheOverviewAsWell) {
  OpenDemoAt(QStringLiteral("overview"));
  auto& expiring = Find<QTableWidget>("expiring");
  if (expiring.rowCount() < 2) {
    expiring.setRowCount(2);
    expiring.setColumnCount(4);
    expiring.setItem(0, 2, new QTableWidgetItem(QStringLiteral("Abel")));
    expiring.setItem(1, 2, new QTableWidgetItem(QStringLiteral("Zorn")));
  }
  const int last = expiring.rowCount() - 1;
  const QString name = expiring.item(last, 2)->text();
  QTest::keyClicks(&expiring, name);
  EXPECT_EQ(expiring.item(expiring.currentRow(), 2)->text(), name);
}

TEST_F(FindingRows, ALineThatIsTypedIntoMayGoWithItsScreen) {
  OpenDemoAt(QStringLiteral("steps"));
  window().activateWindow();
  Type("findStep", "x");
  MakeWindow();
  EXPECT_EQ(window().place(), nullptr);
}

TEST(TypingPauses, EndBeforeTheLineIsLeftAndBeforeAShortcut) {
  QWidget form;
  QLineEdit line(&form);
  QLineEdit other(&form);
  QString narrowed;
  int times = 0;
  NarrowBy(line, [&](const QString& text) {
    narrowed = text;
    ++times;
  });
  form.show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&form));
  line.setFocus();
  QTest::keyClicks(&line, QStringLiteral("ab"));
  other.setFocus();
  EXPECT_EQ(narrowed, QStringLiteral("ab"));
  line.setFocus();
  QTest::keyClicks(&line, QStringLiteral("c"));
  QTest::keyClick(&line, Qt::Key_Home, Qt::ControlModifier);
  EXPECT_EQ(narrowed, QStringLiteral("abc"));
  EXPECT_EQ(times, 2) << "once for each pause, not for each key";
  QTest::keyClick(&line, Qt::Key_Return);
  EXPECT_EQ(times, 2) << "narrowed to it already";
}

/// What mouse and keys do that no other test does.
class ByHand : public DesktopTest {};

TEST_F(ByHand, ANewStoreIsMadeWithTheKeysAlone) {
  OpenDemoAt(QStringLiteral("overview"));
  answers_->Type(QString::fromStdString(File("new.db").string()));
  answers_->Click(QMessageBox::No);
  window().activateWindow();
  QTest::keyClick(&window(), Qt::Key_N, Qt::ControlModifier);
  EXPECT_EQ(answers_->LastText(), "Put the demo building into it?");
  EXPECT_EQ(window().place()->file(), File("new.db"));
  EXPECT_TRUE(window().place()->session().Units().empty());
}

TEST_F(ByHand, StepsAreWrittenToAFileAndOverItAfterAQuestion) {
  OpenDemoAt(QStringLiteral("credentials"));
  GiveACard("9001");
  window().ShowScreen(QStringLiteral("steps"));
  window().activateWindow();
  const QString file = QString::fromStdString(File("steps.txt").string());
  answers_->Type(file);
  QTest::keyClick(&window(), Qt::Key_E, Qt::AltModifier);  // shows the click for a moment first
  EXPECT_TRUE(ComesTrue([this] { return Told().starts_with("Wrote 1 steps to "); }));
  const auto size = std::filesystem::file_size(File("steps.txt"));
  EXPECT_GT(size, 0U);
  answers_->Type(file);
  answers_->Click(QMessageBox::Yes);  // the dialog's own question
  Click("exportButton");
  EXPECT_THAT(Told(), StartsWith("Wrote 1 steps to "));
  EXPECT_EQ(std::filesystem::file_size(File("steps.txt")), size);
  answers_->With([](QDialog& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); });
  Click("exportButton");
  EXPECT_EQ(Cell("SELECT Count(*) FROM ProgramSteps WHERE UnitKey=2 AND Sent=False"), "1");
}

TEST_F(ByHand, TheTenantsOfACodeAreGoneThroughWithMouseAndKeys) {
  OpenDemoAt(QStringLiteral("overview"));
  (void)window().place()->session().sql().Change(
      "UPDATE Tenants SET DIRECTORYCODE=12 WHERE UnitKey=2 AND LastName='O''Brien'", std::nullopt);
  window().ShowScreen(QStringLiteral("dir_codes"));
  ClickEntry("cbodirectorycode", "0102");
  auto& tenants = Find<QListView>("lstTenants");
  const int count = tenants.model()->rowCount();
  ASSERT_EQ(std::to_string(count),
            Cell("SELECT Count(*) FROM Tenants, DIRECTORYCODE WHERE Tenants.UnitKey=2 AND "
                 "Tenants.DIRECTORYCODE=DIRECTORYCODE.RID AND DIRECTORYCODE.DIRECTORYCODE=102"));
  ASSERT_GT(count, 1);
  QTest::mouseClick(tenants.viewport(), Qt::LeftButton, Qt::NoModifier,
                    tenants.visualRect(tenants.model()->index(0, 0)).center());
  EXPECT_EQ(tenants.currentIndex().row(), 0);
  QTest::keyClick(&tenants, Qt::Key_Down);
  EXPECT_EQ(tenants.currentIndex().row(), 1);
  EXPECT_FALSE(page().HasEntries()) << "looking at tenants changes nothing";
  Type("txtPhoneNo", "555-1111");
  Click("saveButton");
  EXPECT_EQ(Told(), "Saved directory code 0102.");
  EXPECT_EQ(Find<QListView>("lstTenants").model()->rowCount(), count);
}

}  // namespace
}  // namespace qorhost::test
