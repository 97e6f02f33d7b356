// The credential screen on a real store: what the operator does and which rows come of it.
#include <gtest/gtest.h>

#include "tests/host/end_to_end/building.h"

namespace qortest {
namespace {

using qorcred::MessageButton;

constexpr std::int32_t kRoe = 1;
constexpr std::int32_t kDoe = 2;
constexpr std::int32_t kResident = 3;

// Stores one card and returns its RID.
std::int32_t StoreCard(Building& building, std::int32_t number, std::int32_t facility = 7) {
  building.Run(
      "INSERT INTO CredentialBank (UnitKey, CredentialType, PINNo, FacilityCode) VALUES "
      "(1, 1, " +
      std::to_string(number) + ", " + std::to_string(facility) + ")");
  return static_cast<std::int32_t>(building.Number("SELECT max(RID) FROM CredentialBank"));
}

void Hold(Building& building, std::int32_t tenant, std::string_view slot, std::int32_t rid) {
  building.Run("UPDATE Tenants SET " + std::string(slot) + "=" + std::to_string(rid) +
               " WHERE RID=" + std::to_string(tenant));
}

std::string SlotsOf(Building& building, std::int32_t tenant) {
  return building.Rows("SELECT CREDENTIALID1, CREDENTIALID2 FROM Tenants WHERE RID=" +
                       std::to_string(tenant));
}

TEST(CredentialScreenOnStore, ListsSchedulesByNameBehindTheFixedOnes) {
  Building building;
  const qorhost::ListModel& list = building.screen().List("cboSchedules4");
  ASSERT_EQ(list.count(), 4);
  EXPECT_EQ(list.Text(0), "No Access");
  EXPECT_EQ(list.Text(1), "Full Access");
  EXPECT_EQ(list.Text(2), "Day");
  EXPECT_EQ(list.Text(3), "night");
  EXPECT_EQ(list.ItemData(3), 7);
  EXPECT_EQ(list.selected(), 1);
}

TEST(CredentialScreenOnStore, ListsTenantsThatAreNoResidents) {
  Building building;
  building.SelectTenant(0);
  const qorhost::ListModel& list = building.screen().List("cboAssignedTo");
  ASSERT_EQ(list.count(), 3);
  EXPECT_EQ(list.Text(1), "Doe Jane M");
  EXPECT_EQ(list.Text(2), "Roe Rita ");
  EXPECT_EQ(list.ItemData(2), kRoe);
}

TEST(CredentialScreenOnStore, CutsDoorNamesByTheLengthOfTheFirst) {
  Building building;
  building.controller().pbRetrieveDoorDetails(building.connection(), kUnit);
  EXPECT_EQ(building.screen().Any("lblDoor1").caption(), "Front Entran");
  EXPECT_EQ(building.screen().Any("lblDoor2").caption(), "Back");
  EXPECT_EQ(building.screen().Any("lblDoor4").caption(), "Side Gate Door");
}

TEST(CredentialScreenOnStore, StoresARangeAndReturnsTheLastRow) {
  Building building;
  building.TypeNumbers("1", "3", "Range");
  std::int32_t rid = 0;
  EXPECT_TRUE(building.controller().pbSave(building.connection(), kUnit, false, false, &rid));
  EXPECT_EQ(building.Rows("SELECT PINNo || ',' || FacilityCode || ',' || LASTMODIFIEDDATE FROM "
                          "CredentialBank ORDER BY RID"),
            "1,7,2026-01-31 14:05:09;2,7,2026-01-31 14:05:09;3,7,2026-01-31 14:05:09;");
  EXPECT_EQ(rid, building.Number("SELECT RID FROM CredentialBank WHERE PINNo=3"));
  EXPECT_EQ(building.Number("SELECT count(*) FROM Tenants"), 3);
  EXPECT_EQ(building.Number("SELECT count(*) FROM ProgramSteps"), 0);
}

TEST(CredentialScreenOnStore, GivesEveryCredentialOfARangeItsTenant) {
  Building building(ScreenKind::kTenantCreating);
  building.TypeNumbers("1", "3", "Range");
  building.ChooseType(0);
  building.screen().List("cboSchedules2").Select(2);
  EXPECT_TRUE(building.controller().pbSave(building.connection(), kUnit, true));
  EXPECT_EQ(building.Rows("SELECT t.LastName || ',' || c.PINNo || ',' || t.DOORSCHEDULE1 || ',' "
                          "|| t.DOORSCHEDULE2 || ',' || t.GROUPID || ',' || t.LINKCODE FROM "
                          "Tenants t, CredentialBank c WHERE t.CREDENTIALID1=c.RID ORDER BY "
                          "t.RID"),
            "No Name01,1,1,5,2,1;No Name02,2,1,5,2,2;No Name03,3,1,5,2,3;");
  EXPECT_EQ(building.screen().Variable("gstrNewTenantIDs"), qorcred::Value("4,5,6,"));
  EXPECT_EQ(building.Rows("SELECT TenantID FROM TenantsBackup ORDER BY RID"), "4;5;6;");
  EXPECT_EQ(building.Rows("SELECT SubjectRID FROM ProgramSteps ORDER BY RID"), "4;5;6;");
}

TEST(CredentialScreenOnStore, StoresTheActivePeriodOfATenantAsDates) {
  Building building(ScreenKind::kTenantCreating);
  building.TypeNumbers("9", "9", "Single");
  building.screen().Check("chkActive").SetState(1);
  const qorcred::ObjectRef screen = building.controller().gmobjCredentialScreen();
  const qorcred::Screen view(screen);
  view.Picker("dtpStart").SetChosen(qorcred::FromCivil({2026, 2, 1, 0, 0, 0}));
  view.Picker("dtpEnd").SetChosen(qorcred::FromCivil({2026, 12, 1, 23, 59, 59}));
  EXPECT_TRUE(building.controller().pbSave(building.connection(), kUnit, true));
  EXPECT_EQ(building.Rows("SELECT ACTIVETENANT || ' ' || ACTIVESTARTTIME || ' ' || ACTIVEENDTIME "
                          "FROM Tenants WHERE RID=4"),
            "-1 2026-02-01 00:00:00 2026-12-01 23:59:59;");
}

TEST(CredentialScreenOnStore, UndoesARangeWhoseSecondInsertFails) {
  Building building(ScreenKind::kTenantCreating);
  qorhost::test::RefuseRows(building.store().store(), "CredentialBank", "NEW.PINNo = 2");
  building.TypeNumbers("1", "3", "Range");
  const std::string before = building.Snapshot();
  EXPECT_FALSE(building.controller().pbSave(building.connection(), kUnit, true));
  EXPECT_EQ(building.Snapshot(), before);
  EXPECT_EQ(building.screen().Variable("gstrNewTenantIDs"), qorcred::Value(""));
  EXPECT_EQ(building.store().OpenTransactions(), 0);
}

TEST(CredentialScreenOnStore, OffersWhatStillFitsIntoTheCapacity) {
  Building building;
  building.Run(
      "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i+1 FROM n WHERE i < 498) INSERT "
      "INTO CredentialBank (UnitKey, CredentialType, PINNo, FacilityCode) SELECT 1, 0, "
      "1000+i, 1 FROM n");
  building.TypeNumbers("1", "5", "Range");
  EXPECT_FALSE(building.controller().pbSave(building.connection(), kUnit));
  ASSERT_EQ(building.messages.size(), 1U);
  EXPECT_EQ(building.messages[0],
            "A maximum of 500 combined codes are allowed. 498 combined codes are currently "
            "assigned. Only 2 credentials can be created. Reduce the ending number to 2");
  building.Type("txtPINEND", "2");
  EXPECT_TRUE(building.controller().pbSave(building.connection(), kUnit));
  building.TypeNumbers("3", "", "Single");
  EXPECT_FALSE(building.controller().pbSave(building.connection(), kUnit));
  EXPECT_EQ(building.messages.back(),
            "You cannot assign more than 500 codes combined. This Unit already has 500 "
            "credentials/entry codes/directory codes.");
}

TEST(CredentialScreenOnStore, CountsDirectoryCodesAgainstTheCapacity) {
  Building building;
  building.Run(
      "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i+1 FROM n WHERE i < 500) INSERT "
      "INTO DirectoryCode (UNITKEY, DIRECTORYCODE) SELECT 1, i FROM n");
  building.TypeNumbers("1", "", "Single");
  EXPECT_FALSE(building.controller().pbSave(building.connection(), kUnit));
  EXPECT_EQ(building.Number("SELECT count(*) FROM CredentialBank"), 0);
}

TEST(CredentialScreenOnStore, RefusesTheSameCardTwiceButNotWithAnotherFacilityCode) {
  Building building;
  StoreCard(building, 10);
  building.TypeNumbers("10", "", "Single");
  EXPECT_FALSE(building.controller().pbSave(building.connection(), kUnit));
  ASSERT_EQ(building.messages.size(), 1U);
  building.Type("txtFacilityCode", "8");
  EXPECT_TRUE(building.controller().pbSave(building.connection(), kUnit));
}

TEST(CredentialScreenOnStore, NamesTheLowestClashOfARange) {
  Building building;
  StoreCard(building, 30);
  StoreCard(building, 20);
  building.TypeNumbers("10", "40", "Range");
  EXPECT_FALSE(building.controller().pbSave(building.connection(), kUnit));
  ASSERT_EQ(building.messages.size(), 1U);
  EXPECT_NE(building.messages[0].find("Credential Number = 20, Facility Code = 7"),
            std::string::npos);
}

TEST(CredentialScreenOnStore, TellsTransmittersApartByTheirButton) {
  Building building;
  building.TypeNumbers("10", "", "Single");
  building.ChooseType(2);
  building.Type("txtIDCode", "5");
  building.Type("txtSequenceCode", "1");
  EXPECT_TRUE(building.controller().pbSave(building.connection(), kUnit));
  building.screen().Option("optButton4").SetOn(true);
  EXPECT_TRUE(building.controller().pbSave(building.connection(), kUnit));
  EXPECT_FALSE(building.controller().pbSave(building.connection(), kUnit));
  EXPECT_EQ(building.Rows("SELECT ButtonNumber FROM CredentialBank ORDER BY RID"), "1;4;");
}

TEST(CredentialScreenOnStore, ListsCredentialsByTypeAndNumberAndSelectsThePreviousOne) {
  Building building;
  const std::int32_t second = StoreCard(building, 20);
  StoreCard(building, 9);
  building.SelectCredential(second);
  const qorhost::ListModel& list = building.screen().List("cboCredentials");
  ASSERT_EQ(list.count(), 3);
  EXPECT_EQ(list.ItemData(0), -100);
  EXPECT_EQ(list.Text(1), "Standard 26-Bit Card-9");
  EXPECT_EQ(list.selected(), 2);
}

struct SlotCase {
  std::string_view name;
  std::int32_t first;   // 0: free
  std::int32_t second;  // 0: free
  bool takesFirst;
};

class AssignmentOnStore : public testing::TestWithParam<SlotCase> {};

TEST_P(AssignmentOnStore, TakesTheSlotThatIsDue) {
  const SlotCase& slots = GetParam();
  Building building;
  const std::int32_t card = StoreCard(building, 10);
  if (slots.first != 0) Hold(building, kDoe, "CREDENTIALID1", slots.first);
  if (slots.second != 0) Hold(building, kDoe, "CREDENTIALID2", slots.second);
  building.SelectCredential(card);
  building.SelectTenant(kDoe);
  EXPECT_TRUE(building.controller().pbSave(building.connection(), kUnit, false, true));
  const std::string kept = slots.takesFirst ? std::to_string(slots.second) : "";
  const std::string expected =
      slots.takesFirst ? std::to_string(card) + "," + (slots.second == 0 ? "-" : kept) + ";"
                       : std::to_string(slots.first) + "," + std::to_string(card) + ";";
  EXPECT_EQ(SlotsOf(building, kDoe), expected);
  EXPECT_EQ(building.Rows("SELECT SubjectRID FROM ProgramSteps"), "2;");
}

INSTANTIATE_TEST_SUITE_P(Slots, AssignmentOnStore,
                         testing::Values(SlotCase{"BothFree", 0, 0, true},
                                         SlotCase{"FirstFree", 0, 901, true},
                                         SlotCase{"SecondFree", 900, 0, false},
                                         SlotCase{"BothFull", 900, 901, true}),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(CredentialScreenOnStore, MovesACredentialFromItsFormerTenant) {
  Building building;
  const std::int32_t card = StoreCard(building, 10);
  Hold(building, kRoe, "CREDENTIALID2", card);
  building.SelectCredential(card);
  building.SelectTenant(kDoe);
  EXPECT_TRUE(building.controller().pbSave(building.connection(), kUnit, false, true));
  EXPECT_EQ(SlotsOf(building, kRoe), "-,-;");
  EXPECT_EQ(SlotsOf(building, kDoe), std::to_string(card) + ",-;");
  EXPECT_EQ(building.Rows("SELECT SubjectRID FROM ProgramSteps ORDER BY RID"), "1;2;");
}

TEST(CredentialScreenOnStore, OnlyReleasesACredentialThatIsAssignedToNobody) {
  Building building;
  const std::int32_t card = StoreCard(building, 10);
  Hold(building, kRoe, "CREDENTIALID1", card);
  building.SelectCredential(card);
  building.SelectTenant(0);
  EXPECT_TRUE(building.controller().pbSave(building.connection(), kUnit, false, true));
  EXPECT_EQ(SlotsOf(building, kRoe), "-,-;");
}

TEST(CredentialScreenOnStore, StoresTheDoorOfAnEditedCredential) {
  Building building;
  const std::int32_t card = StoreCard(building, 10);
  building.SelectCredential(card);
  building.SelectTenant(0);
  building.screen().List("cboActivate").Select(1);
  EXPECT_TRUE(building.controller().pbSave(building.connection(), kUnit, false, true));
  EXPECT_EQ(building.Number("SELECT DOORCODE FROM CredentialBank"), 1);
}

TEST(CredentialScreenOnStore, KeepsAnAssignedCredentialWhenTheAnswerIsNo) {
  Building building;
  const std::int32_t card = StoreCard(building, 10);
  Hold(building, kDoe, "CREDENTIALID2", card);
  building.SelectCredential(card);
  const std::string before = building.Snapshot();
  EXPECT_FALSE(building.controller().pbDelete(building.connection(), kUnit, card));
  EXPECT_EQ(building.messages.size(), 1U);
  EXPECT_EQ(building.Snapshot(), before);
}

TEST(CredentialScreenOnStore, DeletesAnAssignedCredentialAndProgramsItsTenant) {
  Building building;
  const std::int32_t card = StoreCard(building, 10);
  Hold(building, kDoe, "CREDENTIALID2", card);
  building.SelectCredential(card);
  building.answer = MessageButton::kYes;
  EXPECT_TRUE(building.controller().pbDelete(building.connection(), kUnit, card));
  EXPECT_EQ(building.Number("SELECT count(*) FROM CredentialBank"), 0);
  EXPECT_EQ(SlotsOf(building, kDoe), "-,-;");
  EXPECT_EQ(building.Rows("SELECT SubjectRID FROM ProgramSteps"), "2;");
}

TEST(CredentialScreenOnStore, LeavesTheSlotOfAResident) {
  Building building;
  const std::int32_t card = StoreCard(building, 10);
  Hold(building, kResident, "CREDENTIALID1", card);
  building.SelectCredential(card);
  building.answer = MessageButton::kYes;
  EXPECT_TRUE(building.controller().pbDelete(building.connection(), kUnit, card));
  EXPECT_EQ(SlotsOf(building, kResident), std::to_string(card) + ",-;");
  EXPECT_EQ(building.Number("SELECT count(*) FROM ProgramSteps"), 0);
}

TEST(CredentialScreenOnStore, DeletesAnUnassignedCredentialWithoutAQuestion) {
  Building building;
  const std::int32_t card = StoreCard(building, 10);
  EXPECT_TRUE(building.controller().pbDelete(building.connection(), kUnit, card));
  EXPECT_TRUE(building.messages.empty());
  EXPECT_EQ(building.Number("SELECT count(*) FROM CredentialBank"), 0);
}

TEST(CredentialScreenOnStore, RenumbersACredentialInItsPlace) {
  Building building;
  StoreCard(building, 10);
  const std::int32_t card = StoreCard(building, 20);
  building.SelectCredential(card);
  EXPECT_TRUE(building.controller().pbUpdatePinNo(building.connection(), 5, kUnit));
  EXPECT_EQ(building.Number("SELECT PINNo FROM CredentialBank WHERE RID=2"), 5);
  const qorhost::ListModel& list = building.screen().List("cboCredentials");
  EXPECT_EQ(list.Text(2), "Standard 26-Bit Card-5");
  EXPECT_EQ(list.ItemData(2), card);
  EXPECT_EQ(list.selected(), 2);
}

TEST(CredentialScreenOnStore, RefusesANumberThatAnotherCardHas) {
  Building building;
  StoreCard(building, 10, 1);
  const std::int32_t card = StoreCard(building, 20, 2);
  building.SelectCredential(card);
  EXPECT_FALSE(building.controller().pbUpdatePinNo(building.connection(), 10, kUnit));
  EXPECT_TRUE(building.controller().pbUpdatePinNo(building.connection(), 20, kUnit));
  ASSERT_EQ(building.messages.size(), 1U);
  EXPECT_EQ(building.messages[0], "Credential Number already exists.");
}

TEST(CredentialScreenOnStore, LeavesARowThatSomebodyElseChangedMeanwhile) {
  Building building;
  const std::int32_t card = StoreCard(building, 10);
  building.Run("UPDATE CredentialBank SET LASTMODIFIEDDATE='2026-01-01 08:00:00'");
  building.SelectCredential(card);
  building.controller().pbRetrieveCredentials(building.connection(), kUnit, card);
  EXPECT_EQ(building.screen().Variable("gstrLastModifiedDate"),
            qorcred::Value("1/1/2026 8:00:00 AM"));
  building.Run("UPDATE CredentialBank SET LASTMODIFIEDDATE='2026-01-02 08:00:00'");
  EXPECT_FALSE(building.controller().pbUpdatePinNo(building.connection(), 11, kUnit));
  EXPECT_EQ(building.Number("SELECT PINNo FROM CredentialBank"), 10);
}

TEST(CredentialScreenOnStore, AFacilityCodeThatIsNoNumberNeverReachesTheStore) {
  Building building;
  building.TypeNumbers("10", "", "Single");
  building.Type("txtFacilityCode", "0); DELETE FROM Tenants; --");
  EXPECT_FALSE(building.controller().pbSave(building.connection(), kUnit));
  EXPECT_EQ(building.Number("SELECT count(*) FROM Tenants"), 3);
}

}  // namespace
}  // namespace qortest
