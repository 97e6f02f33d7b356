// Files that cannot be imported: what is said of them, and that nothing changes.
#include "host/files/import_file.h"

#include <gmock/gmock.h>

#include <array>

#include "host/cli/console.h"
#include "tests/host/cli/import_fixture.h"

namespace qorhost {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;

constexpr std::array kColumns{ImportColumn{"One Thing", true, "anything"},
                              ImportColumn{"Another", false, "anything else"}};

ImportLine FirstLine(const std::string& text) {
  ImportFile file(text, kColumns);
  ImportLine line;
  EXPECT_TRUE(file.Next(line));
  return line;
}

TEST(ImportFile, FindsCellsByTheirHeadings) {
  const ImportLine line = FirstLine("Another,One Thing\n a ,b\n");
  EXPECT_EQ(line.number(), 2U);
  EXPECT_EQ(line.fault(), "");
  EXPECT_EQ(line.Cell(0), "b");
  EXPECT_EQ(line.Cell(1), " a ");
  EXPECT_EQ(line.Trimmed(1), "a");
}

TEST(ImportFile, LetterCaseAndBlanksOfHeadingsDoNotCount) {
  EXPECT_EQ(FirstLine("ANOTHER,\" one thing \"\na,b\n").Cell(0), "b");
}

TEST(ImportFile, AColumnThatIsNotThereHasNoCell) {
  const ImportLine line = FirstLine("One Thing\n\"\"\n");
  EXPECT_EQ(line.Cell(0), "");
  EXPECT_EQ(line.Cell(1), std::nullopt);
  EXPECT_EQ(line.Trimmed(1), "");
}

TEST(ImportFile, CellsLoseTheMarkAgainstFormulas) {
  const ImportLine line = FirstLine("One Thing,Another\n'=1,'a\n");
  EXPECT_EQ(line.Cell(0), "=1");
  EXPECT_EQ(line.Cell(1), "'a");
}

TEST(ImportFile, CountsTheLinesBehindTheHeadings) {
  EXPECT_EQ(ImportFile("One Thing\n", kColumns).lineCount(), 0U);
  EXPECT_EQ(ImportFile("One Thing\na\n\n\"b\nb\"\nc", kColumns).lineCount(), 3U);
}

struct HeadingCase {
  std::string name;
  std::string text;
  std::string message;
};

void PrintTo(const HeadingCase& one, std::ostream* out) {
  *out << one.name;
}

class BadHeadings : public testing::TestWithParam<HeadingCase> {};

TEST_P(BadHeadings, AreAMistakeOfTheCommand) {
  try {
    const ImportFile file(GetParam().text, kColumns);
    FAIL() << "taken";
  } catch (const UsageError& error) {
    EXPECT_THAT(error.what(), HasSubstr(GetParam().message));
  }
}

INSTANTIATE_TEST_SUITE_P(
    Texts, BadHeadings,
    testing::Values(
        HeadingCase{"EmptyFile", "", "the file is empty"},
        HeadingCase{"OnlyLineEnds", "\r\n\n", "the file is empty"},
        HeadingCase{"Unknown", "\nOne Thing,Other\n",
                    "line 2: there is no column 'Other'; the columns are \"One Thing\", "
                    "\"Another\""},
        HeadingCase{"NoHeading", "One Thing,\n", "line 1: there is no column ''"},
        HeadingCase{"Semicolons", "One Thing;Another\n",
                    "'One Thing;Another' (cells must have commas between them)"},
        HeadingCase{"Tabs", "One Thing\tAnother\n", "(cells must have commas between them)"},
        HeadingCase{"Missing", "Another\n", "line 1: the column \"One Thing\" is missing"},
        HeadingCase{"Twice", "One Thing,one thing\n",
                    "line 1: the column \"One Thing\" is there twice"},
        HeadingCase{"NotUtf8", "One\xFFThing\n", "line 1: the line is not valid UTF-8"},
        HeadingCase{"UnclosedQuote", "One Thing,\"Another\na,b\n",
                    "line 1: a quote that opens a cell is never closed"},
        HeadingCase{"Utf16", std::string("\xFF\xFEO\0n\0", 6), "not valid UTF-8"},
        HeadingCase{"Huge", std::string(30000, 'x') + "\n", "xxx...'; the columns are"}),
    [](const auto& one) { return one.param.name; });

TEST(ImportFile, AQuoteThatIsNeverClosedStopsAllOfIt) {
  try {
    const ImportFile file("One Thing,Another\na,b\nc,\"d\ne,f\n", kColumns);
    FAIL() << "taken";
  } catch (const RefusedError& error) {
    EXPECT_STREQ(error.what(),
                 "line 3: a quote that opens a cell is never closed; nothing was imported");
  }
}

}  // namespace

namespace test {
namespace {

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

TEST_F(BadFiles, AnUnknownHeadingIsAMistakeAndListsTheColumns) {
  const Outcome outcome = Import("credentials", "Credential Type,Card Number,Door\ncard26,1,2\n");
  EXPECT_EQ(outcome.status, 2);
  EXPECT_THAT(outcome.err,
              HasSubstr("line 1: there is no column 'Door'; the columns are \"Credential Type\", "
                        "\"Card Number\", \"Facility Code\", \"ID Code\", \"Sequence Number\", "
                        "\"Button Number\", \"Assigned To\", \"RID\", \"Tenant RID\""));
}

TEST_F(BadFiles, AnUnclosedQuoteLeavesTheLinesBeforeItOutToo) {
  const std::size_t codes = CountOf("DIRECTORYCODE");
  const Outcome outcome = Import("dircodes", "Directory Code,Phone No.\n250,1\n251,\"2\n252,3\n");
  EXPECT_EQ(outcome.status, 1);
  EXPECT_THAT(outcome.err, HasSubstr("line 3: a quote that opens a cell is never closed; nothing "
                                     "was imported"));
  EXPECT_EQ(CountOf("DIRECTORYCODE"), codes);
}

TEST_F(BadFiles, HeadingsAloneImportNothing) {
  const Outcome outcome = Import("dircodes", "Directory Code,Phone No.\n");
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.out, "Imported 0 directory codes, 0 lines refused.\n");
}

TEST_F(BadFiles, ColumnsTellsWhatTheCellsHold) {
  const Outcome codes = Run({"dircodes", "import", "--columns"});
  EXPECT_EQ(codes.status, 0);
  EXPECT_THAT(codes.out, HasSubstr("Directory Code        yes"));
  EXPECT_THAT(codes.out, HasSubstr("17 rows"));
  const Outcome credentials = Run({"credentials", "import", "--columns"});
  EXPECT_EQ(credentials.status, 0);
  EXPECT_THAT(credentials.out, HasSubstr("Card Number      yes"));
  EXPECT_THAT(credentials.out, HasSubstr("9 rows"));
}

}  // namespace
}  // namespace test
}  // namespace qorhost
