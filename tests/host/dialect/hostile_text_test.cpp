// Texts made to break the translator: it refuses them, in time that grows with their length.
#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "host/dialect/lexer.h"
#include "host/dialect/parser.h"
#include "host/dialect/translator.h"
#include "test_database.h"

namespace qorhost::dialect::test {

namespace {

std::string Repeated(std::string_view part, std::size_t count) {
  std::string text;
  text.reserve(part.size() * count);
  for (std::size_t index = 0; index < count; ++index) {
    text += part;
  }
  return text;
}

std::string RefusalOf(const std::string& sql) {
  Translator translator;
  try {
    translator.Translate(sql, kNow);
  } catch (const SqlError& error) {
    return error.what();
  }
  return "translated";
}

constexpr std::string_view kWhere = "SELECT RID FROM Units WHERE ";

struct Hostile {
  const char* name;
  std::string_view before;
  std::string_view part;
  std::string_view after;
  std::string_view refusal;
};

class MillionCharactersTest : public testing::TestWithParam<Hostile> {};

TEST_P(MillionCharactersTest, AreRefused) {
  const Hostile& hostile = GetParam();
  std::string sql(hostile.before);
  sql += Repeated(hostile.part, 1'000'000 / hostile.part.size());
  sql += hostile.after;
  EXPECT_NE(RefusalOf(sql).find(hostile.refusal), std::string::npos) << RefusalOf(sql);
}

INSTANTIATE_TEST_SUITE_P(
    Table, MillionCharactersTest,
    testing::Values(
        Hostile{"OpenBrackets", kWhere, "(", "", "nested too deeply"},
        Hostile{"ClosedBrackets", kWhere, ")", "", "expected a value"},
        Hostile{"Negations", kWhere, "NOT ", "RID=1", "nested too deeply"},
        Hostile{"MinusSigns", kWhere, "- ", "1", "nested too deeply"},
        Hostile{"PlusSigns", kWhere, "+", "1=1", "nested too deeply"},
        Hostile{"Sums", kWhere, "1+", "1", "nested too deeply"},
        Hostile{"Comparisons", kWhere, "1=", "1", "nested too deeply"},
        Hostile{"NullTests", "SELECT RID FROM Units WHERE RID", " IS NULL", "",
                "nested too deeply"},
        Hostile{"Functions", kWhere, "UCase(", "", "nested too deeply"},
        Hostile{"Conditionals", kWhere, "iif(1=1,1,", "", "nested too deeply"},
        Hostile{"SubSelects", kWhere, "RID IN (SELECT RID FROM Units WHERE ", "",
                "nested too deeply"},
        Hostile{"JoinBrackets", "SELECT 1 FROM ", "(", "", "nested too deeply"},
        Hostile{"Conjunctions", kWhere, "RID=1 AND ", "RID=1", "more than 2000 conditions"},
        Hostile{"Tables", "SELECT 1 FROM Units", ",Units", "", "more than 16 tables"},
        Hostile{"Unions", "SELECT 1", " UNION SELECT 1", "", "too many UNIONs"},
        Hostile{"Columns", "SELECT 1", ",1", "", "more than 1000 columns"},
        Hostile{"Stars", "SELECT *", ",*", " FROM Tenants", "more than 1000 columns"},
        Hostile{"Orders", "SELECT RID FROM Units ORDER BY RID", ",RID", "", "names in ORDER BY"},
        Hostile{"Groups", "SELECT 1 FROM Units GROUP BY RID", ",RID", "", "names in GROUP BY"},
        Hostile{"Assignments", "UPDATE Units SET UnitKey=1", ",UnitKey=1", "", "named twice"},
        Hostile{"InsertedColumns", "INSERT INTO Units (UnitKey", ",UnitKey", ") VALUES (1)",
                "1 values for"},
        Hostile{"ListOfValues", "SELECT RID FROM Units WHERE RID IN (1", ",1", ")",
                "more than 200000 values"},
        Hostile{"OneLongName", kWhere, "a", "",
                "unknown name 'aaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaa...'"},
        Hostile{"OneLongNumber", kWhere, "9", "", "too large"},
        Hostile{"Zeros", "INSERT INTO Units (UnitName) VALUES (0", "0", ",1)", "2 values"},
        Hostile{"Quotes", kWhere, "''", "'", "a text that is not closed"},
        Hostile{"HashMarks", kWhere, "#", "", "expected"},
        Hostile{"Bracketed", kWhere, "[", "", "not closed"},
        Hostile{"Points", "SELECT RID", ".RID", "", "expected"},
        Hostile{"Semicolons", "DELETE FROM Units", ";", "", "only one statement"},
        Hostile{"LongAlias", "SELECT RID AS [", "a", "] FROM Units",
                "an alias of at most 64 bytes"},
        Hostile{"Blanks", "", " ", "", "expected SELECT"}),
    [](const testing::TestParamInfo<Hostile>& entry) { return std::string(entry.param.name); });

TEST(HostileTextTest, ChainsOfConditionsMayBeLong) {
  TestDatabase database;
  const std::string sql =
      std::string(kWhere) + Repeated("RID=9 OR ", 1000) + Repeated("RID=1 AND ", 999) + "RID=1";
  EXPECT_EQ(database.Run(sql).rows.size(), 1U);
}

TEST(HostileTextTest, ChainsOfTextsMayBeLong) {
  TestDatabase database;
  const std::string sql = "SELECT Len('a'" + Repeated(" & 'a'", 20'000) + ")";
  EXPECT_EQ(database.Run(sql).rows.front().front(), "20001");
}

TEST(HostileTextTest, ListsOfEveryCredentialOfAUnitWork) {
  TestDatabase database;
  const std::string sql =
      "DELETE FROM CredentialBank WHERE RID IN (1" + Repeated(",70000", 65'534) + ")";
  EXPECT_EQ(database.Run(sql).changes, 1);
}

TEST(HostileTextTest, NestingIsTakenUpToItsLimit) {
  TestDatabase database;
  const auto nested = [](std::size_t depth) {
    return std::string(kWhere) + Repeated("(", depth) + "RID=1" + Repeated(")", depth);
  };
  EXPECT_EQ(database.Run(nested(100)).rows.size(), 1U);
  EXPECT_EQ(RefusalOf(nested(kDeepestNesting + 1)),
            "line 1, column 229: the statement is nested too deeply");
}

TEST(HostileTextTest, WhatTheEngineCannotNestIsRefused) {
  TestDatabase database;
  for (std::size_t depth = 1; depth < kDeepestNesting; ++depth) {
    const std::string sql = std::string(kWhere) + Repeated("RID=1 AND NOT (", depth) + "RID=1" +
                            Repeated(" OR RID=2)", depth);
    try {
      database.Run(sql);
    } catch (const SqlError& error) {
      EXPECT_GE(depth, 10U);
      EXPECT_NE(std::string(error.what()).find("nested too deeply"), std::string::npos);
    }
  }
}

TEST(HostileTextTest, TextsOverTheLimitAreRefused) {
  const std::string longest = "SELECT 1" + std::string(kLongestStatement - 8, ' ');
  EXPECT_EQ(RefusalOf(longest), "translated");
  EXPECT_EQ(RefusalOf(longest + " "), "line 1, column 1: the statement is too long");
}

TEST(HostileTextTest, ZeroBytesAreRefusedEverywhere) {
  using namespace std::string_literals;
  EXPECT_EQ(RefusalOf("SELECT 1\0"s), "line 1, column 9: a character that has no meaning here");
  EXPECT_EQ(RefusalOf("SELECT 'a\0b'"s), "line 1, column 10: a character that has no meaning here");
  EXPECT_EQ(RefusalOf("SELECT 1 AS [a\0b]"s),
            "line 1, column 15: a character that has no meaning here");
}

TEST(HostileTextTest, ControlCharactersAreRefusedInNames) {
  EXPECT_EQ(RefusalOf("SELECT 1 AS [a\x01]"), "line 1, column 13: a name with a control character");
  EXPECT_EQ(RefusalOf("SELECT \x01"), "line 1, column 8: a character that has no meaning here");
}

TEST(HostileTextTest, BrokenBytesAreDataInTextsAndRefusedInNames) {
  TestDatabase database;
  EXPECT_EQ(database.Run("SELECT 'a\xFF'").rows.front().front(), "'a\xFF'");
  EXPECT_EQ(RefusalOf("SELECT 1 AS [\xFF]"),
            "line 1, column 13: an alias of at most 64 bytes of text is expected");
  EXPECT_EQ(RefusalOf("SELECT a\xFF FROM Units"), "line 1, column 8: unknown name 'a\xFF'");
}

TEST(HostileTextTest, EmptyTextIsRefused) {
  EXPECT_EQ(RefusalOf(""),
            "line 1, column 1: expected SELECT, INSERT, UPDATE or DELETE but found the end");
}

TEST(HostileTextTest, PositionsCountLines) {
  EXPECT_EQ(RefusalOf("SELECT RID\r\nFROM Units\nWHERE abc = 1"),
            "line 3, column 7: unknown name 'abc'");
}

}  // namespace

}  // namespace qorhost::dialect::test
