// credentials import: what a line enters, how it is assigned, and what is refused.
#include <gmock/gmock.h>

#include "tests/host/cli/import_fixture.h"

namespace qorhost::test {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;

constexpr const char* kHeadings =
    "Credential Type,Card Number,Facility Code,ID Code,Sequence Number,Button Number,Assigned To\n";

/// Tenants of unit 2: 62 holds one credential, 61 two, 80 is a resident with one.
class CredentialImport : public ImportFixture {
 protected:
  [[nodiscard]] nlohmann::json Row(const std::string& number) {
    const nlohmann::json rows =
        Query("SELECT * FROM CREDENTIALBANK WHERE UnitKey=2 AND PINNo=" + number);
    return rows.empty() ? nlohmann::json() : rows[0];
  }
  [[nodiscard]] nlohmann::json Tenant(int id) {
    return Query("SELECT * FROM Tenants WHERE UnitKey=2 AND TenantID=" + std::to_string(id))[0];
  }
};

TEST_F(CredentialImport, EntersATransmitterWithEveryCell) {
  const Outcome outcome =
      Import("credentials", std::string(kHeadings) + "Transmitter,901,12,3,1,4,Unassigned\n");
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_EQ(outcome.out, "Imported 1 credential, 0 lines refused.\n");
  const nlohmann::json row = Row("901");
  EXPECT_EQ(row["CredentialType"], 2);
  EXPECT_EQ(row["FacilityCode"], 12);
  EXPECT_EQ(row["IDCode"], 3);
  EXPECT_EQ(row["SequenceNumber"], 1);
  EXPECT_EQ(row["ButtonNumber"], 4);
}

TEST_F(CredentialImport, KnowsTypesByAllTheirNames) {
  int number = 900;
  for (const auto& [name, type] :
       std::vector<std::pair<std::string, int>>{{"Corvin 30 Bit card", 0},
                                                {"Corvin 30-Bit Card", 0},
                                                {"card30", 0},
                                                {"STANDARD 26 BIT CARD", 1},
                                                {"Standard 26-Bit Card", 1},
                                                {"card26", 1}}) {
    const std::string text = std::to_string(++number);
    EXPECT_EQ(
        Import("credentials", "Credential Type,Card Number\n" + name + "," + text + "\n").status, 0)
        << name;
    EXPECT_EQ(Row(text)["CredentialType"], type) << name;
  }
}

TEST_F(CredentialImport, NothingOfALineStaysOnTheScreenForTheNext) {
  const Outcome outcome = Import("credentials", std::string(kHeadings) +
                                                    "transmitter,901,12,3,1,4,O'Brien Paula H\n"
                                                    "card26,902,,,,,\n"
                                                    "transmitter,903,,2,0,,\n");
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  const nlohmann::json card = Row("902");
  EXPECT_EQ(card["FacilityCode"], 0);
  EXPECT_EQ(card["IDCode"], 0);
  EXPECT_EQ(card["SequenceNumber"], 0);
  EXPECT_EQ(card["ButtonNumber"], 1);
  EXPECT_EQ(Row("903")["ButtonNumber"], 1);
  EXPECT_EQ(Row("903")["FacilityCode"], 0);
}

TEST_F(CredentialImport, AssignsToTheTenantOfThatNameAndQueuesTheStep) {
  const std::size_t steps = StepCount();
  const Outcome outcome = Import(
      "credentials", "Assigned To,Card Number,Credential Type\no'brien paula h ,901,card26\n");
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_EQ(Tenant(62)["CREDENTIALID1"], 490);
  EXPECT_EQ(Tenant(62)["CREDENTIALID2"], Row("901")["RID"]);
  EXPECT_EQ(StepCount(), steps + 1);
}

TEST_F(CredentialImport, RidsOfTheFileAreNotLookedAt) {
  EXPECT_EQ(Import("credentials", "Credential Type,Card Number,RID,Tenant RID\ncard26,901,490,62\n")
                .status,
            0);
  EXPECT_NE(Row("901")["RID"], 490);
  EXPECT_EQ(Tenant(62)["CREDENTIALID2"], nullptr);
}

struct RefusedCase {
  std::string name;
  std::string line;
  std::string message;
};

void PrintTo(const RefusedCase& one, std::ostream* out) {
  *out << one.name;
}

class RefusedCredentials : public CredentialImport,
                           public testing::WithParamInterface<RefusedCase> {};

TEST_P(RefusedCredentials, AreNamedStoreNothingAndTheOthersAreDone) {
  const std::size_t credentials = CountOf("CREDENTIALBANK");
  const std::size_t steps = StepCount();
  const std::string text =
      std::string(kHeadings) + "card26,901,7,,,,\n" + GetParam().line + "\ncard26,902,7,,,,\n";
  for (const bool dryRun : {true, false}) {
    const Outcome outcome = Import("credentials", text, {dryRun ? "--dry-run" : "--no"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.err, "qorhost: line 3: " + GetParam().message + "\n");
    EXPECT_EQ(outcome.out,
              dryRun ? "Would import 2 credentials, 1 line refused. Nothing was written.\n"
                     : "Imported 2 credentials, 1 line refused.\n");
    EXPECT_EQ(CountOf("CREDENTIALBANK"), credentials + (dryRun ? 0 : 2));
    EXPECT_EQ(StepCount(), steps);
  }
}

constexpr const char* kNoTenant =
    "is no tenant of this unit to whom the screen assigns credentials";

INSTANTIATE_TEST_SUITE_P(
    Lines, RefusedCredentials,
    testing::Values(
        RefusedCase{"NoNumber", "card26,,,,,,", "You must enter a credential number."},
        RefusedCase{"TextForANumber", "card26,abc,,,,,",
                    "Please enter a numeric value for starting number."},
        RefusedCase{"Zero", "card26,0,,,,,", "Please enter a starting number between 1 and 65535."},
        RefusedCase{"LargeNumber", "card26,65536,,,,,",
                    "Please enter a credential number smaller than 65535."},
        RefusedCase{"Facility", "card30,903,64,,,,",
                    "Please enter a Facility Code between 0 and 63."},
        RefusedCase{"IdCode", "transmitter,903,7,27,0,1,",
                    "Please enter an ID Code between 0 and 26."},
        RefusedCase{"Sequence", "transmitter,903,7,2,3,1,",
                    "Please enter a Sequence Code between 0 and 2."},
        RefusedCase{"NoIdCode", "transmitter,903,7,,0,1,",
                    "Please enter an ID Code between 0 and 26."},
        RefusedCase{"StoredCard", "card30,1001,7,,,,",
                    "For this Credential Type, the combination of Credential Number and the "
                    "Facility Code cannot be duplicated. Credential Number = 1001, Facility Code "
                    "= 7"},
        RefusedCase{"CardOfALineBefore", "card26,0901,7,,,,O'Brien Paula H",
                    "For this Credential Type, the combination of Credential Number and the "
                    "Facility Code cannot be duplicated. Credential Number = 901, Facility Code = "
                    "7"},
        RefusedCase{"Button", "transmitter,903,7,2,0,2,", "Button Number '2' is neither 1 nor 4"},
        RefusedCase{"IdCodeOfACard", "card26,903,7,2,,,",
                    "ID Code '2' must be left empty: only transmitters have one"},
        RefusedCase{"ButtonOfACard", "card26,903,7,,,1,",
                    "Button Number '1' must be left empty: only transmitters have one"},
        RefusedCase{"NoType", ",903,7,,,,",
                    "Credential Type '' cannot be entered: the screen has Corvin 30 Bit card, "
                    "Standard 26 Bit card and Transmitter"},
        RefusedCase{"TypeThatTheScreenHasNot", "Corporate 1000 35-Bit Card,903,7,,,,",
                    "Credential Type 'Corporate 1000 35-Bit Card' cannot be entered: the screen "
                    "has Corvin 30 Bit card, Standard 26 Bit card and Transmitter"},
        RefusedCase{"UnknownTenant", "card26,903,7,,,,Nobody At All",
                    std::string("Assigned To 'Nobody At All' ") + kNoTenant},
        RefusedCase{"Resident", "card26,903,7,,,,Whitlock Ines H",
                    std::string("Assigned To 'Whitlock Ines H' ") + kNoTenant},
        RefusedCase{"TenantOfAnotherUnit", "card26,903,7,,,,Abbott Amelia A",
                    std::string("Assigned To 'Abbott Amelia A' ") + kNoTenant},
        RefusedCase{"TenantWithTwo", "card26,903,7,,,,Hollis Elena G",
                    "Assigned To 'Hollis Elena G' has two credentials already"},
        RefusedCase{"ControlCharacter", "card26,90\t3,7,,,,",
                    "Card Number '90\\t3' cannot be typed into a box: it has control characters "
                    "or bytes that are not UTF-8"}),
    [](const auto& one) { return one.param.name; });

TEST_F(CredentialImport, ATenantsNameThatTwoHaveIsRefused) {
  Change(
      "UPDATE Tenants SET LastName='O''Brien', FirstName='Paula', MiddleInitial='H' WHERE "
      "UnitKey=2 AND TenantID=63");
  const std::size_t credentials = CountOf("CREDENTIALBANK");
  const Outcome outcome = Import(
      "credentials", "Credential Type,Card Number,Assigned To\ncard26,901,O'Brien Paula H\n");
  EXPECT_EQ(outcome.status, 1);
  EXPECT_THAT(outcome.err, HasSubstr("line 2: 2 tenants are called 'O'Brien Paula H'"));
  EXPECT_EQ(CountOf("CREDENTIALBANK"), credentials);
}

TEST_F(CredentialImport, ATenantTakesTwoOfTheFileAndNoThird) {
  Change("UPDATE Tenants SET CREDENTIALID1=NULL WHERE UnitKey=2 AND TenantID=62");
  const Outcome outcome =
      Import("credentials",
             "Credential Type,Card Number,Assigned To\ncard26,901,O'Brien Paula H\n"
             "card26,902,O'Brien Paula H\ncard26,903,O'Brien Paula H\n");
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.err,
            "qorhost: line 4: Assigned To 'O'Brien Paula H' has two credentials already\n");
  EXPECT_EQ(Tenant(62)["CREDENTIALID1"], Row("901")["RID"]);
  EXPECT_EQ(Tenant(62)["CREDENTIALID2"], Row("902")["RID"]);
  EXPECT_TRUE(Row("903").is_null());
}

// The controller counts the new credential before it looks whether one more may be assigned.
TEST_F(CredentialImport, TheLastFreeCodeCannotBeAssignedAndIsNotStoredThen) {
  Change("UPDATE Tenants SET CREDENTIALID2=NULL WHERE UnitKey=1 AND TenantID=2");
  const std::string text =
      "Credential Type,Card Number,Facility Code,Assigned To\ncard26,901,1,\n"
      "card26,902,1,Hollis Liam B\ncard26,903,1,\ncard26,904,1,\n";
  for (const char* option : {"--dry-run", "--no"}) {
    const Outcome outcome = Run({"--unit", "1", "credentials", "import", Write(text), option});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.out, HasSubstr("2 credentials, 2 lines refused"));
    EXPECT_EQ(outcome.err,
              "qorhost: line 3: You cannot enter more than 500 combined codes.\n"
              "qorhost: line 5: You cannot assign more than 500 codes combined. This Unit already "
              "has 500 credentials/entry codes/directory codes.\n");
  }
}

