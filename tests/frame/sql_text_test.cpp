#include "frame/sql_text.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>
#include <type_traits>

#include "frame/text.h"
#include "outcome.h"

namespace qorcred {
namespace {

using qortest::ForEachRow;

/// The rules one after the other, the first until nothing changes: what the one pass must equal.
std::string StepByStep(std::string sql, bool minusOne) {
  for (std::string before; before != sql;) {
    before = sql;
    sql = ReplaceAll(sql, ", ,", ", Null,");
  }
  sql = ReplaceAll(sql, "''", "Null");
  sql = ReplaceAll(sql, "= ,", "= Null,");
  return minusOne ? ReplaceAll(sql, "-1", "Null") : sql;
}

struct Row {
  const char* name;
  const char* sql;
  const char* both;      // after the rules that the two passes share
  const char* minusOne;  // after the rule for "-1" as well
};

const Row kRows[] = {
    {"Nothing", "", "", ""},
    {"NothingToDo", "SELECT 1", "SELECT 1", "SELECT 1"},
    {"OneEmptyPlace", "(1, , 2)", "(1, Null, 2)", "(1, Null, 2)"},
    {"TwoEmptyPlacesInARow", "1, , , 2", "1, Null, Null, 2", "1, Null, Null, 2"},
    {"FourCommas", ", , , ,", ", Null, Null, Null,", ", Null, Null, Null,"},
    {"FiveCommas", ", , , , ,", ", Null, Null, Null, Null,", ", Null, Null, Null, Null,"},
    {"TwoBlanksAreNoHole", ",  ,", ",  ,", ",  ,"},
    {"NoBlankIsNoHole", "(1,,2)", "(1,,2)", "(1,,2)"},
    {"HoleAtTheEndStays", "1, ", "1, ", "1, "},
    {"CommaAtTheEnd", "1, ,", "1, Null,", "1, Null,"},
    {"EmptyText", "''", "Null", "Null"},
    {"EmptyTextInAStatement", "SET A='',B=1", "SET A=Null,B=1", "SET A=Null,B=1"},
    {"ThreeQuotes", "'''", "Null'", "Null'"},
    {"FourQuotes", "''''", "NullNull", "NullNull"},
    {"AdjacentQuotesInsideALiteral", "'O''Brien'", "'ONullBrien'", "'ONullBrien'"},
    {"BlankText", "' '", "' '", "' '"},
    {"OneQuote", "'", "'", "'"},
    {"EmptyAssignment", "A= ,B=1", "A= Null,B=1", "A= Null,B=1"},
    {"EmptyAssignmentAlone", "= ,", "= Null,", "= Null,"},
    {"AssignmentWithoutBlankStays", "A=,B=1", "A=,B=1", "A=,B=1"},
    {"AssignmentAtTheEndStays", "A= ", "A= ", "A= "},
    {"AssignmentAndTwoHoles", "A= , , B", "A= Null, Null, B", "A= Null, Null, B"},
    {"MinusOne", "A=-1,B", "A=-1,B", "A=Null,B"},
    {"MinusTwelve", "PINNo=-12", "PINNo=-12", "PINNo=Null2"},
    {"MinusOneInsideAText", "'555-1234'", "'555-1234'", "'555Null234'"},
    {"MinusOneInsideADate", "'2026-10-01'", "'2026-10-01'", "'2026Null0-01'"},
    {"MinusEleven", "-11", "-11", "Null1"},
    {"TwoMinusSigns", "--1", "--1", "-Null"},
    {"MinusOneTwice", "-1-1", "-1-1", "NullNull"},
    {"MinusTwo", "-2", "-2", "-2"},
    {"MinusAtTheEnd", "1-", "1-", "1-"},
    {"EverythingAtOnce", "(-1, , '', A= , ,-1)", "(-1, Null, Null, A= Null, Null,-1)",
     "(Null, Null, Null, A= Null, Null,Null)"},
    {"OtherBytes", "'\xC3\xA4\xFF', ,", "'\xC3\xA4\xFF', Null,", "'\xC3\xA4\xFF', Null,"},
};

TEST(SqlTextTest, FixNullValuesClosesHolesAndRemovesMinusOne) {
  ForEachRow(kRows, [](const Row& row) {
    EXPECT_EQ(FixNullValues(row.sql), row.minusOne);
    EXPECT_EQ(StepByStep(row.sql, true), row.minusOne);
  });
}

TEST(SqlTextTest, ADateThatHoldsMinusOneHasSlashes) {
  const struct {
    const char* name;
    const char* text;
    const char* expected;
  } rows[] = {
      {"None", "", ""},
      {"Default", "3/5/2024 2:30:00 PM", "3/5/2024 2:30:00 PM"},
      {"Dots", "10.01.2025", "10.01.2025"},
      {"HyphensWithoutMinusOne", "2024-03-05", "2024-03-05"},
      {"Month", "2024-10-05", "2024/10/05"},
      {"Day", "2024-03-15 13:30:00", "2024/03/15 13:30:00"},
      {"Year", "05-03-1999", "05/03/1999"},
      {"Name", "05-Mar-1999", "05/Mar/1999"},
  };
  ForEachRow(rows, [](const auto& row) {
    EXPECT_EQ(DateWithoutMinusOne(row.text), row.expected);
    EXPECT_EQ(FixNullValues(row.expected), row.expected);
  });
}

TEST(SqlTextTest, ReplaceEmptyWithNullLeavesMinusOneAlone) {
  ForEachRow(kRows, [](const Row& row) {
    EXPECT_EQ(ReplaceEmptyWithNull(row.sql), row.both);
    EXPECT_EQ(StepByStep(row.sql, false), row.both);
  });
}

TEST(SqlTextTest, OnePassEqualsTheStepsOnEveryShortStatement) {
  constexpr std::string_view kLetters = ", ='-1N";
  constexpr int kLength = 6;
  std::size_t statements = 1;
  for (int i = 0; i < kLength; ++i) statements *= kLetters.size();
  for (std::size_t number = 0; number < statements; ++number) {
    std::string sql;
    for (std::size_t rest = number, i = 0; i < kLength; ++i, rest /= kLetters.size()) {
      sql += kLetters[rest % kLetters.size()];
    }
    ASSERT_EQ(FixNullValues(sql), StepByStep(sql, true)) << sql;
    ASSERT_EQ(ReplaceEmptyWithNull(sql), StepByStep(sql, false)) << sql;
  }
}

TEST(SqlTextTest, AnUnchangedStatementKeepsItsMemory) {
  std::string sql = "UPDATE CredentialBank SET PINNo=12345,FacilityCode=7 WHERE RID=99";
  const char* const memory = sql.data();
  sql = FixNullValues(std::move(sql));
  EXPECT_EQ(sql.data(), memory);
  sql = ReplaceEmptyWithNull(std::move(sql));
  EXPECT_EQ(sql.data(), memory);
}

TEST(SqlTextTest, AMillionHolesAreClosedInOnePass) {
  constexpr std::size_t kHoles = 1'000'000;
  std::string sql = ",";
  std::string expected = ",";
  for (std::size_t i = 0; i < kHoles; ++i) {
    sql += " ,";
    expected += " Null,";
  }
  EXPECT_TRUE(FixNullValues(sql) == expected);
  EXPECT_TRUE(ReplaceEmptyWithNull(sql) == expected);
  const std::string blanks(kHoles, ' ');
  EXPECT_TRUE(FixNullValues("," + blanks + ",") == "," + blanks + ",");
}

TEST(ConcatTest, JoinsTextsAndNumbers) {
  const std::string table = "Tenants";
  const std::string_view column = "RID";
  EXPECT_EQ(Concat(), "");
  EXPECT_EQ(Concat(""), "");
  EXPECT_EQ(Concat("SELECT ", column, " FROM ", table, " WHERE UnitKey=", 7),
            "SELECT RID FROM Tenants WHERE UnitKey=7");
  EXPECT_EQ(Concat(0, " ", std::int16_t{-32768}), "0 -32768");
  EXPECT_EQ(Concat(std::numeric_limits<std::int32_t>::min(), ",",
                   std::numeric_limits<std::int32_t>::max()),
            "-2147483648,2147483647");
  EXPECT_EQ(Concat(std::string_view("a\0b", 3)), std::string("a\0b", 3));
}

TEST(ConcatTest, TakesNothingThatWouldTurnIntoANumberByAccident) {
  static_assert(!std::is_constructible_v<TextPart, bool>);
  static_assert(!std::is_constructible_v<TextPart, char>);
  static_assert(!std::is_constructible_v<TextPart, double>);
}

}  // namespace
}  // namespace qorcred
