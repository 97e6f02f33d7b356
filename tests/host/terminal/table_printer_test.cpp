// Rows as an aligned table.
#include "host/terminal/table_printer.h"

#include <gtest/gtest.h>

#include <sstream>

namespace qorhost::test {
namespace {

using qorcred::Null;
using qorcred::Value;

std::string Printed(const Table& table) {
  std::ostringstream out;
  PrintTable(out, table);
  return out.str();
}

Table OneRow(std::vector<Value> row) {
  Table table;
  for (std::size_t at = 0; at < row.size(); ++at) {
    table.columns.push_back({"C", "c" + std::to_string(at)});
  }
  table.rows.push_back(std::move(row));
  return table;
}

TEST(PrintTable, AlignsTextsToTheLeftAndNumbersToTheRight) {
  Table table;
  table.columns = {{"Name", "name"}, {"N", "n"}, {"Town", "town"}};
  table.rows = {{"Zoë", 7, "東京"}, {"Abel", 1200, Null{}}, {"X", Null{}, "Rome"}};
  EXPECT_EQ(Printed(table),
            "Name     N  Town\n"
            "----  ----  ----\n"
            "Zoë      7  東京\n"
            "Abel  1200\n"
            "X           Rome\n"
            "3 rows\n");
}

TEST(PrintTable, SaysWhenThereAreNoRowsOrOne) {
  Table table;
  table.columns = {{"Name", "name"}};
  EXPECT_EQ(Printed(table), "no rows\n");
  table.rows = {{"a"}};
  EXPECT_EQ(Printed(table), "Name\n----\na\n1 row\n");
}

TEST(PrintTable, CutsTextsThatAreWiderThanAnyMayBe) {
  const Table table = OneRow({std::string(40'000, 'x'), 1234567, "short"});
  std::ostringstream out;
  PrintTable(out, table, 0, 10);
  EXPECT_EQ(out.str(),
            "C                 C  C\n"
            "----------  -------  -----\n"
            "xxxxxxxxx…  1234567  short\n"
            "1 row\n");
  EXPECT_GT(Printed(table).size(), 40'000U) << "and none where nothing is said";
}

std::string PrintedInto(std::size_t width, const Table& table) {
  std::ostringstream out;
  PrintTable(out, table, width);
  return out.str();
}

Table Wide() {
  Table table;
  table.columns = {{"Key", "key"}, {"Long name", "name"}, {"Town", "town"}};
  table.rows = {{17, "Abel Karin Theodora", "東京東京東京東京"}, {123456, "Berg", "Rome"}};
  return table;
}

TEST(PrintTable, CutsTheWidestTextsWhereTheTerminalIsNarrow) {
  EXPECT_EQ(PrintedInto(45, Wide()), Printed(Wide()));
  EXPECT_EQ(PrintedInto(36, Wide()),
            "   Key  Long name      Town\n"
            "------  -------------  -------------\n"
            "    17  Abel Karin T…  東京東京東京…\n"
            "123456  Berg           Rome\n"
            "2 rows\n");
}

TEST(PrintTable, LeavesTheLastColumnsOutWhereTheyCouldNotBeReadAndNamesThem) {
  EXPECT_EQ(PrintedInto(33, Wide()),
            "   Key  Long name\n"
            "------  -------------------\n"
            "    17  Abel Karin Theodora\n"
            "123456  Berg\n"
            "2 rows (not shown: Town)\n");
  EXPECT_EQ(PrintedInto(3, Wide()),
            "   Key\n------\n    17\n123456\n2 rows (not shown: Long name, Town)\n");
}

TEST(PrintTable, ShowsNullAsTheTableSays) {
  Table table = OneRow({Null{}});
  table.nullText = "Null";
  EXPECT_EQ(Printed(table), "C\n----\nNull\n1 row\n");
}

TEST(PrintTable, KeepsAHostileCellOnItsLine) {
  EXPECT_EQ(Printed(OneRow({"a\n\x1B[31mb"})), "C\n------------\na\\n\\x1B[31mb\n1 row\n");
}

}  // namespace
}  // namespace qorhost::test
