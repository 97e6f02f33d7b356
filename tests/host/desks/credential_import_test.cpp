// Credentials from a file, without a command line: what a line enters, how it is assigned, and what
// is refused.
#include "host/desks/credential_import.h"

#include <gmock/gmock.h>

#include <optional>
#include <utility>

#include "host/desks/store_overview.h"
#include "host/files/input_file.h"
#include "tests/host/desks/desk_fixture.h"
#include "tests/host/desks/import_told.h"

namespace qorhost::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr const char* kHeadings =
    "Credential Type,Card Number,Facility Code,ID Code,Sequence Number,Button Number,Assigned To\n";

/// Tenants of unit 2: 62 holds one credential, 61 two, 80 is a resident with one.
class CredentialImports : public DeskFixture {
 protected:
  [[nodiscard]] ImportReport Import(const std::string& text, const ImportRules& rules = {},
                                    std::int32_t unit = kUnit) {
    ImportFile file(text, CredentialImportColumns());
    return ImportCredentials(session(), unit, file, rules, nullptr);
  }
  /// A cell of the credential with that number; "" when there is none.
  [[nodiscard]] std::string Stored(const std::string& number, const std::string& column) {
    return Cell("SELECT " + column + " FROM CREDENTIALBANK WHERE UnitKey=2 AND PINNo=" + number);
  }
  [[nodiscard]] std::string Tenant(int id, const std::string& column) {
    return Cell("SELECT " + column +
                " FROM Tenants WHERE UnitKey=2 AND TenantID=" + std::to_string(id));
  }
  [[nodiscard]] std::size_t CredentialCount() { return CountOf("SELECT RID FROM CREDENTIALBANK"); }
  [[nodiscard]] std::size_t StepCount() { return StepList(session(), std::nullopt).rows.size(); }
};

TEST_F(CredentialImports, ATransmitterIsEnteredWithEveryCell) {
  const ImportReport report =
      Import(std::string(kHeadings) + "Transmitter,901,12,3,1,4,Unassigned\n");
  EXPECT_EQ(report.ending, Ending::kDone);
  EXPECT_EQ(report.done, 1U);
  EXPECT_THAT(Told(report), IsEmpty());
  EXPECT_EQ(Stored("901", "CredentialType"), "2");
  EXPECT_EQ(Stored("901", "FacilityCode"), "12");
  EXPECT_EQ(Stored("901", "IDCode"), "3");
  EXPECT_EQ(Stored("901", "SequenceNumber"), "1");
  EXPECT_EQ(Stored("901", "ButtonNumber"), "4");
}

TEST_F(CredentialImports, TypesAreKnownByAllTheirNames) {
  int number = 900;
  for (const auto& [name, type] :
       std::vector<std::pair<std::string, std::string>>{{"Corvin 30 Bit card", "0"},
                                                        {"Corvin 30-Bit Card", "0"},
                                                        {"card30", "0"},
                                                        {"STANDARD 26 BIT CARD", "1"},
                                                        {"Standard 26-Bit Card", "1"},
                                                        {"card26", "1"}}) {
    const std::string text = std::to_string(++number);
    EXPECT_EQ(Import("Credential Type,Card Number\n" + name + "," + text + "\n").ending,
              Ending::kDone)
        << name;
    EXPECT_EQ(Stored(text, "CredentialType"), type) << name;
  }
}

TEST_F(CredentialImports, TheColumnsTellTheTypes) {
  const auto columns = CredentialImportColumns();
  ASSERT_EQ(columns.size(), 11U);
  EXPECT_EQ(columns[0].heading, "Credential Type");
  EXPECT_TRUE(columns[0].needed);
  EXPECT_EQ(columns[0].help,
            "Corvin 30-Bit Card, Standard 26-Bit Card or Transmitter; also card30, card26, "
            "transmitter");
}

