// Tenants from a spreadsheet: what a line stores, what is refused, and what is there already.
#include "host/desks/tenant_import.h"

#include <gmock/gmock.h>

#include <sstream>

#include "host/desks/desk_error.h"
#include "host/desks/tenant_export.h"
#include "host/desks/tenant_file.h"
#include "host/files/csv_writer.h"
#include "tests/host/desks/desk_fixture.h"
#include "tests/host/desks/import_told.h"

namespace qorhost::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class TenantImports : public DeskFixture {
 protected:
  [[nodiscard]] ImportReport Import(const std::string& text, const TenantImportRules& rules = {},
                                    const ImportForm& form = {}) {
    ImportFile file(text, TenantFileColumns(), form);
    return ImportTenants(session(), kUnit, file, rules, nullptr);
  }
  [[nodiscard]] std::vector<std::string> Refusals(const std::string& text,
                                                  const TenantImportRules& rules = {}) {
    return Told(Import(text, rules));
  }
  [[nodiscard]] std::string Exported() {
    std::ostringstream csv;
    PrintCsv(csv, ExportedTenants(session(), kUnit));
    return csv.str();
  }
  [[nodiscard]] std::size_t TenantCount() {
    return CountOf("SELECT RID FROM Tenants WHERE UnitKey=2");
  }
  [[nodiscard]] std::size_t StepCount() { return CountOf("SELECT RID FROM ProgramSteps"); }
  /// Of the tenant with the highest RID.
  [[nodiscard]] std::string OfNewest(const std::string& column) {
    return Cell("SELECT " + column + " FROM Tenants ORDER BY RID DESC");
  }
};

TEST_F(TenantImports, ALineIsATenantWithTwoCardsAndACode) {
  const ImportReport report = Import(
      "Last Name,First Name,Initial,Directory Code,Phone,Card Type,Card Number,Facility Code,Card "
      "Door,Card 2 Type,Card 2 Number,Card 2 ID Code,Card 2 Sequence Number,Card 2 Button "
      "Number,Start,End,Schedules,"
      "Resident\n"
      "O’Brien,Zoë,Q,250,555-0250,card26,40001,7,Garden Gate North "
      "Side,transmitter,900,5,1,4,2026-02-01,"
      "12/31/2026,\"Full Access,Night Shift,1,0\",yes\n");
  EXPECT_THAT(Told(report), IsEmpty());
  EXPECT_EQ(report.done, 1U);
  EXPECT_EQ(OfNewest("LastName & '|' & FirstName & '|' & MiddleInitial & '|' & NameAtUnit"),
            "O’Brien|Zoë|Q|Zoë O’Brien");
  EXPECT_EQ(OfNewest("ACTIVESTARTTIME & '|' & ACTIVEENDTIME & '|' & ACTIVETENANT & '|' & Resident"),
            "2/1/2026|12/31/2026 11:59:59 PM|-1|1");
  EXPECT_EQ(OfNewest("DOORSCHEDULE1 & DOORSCHEDULE2 & DOORSCHEDULE3 & DOORSCHEDULE4"), "1410");
  const std::string card = OfNewest("CREDENTIALID1");
  EXPECT_EQ(Cell("SELECT CredentialType & '|' & PINNo & '|' & FacilityCode & '|' & DOORCODE FROM "
                 "CREDENTIALBANK WHERE UnitKey=2 AND RID=" +
                 card),
            "1|40001|7|3");
  EXPECT_EQ(Cell("SELECT PINNo & '|' & IDCode & '|' & ButtonNumber FROM CREDENTIALBANK WHERE "
                 "UnitKey=2 AND RID=" +
                 OfNewest("CREDENTIALID2")),
            "900|5|4");
  EXPECT_EQ(Cell("SELECT DIRECTORYCODE & '|' & PHONENUMBER & '|' & DISPLAYNAME FROM DIRECTORYCODE "
                 "WHERE UNITKEY=2 AND RID=" +
                 OfNewest("DIRECTORYCODE")),
            "250|555-0250|Zoë O’Brien");
  EXPECT_EQ(StepCount(), 2U) << "one for the code, one for the tenant";
  EXPECT_EQ(OfNewest("LINKCODE"), "76");
  EXPECT_EQ(Cell("SELECT NextLinkCode FROM UnitCounters WHERE UnitKey=2"), "77");
}

