// An operation whose unit others have changed since its desk was filled: done beside a change of
// other rows, told and not done where it is about the rows that were shown.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <memory>
#include <optional>
#include <ostream>

#include "host/store/sqlite/schema.h"
#include "tests/host/concurrency/seat.h"
#include "tests/host/concurrency/seat_operations.h"
#include "tests/host/concurrency/small_building.h"
#include "tests/host/store/temporary_folder.h"
#include "tests/host/store/whole_copy.h"

namespace qorhost::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

const std::string kDeletesHeld =
    "This credential is already assgined to a Tenant. Deleting this credential will remove it from "
    "the assigned Tenant and delete the credential from the system. Do you want to continue?";
const std::string kDeletesCode =
    "This Directory Code is applied to a Tenant. Deleting this Directory Code will remove it from "
    "the system. Do you wish to continue?";
const std::string kSamePhones =
    "The phone numbers for the Directory Code and Call Forwarding are the same. Do you still want "
    "to proceed?";

struct Overtaken {
  std::string name;
  SeatOperation operation;
  std::vector<std::string> asked;  // the questions
  /// What others do to the rows that it is about; none for new rows.
  std::vector<SeatOperation> ofItsRows;
};

void PrintTo(const Overtaken& one, std::ostream* out) {
  *out << one.name;
}

class OvertakenOperations : public testing::TestWithParam<Overtaken> {
 protected:
  void Begin() {
    anna_.reset();
    bert_.reset();
    const std::filesystem::path file = folder_.File("building.db");
    for (const char* name : {"building.db", "building.db-wal", "building.db-shm"}) {
      std::filesystem::remove(folder_.File(name));
    }
    MakeBuilding(file, kRoomy);
    anna_ = std::make_unique<Seat>(file, "anna", true);
    bert_ = std::make_unique<Seat>(file, "bert");
  }
  [[nodiscard]] std::vector<std::string> Content() { return ContentOf(bert_->database()); }
  [[nodiscard]] std::vector<std::string> Wrong() { return WrongIn(bert_->database(), kRoomy); }
  /// How often the controller had a message shown.
  [[nodiscard]] std::size_t MessagesInTrace() const {
    return static_cast<std::size_t>(
        std::count_if(anna_->trace.begin(), anna_->trace.end(),
                      [](const std::string& line) { return line.find("  MsgBox(") == 0; }));
  }

  TemporaryFolder folder_;
  std::unique_ptr<Seat> anna_;
  std::unique_ptr<Seat> bert_;
};

TEST_P(OvertakenOperations, AreDoneBesideAChangeOfOtherRows) {
  const auto elsewhere = WriteByHand("UPDATE DOORS SET DOORNAME='Attic' WHERE DOORID=3");
  for (const SeatOperation& other : {IssueCards("901", "902"), elsewhere}) {
    SCOPED_TRACE(other.name);
    Begin();
    ASSERT_TRUE(RunAt(other, *bert_).done());
    ASSERT_TRUE(RunAt(GetParam().operation, *anna_).done());
    const std::vector<std::string> oneAfterTheOther = Content();

    Begin();
    const PreparedDesk desk = GetParam().operation.prepare(*anna_);
    ASSERT_TRUE(RunAt(other, *bert_).done());
    anna_->trace.clear();
    const Told told = desk.run();
    EXPECT_TRUE(told.done()) << TextOf(told);
    EXPECT_EQ(told.messages, GetParam().asked);
    EXPECT_EQ(anna_->shown, GetParam().asked);
    // The controller has asked again, the operator has not been.
    EXPECT_EQ(MessagesInTrace(), 2 * GetParam().asked.size());
    EXPECT_EQ(Content(), oneAfterTheOther);
    EXPECT_EQ(Wrong(), std::vector<std::string>());
  }
}