TEST_F(CredentialImports, NothingOfALineStaysOnTheScreenForTheNext) {
  EXPECT_EQ(
      Import(std::string(kHeadings) + "transmitter,901,12,3,1,4,O'Brien Paula H\ncard26,902,,,,,\n"
                                      "transmitter,903,,2,0,,\n")
          .ending,
      Ending::kDone);
  EXPECT_EQ(Stored("902", "FacilityCode"), "0");
  EXPECT_EQ(Stored("902", "IDCode"), "0");
  EXPECT_EQ(Stored("902", "SequenceNumber"), "0");
  EXPECT_EQ(Stored("902", "ButtonNumber"), "1");
  EXPECT_EQ(Stored("903", "ButtonNumber"), "1");
  EXPECT_EQ(Stored("903", "FacilityCode"), "0");
}

TEST_F(CredentialImports, TheTenantOfThatNameGetsTheCredentialAndAStepIsQueued) {
  const std::size_t steps = StepCount();
  EXPECT_EQ(Import("Assigned To,Card Number,Credential Type\no'brien paula h ,901,card26\n").ending,
            Ending::kDone);
  EXPECT_EQ(Tenant(62, "CREDENTIALID1"), "490");
  EXPECT_NE(Stored("901", "RID"), "");
  EXPECT_EQ(Tenant(62, "CREDENTIALID2"), Stored("901", "RID"));
  EXPECT_EQ(StepCount(), steps + 1);
}

TEST_F(CredentialImports, ADoorIsStoredByNumberOrNameAndOnlyOfCards) {
  Run("UPDATE Doors SET DOORNAME='Garage' WHERE UNITKEY=2 AND DOORID=2");
  const ImportReport report = Import(
      "Card Number,Credential Type,Assigned To,Door,ID Code,Sequence Number\n"
      "901,card26,O'Brien Paula H,garage,,\n902,card26,,1,,\n903,card26,,none,,\n"
      "904,transmitter,,1,1,1\n905,card26,,Attic,,\n");
  EXPECT_EQ(report.done, 3U);
  EXPECT_EQ(Stored("901", "DOORCODE"), "2");
  EXPECT_EQ(Tenant(62, "CREDENTIALID2"), Stored("901", "RID"));
  EXPECT_EQ(Stored("902", "DOORCODE"), "1");
  EXPECT_NE(Stored("903", "RID"), "");
  EXPECT_EQ(Stored("903", "DOORCODE"), "");
  EXPECT_THAT(Told(report), ElementsAre("5!: Door '1' must be left empty: only cards have a door",
                                        "6!: Door: this unit has no door 'Attic'"));
  EXPECT_EQ(Stored("905", "RID"), "");
}

TEST_F(CredentialImports, RidsOfTheFileAreNotLookedAt) {
  EXPECT_EQ(Import("Credential Type,Card Number,RID,Tenant RID\ncard26,901,490,62\n").ending,
            Ending::kDone);
  EXPECT_NE(Stored("901", "RID"), "");
  EXPECT_NE(Stored("901", "RID"), "490");
  EXPECT_EQ(Tenant(62, "CREDENTIALID2"), "");
}

struct RefusedCase {
  std::string name;
  std::string line;
  std::string message;
};

void PrintTo(const RefusedCase& one, std::ostream* out) {
  *out << one.name;
}

class RefusedCredentials : public CredentialImports,
                           public testing::WithParamInterface<RefusedCase> {};