TEST_F(TenantImports, WhatIsThereAlreadyIsLinked) {
  const ImportReport report = Import(
      "Name,Apartment,Card Type,Card Number\n"
      "Xenia Q. Newcomer,0101,card30,1080\n"
      "\"Newcomer, Yves\",101,card26,20040\n");
  EXPECT_THAT(Told(report), IsEmpty());
  EXPECT_EQ(Cell("SELECT COUNT(*) FROM Tenants WHERE UnitKey=2 AND LastName='Newcomer' AND "
                 "DIRECTORYCODE=11"),
            "2");
  EXPECT_EQ(CountOf("SELECT RID FROM CREDENTIALBANK WHERE UnitKey=2"), 145U) << "none is issued";
  EXPECT_EQ(Cell("SELECT MiddleInitial FROM Tenants WHERE UnitKey=2 AND FirstName='Xenia' AND "
                 "LastName='Newcomer'"),
            "Q");
}

struct RefusedTenantLine {
  std::string name;
  std::string headings;
  std::string cells;
  std::string reason;
};
void PrintTo(const RefusedTenantLine& one, std::ostream* out) {
  *out << one.name;
}

class RefusedTenants : public TenantImports,
                       public testing::WithParamInterface<RefusedTenantLine> {};

TEST_P(RefusedTenants, LeaveNothingBehindAndSayWhy) {
  const std::string before = Exported();
  const ImportReport report =
      Import("Last Name" + GetParam().headings + "\nNewcomer" + GetParam().cells + "\n");
  EXPECT_EQ(report.ending, Ending::kRefused);
  EXPECT_THAT(Told(report), ElementsAre("2!: " + GetParam().reason));
  EXPECT_EQ(Exported(), before);
  EXPECT_EQ(StepCount(), 0U);
}