TEST_P(OvertakenOperations, AreToldAndKeepTheirEntryAfterAChangeOfTheirRows) {
  for (const SeatOperation& other : GetParam().ofItsRows) {
    SCOPED_TRACE(other.name);
    Begin();
    const PreparedDesk desk = GetParam().operation.prepare(*anna_);
    const auto onScreen = [&desk] {
      return desk.screen ? std::optional(desk.screen()) : std::nullopt;  // a report has none
    };
    const auto entered = onScreen();
    const Told changed = RunAt(other, *bert_);
    ASSERT_TRUE(changed.done()) << TextOf(changed);
    const std::vector<std::string> before = Content();
    anna_->trace.clear();
    const Told told = desk.run();
    EXPECT_EQ(told.ending, Ending::kStale) << TextOf(told);
    EXPECT_THAT(told.changedBy, ElementsAre(testing::StartsWith("bert: ")));
    EXPECT_THAT(told.failures, IsEmpty());
    EXPECT_LE(anna_->shown.size(), 1U);  // nothing twice
    EXPECT_EQ(anna_->shown.size(), MessagesInTrace());
    EXPECT_EQ(Content(), before);
    EXPECT_EQ(Wrong(), std::vector<std::string>());
    EXPECT_TRUE(onScreen() == entered) << "the entry is not what it was";
    // The next attempt is no better until the operator has looked again.
    EXPECT_EQ(desk.run().ending, Ending::kStale);
    EXPECT_EQ(Content(), before);
  }
}

std::vector<Overtaken> OperationsToOvertake() {
  const SeatOperation holderMoves = WriteByHand("UPDATE Tenants SET LastName='X' WHERE TenantID=1");
  return {
      {"Issuing", IssueCards("201", "202"), {}, {}},
      {"IssuingWithTenants", IssueCardsWithTenants("201", "202"), {}, {}},
      {"AssigningAFreeCard",
       AssignCard("103", "Berg Bea"),
       {},
       {RenumberCard("103", 300), AssignCard("103", "Cole Cem"), DeleteCard("103")}},
      {"AssigningAHeldCard",
       AssignCard("101", "Berg Bea"),
       {},
       {RenumberCard("101", 300), AssignCard("101", "Cole Cem"), AssignCard("101", std::nullopt),
        DeleteCard("101"), holderMoves}},
      {"TakingACard",
       AssignCard("101", std::nullopt),
       {},
       {AssignCard("101", "Cole Cem"), DeleteCard("101")}},
      {"DeletingAFreeCard",
       DeleteCard("103"),
       {},
       {AssignCard("103", "Berg Bea"), RenumberCard("103", 300), DeleteCard("103")}},
      {"DeletingAHeldCard",
       DeleteCard("101"),
       {kDeletesHeld},
       {AssignCard("101", "Cole Cem"), AssignCard("101", std::nullopt), DeleteCard("101"),
        holderMoves}},
      {"DeletingInAReport",
       DeleteInReport("3"),
       {},
       {AssignCard("103", "Berg Bea"), RenumberCard("103", 300), DeleteCard("103")}},
      {"RenumberingACard",
       RenumberCard("101", 300),
       {},
       {RenumberCard("101", 301), AssignCard("101", "Cole Cem"), DeleteCard("101")}},
      {"AddingATenant", AddTenant("Dahl"), {}, {}},
      {"NamingATenant",
       NameTenant("Berg", "Bach"),
       {},
       {NameTenant("Berg", "Blum"), GiveTenant("Berg", "103"), DeleteTenant("Berg")}},
      {"GivingATenantACard",
       GiveTenant("Berg", "103"),
       {},
       {AssignCard("104", "Berg Bea"), EndTenant("Berg")}},
      {"EndingALease",
       EndTenant("Adam"),
       {},
       {AssignCard("101", "Berg Bea"), ReplaceCard("101", "301"), DeleteTenant("Adam")}},
      {"DeletingATenant",
       DeleteTenant("Adam"),
       {},
       {NameTenant("Adam", "Abel"), MoveTenant("Adam", "103"), DeleteTenant("Adam")}},
      {"AddingACode", AddCode("301"), {}, {}},
      {"EditingACode",
       EditPhone("102", "555-8888"),
       {},
       {EditPhone("102", "555-9999"), RenumberCode("102", "300"), DeleteCode("102"),
        WriteByHand("UPDATE Tenants SET DIRECTORYCODE=2 WHERE TenantID=2")}},
      {"ForwardingACode", ForwardToItself("102"), {kSamePhones}, {EditPhone("102", "555-9999")}},
      {"RenumberingACode",
       RenumberCode("101", "300"),
       {},
       {RenumberCode("101", "301"), EditPhone("101", "555-9999"), DeleteCode("101")}},
      {"DeletingACode",
       DeleteCode("101"),
       {kDeletesCode},
       {EditPhone("101", "555-9999"), RenumberCode("101", "301"), holderMoves}},
  };
}

