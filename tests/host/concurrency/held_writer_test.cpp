// Somebody else is writing: an operation waits or is refused with nothing changed.
#include <fmt/format.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <ostream>

#include "host/store/sqlite/schema.h"
#include "tests/host/concurrency/seat.h"
#include "tests/host/concurrency/seat_operations.h"
#include "tests/host/concurrency/small_building.h"
#include "tests/host/store/temporary_folder.h"

namespace qorhost::test {
namespace {

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

}  // namespace
}  // namespace qorhost::test
