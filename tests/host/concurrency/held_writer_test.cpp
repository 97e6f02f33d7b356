// Somebody else is writing: an operation waits or is refused with nothing changed, and nobody waits
// for one who reads a message.
#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <ostream>

#include "host/store/sqlite/schema.h"
#include "tests/host/concurrency/seat.h"
#include "tests/host/concurrency/seat_operations.h"
#include "tests/host/concurrency/small_building.h"
#include "tests/host/store/temporary_folder.h"

namespace qorhost::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

class HeldWriters : public testing::TestWithParam<SeatOperation> {
 protected:
  HeldWriters() {
    MakeBuilding(file_, kRoomy);
    Seat earlier(file_, "bert");
    EXPECT_TRUE(RunAt(EditPhone("103", "555-0"), earlier).done());  // entry 1, to be taken back
  }

  TemporaryFolder folder_;
  std::filesystem::path file_ = folder_.File("building.db");
};

TEST_P(HeldWriters, EndAnOperationThatDoesNotWaitWithNothingChanged) {
  Seat seat(file_, "anna");
  sqlite::Database other = sqlite::OpenDatabase(file_, OpenMode::kReadWrite);
  const std::vector<std::string> before = ContentOf(other);
  other.Run("BEGIN IMMEDIATE; UPDATE DOORS SET DOORNAME='Attic'");
  const Told told = RunAt(GetParam(), seat);
  EXPECT_EQ(told.ending, Ending::kFailed) << TextOf(told);
  ASSERT_EQ(told.failures.size(), 1U) << TextOf(told);
  EXPECT_EQ(told.failures[0],
            fmt::format("The store '{}': database is locked (another program is writing to the "
                        "store: nothing was changed; let it finish, then try again)",
                        file_.string()));
  EXPECT_FALSE(seat.session().sql().inTransaction());
  other.Run("ROLLBACK");
  EXPECT_EQ(ContentOf(other), before);
}

TEST_P(HeldWriters, AreWaitedFor) {
  Seat seat(file_, "anna");
  sqlite::Database other = sqlite::OpenDatabase(file_, OpenMode::kReadWrite);
  int asked = 0;
  seat.SetPatience({std::chrono::hours(1), [&](std::chrono::milliseconds) {
                      if (++asked == 2) {
                        other.Run("COMMIT");
                      }
                      return asked < 3;
                    }});
  other.Run("BEGIN IMMEDIATE; UPDATE DOORS SET DOORNAME='Attic'");
  const Told told = RunAt(GetParam(), seat);
  EXPECT_TRUE(told.done()) << TextOf(told);
  EXPECT_EQ(asked, 2);
  EXPECT_EQ(WrongIn(other, kRoomy), std::vector<std::string>());
  EXPECT_EQ(other.Number("SELECT count(*) FROM AuditEntries"), 2);
}

TEST_P(HeldWriters, WhoGivesUpWaitingHasChangedNothing) {
  Seat seat(file_, "anna");
  sqlite::Database other = sqlite::OpenDatabase(file_, OpenMode::kReadWrite);
  const std::vector<std::string> before = ContentOf(other);
  seat.SetPatience({std::chrono::hours(1), [](std::chrono::milliseconds) { return false; }});
  other.Run("BEGIN IMMEDIATE");
  EXPECT_EQ(RunAt(GetParam(), seat).ending, Ending::kFailed);
  other.Run("ROLLBACK");
  EXPECT_EQ(ContentOf(other), before);
}