INSTANTIATE_TEST_SUITE_P(When, OvertakenOperations, testing::ValuesIn(OperationsToOvertake()),
                         [](const testing::TestParamInfo<Overtaken>& one) {
                           return one.param.name;
                         });

/// What the second is told.
struct ToldCause {
  std::string name;
  SeatOperation operation;
  SeatOperation other;
  StaleCause cause;
};

void PrintTo(const ToldCause& one, std::ostream* out) {
  *out << one.name;
}

class StaleCauses : public testing::TestWithParam<ToldCause> {
 protected:
  void SetUp() override { MakeBuilding(file_, kRoomy); }

  TemporaryFolder folder_;
  std::filesystem::path file_ = folder_.File("building.db");
};

TEST_P(StaleCauses, AreToldWithThoseWhoMadeThem) {
  Seat anna(file_, "anna");
  Seat bert(file_, "bert");
  Seat carl(file_, "carl");
  const PreparedDesk desk = GetParam().operation.prepare(anna);
  ASSERT_TRUE(RunAt(IssueCards("901", "902"), carl).done());
  ASSERT_TRUE(RunAt(GetParam().other, bert).done());
  ASSERT_TRUE(RunAt(WriteByHand("UPDATE DOORS SET DOORNAME='Attic' WHERE DOORID=3"), carl).done());
  const Told told = desk.run();
  EXPECT_EQ(told.ending, Ending::kStale) << TextOf(told);
  EXPECT_EQ(told.cause, GetParam().cause);
  EXPECT_THAT(told.changedBy, ElementsAre(testing::StartsWith("bert: ")));
}

INSTANTIATE_TEST_SUITE_P(
    Of, StaleCauses,
    testing::Values(ToldCause{"RenumberedCard", DeleteCard("103"), RenumberCard("103", 300),
                              StaleCause::kRowChanged},
                    ToldCause{"DeletedCard", RenumberCard("103", 300), DeleteCard("103"),
                              StaleCause::kRowDeleted},
                    ToldCause{"CardGotAHolder", DeleteCard("103"), AssignCard("103", "Berg Bea"),
                              StaleCause::kHolderChanged},
                    ToldCause{"CardLostItsHolder", DeleteCard("101"),
                              AssignCard("101", std::nullopt), StaleCause::kHolderChanged},
                    ToldCause{"HolderOfACardChanged", AssignCard("101", std::nullopt),
                              WriteByHand("UPDATE Tenants SET LastName='X' WHERE TenantID=1"),
                              StaleCause::kHolderChanged},
                    ToldCause{"EditedCode", DeleteCode("102"), EditPhone("102", "555-9999"),
                              StaleCause::kRowChanged},
                    ToldCause{"DeletedCode", EditPhone("102", "555-9999"), DeleteCode("102"),
                              StaleCause::kRowDeleted},
                    ToldCause{"CodeGotAHolder", EditPhone("102", "555-9999"),
                              WriteByHand("UPDATE Tenants SET DIRECTORYCODE=2 WHERE TenantID=2"),
                              StaleCause::kHolderChanged},
                    ToldCause{"RenamedDoor", NameShownDoor(4, "Yard"), NameShownDoor(4, "Court"),
                              StaleCause::kRowChanged},
                    ToldCause{"RenamedSchedule", DeleteShownSchedule(2),
                              NameShownSchedule(2, "Days"), StaleCause::kRowChanged},
                    ToldCause{"DeletedSchedule", NameShownSchedule(2, "Days"),
                              DeleteShownSchedule(2), StaleCause::kRowDeleted},
                    ToldCause{"SetUpUnit", NameShownUnit("East"), SetDigitsOfShownUnit("6"),
                              StaleCause::kRowChanged}),
    [](const testing::TestParamInfo<ToldCause>& one) { return one.param.name; });

