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

TEST_F(StoreCheckTest, FindsLinksThatPointNowhere) {
  Run("INSERT INTO CredentialBank (RID, UnitKey, CredentialType, PINNo, FacilityCode) "
      "VALUES (9001, 1, 1, 901, 7)");
  Run("UPDATE Tenants SET LastName='Berg', FirstName='Bea', CREDENTIALID1=9001, "
      "CREDENTIALID2=9999, DIRECTORYCODE=9999 WHERE RID=62");
  EXPECT_THAT(Found(),
              ElementsAre("tenant Berg Bea (RID 62) holds the credential RID 9001, which is not "
                          "there",
                          "tenant Berg Bea (RID 62) holds the credential RID 9999, which is not "
                          "there",
                          "tenant Berg Bea (RID 62) has the directory code RID 9999, which is not "
                          "there"));
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

}  // namespace
}  // namespace qorhost::test