INSTANTIATE_TEST_SUITE_P(
    Lines, RefusedTenants,
    testing::Values(
        RefusedTenantLine{"HeldCard", ",Card Type,Card Number", ",card30,1001",
                          "Card Number '1001' is held by Hollis Elena G (RID 61)"},
        RefusedTenantLine{"CardWithoutType", ",Card Number", ",40001",
                          "Card Type is empty: no credential has the number '40001', and a new one "
                          "needs a type: Corvin 30-Bit Card, Standard 26-Bit Card or Transmitter"},
        RefusedTenantLine{"Separators", ",Card Type,Card Number", ",card26,\"20,001\"",
                          "Card Number '20,001' has separators between its digits: write 20001"},
        RefusedTenantLine{"CodeBehindCard", ",Card Type,Card Number,Directory Code,Phone",
                          ",card26,40001,250,",
                          "Please enter a Phone No. to apply to the Directory Code."},
        RefusedTenantLine{
            "SecondCardBehindFirst", ",Card Type,Card Number,Card 2 Type,Card 2 Number",
            ",card26,40001,card99,40002",
            "Card 2 Type 'card99' cannot be entered: the screen has Corvin 30-Bit Card, "
            "Standard 26-Bit Card and Transmitter"},
        RefusedTenantLine{"SameCardTwice", ",Card Type,Card Number,Card 2 Type,Card 2 Number",
                          ",card26,20040,card26,20040", "both cards of the line are the same one"},
        RefusedTenantLine{"OtherPhone", ",Directory Code,Phone", ",101,555-9999",
                          "Phone '555-9999' is not what the directory code 101 dials: that is "
                          "'555-0100'"},
        RefusedTenantLine{"PhoneWithoutCode", ",Phone", ",555-9999",
                          "Phone '555-9999' has nobody who could dial it: Directory Code is empty"},
        RefusedTenantLine{"WordForACard", ",Card Type,Card Number", ",card26,lost",
                          "Card Number 'lost' is no whole number: write it in digits alone"},
        RefusedTenantLine{"TwoNumbersInACell", ",Card Type,Card Number", ",card26,40001/40002",
                          "Card Number '40001/40002' is no whole number: write it in digits alone"},
        RefusedTenantLine{"NoNumber", ",Flat", ",12B",
                          "Flat '12B' is no number: it would be stored as 12"},
        RefusedTenantLine{
            "Schedule", ",Schedule 3", ",Nite Shift",
            "Schedule 3: 'Nite Shift' is none of the unit's schedules: No Access, Full "
            "Access, Early Shift, Late Shift, Night Shift, Management"},
        RefusedTenantLine{
            "Date", ",End", ",31.12.2026",
            "End '31.12.2026' is no date: write it as 2026-12-31, 12/31/2026 or 31 Dec "
            "2026, with a time as in '2026-12-31 18:00'"},
        RefusedTenantLine{
            "Apostrophe", ",First Name,Directory Code,Phone", " O'Hara,X,250,1",
            "Display Name 'X Newcomer O'Hara' has an apostrophe, which would end the text "
            "in a statement: write X Newcomer O’Hara"},
        RefusedTenantLine{
            "DoorOfTransmitter", ",Card Type,Card Number,ID Code,Sequence Number,Card Door",
            ",transmitter,900,5,1,2", "Card Door '2' must be left empty: only cards have a door"},
        RefusedTenantLine{"Period", ",Start,End", ",2027-01-01,2026-12-31",
                          "End '2026-12-31': the period of Newcomer would end before it begins, on "
                          "2027-01-01 00:00"},
        RefusedTenantLine{"Group", ",Group", ",99",
                          "Group: '99' is none of the unit's groups: 3 (zero), 4"}),
    [](const auto& one) { return one.param.name; });

TEST_F(TenantImports, ACodeThatIsNoNumberIsToldBeforeWhoHasTheName) {
  const ImportReport report =
      Import("Last Name,First Name,Initial,Flat\nHollis,Elena,G,PH-1\nHollis,Elena,G,\n");
  EXPECT_THAT(Told(report), ElementsAre("2!: Flat 'PH-1' is no number: it would be stored as 0",
                                        "3!: Hollis Elena G (RID 61) is stored already"));
  EXPECT_EQ(report.remarks.front().place, 3U);
}

TEST_F(TenantImports, ANameAtUnitThatIsMadeOfALongNameIsCut) {
  const std::string last(40, 'L');
  const std::string first(30, 'F');
  EXPECT_EQ(Import("Last Name,First Name\n" + last + "," + first + "\n").done, 1U);
  EXPECT_EQ(CountOf("SELECT RID FROM Tenants WHERE UnitKey=2 AND NameAtUnit='" + first + " " +
                    last.substr(0, 19) + "'"),
            1U);
}

TEST_F(TenantImports, ALineNeedsANameAndATotalIsNone) {
  EXPECT_THAT(
      Refusals("Name,Card Type,Card Number\n,card26,40001\nTotal,,800\nTotal Tina,,\nSumme,,\n"),
      ElementsAre("2!: Name is empty: lists show tenants by it; <Unassigned> stands for "
                  "nobody",
                  "3!: Name 'Total' is no name: the line seems to add the others up",
                  "5!: Name 'Summe' is no name: the line seems to add the others up"));
  EXPECT_EQ(OfNewest("FirstName & ' ' & LastName"), "Total Tina");
  EXPECT_THAT(Refusals("Name,Last Name\nA B,C\n"),
              ElementsAre("2!: Name 'A B' and Last Name 'C' stand in one line: leave one of them "
                          "empty"));
}

