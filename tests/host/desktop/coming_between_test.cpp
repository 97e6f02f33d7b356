// Other seats that come between two steps of what a person does.
#include <gmock/gmock.h>

#include <QTableView>

#include "host/desks/credential_desk.h"
#include "host/desks/credential_entry.h"
#include "host/store/unit_of_work.h"
#include "tests/host/desktop/desktop_fixture.h"

namespace qorhost::test {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

class ComingBetween : public DesktopTest {
 protected:
  /// Another seat queues a step of this kind.
  void QueueBeside(std::string_view kind, std::int32_t row) {
    DeskSession other(OpenStoreFile(File("building.db"), Access::kChange), Surroundings{});
    WorkGuard work(other.sql().work(), WorkOrder{{kUnit}, "queue", {}});
    other.sql().steps().Queue(kUnit, kind, row);
    ASSERT_TRUE(work.Commit());
  }
  [[nodiscard]] std::string Waiting() {
    return Cell("SELECT Count(*) FROM ProgramSteps WHERE UnitKey=2 AND Sent=0");
  }
  void SaveACard(const char* number) {
    Choose("cboCredentialType", "Standard 26-Bit Card");
    Type("txtPINStart", number);
    Type("txtFacilityCode", "7");
    Click("saveButton");
  }
  /// Another seat gives the card another number.
  void RenumberBeside(const char* number, const char* becomes) {
    DeskSession other(OpenStoreFile(File("building.db"), Access::kChange), Surroundings{});
    CredentialDesk desk(other, kUnit, DeskScreen::kCredentials);
    (void)desk.Select(number);
    ASSERT_TRUE(desk.Renumber(CredentialNumber(becomes)).done());
  }
  /// Another seat gives the card other doors.
  void ChangeBeside(const char* number) {
    DeskSession other(OpenStoreFile(File("building.db"), Access::kChange), Surroundings{});
    CredentialDesk desk(other, kUnit, DeskScreen::kCredentials);
    (void)desk.Select(number);
    EnterChange(desk, {"1", {}, false});
    ASSERT_TRUE(desk.SaveEdited().done());
  }
  [[nodiscard]] std::string Cards(const std::string& number) {
    return Cell("SELECT Count(*) FROM CredentialBank WHERE UnitKey=2 AND PINNo=" + number);
  }
};

TEST_F(ComingBetween, AStepThatAnotherSeatQueuedBehindTheShowingIsNotMarked) {
  OpenDemoAt(QStringLiteral("credentials"));
  GiveACard("9001");
  window().ShowScreen(QStringLiteral("steps"));
  ASSERT_EQ(Waiting(), "1");
  QueueBeside("program directory code", 1);
  answers_->Click(QMessageBox::Yes);
  Click("markButton");
  EXPECT_EQ(answers_->LastText(), "Mark the steps that are shown as sent (1)?");
  EXPECT_EQ(Told(), "Marked as sent: 1.");
  EXPECT_EQ(Waiting(), "1");
  EXPECT_EQ(Find<QTableView>("steps").model()->rowCount(), 1);
}

TEST_F(ComingBetween, AStepThatAnotherSeatQueuedBehindTheWritingIsNotMarked) {
  OpenDemoAt(QStringLiteral("credentials"));
  GiveACard("9001");
  window().ShowScreen(QStringLiteral("steps"));
  QueueBeside("program directory code", 1);  // is not shown, but written
  answers_->Type(QString::fromStdString(File("steps.txt").string()));
  Click("exportButton");
  EXPECT_THAT(Told(), StartsWith("Wrote 2 steps"));
  QueueBeside("program directory code", 2);
  ChooseInMenu("Refresh");
  EXPECT_EQ(Find<QTableView>("steps").model()->rowCount(), 3);
  answers_->Click(QMessageBox::Yes);
  Click("markButton");
  EXPECT_EQ(answers_->LastText(), "Mark the steps that were written to a file as sent (2)?");
  EXPECT_EQ(Told(), "Marked as sent: 2.");
  EXPECT_EQ(Waiting(), "1");
  answers_->Click(QMessageBox::Yes);
  Click("markButton");
  EXPECT_EQ(answers_->LastText(), "Mark the steps that are shown as sent (1)?");
  EXPECT_EQ(Waiting(), "0");
}

TEST_F(ComingBetween, WrittenStepsThatWaitNoMoreMarkNoOthers) {
  OpenDemoAt(QStringLiteral("credentials"));
  GiveACard("9001");
  window().ShowScreen(QStringLiteral("steps"));
  answers_->Type(QString::fromStdString(File("steps.txt").string()));
  Click("exportButton");
  (void)window().place()->session().sql().Change("UPDATE ProgramSteps SET Sent=1", std::nullopt);
  QueueBeside("program directory code", 2);
  answers_->Click(QMessageBox::Yes);
  Click("markButton");
  EXPECT_EQ(Told(), "Marked as sent: 0.");
  EXPECT_EQ(Waiting(), "1");
}

TEST_F(ComingBetween, StepsThatAreHiddenByFindAreNotMarked) {
  OpenDemoAt(QStringLiteral("credentials"));
  GiveACard("9001");
  QueueBeside("program directory code", 1);
  window().ShowScreen(QStringLiteral("steps"));
  Type("findStep", "O'Brien");
  answers_->Click(QMessageBox::Yes);
  Click("markButton");  // before the keys have paused
  EXPECT_EQ(answers_->LastText(), "Mark the steps that are shown as sent (1)?");
  EXPECT_EQ(Waiting(), "1");
}

TEST_F(ComingBetween, ADeletionThatAnotherSeatForestalledCanBeTriedAgain) {
  OpenDemoAt(QStringLiteral("credentials"));
  SaveACard("9001");
  ChangeBeside("9001");
  answers_->Click(QMessageBox::Yes);
  answers_->Click(QMessageBox::Ok);
  Click("deleteButton");
  EXPECT_THAT(answers_->LastText(), HasSubstr("omeone else has changed the credential meanwhile"));
  EXPECT_EQ(Cards("9001"), "1");
  answers_->Click(QMessageBox::Yes);
  Click("deleteButton");
  EXPECT_EQ(Told(), "Deleted Standard 26-Bit Card-9001.");
  EXPECT_EQ(Cards("9001"), "0");
}

TEST_F(ComingBetween, ARenumberingThatAnotherSeatForestalledCanBeTriedAgain) {
  OpenDemoAt(QStringLiteral("credentials"));
  SaveACard("9001");
  ChangeBeside("9001");
  answers_->Type(QStringLiteral("9002"));
  answers_->Click(QMessageBox::Ok);
  Click("renumberButton");
  EXPECT_EQ(Cards("9002"), "0");
  EXPECT_FALSE(page().HasEntries());
  answers_->Type(QStringLiteral("9002"));
  Click("renumberButton");
  EXPECT_EQ(Cards("9002"), "1");
}

TEST_F(ComingBetween, ADeletionInAReportThatAnotherSeatForestalledCanBeTriedAgain) {
  OpenDemoAt(QStringLiteral("credentials"));
  SaveACard("9001");
  window().ShowScreen(QStringLiteral("credential_report"));
  Choose("cboField_0", "Card Number");
  Choose("cboFilter_0", "between");
  Type("txtFrom_0", "9001");
  Type("txtTo_0", "9009");
  Click("runButton");
  const auto choose = [this] {
    auto& view = Find<QTableView>("rows");
    ASSERT_EQ(view.model()->rowCount(), 1);
    QTest::mouseClick(view.viewport(), Qt::LeftButton, Qt::NoModifier,
                      view.visualRect(view.model()->index(0, 1)).center());
    Settle();
  };
  choose();
  RenumberBeside("9001", "9003");
  answers_->Click(QMessageBox::Yes);
  answers_->Click(QMessageBox::Ok);
  Click("deleteButton");
  EXPECT_EQ(Cards("9003"), "1");
  choose();
  answers_->Click(QMessageBox::Yes);
  Click("deleteButton");
  EXPECT_EQ(Told(), "Deleted 1 of 1 credentials.");
  EXPECT_EQ(Cards("9003"), "0");
}

}  // namespace
}  // namespace qorhost::test
