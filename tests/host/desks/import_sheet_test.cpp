// A spreadsheet that is tried, mended and imported: what is said of which cell, and that nothing is
// imported twice.
#include "host/desks/import_sheet.h"

#include <gmock/gmock.h>

#include "host/desks/credential_import.h"
#include "host/desks/dir_code_import.h"
#include "host/desks/tenant_file.h"
#include "host/desks/tenant_import.h"
#include "host/files/file_error.h"
#include "tests/host/desks/desk_fixture.h"

namespace qorhost::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class ImportSheets : public DeskFixture {
 protected:
  ImportReport RunCodes(ImportSheet& sheet, bool dryRun, const Progress& progress = nullptr) {
    return sheet.Run(DirCodeImportColumns(), [&](ImportFile& file) {
      ImportRules rules;
      rules.dryRun = dryRun;
      return ImportDirCodes(session(), kUnit, file, rules, progress);
    });
  }
  ImportReport TryCards(ImportSheet& sheet) {
    return sheet.Run(CredentialImportColumns(), [&](ImportFile& file) {
      return ImportCredentials(session(), kUnit, file, {.dryRun = true}, nullptr);
    });
  }
  ImportReport TryTenants(ImportSheet& sheet) {
    return sheet.Run(TenantFileColumns(), [&](ImportFile& file) {
      TenantImportRules rules;
      rules.dryRun = true;
      return ImportTenants(session(), kUnit, file, rules, nullptr);
    });
  }
  /// "3@1: text" for a cell that is wrong, "3@-: text" for a row, with the line; notes without "@".
  static std::vector<std::string> Said(const ImportSheet& sheet) {
    std::vector<std::string> said;
    for (std::size_t row = 0; row < sheet.rowCount(); ++row) {
      if (const SheetRemark* remark = sheet.RemarkOn(row)) {
        const std::string place = remark->place ? std::to_string(*remark->place) : "-";
        said.push_back(std::to_string(sheet.LineOf(row)) + (remark->refused ? "@" + place : "") +
                       ": " + remark->text);
      }
    }
    return said;
  }
  [[nodiscard]] std::size_t CodeCount() {
    return CountOf("SELECT RID FROM DIRECTORYCODE WHERE UNITKEY=2");
  }
};

TEST_F(ImportSheets, ATryMarksTheCellAndStoresNothing) {
  ImportSheet sheet(
      "Phone No.;Directory Code;DND Schedule\n1;250;\n\n1;251;Siesta\n1;101;\n;252;\n", {});
  const std::size_t before = CodeCount();
  const ImportReport report = RunCodes(sheet, true);
  EXPECT_EQ(report.done, 1U);
  EXPECT_EQ(sheet.RefusedCount(), 3U);
  EXPECT_EQ(CodeCount(), before);
  EXPECT_THAT(
      Said(sheet),
      ElementsAre(
          "4@2: DND Schedule: there is no schedule 'Siesta' on the screen of this unit",
          "5@1: This Directory Code already exists. Please enter a different Directory Code.",
          "6@0: Please enter a Phone No. to apply to the Directory Code."));
}

TEST_F(ImportSheets, WhatIsMendedIsTakenAndWhatIsStoredIsNotImportedAgain) {
  ImportSheet sheet("Directory Code,Phone No.\n250,1\n101,1\n252,1\n", {});
  EXPECT_EQ(RunCodes(sheet, false).done, 2U);
  ASSERT_EQ(sheet.rowCount(), 1U);
  EXPECT_EQ(sheet.LineOf(0), 3U);
  EXPECT_EQ(RunCodes(sheet, false).refused, 1U);
  sheet.Mend(0, 0, "251");
  EXPECT_EQ(sheet.RemarkOn(0), nullptr);
  EXPECT_EQ(RunCodes(sheet, true).done, 1U);
  EXPECT_EQ(sheet.rowCount(), 1U);
  EXPECT_EQ(RunCodes(sheet, false).done, 1U);
  EXPECT_EQ(sheet.rowCount(), 0U);
  EXPECT_EQ(
      CountOf("SELECT RID FROM DIRECTORYCODE WHERE UNITKEY=2 AND DIRECTORYCODE IN (250,251,252)"),
      3U);
}

TEST_F(ImportSheets, CardsAreMarkedWhereTheScreenSendsTheFocus) {
  ImportSheet sheet(
      "Card Number,Credential Type,Facility Code\n0,card26,7\n9001,card26,256\n9001,key,\n", {});
  (void)TryCards(sheet);
  const std::vector<std::string> said = Said(sheet);
  ASSERT_EQ(said.size(), 3U);
  EXPECT_THAT(said[0], testing::StartsWith("2@0: "));
  EXPECT_THAT(said[1], testing::StartsWith("3@2: "));
  EXPECT_THAT(said[2], testing::StartsWith("4@1: Credential Type 'key'"));
}

