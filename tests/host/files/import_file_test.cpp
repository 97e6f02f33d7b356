// CSV files by their headings: which cells are found, and what is said of bad headings.
#include "host/files/import_file.h"

#include <gmock/gmock.h>

#include <array>

#include "host/files/file_error.h"

namespace qorhost {
namespace {

using testing::HasSubstr;

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

TEST_P(BadHeadings, AreToldWithTheirLine) {
  try {
    const ImportFile file(GetParam().text, kColumns);
    FAIL() << "taken";
  } catch (const FileError& error) {
    EXPECT_EQ(error.problem(), FileProblem::kHeadings);
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
  } catch (const FileError& error) {
    EXPECT_EQ(error.problem(), FileProblem::kUnusable);
    EXPECT_STREQ(error.what(),
                 "line 3: a quote that opens a cell is never closed; nothing was imported");
  }
}

}  // namespace
}  // namespace qorhost
