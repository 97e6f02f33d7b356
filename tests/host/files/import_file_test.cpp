// CSV files by their headings: which cells are found, and what is said of bad headings.
#include "host/files/import_file.h"

#include <gmock/gmock.h>

#include <array>
#include <sstream>
#include <string>
#include <vector>

#include "host/files/file_error.h"
#include "host/files/rejected_lines.h"

namespace qorhost {
namespace {

using testing::ElementsAre;
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
    // Those messages go on with the columns that there are.
    const std::string& message = GetParam().message;
    const bool unknown = message.find("no column") != std::string::npos ||
                         message.find("the columns are") != std::string::npos;
    EXPECT_EQ(error.problem(), unknown ? FileProblem::kUnknownHeadings : FileProblem::kHeadings);
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
        HeadingCase{"SeveralUnknown", "Other,One Thing,Third\n",
                    "line 1: there are no columns 'Other', 'Third'; the columns are"},
        HeadingCase{"Bars", "One Thing|Another\n", "there is no column 'One Thing|Another'"},
        HeadingCase{"Missing", "Another\n", "line 1: the column \"One Thing\" is missing"},
        HeadingCase{"Twice", "One Thing,one thing\n",
                    "line 1: the column \"One Thing\" is there twice"},
        HeadingCase{"NotUtf8", "One\xFFThing\n", "line 1: the line is not valid UTF-8"},
        HeadingCase{"UnclosedQuote", "One Thing,\"Another\na,b\n",
                    "line 1: a quote that opens a cell is never closed"},
        HeadingCase{"Utf16", std::string("\xFF\xFEO\0n\0", 6), "there is no column 'On'"},
        HeadingCase{"ReasonTwice", "One Thing,Reason,reason\n",
                    "line 1: the column \"Reason\" is there twice"},
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

/// The cells of the first column, in the order of the file.
std::vector<std::string> FirstCells(const std::string& text, const ImportForm& form = {}) {
  ImportFile file(text, kColumns, form);
  std::vector<std::string> cells;
  for (ImportLine line; file.Next(line);) {
    cells.push_back(line.fault().empty() ? std::string(*line.Cell(0)) : "! " + line.fault());
  }
  return cells;
}

std::string FaultOf(const std::string& text, const ImportForm& form) {
  try {
    (void)FirstCells(text, form);
  } catch (const FileError& error) {
    return error.what();
  }
  return "";
}

TEST(FormOfAFile, TheDelimiterIsFoundInTheHeadings) {
  EXPECT_THAT(FirstCells("One Thing;Another\na,b;c\n"), ElementsAre("a,b"));
  EXPECT_THAT(FirstCells("One Thing\tAnother\na;b\tc\n"), ElementsAre("a;b"));
  EXPECT_THAT(FirstCells("\r\n\"One Thing\";\"Another\"\r\n\"a;b\";c\r\n"), ElementsAre("a;b"));
}

TEST(FormOfAFile, TheDelimiterThatWasSaidHolds) {
  EXPECT_EQ(FaultOf("One Thing;Another\na;b\n", {.delimiter = ','}),
            "line 1: there is no column 'One Thing;Another' (cells must have commas between them); "
            "the columns are \"One Thing\", \"Another\"");
}

TEST(FormOfAFile, AFirstLineMaySayTheDelimiter) {
  ImportFile file("sep=;\r\nOne Thing;Another\r\na,;b\r\n", kColumns);
  ImportLine line;
  ASSERT_TRUE(file.Next(line));
  EXPECT_EQ(line.Cell(0), "a,");
  EXPECT_EQ(line.number(), 3U) << "the line counts";
  EXPECT_EQ(file.delimiter(), ';');
}

TEST(FormOfAFile, OfUtf16TheByteOrderMarkTells) {
  const std::string little("\xFF\xFEO\0n\0e\0 \0T\0h\0i\0n\0g\0\n\0\xE9\0\n\0", 26);
  EXPECT_THAT(FirstCells(little), ElementsAre("é"));
  const std::string big("\xFE\xFF\0O\0n\0e\0 \0T\0h\0i\0n\0g\0\n\0\xE9\0\n", 26);
  EXPECT_THAT(FirstCells(big), ElementsAre("é"));
  EXPECT_THAT(FirstCells(little.substr(2), {.encoding = TextEncoding::kUtf16}), ElementsAre("é"));
}

TEST(FormOfAFile, Cp1252IsReadWhenItIsSaid) {
  const ImportForm form{.encoding = TextEncoding::kCp1252};
  EXPECT_THAT(FirstCells("One Thing\nCh\xE2teau \x80 O\x92"
                         "Brien\n",
                         form),
              ElementsAre("Château € O’Brien"));
  EXPECT_THAT(FirstCells("One Thing\nCh\xE2teau\n"),
              ElementsAre("! the line is not valid UTF-8: save the file as UTF-8, or say which "
                          "encoding it has"));
  EXPECT_THAT(FirstCells("\xEF\xBB\xBFOne Thing\né\n", form), ElementsAre("é"))
      << "a byte order mark is surer than what was said";
  EXPECT_EQ(FaultOf("One Thing\na\x81\n", form),
            "byte 12 of the file is no Windows-1252: it has another encoding, or was cut off; "
            "nothing was imported");
}

TEST(FormOfAFile, RowsWithNothingInThemArePassedOver) {
  EXPECT_THAT(FirstCells("One Thing,Another\n,\n \t, \na,b\n\n,,\n"), ElementsAre("a"));
  EXPECT_EQ(ImportFile("One Thing,Another\n,\na,b\n,\n", kColumns).lineCount(), 1U);
}

TEST(FormOfAFile, AColumnWithoutAHeadingHasToBeEmpty) {
  EXPECT_THAT(FirstCells("One Thing,\na,\nb,remark\n"),
              ElementsAre("a",
                          "! column 2 has no heading, and 'remark' stands in it: give it a "
                          "heading, or say what it is"));
  EXPECT_THAT(FirstCells("One Thing,\na,\nb,remark\n", {.meant = {{"#2", ""}}}),
              ElementsAre("a", "b"));
}

TEST(FormOfAFile, HeadingsMayStandForOthers) {
  const ImportForm form{.meant = {{"full name", "ONE THING"}, {"#3", "Another"}, {"Notes", ""}}};
  ImportFile file("Notes,Full name,Card\nx,a,b\n", kColumns, form);
  ImportLine line;
  ASSERT_TRUE(file.Next(line));
  EXPECT_EQ(line.Cell(0), "a");
  EXPECT_EQ(line.Cell(1), "b");
  EXPECT_EQ(file.HeadingOf(0), "Full name");
  EXPECT_EQ(FaultOf("One Thing\na\n", {.meant = {{"Flat", "Another"}}}),
            "line 1: the file has no heading 'Flat'; its headings are \"One Thing\"");
  EXPECT_THAT(FaultOf("One Thing,Flat\na,b\n", {.meant = {{"Flat", "Door"}}}),
              HasSubstr("there is no column 'Door'"));
}

TEST(RejectedLines, CanBeMendedAndImportedAgain) {
  const std::string text =
      "One Thing;Notes;Another\r\n\"a;b\";n;'=1\r\nx;5\" wide;y\r\nfew;\r\n"
      "one;more;than;due\r\n";
  const ImportForm form{.meant = {{"Notes", ""}}};
  ImportFile file(text, kColumns, form);
  RejectedLines rejected(file);
  for (ImportLine line; file.Next(line);) {
    rejected.Add(line, line.fault().empty() ? "no; not today" : line.fault());
  }
  EXPECT_EQ(rejected.count(), 4U);
  std::ostringstream written;
  rejected.Write(written);
  EXPECT_EQ(written.str(),
            "\xEF\xBB\xBFOne Thing;Notes;Another;Reason\r\n"
            "\"a;b\";n;'=1;\"no; not today\"\r\n"
            "x;\"5\"\" wide\";y;a quote stands inside a cell: put the whole cell in quotes and "
            "write the quote twice\r\n"
            "few;;;2 cells, but 3 headings\r\n"
            "one;more;than;4 cells, but 3 headings;due\r\n");
  EXPECT_THAT(FirstCells(written.str(), form),
              ElementsAre("a;b", "x", "few", "! 5 cells, but 4 headings"));

  ImportFile again(written.str(), kColumns, form);
  RejectedLines twice(again);
  ImportLine line;
  ASSERT_TRUE(again.Next(line));
  twice.Add(line, "still not");
  std::ostringstream anew;
  twice.Write(anew);
  EXPECT_EQ(anew.str(),
            "\xEF\xBB\xBFOne Thing;Notes;Another;Reason\r\n\"a;b\";n;'=1;still not\r\n");
}

}  // namespace
}  // namespace qorhost
