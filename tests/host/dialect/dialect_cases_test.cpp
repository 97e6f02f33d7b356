#include <gtest/gtest.h>

#include "case_file.h"
#include "case_run.h"
#include "test_database.h"

namespace qorhost::dialect::test {

namespace {

class DialectCase : public testing::TestWithParam<Case> {};

TEST_P(DialectCase, ComesOutAsWritten) {
  TestDatabase database;
  RunCase(database, GetParam(), GetParam().sqlite);
}

INSTANTIATE_TEST_SUITE_P(Table, DialectCase, testing::ValuesIn(LoadCases()),
                         [](const testing::TestParamInfo<Case>& entry) {
                           return TestName(entry.param);
                         });

}  // namespace

}  // namespace qorhost::dialect::test
