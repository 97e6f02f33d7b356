// Imports without a command line: what their reports tell, by line and column.
#include <gmock/gmock.h>

#include "host/desks/credential_import.h"
#include "host/desks/dir_code_import.h"
#include "host/files/file_error.h"
#include "tests/host/desks/desk_fixture.h"
#include "tests/host/desks/import_told.h"

namespace qorhost::test {
namespace {

using testing::ElementsAre;

class Imports : public DeskFixture {
 protected:
  [[nodiscard]] ImportReport ImportCodes(const std::string& text, const ImportRules& rules = {},
                                         const Progress& progress = nullptr) {
    ImportFile file(text, DirCodeImportColumns());
    return ImportDirCodes(session(), kUnit, file, rules, progress);
  }
  [[nodiscard]] ImportReport ImportCards(const std::string& text, const ImportRules& rules = {}) {
    ImportFile file(text, CredentialImportColumns());
    return ImportCredentials(session(), kUnit, file, rules, nullptr);
  }
  [[nodiscard]] std::size_t CodeCount() {
    return CountOf("SELECT RID FROM DIRECTORYCODE WHERE UNITKEY=2");
  }
};

TEST_F(Imports, TheReportTellsWhatIsStoredAndWhatWasRefused) {
  const ImportReport report =
      ImportCodes("Directory Code,Phone No.,Phone No. Delay\n250,1,7\n101,1,\n251,1,\n252,,\n");
  EXPECT_EQ(report.ending, Ending::kRefused);
  EXPECT_EQ(report.done, 2U);
  EXPECT_EQ(report.refused, 2U);
  EXPECT_THAT(
      Told(report),
      ElementsAre(
          "2: Phone No. Delay '7' was not taken over: without an extension it is 2",
          "3!: This Directory Code already exists. Please enter a different Directory Code.",
          "5!: Please enter a Phone No. to apply to the Directory Code."));
  EXPECT_EQ(CodeCount(), 8U);
}

TEST_F(Imports, AFaultNamesTheColumn) {
  EXPECT_THAT(
      Told(ImportCodes("Directory Code,Phone No.,DND Schedule,CF Schedule,Directory Start Date\n"
                       "250,1,Siesta,,\n251,1,,Siesta,\n252,1,,,soon\n12345,1,,,\n")),
      ElementsAre("2!: DND Schedule: there is no schedule 'Siesta' on the screen of this unit",
                  "3!: CF Schedule: there is no schedule 'Siesta' on the screen of this unit",
                  "4!: Directory Start Date 'soon' is no date: write it as 2026-12-31, 12/31/2026 "
                  "or 31 Dec "
                  "2026, with a time as in '2026-12-31 18:00'",
                  "5!: Directory Code '12345' is longer than the 4 digits of this unit's codes"));
  EXPECT_THAT(Told(ImportCards("Credential Type,Card Number,ID Code\ncard26,901,2\nkey,902,\n")),
              ElementsAre("2!: ID Code '2' must be left empty: only transmitters have one",
                          "3!: Credential Type 'key' cannot be entered: the screen has Corvin 30-"
                          "Bit Card, Standard 26-Bit Card and Transmitter"));
}

// A file that was cut off within its last cell looks whole but for its last line's end.
TEST_F(Imports, ALastLineWithoutItsEndIsToldAndTaken) {
  const ImportReport report = ImportCodes("Directory Code,Phone No.\n250,1\n251,555-01");
  EXPECT_EQ(report.ending, Ending::kDone);
  EXPECT_EQ(report.done, 2U);
  EXPECT_THAT(Told(report), ElementsAre("3: the file ends within this line: if it was cut off "
                                        "there, the last cell is not whole"));
}

TEST_F(Imports, AFileThatIsCutOffInAQuotedCellIsRefusedWithTheLine) {
  for (const char* last : {"251,\"555", "251,\"", "251,\"5\n2", "251,\"a \"\""}) {
    try {
      (void)ImportCodes(std::string("Directory Code,Phone No.\n250,1\n") + last);
      ADD_FAILURE() << last;
    } catch (const FileError& failure) {
      EXPECT_EQ(failure.problem(), FileProblem::kUnusable) << last;
      EXPECT_STREQ(failure.what(),
                   "line 3: a quote that opens a cell is never closed; nothing was imported")
          << last;
    }
  }
  EXPECT_EQ(CodeCount(), 6U);
}

TEST_F(Imports, LinesThatAreRefusedAlikeShareTheirText) {
  const ImportReport report = ImportCodes("Directory Code,Phone No.\n,1\n,2\n,3\n");
  EXPECT_EQ(report.remarks.size(), 3U);
  EXPECT_THAT(report.texts, ElementsAre("Please enter a Directory Code."));
}

TEST_F(Imports, NobodyIsAskedQuestionsAreAnsweredByTheRules) {
  const std::string text =
      "Directory Code,Phone No.,CF Schedule,CF Phone No.\n250,1,Full Access,1\n";
  ImportRules rules;
  rules.answeredNo = "nobody asked";
  yes_ = true;
  EXPECT_THAT(Told(ImportCodes(text, rules)),
              ElementsAre("2!: The phone numbers for the Directory Code and Call Forwarding are "
                          "the same. Do you still want to proceed? (nobody asked)"));
  rules.answerYes = true;
  EXPECT_EQ(ImportCodes(text, rules).ending, Ending::kDone);
  EXPECT_TRUE(shown_.empty());
  // The import alone is silent, not the session.
  (void)session().host().ShowMessage("Seen again.", qorcred::MessageStyle::kNotice, "T");
  EXPECT_THAT(shown_, ElementsAre("Seen again."));
}

TEST_F(Imports, ADryRunTellsTheSameAndKeepsNothing) {
  ImportRules rules;
  rules.dryRun = true;
  const ImportReport report = ImportCodes("Directory Code,Phone No.\n250,1\n250,1\n", rules);
  EXPECT_TRUE(report.dryRun);
  EXPECT_EQ(report.done, 1U);
  EXPECT_EQ(report.refused, 1U) << "the second meets the first";
  EXPECT_EQ(CodeCount(), 6U);
}

TEST_F(Imports, AFailedStatementUndoesItsLineAndMakesTheImportAFailure) {
  Run("CREATE TRIGGER broken BEFORE INSERT ON DirectoryCode WHEN NEW.DIRECTORYCODE=251 BEGIN "
      "SELECT RAISE(ABORT, 'stuck'); END");
  const ImportReport report = ImportCodes("Directory Code,Phone No.\n250,1\n251,1\n252,1\n");
  EXPECT_EQ(report.ending, Ending::kFailed);
  EXPECT_EQ(report.done, 2U);
  EXPECT_EQ(CodeCount(), 8U);
}

TEST_F(Imports, ACancelledImportKeepsNothing) {
  std::vector<std::int64_t> told;
  const ImportReport report = ImportCodes("Directory Code,Phone No.\n250,1\n251,1\n252,1\n", {},
                                          [&told](std::int64_t done, std::int64_t total) {
                                            EXPECT_EQ(total, 3);
                                            told.push_back(done);
                                            return done < 2;
                                          });
  EXPECT_EQ(report.ending, Ending::kCancelled);
  EXPECT_EQ(report.done, 0U);
  EXPECT_THAT(told, ElementsAre(0, 1, 2));
  EXPECT_EQ(CodeCount(), 6U);
}

}  // namespace
}  // namespace qorhost::test
