// An operation whose unit others have changed since its desk was filled: done beside a change of
// other rows, told and not done where it is about the rows that were shown.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <optional>
#include <ostream>

#include "tests/host/concurrency/meeting_place.h"
#include "tests/host/concurrency/seat_operations.h"
#include "tests/host/concurrency/small_building.h"

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
  /// Seats take longer to open than what is done at them; both begin anew each time.
  static void SetUpTestSuite() {
    place = NewMeetingPlace(kRoomy);
    anna = place->NewSeat("anna", true);
    bert = place->NewSeat("bert", false);
  }
  static void TearDownTestSuite() {
    bert.reset();
    anna.reset();
    place.reset();
  }
  static void Begin() {
    place->Renew();
    anna->shown.clear();
  }
  /// How often the controller had a message shown.
  [[nodiscard]] static std::size_t MessagesInTrace() {
    return static_cast<std::size_t>(
        std::count_if(anna->trace.begin(), anna->trace.end(),
                      [](const std::string& line) { return line.find("  MsgBox(") == 0; }));
  }

  static inline std::unique_ptr<MeetingPlace> place;
  static inline std::unique_ptr<Seat> anna;
  static inline std::unique_ptr<Seat> bert;
};

TEST_P(OvertakenOperations, AreDoneBesideAChangeOfOtherRows) {
  const auto elsewhere = WriteByHand("UPDATE DOORS SET DOORNAME='Attic' WHERE DOORID=3");
  for (const SeatOperation& other : {IssueCards("901", "902"), elsewhere}) {
    SCOPED_TRACE(other.name);
    Begin();
    ASSERT_TRUE(RunAt(other, *bert).done());
    ASSERT_TRUE(RunAt(GetParam().operation, *anna).done());
    const std::vector<std::string> oneAfterTheOther = place->Content();

    Begin();
    const PreparedDesk desk = GetParam().operation.prepare(*anna);
    ASSERT_TRUE(RunAt(other, *bert).done());
    anna->trace.clear();
    const Told told = desk.run();
    EXPECT_TRUE(told.done()) << TextOf(told);
    EXPECT_EQ(told.messages, GetParam().asked);
    EXPECT_EQ(anna->shown, GetParam().asked);
    // The controller has asked again, the operator has not been.
    EXPECT_EQ(MessagesInTrace(), 2 * GetParam().asked.size());
    EXPECT_EQ(place->Content(), oneAfterTheOther);
    EXPECT_EQ(place->Wrong(), std::vector<std::string>());
  }
}

TEST_P(OvertakenOperations, AreToldAndKeepTheirEntryAfterAChangeOfTheirRows) {
  for (const SeatOperation& other : GetParam().ofItsRows) {
    SCOPED_TRACE(other.name);
    Begin();
    const PreparedDesk desk = GetParam().operation.prepare(*anna);
    const auto onScreen = [&desk] {
      return desk.screen ? std::optional(desk.screen()) : std::nullopt;  // a report has none
    };
    const auto entered = onScreen();
    const Told changed = RunAt(other, *bert);
    ASSERT_TRUE(changed.done()) << TextOf(changed);
    const std::vector<std::string> before = place->Content();
    anna->trace.clear();
    const Told told = desk.run();
    EXPECT_EQ(told.ending, Ending::kStale) << TextOf(told);
    EXPECT_THAT(told.changedBy, ElementsAre(testing::StartsWith("bert: ")));
    EXPECT_THAT(told.failures, IsEmpty());
    EXPECT_LE(anna->shown.size(), 1U);  // nothing twice
    EXPECT_EQ(anna->shown.size(), MessagesInTrace());
    EXPECT_EQ(place->Content(), before);
    EXPECT_EQ(place->Wrong(), std::vector<std::string>());
    EXPECT_TRUE(onScreen() == entered) << "the entry is not what it was";
    // The next attempt is no better until the operator has looked again.
    EXPECT_EQ(desk.run().ending, Ending::kStale);
    EXPECT_EQ(place->Content(), before);
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

using StaleCauses = testing::TestWithParam<ToldCause>;

TEST_P(StaleCauses, AreToldWithThoseWhoMadeThem) {
  const std::unique_ptr<MeetingPlace> place = NewMeetingPlace(kRoomy);
  const std::unique_ptr<Seat> anna = place->NewSeat("anna", false);
  const std::unique_ptr<Seat> bert = place->NewSeat("bert", false);
  const std::unique_ptr<Seat> carl = place->NewSeat("carl", false);
  const PreparedDesk desk = GetParam().operation.prepare(*anna);
  ASSERT_TRUE(RunAt(IssueCards("901", "902"), *carl).done());
  ASSERT_TRUE(RunAt(GetParam().other, *bert).done());
  ASSERT_TRUE(RunAt(WriteByHand("UPDATE DOORS SET DOORNAME='Attic' WHERE DOORID=3"), *carl).done());
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

}  // namespace
}  // namespace qorhost::test
