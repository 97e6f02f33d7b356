#include <gtest/gtest.h>

#include "dialect_database.h"
#include "test_server.h"
#include "tests/host/dialect/case_file.h"
#include "tests/host/dialect/case_run.h"

namespace qorhost::postgres::test {

namespace {

using dialect::test::Case;

class ServerDialectCase : public testing::TestWithParam<Case> {};

TEST_P(ServerDialectCase, ComesOutAsWritten) {
  if (const std::string missing = TestServer::Missing(); !missing.empty()) {
    GTEST_SKIP() << missing;
  }
  DialectDatabase database;
  dialect::test::RunCase(database, GetParam(), GetParam().postgres);
}

INSTANTIATE_TEST_SUITE_P(Table, ServerDialectCase, testing::ValuesIn(dialect::test::LoadCases()),
                         [](const testing::TestParamInfo<Case>& entry) {
                           return dialect::test::TestName(entry.param);
                         });

}  // namespace

}  // namespace qorhost::postgres::test
