// The credential screen worked at a desk: outcomes and their facts, and what they leave in the
// store.
#include "host/desks/credential_desk.h"

#include <fmt/format.h>
#include <gmock/gmock.h>

#include <set>
#include <string>
#include <vector>

#include "frame/date.h"
#include "host/desks/credential_list.h"
#include "host/desks/desk_error.h"
#include "host/desks/store_check.h"
#include "host/desks/store_overview.h"
#include "tests/host/desks/credential_fixture.h"

namespace qorhost::test {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

class CredentialDesks : public CredentialFixture {};

TEST_F(CredentialDesks, TheListHasARowForEveryCredential) {
  CredentialDesk desk(session(), 1, DeskScreen::kCredentials);
  const List table = CredentialList(session(), desk);
  EXPECT_EQ(table.rows.size(), 488U);
  ASSERT_EQ(table.fields[1].key, "type");
  EXPECT_EQ(table.rows[0][1], qorcred::Value("Corvin 30-Bit Card"));
  ASSERT_EQ(table.fields[2].key, "number");
  EXPECT_EQ(table.rows[0][2].type(), qorcred::ValueType::kLong);
}

// The controller leaves the row of such a type with the entry in front of it.
TEST_F(CredentialDesks, ACredentialOfAnUnknownTypeTakesNoOthersPlace) {
  const auto entriesOf = [](CredentialDesk& desk) {
    std::vector<std::string> entries;
    const ListModel& list = desk.screen().List("cboCredentials");
    for (std::int32_t index = 0; index < list.count(); ++index) {
      entries.push_back(list.Text(index) + " " + std::to_string(list.ItemData(index)));
    }
    return entries;
  };
  for (const char* type : {"9", "-1", "3"}) {
    Open(false);
    const std::vector<std::string> before = [&] {
      CredentialDesk desk(session(), kUnit, DeskScreen::kCredentials);
      return entriesOf(desk);
    }();
    Run(std::string("UPDATE CredentialBank SET CredentialType=") + type +
        " WHERE RID IN (501, 610)");
    CredentialDesk desk(session(), kUnit, DeskScreen::kCredentials);
    std::vector<std::string> expected;
    for (const std::string& entry : before) {
      if (!entry.ends_with(" 501") && !entry.ends_with(" 610")) expected.push_back(entry);
    }
    ASSERT_EQ(expected.size() + 2, before.size());
    const std::string lastKnown = expected.back();
    for (const char* rid : {"501", "610"}) {
      expected.push_back(
          fmt::format("Credential-{} {}",
                      Cell(std::string("SELECT PINNo FROM CredentialBank WHERE RID=") + rid), rid));
    }
    EXPECT_THAT(entriesOf(desk), testing::UnorderedElementsAreArray(expected)) << type;
    EXPECT_EQ(CredentialList(session(), desk).rows.size(), before.size() - 1) << type;

    EnterCredentials(desk, Cards("9001"));
    const IssuedCredentials issued = desk.SaveNew();
    ASSERT_TRUE(issued.done()) << type;
    desk.RefreshCredentials(issued.lastRid);
    EXPECT_EQ(desk.Shown().rid, issued.lastRid) << type;
    EXPECT_TRUE(desk.Shown().entry.ends_with("-9001")) << type;

    for (const std::string& entry : {lastKnown, expected.back()}) {
      (void)desk.Select(entry.substr(0, entry.rfind(' ')));
      EXPECT_EQ(fmt::format("{} {}", desk.Shown().entry, desk.Shown().rid), entry) << type;
    }
  }
}

TEST_F(CredentialDesks, ANewCredentialIsBegunOnAScreenAsItOpened) {
  CredentialDesk desk(session(), kUnit, DeskScreen::kCredentials);
  CredentialDesk fresh(session(), kUnit, DeskScreen::kCredentials);
  fresh.StartNew();
  (void)desk.Select("rid:609");
  ASSERT_FALSE(desk.Shown().tenant.empty());
  desk.screen().Box("txtPINStart").SetText("9001");
  desk.StartNew();
  for (const char* box : {"txtFacilityCode", "txtPINStart", "txtIDCode", "txtSequenceCode"}) {
    EXPECT_EQ(desk.screen().Box(box).text(), "") << box;
    EXPECT_EQ(desk.screen().Box(box).visible(), fresh.screen().Box(box).visible()) << box;
  }
  EXPECT_EQ(desk.Shown().entry, "<Add New>");
  EXPECT_EQ(desk.Shown().tenant, "");
  EXPECT_EQ(desk.screen().List("cboActivate").visible(), true);
}

TEST_F(CredentialDesks, WhatIsTypedIsReadBackAsItWouldBeEntered) {
  CredentialDesk desk(session(), kUnit, DeskScreen::kCredentials);
  NewCredentials entry;
  entry.type = "transmitter";
  entry.first = "9001";
  entry.last = "9002";
  entry.idCode = "3";
  entry.sequence = "1";
  entry.button = "4";
  EnterCredentials(desk, entry);
  const NewCredentials typed = TypedCredentials(desk, true);
  EXPECT_EQ(typed.type, "transmitter");
  EXPECT_EQ(typed.first, "9001");
  EXPECT_EQ(typed.last, "9002");
  EXPECT_EQ(typed.facility, std::nullopt);
  EXPECT_EQ(typed.idCode, "3");
  EXPECT_EQ(typed.sequence, "1");
  EXPECT_EQ(typed.button, "4");
  EXPECT_EQ(TypedCredentials(desk, false).last, std::nullopt);
}

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
  EXPECT_TRUE(issued.NewTenants().empty());
  EXPECT_EQ(StoredBetween("9001", "9003"), 3U);
  for (const std::int64_t number : {9001, 9002, 9003}) {
    EXPECT_EQ(
        std::to_string(issued.RidOf(number)),
        Cell("SELECT RID FROM CREDENTIALBANK WHERE UnitKey=2 AND PINNo=" + std::to_string(number)));
  }
  EXPECT_EQ(issued.EntryOf(9002), "Standard 26-Bit Card-9002");
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
  const std::vector<double> told = issued.NewTenants();
  ASSERT_EQ(told.size(), 2U);
  EXPECT_EQ(qorcred::NumberText(told[0]) + "," + qorcred::NumberText(told[1]), ids);
}

