// Files that cannot be imported: what is said of them, and that nothing changes.
#include <gmock/gmock.h>

#include "tests/host/cli/import_fixture.h"

namespace qorhost::test {
namespace {

using testing::ContainsRegex;
using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

class BadFiles : public ImportFixture {};

TEST_F(BadFiles, AMissingFileIsAFailure) {
  const Outcome outcome = Run({"dircodes", "import", File("none.csv")});
  EXPECT_EQ(outcome.status, 3);
  EXPECT_THAT(outcome.err, HasSubstr("there is no file '" + File("none.csv") + "'"));
}

TEST_F(BadFiles, AFolderIsAFailure) {
  const Outcome outcome = Run({"credentials", "import", File("")});
  EXPECT_EQ(outcome.status, 3);
  EXPECT_THAT(outcome.err, HasSubstr("cannot read the file"));
}

TEST_F(BadFiles, WithoutAFileTheCommandSaysWhatItNeeds) {
  const Outcome outcome = Run({"dircodes", "import"});
  EXPECT_EQ(outcome.status, 2);
  EXPECT_THAT(outcome.err, HasSubstr("name the CSV file, or - for standard input"));
}

TEST_F(BadFiles, TheColumnsAreToldToPeopleAndToPrograms) {
  const std::string told = Run({"dircodes", "import", "--columns"}).out;
  EXPECT_THAT(told, ContainsRegex("Directory Code +yes +[a-z]"));
  EXPECT_THAT(told, ContainsRegex("Extension +the"));
  const nlohmann::json columns = Rows({"dircodes", "import", "--columns"});
  EXPECT_EQ(columns[0]["column"], "Directory Code");
  EXPECT_EQ(columns[0]["needed"], true);
  EXPECT_EQ(columns[2]["column"], "Phone No. Extension");
  EXPECT_EQ(columns[2]["needed"], false);
}

TEST_F(BadFiles, AnUnknownHeadingIsAMistakeAndListsTheColumns) {
  const Outcome outcome = Import("credentials", "Credential Type,Card Number,Colour\ncard26,1,2\n");
  EXPECT_EQ(outcome.status, 2);
  EXPECT_THAT(outcome.err,
              HasSubstr("line 1: there is no column 'Colour'; the columns are \"Credential Type\", "
                        "\"Card Number\", \"Facility Code\", \"ID Code\", \"Sequence Number\", "
                        "\"Button Number\", \"Assigned To\", \"RID\", \"Tenant RID\", \"Door\""));
}

TEST_F(BadFiles, AllUnknownHeadingsAreToldAtOnceWithTheWayOut) {
  const Outcome outcome =
      Import("credentials", "Flat,Credential Type,No.,Card Number\n7,card26,1,2\n");
  EXPECT_EQ(outcome.status, 2);
  EXPECT_THAT(outcome.err, StartsWith("qorhost: line 1: there are no columns 'Flat', 'No.'; "));
  EXPECT_THAT(outcome.err, EndsWith("; look this over and say it: --columns \"Flat=,No.=\" "
                                    "(HEADING=COLUMN; with nothing behind it a column is left "
                                    "out)\n"));
}

TEST_F(BadFiles, AnotherEncodingThatNobodyHasSaidIsRefusedBeforeAnythingIsImported) {
  const std::string names = "Directory Code,Phone No.,Display Name\n250,1,Ann\n251,2,Bj\xF6rn\n";
  const std::size_t codes = CountOf("DIRECTORYCODE");
  const Outcome unsaid = Import("dircodes", names);
  EXPECT_EQ(unsaid.status, 1);
  EXPECT_EQ(unsaid.err,
            "qorhost: line 3 is not UTF-8, so nothing was imported: say which encoding the file "
            "has, --encoding cp1252 for most that are not, or --encoding utf-8 to have such lines "
            "refused\n");
  EXPECT_EQ(CountOf("DIRECTORYCODE"), codes);
  EXPECT_THAT(Import("dircodes", names, {"--encoding", "utf-8"}).err,
              HasSubstr("line 3: the line is not valid UTF-8"));
  EXPECT_EQ(CountOf("DIRECTORYCODE"), codes + 1);
  EXPECT_THAT(Import("dircodes", "Directory Code,Phone No.,Display Name\n252,2,Bj\xF6rn\n",
                     {"--encoding", "cp1252"})
                  .out,
              HasSubstr("Imported 1"));

  const char wide[] =
      "C\0o\0d\0e\0\n\0"
      "1\0\n";
  EXPECT_EQ(Import("dircodes", {wide, sizeof wide}).err,
            "qorhost: line 1 has zero bytes between its letters, as UTF-16 has, so nothing was "
            "imported: --encoding utf-16 reads it\n");
}

TEST_F(BadFiles, Utf8ThatIsSaidToBeAnotherEncodingIsRefusedBeforeItsLettersAreLost) {
  const std::string names = "Directory Code,Phone No.,Display Name\n250,1,Björn\n";
  const Outcome wrong = Import("dircodes", names, {"--encoding", "cp1252"});
  EXPECT_EQ(wrong.status, 1);
  EXPECT_EQ(wrong.err,
            "qorhost: the file is UTF-8, and read as cp1252 every letter with an accent would be "
            "two others, so nothing was imported: leave --encoding out\n");
  EXPECT_THAT(Import("dircodes", "\xEF\xBB\xBF" + names, {"--encoding", "cp1252"}).out,
              HasSubstr("Imported 1"))
      << "a mark tells it for certain";
  EXPECT_THAT(Import("dircodes", "Directory Code,Phone No.\n251,1\n", {"--encoding", "cp1252"}).out,
              HasSubstr("Imported 1"))
      << "in ASCII there is no difference";
}

TEST_F(BadFiles, AWorkbookIsToldToBeSavedAsCsv) {
  using namespace std::string_literals;
  for (const std::string& start :
       {"PK\x03\x04\x14\0\0\0"s, "\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1\0\0"s}) {
    for (const std::vector<std::string>& options :
         {std::vector<std::string>{}, {"--encoding", "cp1252"}, {"--encoding", "utf-16"}}) {
      const Outcome outcome = Import("tenants", start + "xl\n", options);
      EXPECT_EQ(outcome.status, 1);
      EXPECT_EQ(outcome.err,
                "qorhost: the file is a workbook of a spreadsheet program and no text, so nothing "
                "was imported: save the sheet as CSV there, and import that\n");
    }
  }
}

TEST_F(BadFiles, ATitleAboveTheHeadingsIsToldToBeDeleted) {
  const Outcome outcome = Import("tenants", "Residents of the house,,\nName,Apartment,Phone\n");
  EXPECT_EQ(outcome.status, 2);
  EXPECT_THAT(outcome.err,
              HasSubstr("if these are no headings, delete the lines above the headings, "
                        "which have to be the first"));
}

TEST_F(BadFiles, AByteOrderMarkSaysTheEncodingAsWell) {
  std::string utf16 = "\xFF\xFE";
  for (const char letter : std::string_view("Directory Code,Phone No.\n253,1\n")) {
    utf16 += {letter, '\0'};
  }
  EXPECT_THAT(Import("dircodes", utf16).out, HasSubstr("Imported 1"));
}

TEST_F(BadFiles, AnUnclosedQuoteLeavesTheLinesBeforeItOutToo) {
  const std::size_t codes = CountOf("DIRECTORYCODE");
  const Outcome outcome = Import("dircodes", "Directory Code,Phone No.\n250,1\n251,\"2\n252,3\n");
  EXPECT_EQ(outcome.status, 1);
  EXPECT_THAT(outcome.err, HasSubstr("line 3: a quote that opens a cell is never closed; nothing "
                                     "was imported"));
  EXPECT_EQ(CountOf("DIRECTORYCODE"), codes);
}

TEST_F(BadFiles, OfManyRefusedLinesAFewAreTold) {
  std::string text = "Directory Code,Phone No.\n";
  for (int line = 0; line < 25; ++line) {
    text += ",1\n";
  }
  const Outcome outcome = Import("dircodes", text);
  EXPECT_EQ(outcome.status, 1);
  EXPECT_THAT(outcome.err, HasSubstr("qorhost: line 21: Please enter a Directory Code.\n"
                                     "qorhost: ... and 5 more refused lines\n"));
  EXPECT_EQ(std::count(outcome.err.begin(), outcome.err.end(), '\n'), 21);
  EXPECT_THAT(outcome.out, HasSubstr("25 lines refused"));
}

TEST_F(BadFiles, HeadingsAloneImportNothing) {
  const Outcome outcome = Import("dircodes", "Directory Code,Phone No.\n");
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.out, "Imported 0 directory codes, 0 lines refused, in unit 2, Linden Park.\n");
}

TEST_F(BadFiles, ColumnsTellsWhatTheCellsHold) {
  const Outcome codes = Run({"dircodes", "import", "--columns"});
  EXPECT_EQ(codes.status, 0);
  EXPECT_THAT(codes.out, HasSubstr("Directory Code        yes"));
  EXPECT_THAT(codes.out, HasSubstr("17 rows"));
  const Outcome credentials = Run({"credentials", "import", "--columns"});
  EXPECT_EQ(credentials.status, 0);
  EXPECT_THAT(credentials.out, HasSubstr("Card Number      yes"));
  EXPECT_THAT(credentials.out, HasSubstr("10 rows"));
}

}  // namespace
}  // namespace qorhost::test
