// What a look over a store finds.
#include "host/desks/store_check.h"

#include <gmock/gmock.h>

#include "tests/host/desks/desk_fixture.h"

namespace qorhost::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::MatchesRegex;
using testing::Not;

class StoreCheckTest : public DeskFixture {
 protected:
  [[nodiscard]] std::vector<std::string> Found() {
    std::vector<std::string> what;
    for (const Finding& finding : FindingsIn(session(), kUnit)) {
      EXPECT_EQ(finding.unitKey, kUnit);
      EXPECT_FALSE(finding.advice.empty());
      EXPECT_THAT(finding.advice, Not(HasSubstr("qorhost"))) << "what to type is the front end's";
      what.push_back(finding.what);
    }
    return what;
  }
};

TEST_F(StoreCheckTest, TheDemoBuildingIsInOrder) {
  for (const UnitName& unit : session().Units()) {
    EXPECT_THAT(FindingsIn(session(), unit.key), IsEmpty()) << unit.name;
  }
}

TEST_F(StoreCheckTest, FindsACardThatIsThereTwice) {
  Run("INSERT INTO CredentialBank (RID, UnitKey, CredentialType, PINNo, FacilityCode) "
      "VALUES (9001, 2, 1, 901, 7), (9002, 2, 1, 901, 8), (9003, 2, 0, 901, 7), "
      "(9004, 1, 1, 901, 7), (9005, 2, 1, 901, 7)");
  EXPECT_THAT(Found(),
              ElementsAre(MatchesRegex(".*-901 is there twice, as RID 9001 and RID 9005")));
}

TEST_F(StoreCheckTest, ATransmitterIsToldByAllItsCodes) {
  Run("INSERT INTO CredentialBank (RID, UnitKey, CredentialType, PINNo, FacilityCode, IDCode, "
      "SequenceNumber, ButtonNumber) VALUES (9001, 2, 2, 901, 7, 1, 1, 1), "
      "(9002, 2, 2, 901, 7, 2, 1, 1), (9003, 2, 2, 901, 7, 1, 2, 1), (9004, 2, 2, 901, 7, 1, 1, "
      "4)");
  EXPECT_THAT(Found(), IsEmpty());
  Run("UPDATE CredentialBank SET ButtonNumber=1 WHERE RID=9004");
  EXPECT_THAT(Found(), ElementsAre("Transmitter-901 is there twice, as RID 9001 and RID 9004"));
}

TEST_F(StoreCheckTest, FindsADirectoryCodeThatIsThereTwice) {
  Run("INSERT INTO DirectoryCode (RID, UNITKEY, DIRECTORYCODE, MODIFIED) VALUES (9001, 2, 101, 1), "
      "(9002, 2, 102, 3), (9003, 2, -1, 1), (9004, 2, -1, 1)");
  EXPECT_THAT(Found(), ElementsAre("directory code 101 is there twice, as RID 11 and RID 9001"));
}

TEST_F(StoreCheckTest, FindsLinksThatPointNowhereOrToAnotherUnit) {
  Run("INSERT INTO CredentialBank (RID, UnitKey, CredentialType, PINNo, FacilityCode) "
      "VALUES (9001, 1, 1, 901, 7)");
  Run("UPDATE Tenants SET LastName='Berg', FirstName='Bea', CREDENTIALID1=9001, "
      "CREDENTIALID2=9999, DIRECTORYCODE=9999 WHERE RID=62");
  EXPECT_THAT(Found(),
              ElementsAre("tenant Berg Bea (RID 62) holds the credential RID 9001, which is unit "
                          "1's",
                          "tenant Berg Bea (RID 62) holds the credential RID 9999, which is not "
                          "there",
                          "tenant Berg Bea (RID 62) has the directory code RID 9999, which is not "
                          "there"));
}

