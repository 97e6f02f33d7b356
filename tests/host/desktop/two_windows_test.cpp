// Two windows on one store: who saves a row second is told, sees it as it is, and keeps the entry.
#include <gmock/gmock.h>

#include <QTableView>

#include "tests/host/desktop/desktop_fixture.h"

namespace qorhost::test {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::StartsWith;

class TwoWindows : public DesktopTest {
 protected:
  ~TwoWindows() override { other_.reset(); }

  /// Both show the screen for the unit; the first one is worked with.
  void OpenBothAt(const QString& screen) {
    OpenDemoAt(screen);
    other_ = std::move(window_);
    MakeWindow();
    ASSERT_TRUE(window().OpenStore(File("building.db")));
    window().ShowUnit(kUnit);
    window().ShowScreen(screen);
    ASSERT_NE(window().page(), nullptr);
    Settle();
    std::swap(window_, other_);
  }
  void AtTheOther(const std::function<void()>& work) {
    std::swap(window_, other_);
    work();
    std::swap(window_, other_);
  }
  void ClickRow(const char* table, int row) {
    auto& view = Find<QTableView>(table);
    QTest::mouseClick(view.viewport(), Qt::LeftButton, Qt::NoModifier,
                      view.visualRect(view.model()->index(row, 1)).center());
    Settle();
  }
  void ClickLastSchedule() {
    ClickRow("schedules", Find<QTableView>("schedules").model()->rowCount() - 1);
  }
  /// What is asked first is answered with Yes before; then a box tells the refusal.
  void ClickAndBeTold(const char* button) {
    const std::size_t before = answers_->seen().size();
    answers_->Click(QMessageBox::Ok);
    Click(button);
    ASSERT_GT(answers_->seen().size(), before);
  }

