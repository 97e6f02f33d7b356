// The credential screen worked at a desk: entries, outcomes and their facts, faults by field.
#include "host/desks/credential_desk.h"

#include <gmock/gmock.h>

#include "host/desks/credential_entry.h"
#include "tests/host/desks/desk_fixture.h"

namespace qorhost::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

NewCredentials Cards(std::string first, std::optional<std::string> last = std::nullopt) {
  NewCredentials entry;
  entry.type = "card26";
  entry.first = std::move(first);
  entry.last = std::move(last);
  entry.facility = "7";
  return entry;
}

class CredentialDesks : public DeskFixture {
 protected:
  [[nodiscard]] IssuedCredentials Issue(const NewCredentials& entry,
                                        const Progress& progress = nullptr) {
    CredentialDesk desk(session(), kUnit,
                        entry.withTenants ? DeskScreen::kTenantCreating : DeskScreen::kCredentials);
    EnterCredentials(desk, entry);
    return desk.SaveNew(progress);
  }
  [[nodiscard]] std::size_t StoredBetween(const std::string& first, const std::string& last) {
    return CountOf("SELECT RID FROM CREDENTIALBANK WHERE UnitKey=2 AND PINNo Between " + first +
                   " AND " + last);
  }
  /// The field at fault when the entry is typed in.
  [[nodiscard]] std::string FieldOf(const NewCredentials& entry, std::int32_t unit = kUnit) {
    CredentialDesk desk(session(), unit,
                        entry.withTenants ? DeskScreen::kTenantCreating : DeskScreen::kCredentials);
    return FieldAtFault([&] { EnterCredentials(desk, entry); });
  }
};

TEST_F(CredentialDesks, ASavedRangeTellsItsNumbersAndItsLastRow) {
  const IssuedCredentials issued = Issue(Cards("9001", "9003"));
  EXPECT_EQ(issued.ending, Ending::kDone);
  EXPECT_EQ(issued.type, "Standard 26-Bit Card");
  EXPECT_EQ(issued.first, 9001);
  EXPECT_EQ(issued.last, 9003);
  EXPECT_EQ(issued.Count(), 3);
  EXPECT_EQ(std::to_string(issued.lastRid),
            Cell("SELECT RID FROM CREDENTIALBANK WHERE UnitKey=2 AND PINNo=9003"));
  EXPECT_EQ(issued.newTenantIds, "");
  EXPECT_EQ(StoredBetween("9001", "9003"), 3U);
}

TEST_F(CredentialDesks, NewTenantsAreToldByTheirIds) {
  NewCredentials entry = Cards("9001", "9002");
  entry.withTenants = true;
  const IssuedCredentials issued = Issue(entry);
  EXPECT_TRUE(issued.done());
  std::string ids = issued.newTenantIds;
  ASSERT_TRUE(ids.ends_with(','));
  ids.pop_back();
  EXPECT_EQ(CountOf("SELECT TenantID FROM Tenants WHERE TenantID IN (" + ids + ")"), 2U);
}

TEST_F(CredentialDesks, ARefusalCarriesTheControllersMessageAndStoresNothing) {
  const IssuedCredentials issued = Issue(Cards("0"));
  EXPECT_EQ(issued.ending, Ending::kRefused);
  EXPECT_FALSE(issued.returned);
  ASSERT_EQ(issued.messages.size(), 1U);
  EXPECT_EQ(issued.messages[0].text, "Please enter a starting number between 1 and 65535.");
  EXPECT_THAT(shown_, ElementsAre(issued.messages[0].text));
  EXPECT_EQ(StoredBetween("0", "0"), 0U);
}

TEST_F(CredentialDesks, AFailedStatementIsAFailureAndStoresNothing) {
  Run("CREATE TRIGGER broken BEFORE INSERT ON CredentialBank WHEN NEW.PINNo=9002 BEGIN SELECT "
      "RAISE(ABORT, 'no room'); END");
  const IssuedCredentials issued = Issue(Cards("9001", "9003"));
  EXPECT_EQ(issued.ending, Ending::kFailed);
  ASSERT_FALSE(issued.failures.empty());
  EXPECT_THAT(issued.failures[0], HasSubstr("no room"));
  EXPECT_EQ(StoredBetween("9001", "9003"), 0U);
}

TEST_F(CredentialDesks, ASaveTellsHowFarItHasCome) {
  std::vector<std::int64_t> told;
  const IssuedCredentials issued =
      Issue(Cards("9001", "9003"), [&told](std::int64_t done, std::int64_t total) {
        EXPECT_EQ(total, 3);
        told.push_back(done);
        return true;
      });
  EXPECT_TRUE(issued.done());
  EXPECT_THAT(told, ElementsAre(1, 2, 3));
}