/// A seat whose store is put back or replaced while its desk is open.
class ReplacedStores : public testing::Test {
 protected:
  void SetUp() override { MakeBuilding(file_, kRoomy); }

  [[nodiscard]] std::vector<std::string> Content() const {
    sqlite::Database database = sqlite::OpenDatabase(file_, OpenMode::kReadWrite);
    return ContentOf(database);
  }

  TemporaryFolder folder_;
  std::filesystem::path file_ = folder_.File("building.db");
};

TEST_F(ReplacedStores, AStoreThatWasPutBackToAnEarlierStateIsNotTakenForTheOneShown) {
  Seat anna(file_, "anna");
  Seat bert(file_, "bert");
  ASSERT_TRUE(RunAt(EditPhone("102", "555-1"), bert).done());
  bert.database().Run("PRAGMA wal_checkpoint(TRUNCATE)");
  std::filesystem::copy_file(file_, folder_.File("backup.db"));
  ASSERT_TRUE(RunAt(EditPhone("102", "555-2"), bert).done());
  const PreparedDesk desk = EditPhone("102", "555-3").prepare(anna);
  // Back to the first edit in the way of a restore, and then another edit: as many as before.
  {
    Seat backup(folder_.File("backup.db"), "carl");
    ASSERT_TRUE(RunAt(EditPhone("102", "555-4"), backup).done());
    backup.database().Run("PRAGMA wal_checkpoint(TRUNCATE)");
  }
  sqlite::Database source(folder_.File("backup.db"), OpenMode::kReadWrite);
  CopyWhole(source, bert.database());
  const Told told = desk.run();
  EXPECT_EQ(told.ending, Ending::kStale) << TextOf(told);
  EXPECT_EQ(bert.database().Number("SELECT count(*) FROM DirectoryCode WHERE PHONENUMBER='555-4'"),
            1);
}

TEST_F(ReplacedStores, AStoreWhoseFileWasReplacedIsNotWrittenAndTheEntryIsKept) {
  Seat anna(file_, "anna");
  const PreparedDesk desk = EditPhone("102", "555-3").prepare(anna);
  const ScreenSnapshot entered = desk.screen();
  std::filesystem::rename(file_, folder_.File("old.db"));
  MakeBuilding(folder_.File("another.db"), kRoomy);
  std::filesystem::rename(folder_.File("another.db"), file_);
  const std::vector<std::string> before = Content();
  for (int attempt = 0; attempt < 2; ++attempt) {
    const Told told = desk.run();
    EXPECT_EQ(told.ending, Ending::kStale) << TextOf(told);
    EXPECT_EQ(told.cause, StaleCause::kStoreReplaced);
    EXPECT_THAT(told.changedBy, IsEmpty());
    EXPECT_THAT(told.failures, IsEmpty());
    EXPECT_TRUE(desk.screen() == entered) << "the entry is not what it was";
    EXPECT_EQ(Content(), before);
  }
}

}  // namespace
}  // namespace qorhost::test
