#include "host/store/sqlite/transaction.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "host/store/sqlite/schema.h"
#include "host/store/sqlite/session.h"
#include "host/store/store_error.h"
#include "host/store/work_transaction.h"

namespace qorhost::sqlite {
namespace {

using testing::HasSubstr;

class TransactionTest : public testing::Test {
 protected:
  [[nodiscard]] std::int64_t Units() { return store_.Number("SELECT count(*) FROM Units"); }
  [[nodiscard]] static std::string FailureOf(const std::function<void()>& body) {
    try {
      body();
    } catch (const StoreError& failure) {
      return failure.what();
    }
    return "no failure";
  }

  Database store_ = OpenMemoryDatabase();
  Session session_{store_, [] { return qorcred::Date(); }};
  TransactionEngine engine_{store_};
  WorkTransaction transaction_{engine_, session_.work()};
};

TEST_F(TransactionTest, IsRolledBackWhenItGoesAwayOpen) {
  {
    Session session(store_, [] { return qorcred::Date(); });
    session.transaction().Begin();
    store_.Run("INSERT INTO Units (UnitKey) VALUES (1)");
  }
  EXPECT_FALSE(store_.inTransaction());
  EXPECT_EQ(Units(), 0);
}

// As after a full disk: the engine ends the transaction without being asked.
TEST_F(TransactionTest, OnceTheEngineGaveItUpNothingRunsUntilItIsRolledBack) {
  transaction_.Begin();
  store_.Run("INSERT INTO Units (UnitKey) VALUES (1)");
  store_.Run("ROLLBACK");
  EXPECT_TRUE(transaction_.open());
  EXPECT_THAT(FailureOf([&] { transaction_.CheckUsable(); }), HasSubstr("gave up"));
  transaction_.Rollback();
  EXPECT_EQ(FailureOf([&] { transaction_.CheckUsable(); }), "no failure");
  EXPECT_FALSE(transaction_.open());
}

TEST_F(TransactionTest, OnceTheEngineGaveItUpACommitFails) {
  transaction_.Begin();
  store_.Run("ROLLBACK");
  EXPECT_THAT(FailureOf([&] { transaction_.Commit(); }), HasSubstr("gave up"));
  EXPECT_FALSE(transaction_.open());
}

TEST_F(TransactionTest, ACommitThatFailsUndoesEverythingAndAllowsTheRollbackThatFollows) {
  store_.Run("CREATE TABLE child (unit REFERENCES Units(UnitKey) DEFERRABLE INITIALLY DEFERRED)");
  transaction_.Begin();
  store_.Run("INSERT INTO Units (UnitKey) VALUES (1); INSERT INTO child VALUES (99)");
  EXPECT_THAT(FailureOf([&] { transaction_.Commit(); }), HasSubstr("FOREIGN KEY"));
  EXPECT_FALSE(transaction_.open());
  EXPECT_FALSE(store_.inTransaction());
  EXPECT_EQ(Units(), 0);
  transaction_.Rollback();
  EXPECT_THAT(FailureOf([&] { transaction_.Rollback(); }), HasSubstr("no transaction"));
}

TEST_F(TransactionTest, AfterAFailedCommitANewOneBegins) {
  store_.Run("CREATE TABLE child (unit REFERENCES Units(UnitKey) DEFERRABLE INITIALLY DEFERRED)");
  transaction_.Begin();
  store_.Run("INSERT INTO child VALUES (99)");
  EXPECT_THROW(transaction_.Commit(), StoreError);
  transaction_.Begin();
  store_.Run("INSERT INTO Units (UnitKey) VALUES (1)");
  transaction_.Commit();
  EXPECT_EQ(Units(), 1);
}

// As an import does, which undoes all of its lines when it is only tried.
TEST_F(TransactionTest, InsideOneOfTheHostItIsKeptOrUndoneAlone) {
  store_.Run("BEGIN");
  transaction_.Begin();
  store_.Run("INSERT INTO Units (UnitKey) VALUES (1)");
  transaction_.Rollback();
  EXPECT_EQ(Units(), 0);
  transaction_.Begin();
  store_.Run("INSERT INTO Units (UnitKey) VALUES (2)");
  transaction_.Commit();
  EXPECT_EQ(Units(), 1);
  EXPECT_TRUE(store_.inTransaction());
  store_.Run("ROLLBACK");
  EXPECT_EQ(Units(), 0);
}

TEST_F(TransactionTest, InsideOneOfTheHostThereIsOnlyOneToo) {
  store_.Run("BEGIN");
  transaction_.Begin();
  EXPECT_THAT(FailureOf([&] { transaction_.Begin(); }), HasSubstr("already open"));
}

}  // namespace
}  // namespace qorhost::sqlite
