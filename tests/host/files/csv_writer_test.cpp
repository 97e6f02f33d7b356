#include "host/files/csv_writer.h"

#include <gtest/gtest.h>

#include <sstream>

#include "frame/date.h"
#include "host/files/csv_formula.h"

namespace qorhost {
namespace {

using qorcred::Null;

struct TextRow {
  const char* name;
  const char* text;
  const char* expected;
};

class FormulaTest : public testing::TestWithParam<TextRow> {};

TEST_P(FormulaTest, IsMadeSafe) {
  EXPECT_EQ(WithoutFormula(GetParam().text), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    Texts, FormulaTest,
    testing::Values(TextRow{"Equals", "=1+1", "'=1+1"}, TextRow{"Plus", "+1 555", "'+1 555"},
                    TextRow{"Minus", "-2", "'-2"}, TextRow{"At", "@SUM(A1)", "'@SUM(A1)"},
                    TextRow{"Tab", "\t=1", "'\t=1"}, TextRow{"CarriageReturn", "\r=1", "'\r=1"},
                    TextRow{"QuoteSoThatItComesBack", "'70s", "''70s"},
                    TextRow{"TwoQuotes", "''", "'''"}, TextRow{"Empty", "", ""},
                    TextRow{"InTheMiddle", "a=b", "a=b"}, TextRow{"AfterABlank", " =1", " =1"},
                    TextRow{"LeftAngle", "<None>", "<None>"}, TextRow{"Digits", "0012", "0012"},
                    TextRow{"Letters", "Zoë", "Zoë"}),
    [](const auto& row) { return std::string(row.param.name); });

class FieldTest : public testing::TestWithParam<TextRow> {};

TEST_P(FieldTest, IsQuotedWhereItMust) {
  EXPECT_EQ(CsvField(GetParam().text), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    Texts, FieldTest,
    testing::Values(TextRow{"Plain", "Abel Karin", "Abel Karin"}, TextRow{"Empty", "", ""},
                    TextRow{"Comma", "a,b", "\"a,b\""}, TextRow{"Quote", "a\"b", "\"a\"\"b\""},
                    TextRow{"LineFeed", "a\nb", "\"a\nb\""},
                    TextRow{"CarriageReturn", "a\rb", "\"a\rb\""},
                    TextRow{"BlankInFront", " a", "\" a\""}, TextRow{"BlankBehind", "a ", "\"a \""},
                    TextRow{"Apostrophe", "O'Brien", "O'Brien"},
                    TextRow{"Semicolon", "a;b", "a;b"}),
    [](const auto& row) { return std::string(row.param.name); });

std::string Printed(const Table& table) {
  std::ostringstream out;
  PrintCsv(out, table);
  return out.str();
}

TEST(CsvWriterTest, WritesTitlesThenRowsWithLineEnds) {
  Table table;
  table.columns = {{"Name", "name"}, {"=Sum, all", "sum"}};
  table.rows = {{"Abel", 5}, {"O\"Brien", Null{}}};
  EXPECT_EQ(Printed(table), "Name,\"'=Sum, all\"\r\nAbel,5\r\n\"O\"\"Brien\",\r\n");
}

TEST(CsvWriterTest, ANumberIsNoFormula) {
  Table table;
  table.columns = {{"A", "a"}, {"B", "b"}, {"C", "c"}};
  table.rows = {{-1, -0.5, "-1"}};
  EXPECT_EQ(Printed(table), "A,B,C\r\n-1,-0.5,'-1\r\n");
}

TEST(CsvWriterTest, WritesDatesSoThatTheySort) {
  Table table;
  table.columns = {{"A", "a"}, {"B", "b"}};
  table.rows = {{qorcred::FromCivil({2026, 3, 5, 14, 30, 0}), true}};
  EXPECT_EQ(Printed(table), "A,B\r\n2026-03-05 14:30:00,True\r\n");
}

TEST(CsvWriterTest, ATableWithoutRowsHasTitles) {
  Table table;
  table.columns = {{"A", "a"}, {"B", "b"}};
  EXPECT_EQ(Printed(table), "A,B\r\n");
}

}  // namespace
}  // namespace qorhost
