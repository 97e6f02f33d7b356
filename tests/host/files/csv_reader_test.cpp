// Comma-separated values from outside: cells, line numbers and what is wrong with a record.
#include "host/files/csv_reader.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "host/files/csv_formula.h"
#include "host/files/csv_writer.h"

namespace qorhost {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

std::vector<CsvRecord> ReadAll(const std::string& text) {
  CsvReader reader(text);
  std::vector<CsvRecord> records;
  CsvRecord record;
  while (reader.Next(record)) {
    records.push_back(record);
  }
  return records;
}

using Cells = std::vector<std::string>;

struct ReadCase {
  std::string name;
  std::string text;
  std::vector<Cells> records;
};

void PrintTo(const ReadCase& one, std::ostream* out) {
  *out << one.name;
}

class WholeRecords : public testing::TestWithParam<ReadCase> {};

TEST_P(WholeRecords, AreReadCellByCell) {
  std::vector<Cells> cells;
  for (const CsvRecord& record : ReadAll(GetParam().text)) {
    EXPECT_EQ(record.fault, "");
    EXPECT_FALSE(record.unclosedQuote.has_value());
    cells.push_back(record.cells);
  }
  EXPECT_EQ(cells, GetParam().records);
}

INSTANTIATE_TEST_SUITE_P(
    Texts, WholeRecords,
    testing::Values(ReadCase{"Nothing", "", {}}, ReadCase{"OnlyAMark", "\xEF\xBB\xBF", {}},
                    ReadCase{"Mark",
                             "\xEF\xBB\xBF"
                             "a,b\n",
                             {{"a", "b"}}},
                    ReadCase{"MarkBeforeAQuote", "\xEF\xBB\xBF\"a\",b\n", {{"a", "b"}}},
                    ReadCase{"LineFeeds", "a,b\n1,2\n", {{"a", "b"}, {"1", "2"}}},
                    ReadCase{"ReturnsToo", "a,b\r\n1,2\r\n", {{"a", "b"}, {"1", "2"}}},
                    ReadCase{"NoLastLineEnd", "a,b\n1,2", {{"a", "b"}, {"1", "2"}}},
                    ReadCase{"EmptyCells", ",\n,,\n", {{"", ""}, {"", "", ""}}},
                    ReadCase{"EmptyLines", "\n\r\na\n\n\r\nb\n\n", {{"a"}, {"b"}}},
                    ReadCase{"EmptyQuotes", "\"\"\n", {{""}}},
                    ReadCase{"BlanksStay", " a , b\n", {{" a ", " b"}}},
                    ReadCase{"Quoted", "\"a,b\",\"c\"\n", {{"a,b", "c"}}},
                    ReadCase{"DoubledQuotes", "\"a\"\"b\"\"\"\n", {{"a\"b\""}}},
                    ReadCase{"LineEndsInQuotes", "\"a\nb\r\nc\",d\n", {{"a\nb\r\nc", "d"}}},
                    ReadCase{"QuotedBeforeAReturn", "\"a\"\r\nb\r\n", {{"a"}, {"b"}}},
                    ReadCase{"QuotedAtTheEnd", "a,\"b\"", {{"a", "b"}}},
                    ReadCase{"CommaAtTheEnd", "a,", {{"a", ""}}},
                    ReadCase{"LoneReturnIsText", "a\rb\n", {{"a\rb"}}},
                    ReadCase{"UnicodeText", "Zoë,名\n", {{"Zoë", "名"}}}),
    [](const auto& one) { return one.param.name; });

TEST(CsvReader, NumbersLinesAsAnEditorDoes) {
  std::vector<std::size_t> lines;
  for (const CsvRecord& record : ReadAll("a\n\n\"b\nb\r\nb\",c\r\n\r\nd\n\"e\"\nf")) {
    lines.push_back(record.line);
  }
  EXPECT_THAT(lines, ElementsAre(1, 3, 7, 8, 9));
}

struct FaultCase {
  std::string name;
  std::string line;
  std::string fault;
};

void PrintTo(const FaultCase& one, std::ostream* out) {
  *out << one.name;
}

class BadRecords : public testing::TestWithParam<FaultCase> {};

TEST_P(BadRecords, SayWhyAndLetTheNextBeRead) {
  const std::vector<CsvRecord> records = ReadAll("a\n" + GetParam().line + "\nb\n");
  ASSERT_EQ(records.size(), 3U);
  EXPECT_THAT(records[1].fault, HasSubstr(GetParam().fault));
  EXPECT_EQ(records[1].line, 2U);
  EXPECT_EQ(records[2].fault, "");
  EXPECT_THAT(records[2].cells, ElementsAre("b"));
}

INSTANTIATE_TEST_SUITE_P(
    Faults, BadRecords,
    testing::Values(FaultCase{"QuoteInside", "x\"y,z", "a quote stands inside a cell"},
                    FaultCase{"BlankBeforeAQuote", "x, \"y\"", "a quote stands inside a cell"},
                    FaultCase{"TextBehindAQuote", "\"x\"y,z", "text behind the closing quote"},
                    FaultCase{"BlankBehindAQuote", "\"x\" ,z", "text behind the closing quote"},
                    FaultCase{"NotUtf8", "\xFF,z", "not valid UTF-8"},
                    FaultCase{"CutCharacter", "z\xC3", "not valid UTF-8"},
                    FaultCase{"NotUtf8InQuotes", "\"\xE4\",z", "not valid UTF-8"},
                    FaultCase{"LongCell", std::string(32768, 'x'), "longer than 32767 bytes"},
                    FaultCase{"LongQuotedCell", "\"" + std::string(32768, 'x') + "\"",
                              "longer than 32767 bytes"},
                    FaultCase{"ManyCells", std::string(256, ','), "more than 256 cells"}),
    [](const auto& one) { return one.param.name; });

TEST(CsvReader, TakesCellsUpToItsBounds) {
  const std::string longest(CsvReader::kLongestCell, 'x');
  EXPECT_THAT(ReadAll(longest + "\n").at(0).cells, ElementsAre(longest));
  const CsvRecord widest = ReadAll(std::string(CsvReader::kMostCells - 1, ',') + "\n").at(0);
  EXPECT_EQ(widest.fault, "");
  EXPECT_EQ(widest.cells.size(), CsvReader::kMostCells);
}

TEST(CsvReader, KeepsNulAndOtherControlCharactersInCells) {
  const std::string line("a\0b,\x1B[2J\n", 9);
  EXPECT_THAT(ReadAll(line).at(0).cells, ElementsAre(std::string("a\0b", 3), "\x1B[2J"));
}

TEST(CsvReader, AQuoteThatNothingClosesIsNamedByItsOwnLine) {
  const std::vector<CsvRecord> records = ReadAll("a\n\"b\nb\",\"c\nd,\"\"\n\n");
  ASSERT_EQ(records.size(), 2U);
  EXPECT_EQ(records[1].line, 2U);
  EXPECT_EQ(records[1].unclosedQuote, 3U);
  EXPECT_THAT(records[1].fault, HasSubstr("never closed"));
}

TEST(CsvReader, AQuoteAsTheLastCharacterIsNeverClosed) {
  EXPECT_EQ(ReadAll("a\n\"").at(1).unclosedQuote, 2U);
}

TEST(FormulaMarks, ComeOffWhereTheWriterPutsThem) {
  for (const std::string text : {"=1+1", "+49 30", "-5", "@x", "\tx", "\rx", "'x", "''", "'", ""}) {
    EXPECT_EQ(WithoutFormulaMark(WithoutFormula(text)), text);
  }
  EXPECT_EQ(WithoutFormulaMark("'Neil"), "'Neil");
  EXPECT_EQ(WithoutFormulaMark("O'=x"), "O'=x");
}

}  // namespace
}  // namespace qorhost