  std::unique_ptr<MainWindow> other_;
};

TEST_F(TwoWindows, WhoNamesADoorSecondIsToldAndKeepsTheName) {
  OpenBothAt(QStringLiteral("building"));
  ClickRow("doors", 2);
  AtTheOther([this] {
    ClickRow("doors", 2);
    Type("doorName", "Court");
    Click("renameButton");
    EXPECT_EQ(Told(), "Door 3 is called Court now.");
  });
  Type("doorName", "Yard");
  ClickAndBeTold("renameButton");
  EXPECT_THAT(answers_->LastText(),
              AllOf(HasSubstr("Nothing was changed."),
                    HasSubstr("Someone else has changed the door meanwhile. What you entered is "
                              "still there: look at it and try again."),
                    HasSubstr("anna: rename door 3 to Court")));
  EXPECT_EQ(TextIn("doorName"), "Yard");
  EXPECT_TRUE(page().HasEntries());
  EXPECT_EQ(Find<QTableView>("doors").model()->index(2, 1).data().toString(),
            QStringLiteral("Court"));
  EXPECT_EQ(Cell("SELECT Count(*) FROM DOORS WHERE UNITKEY=2 AND DOORNAME='Court'"), "1");
  Click("renameButton");
  EXPECT_EQ(Told(), "Door 3 is called Yard now.");
}

TEST_F(TwoWindows, DoorsThatTheOtherLeftAloneAreNamedBeside) {
  OpenBothAt(QStringLiteral("building"));
  AtTheOther([this] {
    ClickRow("doors", 2);
    Type("doorName", "Court");
    Click("renameButton");
  });
  ClickRow("doors", 1);
  Type("doorName", "Yard");
  Click("renameButton");
  EXPECT_EQ(Told(), "Door 2 is called Yard now.");
}

TEST_F(TwoWindows, WhoNamesAScheduleSecondIsToldAndKeepsTheName) {
  OpenBothAt(QStringLiteral("building"));
  ClickLastSchedule();
  const std::string former = TextIn("scheduleName");
  AtTheOther([this] {
    ClickLastSchedule();
    Type("scheduleName", "Cleaners");
    Click("saveButton");
    EXPECT_THAT(Told(), StartsWith("Saved schedule "));
  });
  Type("scheduleName", "Guests");
  ClickAndBeTold("saveButton");
  EXPECT_THAT(answers_->LastText(), HasSubstr("Someone else has changed the schedule meanwhile."));
  EXPECT_EQ(TextIn("scheduleName"), "Guests");
  EXPECT_EQ(Cell("SELECT Count(*) FROM Schedules WHERE ScheduleName='Cleaners'"), "1");
  Click("saveButton");
  EXPECT_THAT(Told(), HasSubstr(", Guests."));
  EXPECT_NE(former, "Guests");
}

TEST_F(TwoWindows, AScheduleThatTheOtherHasNamedIsNotDeletedUnseen) {
  OpenBothAt(QStringLiteral("building"));
  Type("scheduleName", "Cleaners");
  Click("saveButton");  // one that nobody uses
  AtTheOther([this] {
    QTest::keyClick(&window(), Qt::Key_F5);
    ClickLastSchedule();
    ASSERT_EQ(TextIn("scheduleName"), "Cleaners");
    Type("scheduleName", "Gardeners");
    Click("saveButton");
  });
  answers_->Click(QMessageBox::Yes);
  ClickAndBeTold("deleteButton");
  EXPECT_THAT(answers_->LastText(), HasSubstr("Someone else has changed the schedule meanwhile."));
  EXPECT_EQ(TextIn("scheduleName"), "Gardeners");
  answers_->Click(QMessageBox::Yes);
  Click("deleteButton");
  EXPECT_THAT(Told(), StartsWith("Deleted schedule "));
}

TEST_F(TwoWindows, AScheduleThatTheOtherHasDeletedIsToldAndShownNoMore) {
  OpenBothAt(QStringLiteral("building"));
  Type("scheduleName", "Cleaners");
  Click("saveButton");
  AtTheOther([this] {
    QTest::keyClick(&window(), Qt::Key_F5);
    ClickLastSchedule();
    answers_->Click(QMessageBox::Yes);
    Click("deleteButton");
  });
  Type("scheduleName", "Guests");
  ClickAndBeTold("saveButton");
  EXPECT_THAT(answers_->LastText(), HasSubstr("Someone else has deleted the schedule meanwhile."));
  EXPECT_EQ(TextIn("scheduleName"), "");
  EXPECT_FALSE(page().HasEntries());
  EXPECT_EQ(Cell("SELECT Count(*) FROM Schedules WHERE ScheduleName='Guests'"), "0");
}

TEST_F(TwoWindows, WhoChangesAUnitSecondIsToldAndKeepsTheEntry) {
  OpenBothAt(QStringLiteral("units"));
  AtTheOther([this] {
    Type("codeDigits", "6");
    Click("saveButton");
    EXPECT_THAT(Told(), StartsWith("Saved: Unit 2"));
  });
  Type("name", "Linden Park East");
  Click("ignoresFacility");
  ClickAndBeTold("saveButton");
  EXPECT_THAT(answers_->LastText(), AllOf(HasSubstr("Someone else has changed the unit meanwhile."),
                                          HasSubstr("anna: edit unit 2")));
  EXPECT_EQ(TextIn("name"), "Linden Park East");
  EXPECT_EQ(TextIn("codeDigits"), "6");  // what the other has made of it
  EXPECT_TRUE(page().HasEntries());
  EXPECT_EQ(Cell("SELECT UnitName FROM Units WHERE UnitKey=2"), "Linden Park");
  Click("saveButton");
  EXPECT_EQ(Told(), "Saved: Unit 2, Linden Park East.");
  EXPECT_EQ(Cell("SELECT MaxDigitsDirectoryCode FROM UnitSettings WHERE UnitKey=2"), "6");
}

TEST_F(TwoWindows, AUnitThatTheOtherHasChangedIsNotDeletedUnseen) {
  OpenBothAt(QStringLiteral("units"));
  AtTheOther([this] {
    Type("name", "Linden Park East");
    Click("saveButton");
  });
  answers_->Click(QMessageBox::Yes);
  ClickAndBeTold("deleteButton");
  EXPECT_THAT(answers_->LastText(), HasSubstr("Someone else has changed the unit meanwhile."));
  EXPECT_EQ(TextIn("name"), "Linden Park East");
  EXPECT_EQ(Cell("SELECT Count(*) FROM Units WHERE UnitKey=2"), "1");
}

TEST_F(TwoWindows, AUnitThatTheOtherHasDeletedIsToldAndShownNoMore) {
  OpenBothAt(QStringLiteral("units"));
  ClickRow("units", 2);
  AtTheOther([this] {
    ClickRow("units", 2);
    answers_->Click(QMessageBox::Yes);
    Click("deleteButton");
    EXPECT_THAT(Told(), StartsWith("Deleted: Unit 3"));
  });
  Type("name", "Elsewhere");
  ClickAndBeTold("saveButton");
  EXPECT_THAT(answers_->LastText(), HasSubstr("Someone else has deleted the unit meanwhile."));
  EXPECT_EQ(Find<QLabel>("title").text(), QStringLiteral("New unit"));
  EXPECT_EQ(Find<QTableView>("units").model()->rowCount(), 2);
}

}  // namespace
}  // namespace qorhost::test