TEST_F(TenantImports, MessagesNameTheFilesOwnHeadings) {
  const ImportForm form{
      .meant = {{"Surname", "Last Name"}, {"Until", "End"}, {"Badge", "Card Number"}}};
  Run("INSERT INTO CredentialBank (UnitKey, CredentialType, PINNo, FacilityCode) VALUES (2, 1, "
      "1001, 7)");
  EXPECT_THAT(Told(Import("Surname,Until,Badge\nNew,soon,\nNew,,1001\n", {}, form)),
              ElementsAre(HasSubstr("2!: Until 'soon' is no date"),
                          HasSubstr("3!: Badge: several credentials have the number '1001'")));
}

TEST_F(TenantImports, ARefusedLinesCardIsFreeForTheNextOne) {
  const ImportReport report = Import(
      "Last Name,Card Type,Card Number,End\nNewcomer,card26,40001,soon\n"
      "Newcomer,card26,40001,2027-01-01\nOther,card26,40001,2027-01-01\n");
  EXPECT_THAT(Told(report), ElementsAre(HasSubstr("2!: End 'soon'"),
                                        "4!: Card Number '40001' is held by Newcomer (line 3)"));
  EXPECT_EQ(CountOf("SELECT RID FROM CREDENTIALBANK WHERE UnitKey=2 AND PINNo=40001"), 1U);
}

TEST_F(TenantImports, ACodeOfARefusedLineIsNotThereForTheNextOne) {
  const std::string text =
      "Last Name,Directory Code,Phone,Group\nOne,250,1,99\nTwo,250,2,\nThree,250,,\nFour,250,3,\n";
  EXPECT_THAT(Refusals(text),
              ElementsAre(HasSubstr("2!: Group: '99'"),
                          "5!: Phone '3' is not what the directory code 250 dials by line 3: that "
                          "is '2'"));
  EXPECT_EQ(CountOf("SELECT RID FROM DIRECTORYCODE WHERE UNITKEY=2 AND DIRECTORYCODE=250"), 1U);
}

TEST_F(TenantImports, ASecondLineOfACodeMayRepeatWhatItHas) {
  EXPECT_THAT(Refusals("Last Name,Directory Code,Phone,Display Name\nOne,250,1,Flat\n"
                       "Two,250,1,Flat\nThree,250,,\nFour,250,,Other\nFive,101,,Other\n"),
              ElementsAre("5: the directory code 250 stays as line 2 says",
                          "6: the directory code 101 stays as it is stored"));
}

TEST_F(TenantImports, ADryRunTellsTheSameAndStoresNothing) {
  const std::string before = Exported();
  TenantImportRules rules;
  rules.dryRun = true;
  const ImportReport report =
      Import("Last Name,Directory Code,Phone\nOne,250,1\nTwo,250,2\n", rules);
  EXPECT_EQ(report.done, 1U);
  EXPECT_EQ(report.refused, 1U);
  EXPECT_EQ(Exported(), before);
  EXPECT_EQ(Cell("SELECT NextLinkCode FROM UnitCounters WHERE UnitKey=2"), "76");
}

TEST_F(TenantImports, WhoIsThereAlreadyIsRefusedOrPassedOver) {
  const std::string text =
      "Last Name,First Name,Initial\nHOLLIS,eléna,g\nNewcomer,Ann,\nNewcomer,Ann,\n";
  const std::string twice =
      "Newcomer Ann is in line 3 already: one line holds all that a tenant has, a second card in "
      "columns of its own";
  TenantImportRules skipping;
  skipping.stored = StoredTenants::kSkipped;
  skipping.dryRun = true;
  const ImportReport skipped = Import(text, skipping);
  EXPECT_EQ(skipped.unchanged, 1U);
  EXPECT_THAT(Told(skipped), ElementsAre("4!: " + twice));
  EXPECT_THAT(Refusals(text),
              ElementsAre("2!: Hollis Elena G (RID 61) is stored already", "4!: " + twice));
  EXPECT_EQ(TenantCount(), 76U);
}