TEST_P(RefusedCredentials, AreNamedStoreNothingAndTheOthersAreDone) {
  const std::size_t credentials = CredentialCount();
  const std::size_t steps = StepCount();
  const std::string text =
      std::string(kHeadings) + "card26,901,7,,,,\n" + GetParam().line + "\ncard26,902,7,,,,\n";
  for (const bool dryRun : {true, false}) {
    ImportRules rules;
    rules.dryRun = dryRun;
    const ImportReport report = Import(text, rules);
    EXPECT_EQ(report.ending, Ending::kRefused);
    EXPECT_EQ(report.done, 2U);
    EXPECT_EQ(report.refused, 1U);
    EXPECT_THAT(Told(report), ElementsAre("3!: " + GetParam().message));
    EXPECT_EQ(CredentialCount(), credentials + (dryRun ? 0 : 2));
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
                    "Card Number 'abc' must be a whole number from 1 to 65535, in digits alone"},
        RefusedCase{"Zero", "card26,0,,,,,",
                    "Card Number '0' must be a whole number from 1 to 65535, in digits alone"},
        RefusedCase{"LargeNumber", "card26,65536,,,,,",
                    "Card Number '65536' must be a whole number from 1 to 65535, in digits alone"},
        RefusedCase{"NumberBeyondAllBounds", "card26,99999999999999999999,,,,,",
                    "Card Number '99999999999999999999' must be a whole number from 1 to 65535, in "
                    "digits alone"},
        RefusedCase{"Separators", "card26,\"20,001\",,,,,",
                    "Card Number '20,001' has separators between its digits: write 20001"},
        RefusedCase{"FacilityOfAStandardCard", "card26,903,256,,,,",
                    "Facility Code '256' must be a whole number from 0 to 255, in digits alone"},
        RefusedCase{"Facility", "card30,903,64,,,,",
                    "Facility Code '64' must be a whole number from 0 to 63, in digits alone"},
        RefusedCase{"IdCode", "transmitter,903,7,27,0,1,",
                    "ID Code '27' must be a whole number from 0 to 26, in digits alone"},
        RefusedCase{"Sequence", "transmitter,903,7,2,3,1,",
                    "Sequence Number '3' must be a whole number from 0 to 2, in digits alone"},
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
                    "Credential Type '' cannot be entered: the screen has Corvin 30-Bit Card, "
                    "Standard 26-Bit Card and Transmitter"},
        RefusedCase{"TypeThatTheScreenHasNot", "Corporate 1000 35-Bit Card,903,7,,,,",
                    "Credential Type 'Corporate 1000 35-Bit Card' cannot be entered: the screen "
                    "has Corvin 30-Bit Card, Standard 26-Bit Card and Transmitter"},
        RefusedCase{"UnknownTenant", "card26,903,7,,,,Nobody At All",
                    std::string("Assigned To 'Nobody At All' ") + kNoTenant},
        RefusedCase{"Resident", "card26,903,7,,,,Whitlock Ines H",
                    std::string("Assigned To 'Whitlock Ines H' ") + kNoTenant},
        RefusedCase{"TenantOfAnotherUnit", "card26,903,7,,,,Abbott Amelia A",
                    std::string("Assigned To 'Abbott Amelia A' ") + kNoTenant},
        RefusedCase{"TenantWithTwo", "card26,903,7,,,,Hollis Elena G",
                    "Assigned To 'Hollis Elena G' has two credentials already"},
        RefusedCase{"ControlCharacter", "card26,90\t3,7,,,,",
                    "Card Number '90\t3' cannot be typed into a box: it has control characters "
                    "or bytes that are not UTF-8"}),
    [](const auto& one) { return one.param.name; });

TEST_F(CredentialImports, ATenantsNameThatTwoHaveIsRefused) {
  Run("UPDATE Tenants SET LastName='O''Brien', FirstName='Paula', MiddleInitial='H' WHERE "
      "UnitKey=2 "
      "AND TenantID=63");
  const std::size_t credentials = CredentialCount();
  EXPECT_THAT(
      Told(Import("Credential Type,Card Number,Assigned To\ncard26,901,O'Brien Paula H\n")),
      ElementsAre("2!: 2 tenants are called 'O'Brien Paula H': leave Assigned To empty and assign "
                  "the credential by the tenant's id afterwards"));
  EXPECT_EQ(CredentialCount(), credentials);
}