TEST_F(CredentialDesks, ACancelledSaveKeepsNothingOfIt) {
  NewCredentials entry = Cards("9001", "9010");
  entry.withTenants = true;
  const std::size_t tenants = CountOf("SELECT TenantID FROM Tenants");
  const IssuedCredentials issued =
      Issue(entry, [](std::int64_t done, std::int64_t) { return done < 4; });
  EXPECT_EQ(issued.ending, Ending::kCancelled);
  EXPECT_THAT(issued.failures, IsEmpty());
  EXPECT_EQ(StoredBetween("9001", "9010"), 0U);
  EXPECT_EQ(CountOf("SELECT TenantID FROM Tenants"), tenants);
  EXPECT_TRUE(Issue(entry).done()) << "the next save is not held up";
}

TEST_F(CredentialDesks, WhatCannotBeEnteredNamesItsField) {
  namespace field = credential_field;
  NewCredentials entry = Cards("9001");
  entry.type = "key";
  EXPECT_EQ(FieldOf(entry), field::kType);
  EXPECT_EQ(FieldOf(Cards("1\n2")), field::kFirst);
  EXPECT_EQ(FieldOf(Cards("1", "\xFF")), field::kLast);
  EXPECT_EQ(FieldOf(Cards("1"), 3), field::kFacility) << "unit 3 ignores facility codes";
  entry = Cards("9001");
  entry.idCode = "1";
  EXPECT_EQ(FieldOf(entry), field::kIdCode) << "of a card";
  entry = Cards("9001");
  entry.button = "4";
  EXPECT_EQ(FieldOf(entry), field::kButton) << "of a card";
  entry.type = "transmitter";
  entry.button = "3";
  EXPECT_EQ(FieldOf(entry), field::kButton);
  entry = Cards("9001");
  entry.to = "2027-12-31";
  EXPECT_EQ(FieldOf(entry), field::kEnd) << "without new tenants";
  entry.withTenants = true;
  EXPECT_EQ(FieldOf(entry), "");
  entry.from = "soon";
  EXPECT_EQ(FieldOf(entry), field::kStart);
  entry.schedules = "Full Access,Nope";
  EXPECT_EQ(FieldOf(entry), field::kSchedules);
  entry.schedules = "1,1,1,1,1";
  EXPECT_EQ(FieldOf(entry), field::kSchedules) << "five for four doors";
}

TEST_F(CredentialDesks, ACredentialIsFoundByItsRowAndByItsEntry) {
  CredentialDesk desk(session(), kUnit, DeskScreen::kCredentials);
  const ShownCredential byEntry = desk.Select("Transmitter-301");
  EXPECT_EQ(byEntry.entry, "Transmitter-301");
  EXPECT_EQ(byEntry.door, std::nullopt) << "transmitters open no door of their own";
  EXPECT_EQ(desk.Select(std::to_string(byEntry.rid)).entry, "Transmitter-301");
  for (const char* given : {"99999", "Transmitter-9", "<Add New>", ""}) {
    EXPECT_EQ(FieldAtFault([&] { (void)desk.Select(given); }), credential_field::kCredential)
        << given;
  }
}

TEST_F(CredentialDesks, AChangeTellsTheDoorAndTheHolder) {
  ASSERT_TRUE(Issue(Cards("9001")).done());
  CredentialDesk desk(session(), kUnit, DeskScreen::kCredentials);
  (void)desk.Select("Standard 26-Bit Card-9001");
  CredentialChange change;
  change.door = "2";
  change.tenant = "62";
  EnterChange(desk, change);
  const ChangedCredential changed = desk.SaveEdited();
  EXPECT_TRUE(changed.done());
  EXPECT_EQ(changed.credential.entry, "Standard 26-Bit Card-9001");
  EXPECT_EQ(changed.credential.door,
            Cell("SELECT DOORNAME FROM DOORS WHERE UNITKEY=2 AND DOORID=2"));
  EXPECT_EQ(changed.credential.tenant, "O'Brien Paula H");
  EXPECT_EQ(Cell("SELECT CREDENTIALID2 FROM Tenants WHERE TenantID=62"),
            std::to_string(changed.credential.rid));
}