TEST_F(TenantImports, PeopleOfOneNameDifferByTheirCodesOrIds) {
  const ImportReport report = Import(
      "Tenant ID,Last Name,First Name,Directory Code\n,Same,Sam,101\n,Same,Sam,102\n"
      ",Same,Sam,\n1,Twin,Tom,103\n2,Twin,Tom,103\n1,Twin,Tom,103\n");
  EXPECT_THAT(Told(report),
              ElementsAre("3: Same Sam (line 2) has the directory code 101, and is somebody else "
                          "of the same name",
                          HasSubstr("4!: Same Sam is in line 3 already"),
                          HasSubstr("6: Twin Tom (line 5) has the directory code 103"),
                          HasSubstr("7!: Twin Tom is in line 5 already")));
  EXPECT_EQ(report.done, 4U);
}

TEST_F(TenantImports, AnUpdateStoresWhatTheCellsSay) {
  TenantImportRules rules;
  rules.stored = StoredTenants::kUpdated;
  const std::string text =
      "Last Name,First Name,Initial,Directory Code,Phone,Card Type,Card Number,Card 2 Type,Card 2 "
      "Number,End,Schedule 3,Start\n"
      "Hollis,Elena,G,101,555-7777,card30,1001,,,2027-06-30,Management,\n"
      "O'Brien,Paula,H,,,card26,40001,,,,,\n"
      "Vasquez,Anders,J,,,,,,,,,\n";
  const ImportReport report = Import(text, rules);
  EXPECT_THAT(Told(report), IsEmpty());
  EXPECT_EQ(report.done, 2U);
  EXPECT_EQ(report.unchanged, 1U);
  EXPECT_EQ(Cell("SELECT ACTIVEENDTIME & '|' & DOORSCHEDULE3 & '|' & DOORSCHEDULE1 FROM Tenants "
                 "WHERE RID=61"),
            "6/30/2027 11:59:59 PM|5|1");
  EXPECT_EQ(Cell("SELECT PHONENUMBER & '|' & DISPLAYNAME FROM DIRECTORYCODE WHERE RID=11"),
            "555-7777|Apartment 101");
  EXPECT_EQ(Cell("SELECT PINNo FROM CREDENTIALBANK, Tenants WHERE Tenants.RID=62 AND "
                 "CREDENTIALBANK.RID=CREDENTIALID2"),
            "40001")
      << "beside the card that she has";
  EXPECT_EQ(StepCount(), 3U) << "two tenants and a code";
  const ImportReport again = Import(text, rules);
  EXPECT_EQ(again.unchanged, 3U);
  EXPECT_EQ(StepCount(), 3U) << "what changes nothing queues nothing";
}

TEST_F(TenantImports, AnUpdateTakesNoCardAndGuessesNobody) {
  TenantImportRules rules;
  rules.stored = StoredTenants::kUpdated;
  EXPECT_THAT(Refusals("Tenant ID,Last Name,First Name,Initial,Directory Code,Card Type,Card "
                       "Number\n,O'Brien,Paula,H,,card30,1001\n,Hollis,Elena,G,102,,\n"
                       "61,Hollis,Elena,G,102,,\n,Hollis,Elena,G,,card26,20041\n",
                       rules),
              ElementsAre("2!: Card Number '1001' is held by Hollis Elena G (RID 61)",
                          "3!: Hollis Elena G (RID 61) has the directory code 101: whether the "
                          "line means somebody else of that name cannot be told; with the tenant's "
                          "id in the column \"Tenant ID\" it can",
                          "5!: Hollis Elena G (RID 61) has two credentials already"));
  EXPECT_EQ(Cell("SELECT DIRECTORYCODE FROM Tenants WHERE RID=61"), "12");
}

TEST_F(TenantImports, NobodysCardsAndCodesAreStored) {
  const std::string text =
      "Last Name,Card Type,Card Number,Directory Code,Phone\n<Unassigned>,card26,40001,,\n"
      "unassigned,,,250,1\n<Unassigned>,,,,\n<Unassigned>,card30,1001,,\n";
  EXPECT_THAT(Refusals(text),
              ElementsAre("4!: the line has neither a name nor a card nor a directory code",
                          "5!: Card Number '1001' is stored already"));
  TenantImportRules skipping;
  skipping.stored = StoredTenants::kSkipped;
  const ImportReport again = Import(text, skipping);
  EXPECT_EQ(again.unchanged, 3U);
  EXPECT_EQ(again.done, 0U);
  EXPECT_EQ(TenantCount(), 75U);
}

