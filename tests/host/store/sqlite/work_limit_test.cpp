// Queries that would run for hours are stopped; those that only give many rows are not.
#include "host/store/sqlite/work_limit.h"

#include <gmock/gmock.h>

#include <string>

#include "host/store/store_error.h"
#include "tests/host/store/sqlite/sqlite_fixture.h"

namespace qorhost::test {

using namespace sqlite;

namespace {

using testing::HasSubstr;

constexpr const char* kManyRows =
    "INSERT INTO TenantsBackup (UnitKey, TenantID) WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL "
    "SELECT i + 1 FROM n WHERE i < 2000) SELECT 1, i FROM n";
// 2000 to the power of six pairs of rows.
constexpr const char* kEndless =
    "SELECT Count(*) FROM TenantsBackup a, TenantsBackup b, TenantsBackup c, TenantsBackup d, "
    "TenantsBackup e, TenantsBackup f WHERE a.TenantID + b.TenantID < f.TenantID";

class WorkLimitTest : public SqliteFixture {
 protected:
  void SetUp() override {
    StoreFixture::SetUp();
    Run(kManyRows);
  }
};

TEST_F(WorkLimitTest, AnEndlessQueryIsStopped) {
  try {
    (void)connection_->session().Select(kEndless);
    FAIL() << "it came to an end";
  } catch (const StoreError& failure) {
    EXPECT_EQ(failure.fault(), StoreFault::kTooMuchWork);
    EXPECT_THAT(failure.what(), HasSubstr("narrow it"));
  }
  // The next one has a limit of its own.
  EXPECT_EQ(connection_->session().Select("SELECT TenantID FROM TenantsBackup").rowCount, 2000U);
}

TEST_F(WorkLimitTest, AnEndlessScalarQueryIsStopped) {
  EXPECT_THROW((void)connection_->session().Scalar(kEndless), StoreError);
}

TEST_F(WorkLimitTest, AMillionPairsOfRowsAreNotStopped) {
  EXPECT_EQ(connection_->session()
                .Select("SELECT a.RID FROM TenantsBackup a, TenantsBackup b "
                        "WHERE b.TenantID <= 500")
                .rowCount,
            1'000'000U);
}

TEST_F(WorkLimitTest, AStoppedQueryInATransactionLeavesTheTransaction) {
  qorcred::Call(*connection_, "BeginTrans");
  Run("DELETE FROM TenantsBackup WHERE TenantID > 1999");
  EXPECT_THROW((void)connection_->session().Select(kEndless), StoreError);
  qorcred::Call(*connection_, "CommitTrans");
  EXPECT_EQ(Number("SELECT count(*) FROM TenantsBackup"), 1999);
}

// A limit of an earlier statement once took the looking up away with it: a window stood still while
// it read.
TEST_F(WorkLimitTest, LeavesWhoeverLooksUpMeanwhile) {
  int looks = 0;
  bool goesOn = true;
  Patience patience;
  patience.working = [&] {
    ++looks;
    return goesOn;
  };
  connection_->store().SetPatience(patience);
  const char* const pairs =
      "SELECT a.TenantID FROM TenantsBackup a, TenantsBackup b "
      "WHERE a.TenantID+b.TenantID=0";
  for (int time = 0; time < 2; ++time) {
    looks = 0;
    (void)connection_->session().Select(pairs);
    EXPECT_GT(looks, 10) << time;
  }
  goesOn = false;
  EXPECT_THROW((void)connection_->session().Select(pairs), StoreError);
}

TEST_F(WorkLimitTest, LiesOnTheDatabaseAsLongAsItLives) {
  const char* const count = "SELECT count(*) FROM TenantsBackup a, TenantsBackup b";
  {
    const WorkLimit limit(Raw(), 1'000'000);
    EXPECT_THROW((void)Number(count), StoreError);
  }
  EXPECT_EQ(Number(count), 4'000'000);
}

}  // namespace
}  // namespace qorhost::test