TEST_F(StoreCheckTest, FindsStepsAndBackupRowsOfAnotherUnit) {
  const std::string tenant = Cell("SELECT Min(RID) FROM Tenants WHERE UnitKey=1");
  const std::string code = Cell("SELECT Min(RID) FROM DirectoryCode WHERE UNITKEY=1");
  Run("INSERT INTO ProgramSteps (RID, UnitKey, Kind, SubjectRID, Sent) VALUES "
      "(9001, 2, 'program tenant', " +
      tenant + ", 0), (9002, 2, 'delete directory code', " + code +
      ", 0), (9003, 2, 'program tenant', 9999, 0), (9004, 2, 'program tenant', 62, 0)");
  Run("INSERT INTO TenantsBackup (RID, UnitKey, TenantID) VALUES (9001, 2, " + tenant +
      "), (9002, 2, 9999), (9003, 2, 62)");
  EXPECT_THAT(Found(), ElementsAre("the programming step 9001 is about the tenant RID " + tenant +
                                       ", which is unit 1's",
                                   "the programming step 9002 is about the directory code RID " +
                                       code + ", which is unit 1's",
                                   "the row 9001 of TenantsBackup is of the tenant RID " + tenant +
                                       ", who is unit 1's"));
}

TEST_F(StoreCheckTest, NamesTheCommandThatMendsWhatNoScreenCan) {
  const std::string tenant = Cell("SELECT Min(RID) FROM Tenants WHERE UnitKey=1");
  Run("INSERT INTO CredentialBank (RID, UnitKey, CredentialType, PINNo, FacilityCode, DOORCODE) "
      "VALUES (9001, 2, 1, 902, 7, 5)");
  Run("INSERT INTO ProgramSteps (RID, UnitKey, Kind, SubjectRID, Sent) VALUES "
      "(9002, 2, 'program tenant', " +
      tenant + ", 0)");
  Run("INSERT INTO TenantsBackup (RID, UnitKey, TenantID) VALUES (9003, 2, " + tenant + ")");
  std::vector<std::string> commands;
  for (const Finding& finding : FindingsIn(session(), kUnit)) {
    commands.push_back(finding.advice.substr(finding.advice.find(": '")));
  }
  const std::string door = "UPDATE CredentialBank SET DOORCODE=0 WHERE RID=9001";
  const std::string backup = "DELETE FROM TenantsBackup WHERE RID=9003";
  EXPECT_THAT(commands,
              ElementsAre(": 'sql --write \"" + door + "\"'", ": 'steps done 9002 --unit 2'",
                          ": 'sql --write \"" + backup + "\"'"));
  // What they do is enough.
  Run(door);
  Run("UPDATE ProgramSteps SET Sent=-1 WHERE RID=9002");
  Run(backup);
  EXPECT_THAT(Found(), IsEmpty());
}

TEST_F(StoreCheckTest, FindsSchedulesOfTenantsThatAreNotThere) {
  Run("INSERT INTO Schedules (ScheduleID, ScheduleName, UnitKey, Modified) "
      "VALUES (70, 'Of another unit', 1, 0), (71, 'Deleted', 2, 3), (72, 'There', 2, 0)");
  Run("UPDATE Tenants SET LastName='Berg', FirstName='Bea', DOORSCHEDULE1=70, DOORSCHEDULE2=71, "
      "DOORSCHEDULE3=72, DOORSCHEDULE4=-1 WHERE RID=62");
  EXPECT_THAT(
      Found(),
      ElementsAre("tenant Berg Bea (RID 62) has the schedule 70 at door 1, which is not there",
                  "tenant Berg Bea (RID 62) has the schedule 71 at door 2, which is not there",
                  "tenant Berg Bea (RID 62) has the schedule -1 at door 4, which is not there"));
  // The two that every unit has are there also where they are not stored.
  Run("DELETE FROM Schedules WHERE UnitKey=2 AND ScheduleID IN (0, 1)");
  Run("UPDATE Tenants SET DOORSCHEDULE1=0, DOORSCHEDULE2=1, DOORSCHEDULE4=NULL WHERE RID=62");
  EXPECT_THAT(Found(), IsEmpty());
}

TEST_F(StoreCheckTest, FindsGroupsThatAreNotThere) {
  const std::string own = Cell("SELECT GROUPID FROM Tenants WHERE RID=62");
  const std::string other = Cell("SELECT RID FROM TenantGroup WHERE UnitKey=1");
  Run("UPDATE Tenants SET LastName='Berg', FirstName='Bea', GROUPID=" + other + " WHERE RID=62");
  EXPECT_THAT(Found(), ElementsAre("tenant Berg Bea (RID 62) is in the group " + other +
                                   ", which is unit 1's"));
  Run("UPDATE Tenants SET GROUPID=0 WHERE RID=62");
  EXPECT_THAT(Found(),
              ElementsAre("tenant Berg Bea (RID 62) is in the group 0, which is not there"));
  Run("UPDATE Tenants SET GROUPID=NULL WHERE RID=62");
  EXPECT_THAT(Found(), IsEmpty());
}