TEST_F(ImportSheets, ATenantsLineIsMarkedAtItsCardItsCodeAndItsOwnCells) {
  ImportSheet sheet(
      "Name,Card 2 Number,Card 2 Type,Apartment,Start\n"
      "\"Rae, Ann\",0,card26,,\n\"Rae, Bea\",,,12345,\n\"Rae, Cy\",,,,soon\n,,,,\n",
      {});
  (void)TryTenants(sheet);
  const std::vector<std::string> said = Said(sheet);
  ASSERT_EQ(said.size(), 3U);
  EXPECT_THAT(said[0], testing::StartsWith("2@1: "));
  EXPECT_THAT(said[1], testing::StartsWith("3@3: "));
  EXPECT_THAT(said[2], testing::StartsWith("4@4: Start 'soon'"));
}

TEST_F(ImportSheets, HeadingsThatNobodyKnowsAreSaidToStandForAColumn) {
  ImportSheet sheet("Flat,Ring,Notes\n250,1,corner\n", {});
  EXPECT_THROW((void)RunCodes(sheet, true), FileError);
  EXPECT_EQ(sheet.MeaningOf(0, DirCodeImportColumns()), "");
  sheet.SetMeaning(0, "Directory Code");
  sheet.SetMeaning(1, "Phone No.");
  sheet.SetMeaning(2, "");
  EXPECT_EQ(sheet.MeaningOf(0, DirCodeImportColumns()), "Directory Code");
  EXPECT_EQ(RunCodes(sheet, true).done, 1U);
  sheet.ForgetMeanings();
  EXPECT_THROW((void)RunCodes(sheet, true), FileError);
}

TEST_F(ImportSheets, CellsOfARowThatIsTooShortTooLongOrMisquotedAreMended) {
  ImportSheet sheet("Directory Code,Phone No.\n250\n251,1,,x\n252,5\"5\n", {});
  EXPECT_EQ(sheet.width(), 4U);
  const ImportReport report = RunCodes(sheet, true);
  EXPECT_EQ(report.refused, 3U);
  EXPECT_EQ(report.ending, Ending::kRefused);
  EXPECT_THAT(Said(sheet),
              ElementsAre("2@-: 1 cells, but 2 headings", "3@-: 4 cells, but 2 headings",
                          HasSubstr("4@-: a quote stands inside a cell")));
  EXPECT_EQ(sheet.Cell(0, 1), "");
  sheet.Mend(0, 1, "1");
  sheet.Mend(1, 3, "");
  sheet.Mend(2, 1, "55");
  EXPECT_EQ(RunCodes(sheet, true).done, 3U);
  EXPECT_THAT(Said(sheet), IsEmpty());
}

TEST_F(ImportSheets, RowsThatAreLeftOutLeaveTheOthersTheirLines) {
  ImportSheet sheet("Directory Code,Phone No.\n250,1\n251,1\n101,1\n101,1", {});
  sheet.Remove({1, 0});
  ASSERT_EQ(sheet.rowCount(), 2U);
  (void)RunCodes(sheet, true);
  ASSERT_EQ(Said(sheet).size(), 2U);
  EXPECT_THAT(Said(sheet)[0], testing::StartsWith("4@0: "));
  EXPECT_THAT(Said(sheet)[1], testing::StartsWith("5@0: "));
}

TEST_F(ImportSheets, ACancelledImportChangesNeitherTheStoreNorTheSheet) {
  ImportSheet sheet("Directory Code,Phone No.\n250,1\n101,1\n", {});
  const std::size_t before = CodeCount();
  const ImportReport report =
      RunCodes(sheet, false, [](std::int64_t done, std::int64_t) { return done < 1; });
  EXPECT_EQ(report.ending, Ending::kCancelled);
  EXPECT_EQ(sheet.rowCount(), 2U);
  EXPECT_EQ(CodeCount(), before);
}

TEST_F(ImportSheets, WhatIsNoSpreadsheetIsToldAtOnce) {
  EXPECT_THROW(ImportSheet("", {}), FileError);
  EXPECT_THROW(ImportSheet("Directory Code,\"Phone\n250,1\n", {}), FileError);
  EXPECT_THROW(ImportSheet("Directory Code\n\"250\n", {}), FileError);
}

}  // namespace
}  // namespace qorhost::test