TEST_F(CredentialImports, ATenantTakesTwoOfTheFileAndNoThird) {
  Run("UPDATE Tenants SET CREDENTIALID1=NULL WHERE UnitKey=2 AND TenantID=62");
  EXPECT_THAT(Told(Import("Credential Type,Card Number,Assigned To\ncard26,901,O'Brien Paula H\n"
                          "card26,902,O'Brien Paula H\ncard26,903,O'Brien Paula H\n")),
              ElementsAre("4!: Assigned To 'O'Brien Paula H' has two credentials already"));
  EXPECT_NE(Stored("901", "RID"), "");
  EXPECT_NE(Stored("902", "RID"), "");
  EXPECT_EQ(Tenant(62, "CREDENTIALID1"), Stored("901", "RID"));
  EXPECT_EQ(Tenant(62, "CREDENTIALID2"), Stored("902", "RID"));
  EXPECT_EQ(Stored("903", "RID"), "");
}

// The controller counts the new credential before it looks whether one more may be assigned.
TEST_F(CredentialImports, TheLastFreeCodeCannotBeAssignedAndIsNotStoredThen) {
  Run("UPDATE Tenants SET CREDENTIALID2=NULL WHERE UnitKey=1 AND TenantID=2");
  const std::string text =
      "Credential Type,Card Number,Facility Code,Assigned To\ncard26,901,1,\n"
      "card26,902,1,Hollis Liam B\ncard26,903,1,\ncard26,904,1,\n";
  for (const bool dryRun : {true, false}) {
    ImportRules rules;
    rules.dryRun = dryRun;
    const ImportReport report = Import(text, rules, 1);
    EXPECT_EQ(report.ending, Ending::kRefused);
    EXPECT_EQ(report.done, 2U);
    EXPECT_EQ(report.refused, 2U);
    EXPECT_THAT(Told(report),
                ElementsAre("3!: You cannot enter more than 500 combined codes.",
                            "5!: You cannot assign more than 500 codes combined. This Unit already "
                            "has 500 credentials/entry codes/directory codes."));
  }
}

TEST_F(CredentialImports, AUnitThatIgnoresFacilityCodesTakesNoneOrZero) {
  constexpr std::int32_t kIgnoring = 3;
  const ImportReport report = Import(
      "Credential Type,Card Number,Facility Code\ncard26,901,\ncard26,902,0\n"
      "card26,903,7\n",
      {}, kIgnoring);
  EXPECT_EQ(report.ending, Ending::kRefused);
  EXPECT_EQ(report.done, 2U);
  EXPECT_THAT(Told(report), ElementsAre("4!: Facility Code '7' must be left empty: this unit "
                                        "ignores facility codes"));
}

TEST_F(CredentialImports, AFailedAssignmentUndoesTheCredential) {
  Run("CREATE TRIGGER broken BEFORE UPDATE OF CREDENTIALID2 ON Tenants BEGIN SELECT raise(ABORT, "
      "'stuck'); END");
  const ImportReport report =
      Import("Credential Type,Card Number,Assigned To\ncard26,901,O'Brien Paula H\ncard26,902,\n");
  EXPECT_EQ(report.ending, Ending::kFailed);
  EXPECT_EQ(report.refused, 1U);
  EXPECT_THAT(Told(report),
              ElementsAre(testing::AllOf(testing::StartsWith("2!: "), HasSubstr("stuck"))));
  EXPECT_EQ(Stored("901", "RID"), "");
  EXPECT_NE(Stored("902", "RID"), "");
}

TEST_F(CredentialImports, TheSampleIsImportedWhole) {
  const ImportReport report = Import(ReadWholeFile(QORHOST_SAMPLES "/credentials.csv"));
  EXPECT_EQ(report.ending, Ending::kDone);
  EXPECT_EQ(report.done, 6U);
  EXPECT_THAT(Told(report), IsEmpty());
}

}  // namespace
}  // namespace qorhost::test
