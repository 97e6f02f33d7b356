// Whether a number is free is asked before every save: the server looks it up in an index, however
// many credentials the unit has.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "host/dialect/translator.h"
#include "host/store/postgres/cells.h"
#include "host/store/postgres/printer.h"
#include "host/store/postgres/schema.h"
#include "test_server.h"

namespace qorhost::postgres::test {

namespace {

using testing::ContainsRegex;

/// A store whose unit 1 has 5,000 cards.
Connection StoreOfManyCards(const std::string& database) {
  Connection connection = OpenServerStore(TestServer::Shared().Create(database), OpenMode::kCreate);
  connection.RunAll(
      R"(INSERT INTO "CredentialBank" ("UnitKey", "CredentialType", "PINNo", "FacilityCode") )"
      R"(SELECT 1, 0, n, 12 FROM generate_series(1, 5000) n; ANALYZE "CredentialBank")");
  return connection;
}

/// How the server goes about a statement of the dialect.
std::string PlanOf(Connection& connection, const std::string& sql) {
  dialect::Translator translator(&Print);
  const dialect::Translation translation = translator.Translate(sql, "2026-01-31 14:05:09");
  const SentValues values(translation.parameters);
  const Result plan =
      connection.Run("EXPLAIN (COSTS OFF) " + translation.shape->sql, values.sent());
  std::string text;
  for (int row = 0; row < plan.rows(); ++row) {
    text.append(plan.Text(row, 0)).append("\n");
  }
  return text;
}

TEST(FreeNumbers, AreLookedUpInAnIndex) {
  Connection connection = StoreOfManyCards("free_numbers");

  const std::string plan =
      PlanOf(connection,
             "Select PINNo from CredentialBank where UnitKey = 1 and CredentialType = 0 and "
             "val(PINNo) = 101 and RID <>1");

  EXPECT_THAT(plan, ContainsRegex("Index Cond: [^\n]*\"PINNo\" = '101'"));
}

}  // namespace

}  // namespace qorhost::postgres::test