TEST_F(TenantImports, CardsThatSayNoTypeHaveTheOneThatWasGiven) {
  TenantImportRules rules;
  rules.cards = {"card26", "9"};
  EXPECT_THAT(Refusals("Last Name,Card Number\nOne,40001\nTwo,40001\n", rules),
              ElementsAre(HasSubstr("3!: Card Number '40001' is held by One (line 2)")));
  EXPECT_EQ(Cell("SELECT CredentialType & '|' & FacilityCode FROM CREDENTIALBANK WHERE "
                 "PINNo=40001"),
            "1|9");
}

TEST_F(TenantImports, ApostrophesOfDisplayNamesCanBeReplaced) {
  TenantImportRules rules;
  rules.apostrophes = Apostrophes::kReplaced;
  EXPECT_THAT(Refusals("Last Name,Directory Code,Phone\nO'Hara,250,1\n", rules), IsEmpty());
  EXPECT_EQ(OfNewest("LastName & '|' & NameAtUnit"), "O'Hara|O'Hara") << "tenants keep theirs";
  EXPECT_EQ(Cell("SELECT DISPLAYNAME FROM DIRECTORYCODE WHERE UNITKEY=2 AND DIRECTORYCODE=250"),
            "O’Hara");
}

TEST_F(TenantImports, ARefusedLineIsHandedOnWithItsReason) {
  std::vector<std::string> handed;
  TenantImportRules rules;
  rules.onRefused = [&handed](const ImportLine& line, const std::string& reason) {
    handed.push_back(line.cells().front() + ": " + reason);
  };
  (void)Import("Last Name,Group\nOne,99\nTwo,\n", rules);
  EXPECT_THAT(handed, ElementsAre("One: Group: '99' is none of the unit's groups: 3 (zero), 4"));
}

TEST_F(TenantImports, NothingIsImportedWhereTheStepsOfAllFail) {
  Run("CREATE TRIGGER broken BEFORE INSERT ON ProgramSteps BEGIN SELECT raise(ABORT, 'no step "
      "today'); END");
  try {
    (void)Import("Last Name\nOne\nTwo\n");
    FAIL() << "imported";
  } catch (const FailureError& failure) {
    EXPECT_STREQ(failure.what(), "The statement failed: no step today; nothing was imported");
  }
  EXPECT_EQ(CountOf("SELECT RID FROM Tenants WHERE LastName='One'"), 0U);
}

TEST_F(TenantImports, ALineWhoseTenantFailsIsUndoneAndTheOthersAreStored) {
  Run("CREATE TRIGGER broken BEFORE INSERT ON Tenants WHEN NEW.LastName='Two' BEGIN SELECT "
      "raise(ABORT, 'no tenant today'); END");
  const ImportReport report = Import(
      "Last Name,Card Type,Card Number\nOne,card26,40001\nTwo,card26,40002\nThree,card26,40003\n");
  EXPECT_EQ(report.ending, Ending::kFailed);
  EXPECT_THAT(Told(report), ElementsAre(HasSubstr("3!: ")));
  EXPECT_EQ(report.done, 2U);
  EXPECT_EQ(CountOf("SELECT RID FROM CREDENTIALBANK WHERE UnitKey=2 AND PINNo=40002"), 0U);
}

TEST_F(TenantImports, TheImportIsOneEntryOfTheHistory) {
  const UnitVersion before = session().sql().work().VersionOf(kUnit);
  ASSERT_EQ(Import("Last Name\nOne\nTwo\n").done, 2U);
  EXPECT_EQ(session().sql().work().VersionOf(kUnit).entry, before.entry + 1);
}

}  // namespace
}  // namespace qorhost::test