INSTANTIATE_TEST_SUITE_P(
    Before, HeldWriters,
    testing::Values(IssueCards("201", "203"), IssueCardsWithTenants("201", "202"),
                    AssignCard("101", "Berg Bea"), AssignCard("101", std::nullopt),
                    DeleteCard("101"), RenumberCard("103", 300), DeleteInReport("3"),
                    ImportCards("card26,301,7,Adam Ann\n"), AddCode("301"),
                    EditPhone("102", "555-8888"), RenumberCode("102", "300"), DeleteCode("101"),
                    ImportCodes("301,555-1\n"), MergeUnit(),
                    WriteByHand("UPDATE DIRECTORYCODE SET PHONENUMBER='1'"), UndoEntry(1),
                    AddTenant("Dahl"), NameTenant("Berg", "Bach"), GiveTenant("Berg", "103"),
                    EndTenant("Adam"), DeleteTenant("Adam"), ImportPeople("Dahl,301,5,301\n"),
                    ReplaceCard("101", "301"), MarkStepsSent(),
                    NameSchedule("Weekdays", "Workdays")),
    [](const testing::TestParamInfo<SeatOperation>& one) {
      return "Operation" + std::to_string(one.index);
    });

class MessageBoxes : public testing::Test {
 protected:
  void SetUp() override {
    MakeBuilding(file_, kCodesInUse);
    anna_ = std::make_unique<Seat>(file_, "anna");
    bert_ = std::make_unique<Seat>(file_, "bert");
  }

  TemporaryFolder folder_;
  std::filesystem::path file_ = folder_.File("building.db");
  std::unique_ptr<Seat> anna_;
  std::unique_ptr<Seat> bert_;
};

TEST_F(MessageBoxes, ANoticeBehindTheFirstWriteIsShownWhenOthersMayWrite) {
  Told meanwhile;
  anna_->onBox = [&](std::string_view) { meanwhile = RunAt(EditPhone("102", "555-1"), *bert_); };
  // The unit is full: the controller says so when it has taken the card from its holder.
  const Told told = RunAt(AssignCard("101", "Berg Bea"), *anna_);
  EXPECT_EQ(told.ending, Ending::kRefused) << TextOf(told);
  EXPECT_THAT(anna_->shown, ElementsAre("You cannot enter more than 7 combined codes."));
  EXPECT_EQ(told.messages, anna_->shown);
  EXPECT_TRUE(meanwhile.done()) << TextOf(meanwhile);
  EXPECT_EQ(bert_->database().Number("SELECT CREDENTIALID1 FROM Tenants WHERE RID=1"), 1);
  EXPECT_EQ(bert_->database().Number("SELECT count(*) FROM ProgramSteps WHERE "
                                     "Kind='program tenant'"),
            0);
}

TEST_F(MessageBoxes, AQuestionIsAskedWhenOthersMayWrite) {
  Told meanwhile;
  anna_->onBox = [&](std::string_view) { meanwhile = RunAt(EditPhone("102", "555-1"), *bert_); };
  const Told told = RunAt(DeleteCard("101"), *anna_);
  EXPECT_EQ(anna_->shown.size(), 1U);
  EXPECT_TRUE(meanwhile.done()) << TextOf(meanwhile);
  // What was asked about has not changed: the answer still holds.
  EXPECT_TRUE(told.done()) << TextOf(told);
  EXPECT_EQ(WrongIn(bert_->database(), kCodesInUse), std::vector<std::string>());
}

TEST_F(MessageBoxes, WhatWasAskedAboutMayChangeWhileTheQuestionIsOpen) {
  anna_->onBox = [&](std::string_view) {
    EXPECT_TRUE(RunAt(AssignCard("101", std::nullopt), *bert_).done());
  };
  const Told told = RunAt(DeleteCard("101"), *anna_);
  EXPECT_EQ(told.ending, Ending::kStale) << TextOf(told);
  EXPECT_EQ(anna_->shown.size(), 1U);
  EXPECT_THAT(told.changedBy, ElementsAre(HasSubstr("bert")));
  EXPECT_EQ(bert_->database().Number("SELECT count(*) FROM CredentialBank"), 4);
}

TEST_F(MessageBoxes, AnswerNoChangesNothing) {
  anna_->yes = false;
  const std::vector<std::string> before = ContentOf(bert_->database());
  EXPECT_FALSE(RunAt(DeleteCard("101"), *anna_).done());
  EXPECT_FALSE(RunAt(DeleteCode("101"), *anna_).done());
  EXPECT_EQ(ContentOf(bert_->database()), before);
}

}  // namespace
}  // namespace qorhost::test
