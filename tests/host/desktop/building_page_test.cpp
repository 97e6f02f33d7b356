// Doors are named, schedules added, named and deleted, as the command line does it.
#include <gmock/gmock.h>

#include <QGroupBox>
#include <QTableView>

#include "host/desks/schedule_desk.h"
#include "tests/host/desktop/desktop_fixture.h"

namespace qorhost::test {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

class BuildingScreens : public DesktopTest {
 protected:
  BuildingScreens() { OpenDemoAt(QStringLiteral("building")); }

  [[nodiscard]] QTableView& Of(const char* table) { return Find<QTableView>(table); }
  [[nodiscard]] int RowsOf(const char* table) { return Of(table).model()->rowCount(); }
  [[nodiscard]] std::string CellOf(const char* table, int row, int column) {
    return Of(table).model()->index(row, column).data().toString().toStdString();
  }
  void ClickCell(const char* table, int row, int column) {
    auto& view = Of(table);
    QTest::mouseClick(view.viewport(), Qt::LeftButton, Qt::NoModifier,
                      view.visualRect(view.model()->index(row, column)).center());
    Settle();
  }
  void ClickSchedule(const char* name) {
    for (int row = 0; row < RowsOf("schedules"); ++row) {
      if (CellOf("schedules", row, 2) == name) {
        ClickCell("schedules", row, 2);
        return;
      }
    }
    FAIL() << "there is no schedule " << name;
  }
  [[nodiscard]] std::string DoorName(int door) {
    return Cell("SELECT DOORNAME FROM DOORS WHERE UNITKEY=2 AND DOORID=" +
                Cell("SELECT Min(DOORID) FROM DOORS WHERE UNITKEY=2") + "+" +
                std::to_string(door - 1));
  }
  [[nodiscard]] std::string Schedules(const std::string& name) {
    return Cell("SELECT Count(*) FROM Schedules WHERE UnitKey=2 AND ScheduleName='" + name + "'");
  }
};

TEST_F(BuildingScreens, ShowDoorsAndSchedulesOfTheUnit) {
  EXPECT_EQ(std::to_string(RowsOf("doors")), Cell("SELECT Count(*) FROM DOORS WHERE UNITKEY=2"));
  EXPECT_EQ(CellOf("doors", 0, 0), "1");
  EXPECT_EQ(TextIn("doorName"), CellOf("doors", 0, 1));
  EXPECT_EQ(CellOf("schedules", 0, 2), "No Access");
  EXPECT_FALSE(page().HasEntries());
}

TEST_F(BuildingScreens, ADoorIsRenamedAndTheHistoryTakesItBack) {
  const std::string before = CellOf("doors", 2, 1);
  ClickCell("doors", 2, 1);
  EXPECT_EQ(TextIn("doorName"), before);
  Type("doorName", "Yard");
  EXPECT_TRUE(page().HasEntries());
  Click("renameButton");
  EXPECT_EQ(Told(), "Door 3 is called Yard now.");
  EXPECT_EQ(CellOf("doors", 2, 1), "Yard");
  EXPECT_FALSE(page().HasEntries());
  Click("renameButton");
  EXPECT_EQ(Told(), "Door 3 is called Yard already.");
  window().ShowScreen(QStringLiteral("history"));
  EXPECT_EQ(CellOf("entries", 0, 4), "rename door 3 to Yard");
  ClickCell("entries", 0, 4);
  answers_->Click(QMessageBox::Yes);
  Click("undoButton");
  window().ShowScreen(QStringLiteral("building"));
  EXPECT_EQ(CellOf("doors", 2, 1), before);
}

TEST_F(BuildingScreens, ANameThatADoorCannotHaveIsToldAtItsLine) {
  Type("doorName", CellOf("doors", 1, 1).c_str());
  Click("renameButton");
  EXPECT_THAT(Marked(), StartsWith("doorName: door 2 has the name '"));
  Type("doorName", "3");
  EXPECT_EQ(Marked(), "");
  Click("renameButton");
  EXPECT_THAT(Marked(), StartsWith("doorName: Name '3' would be taken for a door's number"));
  EXPECT_EQ(TextIn("doorName"), "3");
}

TEST_F(BuildingScreens, AScheduleIsAddedRenamedAndDeleted) {
  const int before = RowsOf("schedules");
  Type("scheduleName", "Cleaners");
  Click("saveButton");
  EXPECT_THAT(Told(), HasSubstr(", Cleaners."));
  EXPECT_EQ(RowsOf("schedules"), before + 1);
  EXPECT_EQ(Schedules("Cleaners"), "1");
  EXPECT_FALSE(Find<QLineEdit>("scheduleId").isVisible());
  Type("scheduleName", "Cleaners 2");
  Click("saveButton");
  EXPECT_EQ(Schedules("Cleaners 2"), "1");
  answers_->Click(QMessageBox::No);
  Click("deleteButton");
  EXPECT_EQ(Schedules("Cleaners 2"), "1");
  answers_->Click(QMessageBox::Yes);
  Click("deleteButton");
  EXPECT_THAT(Told(), StartsWith("Deleted schedule "));
  EXPECT_EQ(RowsOf("schedules"), before);
  EXPECT_EQ(Find<QGroupBox>("groupSchedule").title(), QStringLiteral("New schedule"));
}

TEST_F(BuildingScreens, AScheduleMayHaveANumberOfItsOwn) {
  Type("scheduleName", "Cleaners");
  Type("scheduleId", "x");
  Click("saveButton");
  EXPECT_THAT(Marked(), StartsWith("scheduleId: Number 'x'"));
  Type("scheduleId", "40");
  Click("saveButton");
  EXPECT_EQ(Told(), "Saved schedule 40, Cleaners.");
  Click("newButton");
  Type("scheduleName", "Guests");
  Type("scheduleId", "40");
  answers_->Click(QMessageBox::Ok);
  Click("saveButton");
  EXPECT_THAT(answers_->LastText(), HasSubstr("the unit has a schedule 40 already"));
  EXPECT_EQ(TextIn("scheduleName"), "Guests");
}

TEST_F(BuildingScreens, WhatEveryUnitHasAndWhatIsInUseStays) {
  ClickSchedule("Full Access");
  EXPECT_FALSE(Find<QPushButton>("deleteButton").isEnabled());
  EXPECT_FALSE(Find<QLineEdit>("scheduleName").isEnabled());
  int used = 0;
  while (CellOf("schedules", used, 3) == "0" || used < 2) {
    ++used;
    ASSERT_LT(used, RowsOf("schedules"));
  }
  ClickCell("schedules", used, 2);
  answers_->Click(QMessageBox::Yes);
  answers_->Click(QMessageBox::Ok);
  Click("deleteButton");
  EXPECT_THAT(answers_->LastText(), HasSubstr("is in use by "));
}

TEST_F(BuildingScreens, WhatIsEnteredAtTheOneStaysWhileTheOtherIsWorkedOn) {
  Type("doorName", "Yard");
  Type("scheduleName", "Cleaners");
  Click("saveButton");
  EXPECT_EQ(TextIn("doorName"), "Yard");
  EXPECT_TRUE(page().HasEntries());
  answers_->Click(QMessageBox::No);
  ClickCell("doors", 1, 1);
  EXPECT_EQ(TextIn("doorName"), "Yard");
  Click("renameButton");
  EXPECT_EQ(DoorName(1), "Yard");
  EXPECT_FALSE(page().HasEntries());
}

TEST_F(BuildingScreens, AreWorkedWithKeysAlone) {
  window().activateWindow();
  Of("doors").setFocus();
  QTest::keyClick(&Of("doors"), Qt::Key_Down);
  EXPECT_EQ(TextIn("doorName"), CellOf("doors", 1, 1));
  QTest::keyClick(window().focusWidget(), Qt::Key_Tab);
  ASSERT_EQ(window().focusWidget(), &Find<QLineEdit>("doorName"));
  QTest::keyClick(window().focusWidget(), Qt::Key_A, Qt::ControlModifier);
  QTest::keyClicks(window().focusWidget(), QStringLiteral("Yard"));
  QTest::keyClick(window().focusWidget(), Qt::Key_Tab);
  ASSERT_EQ(window().focusWidget(), &Find<QPushButton>("renameButton"));
  QTest::keyClick(window().focusWidget(), Qt::Key_Space);
  Settle();
  EXPECT_EQ(DoorName(2), "Yard");
}

}  // namespace
}  // namespace qorhost::test