TEST_F(CredentialImport, AUnitThatIgnoresFacilityCodesTakesNoneOrZero) {
  const Outcome outcome = Run({"--unit", "3", "credentials", "import",
                               Write("Credential Type,Card Number,Facility Code\ncard26,901,\n"
                                     "card26,902,0\ncard26,903,7\n")});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.err,
            "qorhost: line 4: Facility Code '7' must be left empty: this unit ignores facility "
            "codes\n");
  EXPECT_EQ(outcome.out, "Imported 2 credentials, 1 line refused.\n");
}

TEST_F(CredentialImport, AFailedAssignmentUndoesTheCredential) {
  AddTrigger(
      "broken BEFORE UPDATE OF CREDENTIALID2 ON Tenants BEGIN SELECT raise(ABORT, 'stuck'); END");
  const Outcome outcome =
      Import("credentials",
             "Credential Type,Card Number,Assigned To\ncard26,901,O'Brien Paula H\ncard26,902,\n");
  EXPECT_EQ(outcome.status, 3);
  EXPECT_THAT(outcome.err, HasSubstr("line 2: "));
  EXPECT_THAT(outcome.err, HasSubstr("stuck"));
  EXPECT_TRUE(Row("901").is_null());
  EXPECT_FALSE(Row("902").is_null());
}

TEST_F(CredentialImport, JsonHasTheCountsAndEveryRefusedLine) {
  const Outcome outcome =
      Import("credentials", "Credential Type,Card Number\ncard26,901\ncard26,0\n", {"--json"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(
      nlohmann::json::parse(outcome.out),
      (nlohmann::json{
          {"done", 1},
          {"refused", 1},
          {"lines",
           {{{"line", 3}, {"message", "Please enter a starting number between 1 and 65535."}}}}}));
}

TEST_F(CredentialImport, TheSampleIsImportedWhole) {
  const Outcome outcome =
      Run({"--unit", "2", "credentials", "import", QORHOST_SAMPLES "/credentials.csv"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_THAT(outcome.err, IsEmpty());
  EXPECT_EQ(outcome.out, "Imported 6 credentials, 0 lines refused.\n");
}

}  // namespace
}  // namespace qorhost::test