// The controller takes the credential from its tenant before it finds the unit full.
TEST_F(CredentialDesks, AChangeThatIsRefusedOnTheWayTellsWhatIsStored) {
  constexpr std::int32_t kNearlyFull = 1;
  CredentialDesk desk(session(), kNearlyFull, DeskScreen::kCredentials);
  NewCredentials last = Cards("1", "2");
  last.facility = "12";
  EnterCredentials(desk, last);
  ASSERT_TRUE(desk.SaveNew().done());
  const std::string held = Cell(
      "SELECT CREDENTIALID1 FROM Tenants WHERE UnitKey=1 AND Resident=0 AND CREDENTIALID2 = NULL "
      "ORDER BY TenantID");
  const std::string holders =
      "SELECT TenantID FROM Tenants WHERE CREDENTIALID1=" + held + " OR CREDENTIALID2=" + held;
  ASSERT_EQ(CountOf(holders), 1U);
  ASSERT_NE(desk.Select(held).tenant, "");

  CredentialChange change;
  change.tenant = "2";
  EnterChange(desk, change);
  const ChangedCredential changed = desk.SaveEdited();
  EXPECT_EQ(changed.ending, Ending::kRefused);
  EXPECT_TRUE(changed.returned) << "the controller returns True all the same";
  ASSERT_EQ(changed.messages.size(), 1U);
  EXPECT_EQ(changed.messages[0].text, "You cannot enter more than 500 combined codes.");
  EXPECT_EQ(CountOf(holders), 0U);
  EXPECT_EQ(std::to_string(changed.credential.rid), held);
  EXPECT_EQ(changed.credential.tenant, "") << "as it is stored, not as it was entered";
}

TEST_F(CredentialDesks, AnIssuedCredentialIsAssignedWithoutFillingTheList) {
  CredentialDesk desk(session(), kUnit, DeskScreen::kCredentials);
  const std::int32_t listed = desk.credentials().count();
  EnterCredentials(desk, Cards("9001"));
  const IssuedCredentials issued = desk.SaveNew();
  ASSERT_TRUE(issued.done());
  EXPECT_TRUE(desk.AssignIssued(issued, desk.screen().List("cboAssignedTo").FindData(62)).done());
  EXPECT_EQ(Cell("SELECT CREDENTIALID2 FROM Tenants WHERE TenantID=62"),
            std::to_string(issued.lastRid));
  EXPECT_EQ(desk.credentials().count(), listed + 1);
  EXPECT_EQ(desk.Shown().entry, "Standard 26-Bit Card-9001");
}

TEST_F(CredentialDesks, AChangeOfWhatTheScreenHasNotNamesItsField) {
  CredentialDesk desk(session(), kUnit, DeskScreen::kCredentials);
  (void)desk.Select("Transmitter-301");
  CredentialChange change;
  change.door = "1";
  EXPECT_EQ(FieldAtFault([&] { EnterChange(desk, change); }), credential_field::kDoor);
  change = {};
  change.tenant = "Nobody At All";
  EXPECT_EQ(FieldAtFault([&] { EnterChange(desk, change); }), credential_field::kTenant);
}

TEST_F(CredentialDesks, ARenumberedCredentialIsToldByItsNewNumber) {
  ASSERT_TRUE(Issue(Cards("9001")).done());
  CredentialDesk desk(session(), kUnit, DeskScreen::kCredentials);
  (void)desk.Select("Standard 26-Bit Card-9001");
  EXPECT_EQ(desk.Renumber(0).ending, Ending::kRefused);
  const ChangedCredential renumbered = desk.Renumber(9200);
  EXPECT_TRUE(renumbered.done());
  EXPECT_EQ(renumbered.credential.entry, "Standard 26-Bit Card-9200");
}

TEST_F(CredentialDesks, ARenumberingOfARowThatSomeoneChangedMeanwhileIsStale) {
  ASSERT_TRUE(Issue(Cards("9001")).done());
  CredentialDesk desk(session(), kUnit, DeskScreen::kCredentials);
  (void)desk.Select("Standard 26-Bit Card-9001");
  Run("CREATE TRIGGER Keep BEFORE UPDATE ON CredentialBank BEGIN SELECT RAISE(IGNORE); END");
  EXPECT_EQ(desk.Renumber(9200).ending, Ending::kStale);
  EXPECT_EQ(StoredBetween("9001", "9001"), 1U);
}

TEST_F(CredentialDesks, ADeletionAsksWhenATenantHoldsTheCredential) {
  CredentialDesk desk(session(), kUnit, DeskScreen::kCredentials);
  const std::int32_t held = std::stoi(Cell("SELECT CREDENTIALID1 FROM Tenants WHERE TenantID=62"));
  (void)desk.Select(std::to_string(held));
  const Outcome no = desk.Delete(held);
  EXPECT_EQ(no.ending, Ending::kRefused);
  ASSERT_EQ(no.messages.size(), 1U);
  EXPECT_EQ(no.messages[0].style, qorcred::MessageStyle::kQuestion);
  EXPECT_EQ(no.messages[0].answer, qorcred::MessageButton::kNo);
  yes_ = true;
  EXPECT_TRUE(desk.Delete(held).done());
  EXPECT_EQ(Cell("SELECT CREDENTIALID1 FROM Tenants WHERE TenantID=62"), "");
}

}  // namespace
}  // namespace qorhost::test