TEST_F(CredentialDesks, NewTenantsGetTheirSchedulesAndPeriodAndAreTaughtToTheUnit) {
  NewCredentials entry = Cards("9001");
  entry.withTenants = true;
  entry.schedules = "1,1,0,0";
  entry.from = "2026-02-01";
  entry.to = "2026-12-31";
  EXPECT_TRUE(Issue(entry).done());
  const std::string tenant = " FROM Tenants WHERE LastName='No Name19001'";
  EXPECT_EQ(CountOf("SELECT TenantID" + tenant), 1U);
  EXPECT_EQ(Cell("SELECT DOORSCHEDULE1" + tenant), "1");
  EXPECT_EQ(Cell("SELECT DOORSCHEDULE4" + tenant), "0");
  EXPECT_EQ(Cell("SELECT ACTIVETENANT" + tenant), "True");
  EXPECT_EQ(session().sql().Scalar("SELECT ACTIVEENDTIME" + tenant),
            qorcred::Value(qorcred::FromCivil({2026, 12, 31, 23, 59, 59})));
  EXPECT_EQ(StepList(session(), kUnit).rows.size(), 1U);
}

TEST_F(CredentialDesks, ATransmittersCodesAreStored) {
  NewCredentials entry = Cards("777");
  entry.type = "transmitter";
  entry.idCode = "26";
  entry.sequence = "2";
  entry.button = "4";
  EXPECT_TRUE(Issue(entry).done());
  EXPECT_EQ(
      CountOf("SELECT RID FROM CREDENTIALBANK WHERE UnitKey=2 AND PINNo=777 AND IDCode=26 AND "
              "SequenceNumber=2 AND ButtonNumber=4 AND CredentialType=2 AND FacilityCode=7"),
      1U);
}

TEST_F(CredentialDesks, TheNumbersToldAreThoseThatWereAccepted) {
  const IssuedCredentials issued = Issue(Cards(" 9100 "));
  EXPECT_TRUE(issued.done());
  EXPECT_EQ(issued.first, 9100);
  EXPECT_EQ(issued.last, 9100);
}