TEST_F(StoreCheckTest, GroupNoneIsInOrderWhereTheUnitHasNoGroupForNewTenants) {
  Run("UPDATE Tenants SET GROUPID=0 WHERE RID=62");
  Run("UPDATE TenantGroup SET IsGroupZero=0 WHERE UnitKey=2");
  EXPECT_THAT(Found(), IsEmpty());
  Run("UPDATE Tenants SET GROUPID=0 WHERE UnitKey=2; DELETE FROM TenantGroup WHERE UnitKey=2");
  EXPECT_THAT(Found(), IsEmpty());
}

TEST_F(StoreCheckTest, FindsDoorsOfCardsThatAreNotThere) {
  Run("INSERT INTO CredentialBank (RID, UnitKey, CredentialType, PINNo, FacilityCode, DOORCODE) "
      "VALUES (9001, 2, 1, 901, 7, 4), (9002, 2, 1, 902, 7, 5), (9003, 2, 1, 903, 7, -1), "
      "(9004, 2, 1, 904, 7, NULL), (9005, 2, 2, 905, 7, 5)");
  EXPECT_THAT(
      Found(),
      ElementsAre("Standard 26-Bit Card-902 (RID 9002) has the door 5, which is not there",
                  "Standard 26-Bit Card-903 (RID 9003) has the door -1, which is not there"));
}

TEST_F(StoreCheckTest, FindsSchedulesOfCodesThatAreNotThereWhileTheyCount) {
  Run("UPDATE DirectoryCode SET ISDNDCHECKED=-1, DNDSCHEDULEID=70, ISCFCHECKED=-1, "
      "CFSCHEDULEID=71 WHERE RID=11");
  EXPECT_THAT(
      Found(),
      ElementsAre(
          "directory code 101 has the schedule 70 for Do Not Disturb, which is not there",
          "directory code 101 has the schedule 71 for Call Forwarding, which is not there"));
  Run("UPDATE DirectoryCode SET ISDNDCHECKED=0, ISCFCHECKED=NULL WHERE RID=11");
  EXPECT_THAT(Found(), IsEmpty());
}

TEST_F(StoreCheckTest, FindsACredentialWithTwoHolders) {
  const std::string card = Cell("SELECT CREDENTIALID1 FROM Tenants WHERE RID=62");
  Run("UPDATE Tenants SET CREDENTIALID2=CREDENTIALID1 WHERE RID=62");
  EXPECT_THAT(Found(), ElementsAre(MatchesRegex(".*RID " + card + ". is held by .*")));
}

TEST_F(StoreCheckTest, FindsPeriodsThatEndBeforeTheyBegin) {
  Run("UPDATE DirectoryCode SET STARTDATE='2026-02-01 00:00:00', ENDDATE='2026-01-01 00:00:00' "
      "WHERE RID=11");
  EXPECT_THAT(Found(), ElementsAre("the period of directory code 101 ends before it begins"));
}

TEST_F(StoreCheckTest, FindsMoreCodesThanTheUnitTakes) {
  Run("UPDATE UNITTYPES SET TOTAL='MQ=='");  // 1
  EXPECT_THAT(Found(), ElementsAre(MatchesRegex("[0-9]+ codes are in use, and the unit takes 1")));
  Run("UPDATE UNITTYPES SET TOTAL=NULL");
  EXPECT_THAT(Found(), ElementsAre("its capacity is not known"));
}

TEST_F(StoreCheckTest, FindsSettingsOutOfTheirBounds) {
  Run("UPDATE UnitSettings SET MaxDigitsDirectoryCode=16, CARDDEFAULTFACILITYCODE=-1, "
      "DEACTIVATIONDAYS=0, RECORDDEACTIVATION=2");
  EXPECT_THAT(Found(),
              ElementsAre("the setting 'digits of directory codes' is 16, and 1 to 15 can be",
                          "the setting 'days to the default end' is 0, and 1 to 36500 can be",
                          "the setting 'facility code of cards' is -1, and 0 to 255 can be"));
  Run("UPDATE UnitSettings SET MaxDigitsDirectoryCode=15, CARDDEFAULTFACILITYCODE=0, "
      "RECORDDEACTIVATION=0");
  EXPECT_THAT(Found(), IsEmpty()) << "days count after days alone";
}

}  // namespace
}  // namespace qorhost::test
