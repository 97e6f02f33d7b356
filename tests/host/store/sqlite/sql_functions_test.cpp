#include "host/store/sqlite/sql_functions.h"

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <memory>
#include <string>

#include "tests/host/dialect/test_database.h"

namespace qorhost::dialect::test {

using sqlite::RegisterSqlFunctions;

namespace {

// The text or the error of an expression that the engine evaluates.
std::string Evaluated(const std::string& expression) {
  sqlite3* database = nullptr;
  sqlite3_open(":memory:", &database);
  const std::unique_ptr<sqlite3, int (*)(sqlite3*)> owned(database, sqlite3_close);
  RegisterSqlFunctions(database);
  sqlite3_stmt* prepared = nullptr;
  const std::string sql = "SELECT " + expression;
  if (sqlite3_prepare_v2(database, sql.c_str(), -1, &prepared, nullptr) != SQLITE_OK) {
    return sqlite3_errmsg(database);
  }
  const std::unique_ptr<sqlite3_stmt, int (*)(sqlite3_stmt*)> statement(prepared, sqlite3_finalize);
  if (sqlite3_step(prepared) != SQLITE_ROW) {
    return sqlite3_errmsg(database);
  }
  const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(prepared, 0));
  return text == nullptr ? "Null" : text;
}

TEST(SqlFunctionsTest, LikeOfTheEngineIgnoresCaseOfEveryAlphabet) {
  EXPECT_EQ(Evaluated("'ÄRGER' LIKE 'ä%'"), "1");
  EXPECT_EQ(Evaluated("'ÄRGER' LIKE NULL"), "Null");
  EXPECT_EQ(Evaluated("12.50 LIKE '12.5'"), "1");
}

TEST(SqlFunctionsTest, PatternsThatAreTooLongFailTheStatement) {
  EXPECT_EQ(Evaluated("'a' LIKE '" + std::string(1024, 'a') + "'"), "0");
  EXPECT_EQ(Evaluated("'a' LIKE '" + std::string(1025, 'a') + "'"),
            "the pattern of LIKE is too long");
}

TEST(SqlFunctionsTest, CollationOrdersLiterals) {
  EXPECT_EQ(Evaluated("'Äb' = 'äB' COLLATE DESKTOP"), "1");
  EXPECT_EQ(Evaluated("'a' < 'B' COLLATE DESKTOP"), "1");
}

TEST(SqlFunctionsTest, FailuresBecomeErrorsOfTheStatement) {
  EXPECT_EQ(Evaluated("desktop_store_long('x')"), "data type mismatch: 'x' is not a number");
  EXPECT_EQ(Evaluated("desktop_store_long(3e9)"), "Overflow");
  EXPECT_EQ(Evaluated("desktop_store_date('x')"), "data type mismatch: 'x' is not a date");
  EXPECT_EQ(Evaluated("desktop_divide(1, 0)"), "division by zero");
  EXPECT_EQ(Evaluated("desktop_left('x', -1)"), "Invalid procedure call or argument");
}

TEST(SqlFunctionsTest, BlobsAreReadAsTexts) {
  EXPECT_EQ(Evaluated("desktop_ucase(x'6162')"), "AB");
  EXPECT_EQ(Evaluated("desktop_val(x'3132')"), "12.0");
  EXPECT_EQ(Evaluated("desktop_trim(x'')"), "");
}

TEST(SqlFunctionsTest, NullPassesThrough) {
  for (const char* call :
       {"desktop_text(NULL)", "desktop_date_text(NULL)", "desktop_ucase(NULL)", "desktop_len(NULL)",
        "desktop_left(NULL, 1)", "desktop_left('x', NULL)", "desktop_number(NULL)",
        "desktop_store_long(NULL)", "desktop_store_double(NULL)", "desktop_store_boolean(NULL)",
        "desktop_store_date(NULL)", "desktop_date(NULL)", "desktop_divide(NULL, 0)"}) {
    EXPECT_EQ(Evaluated(call), "Null") << call;
  }
}

}  // namespace

}  // namespace qorhost::dialect::test