TEST_F(CredentialDesks, ANumberThatWouldBeRoundedIsAFault) {
  for (const char* number : {"1.5", "9.1e3", "1e-5", "$5", "(5)", "&H10"}) {
    EXPECT_EQ(FaultOf(Cards(number)).value().field(), credential_field::kFirst) << number;
    EXPECT_EQ(FaultOf(Cards("1", number)).value().field(), credential_field::kLast) << number;
    NewCredentials entry = Cards("9001");
    entry.facility = number;
    EXPECT_EQ(FaultOf(entry).value().field(), credential_field::kFacility) << number;
  }
  EXPECT_STREQ(FaultOf(Cards("1.5"))->what(),
               "number '1.5' is no whole number: write it in digits alone");
}

TEST_F(CredentialDesks, TheControllerKeepsTheBounds) {
  for (const std::string& first :
       {std::string("0"), std::string("-1"), std::string("65536"), std::string("abc"),
        std::string("99999999999999999999"), std::string(5000, '9')}) {
    const IssuedCredentials issued = Issue(Cards(first));
    EXPECT_EQ(issued.ending, Ending::kRefused) << first;
    ASSERT_EQ(issued.messages.size(), 1U) << first;
    EXPECT_EQ(issued.messages[0].style, qorcred::MessageStyle::kNotice) << first;
    EXPECT_THAT(issued.messages[0].text, StartsWith("Please enter a ")) << first;
  }
  NewCredentials entry = Cards("20");
  entry.type = "card30";
  entry.facility = "64";
  const IssuedCredentials issued = Issue(entry);
  EXPECT_EQ(issued.ending, Ending::kRefused);
  EXPECT_THAT(shown_, Contains("Please enter a Facility Code between 0 and 63."));
  EXPECT_EQ(StoredBetween("20", "20"), 0U);
}

TEST_F(CredentialDesks, AnEntryNeverBecomesAStatement) {
  for (const char* hostile : {"1); DELETE FROM Tenants; --", "' OR '1'='1", "1/*", "Null"}) {
    NewCredentials entry = Cards("5");
    entry.facility = hostile;
    EXPECT_EQ(Issue(entry).ending, Ending::kRefused) << hostile;
    entry = Cards(hostile);
    entry.facility = std::nullopt;
    EXPECT_EQ(Issue(entry).ending, Ending::kRefused) << hostile;
  }
  EXPECT_EQ(CountOf("SELECT UnitKey FROM Units"), 3U);
  EXPECT_GT(CountOf("SELECT RID FROM Tenants"), 150U);
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

TEST_F(CredentialDesks, ACredentialIsFoundByItsNumberItsRowAndItsEntry) {
  CredentialDesk desk(session(), kUnit, DeskScreen::kCredentials);
  const ShownCredential byEntry = desk.Select("Transmitter-301");
  EXPECT_EQ(byEntry.entry, "Transmitter-301");
  EXPECT_EQ(byEntry.door, std::nullopt) << "transmitters open no door of their own";
  EXPECT_EQ(desk.Select("rid:" + std::to_string(byEntry.rid)).entry, "Transmitter-301");
  EXPECT_EQ(desk.Select("301").rid, byEntry.rid) << "as it is printed on it";
  EXPECT_EQ(desk.Select(" RID:489 ").entry, "Corvin 30-Bit Card-1001");
  EXPECT_EQ(desk.Select("1001").rid, 489);
  for (const char* given : {"99999", "489", "rid:1", "rid:x", "Transmitter-9", "<Add New>", ""}) {
    EXPECT_EQ(FieldAtFault([&] { (void)desk.Select(given); }), credential_field::kCredential)
        << given;
  }
}

TEST_F(CredentialDesks, ANumberThatSeveralCredentialsHaveIsRefusedWithAllOfThem) {
  ASSERT_TRUE(Issue(Cards("301")).done());
  const std::string rid = Cell(
      "SELECT RID FROM CREDENTIALBANK WHERE UnitKey=2 AND PINNo=301 AND "
      "CredentialType=1");
  CredentialDesk desk(session(), kUnit, DeskScreen::kCredentials);
  try {
    (void)desk.Select("301");
    ADD_FAILURE() << "one of two was selected";
  } catch (const InputFault& fault) {
    EXPECT_EQ(std::string(fault.what()),
              "2 credentials are called '301', say rid:N: Transmitter 301, facility code 7 "
              "(rid:609); Standard 26-Bit Card 301, facility code 7 (rid:" +
                  rid + ")");
  }
  EXPECT_EQ(desk.Select("rid:" + rid).entry, "Standard 26-Bit Card-301");
  EXPECT_EQ(desk.Select("Standard 26-Bit Card-301").rid, std::stoi(rid));
}

TEST_F(CredentialDesks, WhoLosesWhatByAnAssignmentIsKnownBeforeIt) {
  ASSERT_TRUE(Issue(Cards("9001", "9002")).done());
  const auto losses = [this](const std::string& credential, const std::string& tenant) {
    CredentialDesk desk(session(), kUnit, DeskScreen::kCredentials);
    (void)desk.Select(credential);
    CredentialChange change;
    change.tenant = tenant;
    EnterChange(desk, change);
    const AssignmentLosses lost = desk.LossesOfSaving();
    EXPECT_TRUE(desk.SaveEdited().done());
    return lost;
  };
  const std::string first = Cell("SELECT CREDENTIALID1 FROM Tenants WHERE TenantID=62");
  const AssignmentLosses none = losses("9001", "62");
  EXPECT_THAT(none.holders, IsEmpty());
  EXPECT_EQ(none.replaced, "");
  const AssignmentLosses again = losses("9001", "62");
  EXPECT_THAT(again.holders, IsEmpty()) << "who has it keeps it";
  EXPECT_EQ(again.replaced, "");
  const AssignmentLosses replaced = losses("9002", "62");
  EXPECT_THAT(replaced.holders, IsEmpty());
  EXPECT_EQ(replaced.replaced, "Corvin 30-Bit Card-1002 (RID " + first + ")");
  const AssignmentLosses taken = losses("9002", "63");
  EXPECT_THAT(taken.holders, ElementsAre("O'Brien Paula H"));
}

TEST(AssignmentQuestion, NamesEverybodyWhoLosesACredential) {
  AssignmentLosses losses;
  EXPECT_FALSE(losses.any());
  EXPECT_EQ(QuestionOf(losses, "Transmitter-301 (RID 17)", "Cole"), std::nullopt);
  losses.holders = {"Abel Karin", "Berg Bea"};
  EXPECT_TRUE(losses.any());
  EXPECT_EQ(QuestionOf(losses, "Transmitter-301 (RID 17)", "Cole"),
            "Abel Karin loses Transmitter-301 (RID 17). Berg Bea loses Transmitter-301 (RID 17). "
            "Go on?");
  losses = {{}, "Transmitter-302 (RID 18)"};
  EXPECT_TRUE(losses.any());
  EXPECT_EQ(QuestionOf(losses, "Transmitter-301 (RID 17)", "Cole"),
            "Cole has two credentials and loses Transmitter-302 (RID 18). Go on?");
  EXPECT_EQ(QuestionOf(losses, "Transmitter-301 (RID 17)", ""), std::nullopt) << "taken back";
}

TEST_F(CredentialDesks, ATenantWhoGotAnotherCredentialSinceTheQuestionLosesNone) {
  ASSERT_TRUE(Issue(Cards("9001", "9003")).done());
  CredentialDesk asking(session(), kUnit, DeskScreen::kCredentials);
  (void)asking.Select("9001");
  CredentialChange change;
  change.tenant = "62";
  EnterChange(asking, change);
  ASSERT_EQ(asking.LossesOfSaving().replaced, "") << "nobody is asked";

  CredentialDesk faster(session(), kUnit, DeskScreen::kCredentials);
  (void)faster.Select("9003");
  EnterChange(faster, change);
  ASSERT_TRUE(faster.SaveEdited().done());
  const std::string before = Cell("SELECT CREDENTIALID1 FROM Tenants WHERE TenantID=62");
  EXPECT_EQ(asking.SaveEdited().ending, Ending::kStale);
  EXPECT_EQ(Cell("SELECT CREDENTIALID1 FROM Tenants WHERE TenantID=62"), before);
}

TEST_F(CredentialDesks, RenumberingQueuesTheStepOfItsHolderInTheSameUnitOfWork) {
  const auto steps = [this] { return session().sql().steps().List(kUnit); };
  CredentialDesk desk(session(), kUnit, DeskScreen::kCredentials);
  (void)desk.Select("1002");
  ASSERT_EQ(desk.Shown().tenant, "O'Brien Paula H");
  ASSERT_TRUE(desk.Renumber(CredentialNumber("9200")).done());
  ASSERT_EQ(steps().size(), 1U);
  EXPECT_EQ(steps()[0].kind, "program tenant");
  EXPECT_EQ(steps()[0].subjectRid, 62);
  ASSERT_EQ(desk.Renumber(CredentialNumber("1003")).ending, Ending::kRefused);
  EXPECT_EQ(steps().size(), 1U);

  Run("CREATE TRIGGER Full BEFORE INSERT ON ProgramSteps BEGIN SELECT RAISE(ABORT, 'no room'); "
      "END");
  EXPECT_EQ(desk.Renumber(CredentialNumber("9300")).ending, Ending::kFailed);
  EXPECT_EQ(StoredBetween("9300", "9300"), 0U) << "no new number without its step";
}

TEST_F(CredentialDesks, RenumberingWhatNobodyHoldsQueuesNothing) {
  ASSERT_TRUE(Issue(Cards("9001")).done());
  CredentialDesk desk(session(), kUnit, DeskScreen::kCredentials);
  (void)desk.Select("9001");
  ASSERT_TRUE(desk.Renumber(CredentialNumber("9200")).done());
  EXPECT_THAT(session().sql().steps().List(kUnit), IsEmpty());
}

// Each repetition once queued the holder's steps again.
TEST_F(CredentialDesks, WhatIsStoredAlreadyIsNotStoredAgain) {
  ASSERT_TRUE(Issue(Cards("9001")).done());
  CredentialDesk desk(session(), kUnit, DeskScreen::kCredentials);
  (void)desk.Select("9001");
  CredentialChange change;
  change.release = true;
  EnterChange(desk, change);
  EXPECT_TRUE(desk.SaveEdited().unchanged) << "nobody holds it";

  change = {};
  change.door = "2";
  change.tenant = "62";
  EnterChange(desk, change);
  EXPECT_FALSE(desk.SaveEdited().unchanged);
  const std::string row =
      "SELECT LASTMODIFIEDDATE FROM CREDENTIALBANK WHERE UnitKey=2 AND PINNo=9001";
  const std::string date = Cell(row);
  const std::size_t steps = session().sql().steps().List(kUnit).size();
  EnterChange(desk, change);
  const ChangedCredential again = desk.SaveEdited();
  EXPECT_TRUE(again.done());
  EXPECT_TRUE(again.unchanged);
  EXPECT_EQ(again.credential.tenant, "O'Brien Paula H");
  EXPECT_TRUE(desk.Renumber(CredentialNumber("9001")).unchanged);
  EXPECT_EQ(session().sql().steps().List(kUnit).size(), steps);
  EXPECT_EQ(Cell(row), date);

  change.door = "1";
  EnterChange(desk, change);
  EXPECT_FALSE(desk.SaveEdited().unchanged) << "another door";
}

TEST_F(CredentialDesks, WhatOthersHaveChangedIsNotTakenForUnchanged) {
  ASSERT_TRUE(Issue(Cards("9001")).done());
  CredentialChange change;
  change.tenant = "62";
  CredentialDesk shown(session(), kUnit, DeskScreen::kCredentials);
  (void)shown.Select("9001");
  EnterChange(shown, change);
  ASSERT_TRUE(shown.SaveEdited().done());
  CredentialDesk other(session(), kUnit, DeskScreen::kCredentials);
  (void)other.Select("9001");
  CredentialChange release;
  release.release = true;
  EnterChange(other, release);
  ASSERT_TRUE(other.SaveEdited().done());
  EXPECT_FALSE(shown.SaveEdited().unchanged) << "62 holds it on the screen alone";
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
  EXPECT_EQ(Cell("SELECT DOORCODE FROM CREDENTIALBANK WHERE UnitKey=2 AND PINNo=9001"), "2");
  EXPECT_EQ(changed.credential.tenant, "O'Brien Paula H");
  EXPECT_EQ(Cell("SELECT CREDENTIALID2 FROM Tenants WHERE TenantID=62"),
            std::to_string(changed.credential.rid));

  change = {};
  change.release = true;
  EnterChange(desk, change);
  EXPECT_EQ(desk.SaveEdited().credential.tenant, "");
  EXPECT_EQ(Cell("SELECT CREDENTIALID2 FROM Tenants WHERE TenantID=62"), "");
}

// The controller takes the credential from its tenant before it finds the unit full.
TEST_F(CredentialDesks, AChangeThatIsRefusedOnTheWayChangesNothing) {
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
  const std::string tenant = desk.Select("rid:" + held).tenant;
  ASSERT_NE(tenant, "");

  CredentialChange change;
  change.tenant = "3";
  EnterChange(desk, change);
  const ChangedCredential changed = desk.SaveEdited();
  EXPECT_EQ(changed.ending, Ending::kRefused);
  EXPECT_TRUE(changed.returned) << "the controller returns True all the same";
  ASSERT_EQ(changed.messages.size(), 1U);
  EXPECT_EQ(changed.messages[0].text, "You cannot enter more than 500 combined codes.");
  EXPECT_EQ(CountOf(holders), 1U);
  EXPECT_EQ(std::to_string(changed.credential.rid), held);
  EXPECT_EQ(changed.credential.tenant, tenant) << "as it is stored, not as it was entered";
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
  EXPECT_EQ(desk.Renumber(CredentialNumber("0")).ending, Ending::kRefused);
  for (const char* number : {"-1", "-5", "65536", "70000", "12x"}) {
    EXPECT_EQ(FieldAtFault([&] { (void)CredentialNumber(number); }), credential_field::kNewNumber)
        << number;
  }
  const ChangedCredential renumbered = desk.Renumber(CredentialNumber("9200"));
  EXPECT_TRUE(renumbered.done());
  EXPECT_EQ(renumbered.credential.entry, "Standard 26-Bit Card-9200");
  EXPECT_EQ(StoredBetween("9200", "9200"), 1U);
  EXPECT_EQ(desk.Renumber(CredentialNumber("20001")).ending, Ending::kRefused) << "the unit has it";
  EXPECT_THAT(shown_, ElementsAre("Please enter a Credential Number between 1 and 65535.",
                                  "Credential Number already exists."));
}

TEST_F(CredentialDesks, OneChangeFollowsTheOther) {
  ASSERT_TRUE(Issue(Cards("9001")).done());
  CredentialDesk desk(session(), kUnit, DeskScreen::kCredentials);
  (void)desk.Select("Standard 26-Bit Card-9001");
  EXPECT_EQ(desk.Renumber(CredentialNumber("9200")).ending, Ending::kDone);
  EXPECT_EQ(desk.Renumber(CredentialNumber("9201")).ending, Ending::kDone);
  CredentialChange change;
  change.door = "2";
  EnterChange(desk, change);
  EXPECT_EQ(desk.SaveEdited().ending, Ending::kDone);
  EXPECT_EQ(desk.Renumber(CredentialNumber("9202")).ending, Ending::kDone);
  EXPECT_EQ(StoredBetween("9202", "9202"), 1U);
}

TEST_F(CredentialDesks, ARenumberingOfARowThatSomeoneChangedMeanwhileIsStale) {
  ASSERT_TRUE(Issue(Cards("9001")).done());
  CredentialDesk desk(session(), kUnit, DeskScreen::kCredentials);
  (void)desk.Select("Standard 26-Bit Card-9001");
  Run("CREATE TRIGGER Keep BEFORE UPDATE ON CredentialBank BEGIN SELECT RAISE(IGNORE); END");
  EXPECT_EQ(desk.Renumber(CredentialNumber("9200")).ending, Ending::kStale);
  EXPECT_EQ(StoredBetween("9001", "9001"), 1U);
}

TEST_F(CredentialDesks, NothingIsDeletedWhileNothingIsSelected) {
  CredentialDesk desk(session(), kUnit, DeskScreen::kCredentials);
  EXPECT_THROW((void)desk.Delete(), FailureError);
  desk.credentials().Select(0);  // "<Add New>"
  EXPECT_THROW((void)desk.Delete(), FailureError);
}

TEST_F(CredentialDesks, ADeletionAsksWhenATenantHoldsTheCredential) {
  CredentialDesk desk(session(), kUnit, DeskScreen::kCredentials);
  const std::int32_t held = std::stoi(Cell("SELECT CREDENTIALID1 FROM Tenants WHERE TenantID=62"));
  (void)desk.Select("rid:" + std::to_string(held));
  const Outcome no = desk.Delete();
  EXPECT_EQ(no.ending, Ending::kRefused);
  ASSERT_EQ(no.messages.size(), 1U);
  EXPECT_EQ(no.messages[0].style, qorcred::MessageStyle::kQuestion);
  EXPECT_EQ(no.messages[0].answer, qorcred::MessageButton::kNo);
  yes_ = true;
  EXPECT_TRUE(desk.Delete().done());
  EXPECT_EQ(CountOf("SELECT RID FROM CREDENTIALBANK WHERE RID=" + std::to_string(held)), 0U);
  EXPECT_EQ(Cell("SELECT CREDENTIALID1 FROM Tenants WHERE TenantID=62"), "");
}

TEST_F(CredentialDesks, ADeletionTakesTheCredentialFromAResidentToo) {
  CredentialDesk desk(session(), kUnit, DeskScreen::kCredentials);
  const std::string held = Cell("SELECT CREDENTIALID1 FROM Tenants WHERE TenantID=62");
  Run("UPDATE Tenants SET Resident=1 WHERE TenantID=62");
  (void)desk.Select("rid:" + held);
  yes_ = true;
  EXPECT_TRUE(desk.Delete().done());
  EXPECT_EQ(CountOf("SELECT RID FROM CREDENTIALBANK WHERE RID=" + held), 0U);
  EXPECT_EQ(Cell("SELECT CREDENTIALID1 FROM Tenants WHERE TenantID=62"), "");
  const List steps = StepList(session(), kUnit);
  ASSERT_EQ(steps.rows.size(), 1U);
  EXPECT_TRUE(FindingsIn(session(), kUnit).empty());
}

TEST_F(CredentialDesks, ADeletionTeachesTheUnitEveryoneWhoHeldTheCredential) {
  CredentialDesk desk(session(), kUnit, DeskScreen::kCredentials);
  const std::string held = Cell("SELECT CREDENTIALID1 FROM Tenants WHERE TenantID=62");
  const std::string other = Cell(
      "SELECT Top 1 TenantID FROM Tenants WHERE UnitKey=2 AND Resident=0 AND CREDENTIALID2 = NULL "
      "AND TenantID<>62 ORDER BY TenantID");
  Run("UPDATE Tenants SET CREDENTIALID2=" + held + " WHERE TenantID=" + other);
  (void)desk.Select("rid:" + held);
  yes_ = true;
  EXPECT_TRUE(desk.Delete().done());
  EXPECT_EQ(CountOf("SELECT TenantID FROM Tenants WHERE CREDENTIALID1=" + held +
                    " OR CREDENTIALID2=" + held),
            0U);
  std::set<std::int32_t> taught;
  for (const ProgramStep& step : session().sql().steps().List(kUnit)) {
    taught.insert(step.subjectRid);
  }
  EXPECT_THAT(taught, testing::ElementsAre(62, std::stoi(other)));
}

TEST_F(CredentialDesks, ASingleCredentialWithATenantIsIssuedOnce) {
  NewCredentials entry = Cards("9001");
  entry.withTenants = true;
  const IssuedCredentials first = Issue(entry);
  ASSERT_TRUE(first.done());
  const IssuedCredentials again = Issue(entry);
  EXPECT_EQ(again.ending, Ending::kRefused);
  ASSERT_EQ(again.messages.size(), 1U);
  EXPECT_EQ(again.messages[0].text,
            "For this Credential Type, the combination of Credential Number and the Facility Code "
            "cannot be duplicated. Credential Number = 9001, Facility Code = 7");
  EXPECT_EQ(StoredBetween("9001", "9001"), 1U);
  EXPECT_EQ(CountOf("SELECT TenantID FROM Tenants WHERE LastName='No Name19001'"), 1U);
  EXPECT_EQ(session().sql().audit().After(0, kUnit).back().what, "issue Standard 26-Bit Card 9001");
}

}  // namespace
}  // namespace qorhost::test
