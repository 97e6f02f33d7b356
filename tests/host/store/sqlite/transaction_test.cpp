#include "host/store/sqlite/transaction.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "host/store/sqlite/schema.h"
#include "host/store/store_error.h"

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
};

TEST_F(TransactionTest, IsRolledBackWhenItGoesAwayOpen) {
  {
    Transaction transaction(store_);
    transaction.Begin();
    store_.Run("INSERT INTO Units (UnitKey) VALUES (1)");
  }
  EXPECT_FALSE(store_.inTransaction());
  EXPECT_EQ(Units(), 0);
}

// As after a full disk: the engine ends the transaction without being asked.
TEST_F(TransactionTest, OnceTheEngineGaveItUpNothingRunsUntilItIsRolledBack) {
  Transaction transaction(store_);
  transaction.Begin();
  store_.Run("INSERT INTO Units (UnitKey) VALUES (1)");
  store_.Run("ROLLBACK");
  EXPECT_TRUE(transaction.open());
  EXPECT_THAT(FailureOf([&] { transaction.CheckUsable(); }), HasSubstr("gave up"));
  transaction.Rollback();
  EXPECT_EQ(FailureOf([&] { transaction.CheckUsable(); }), "no failure");
  EXPECT_FALSE(transaction.open());
}

TEST_F(TransactionTest, OnceTheEngineGaveItUpACommitFails) {
  Transaction transaction(store_);
  transaction.Begin();
  store_.Run("ROLLBACK");
  EXPECT_THAT(FailureOf([&] { transaction.Commit(); }), HasSubstr("gave up"));
  EXPECT_FALSE(transaction.open());
}

TEST_F(TransactionTest, ACommitThatFailsUndoesEverythingAndAllowsTheRollbackThatFollows) {
  store_.Run("CREATE TABLE child (unit REFERENCES Units(UnitKey) DEFERRABLE INITIALLY DEFERRED)");
  Transaction transaction(store_);
  transaction.Begin();
  store_.Run("INSERT INTO Units (UnitKey) VALUES (1); INSERT INTO child VALUES (99)");
  EXPECT_THAT(FailureOf([&] { transaction.Commit(); }), HasSubstr("FOREIGN KEY"));
  EXPECT_FALSE(transaction.open());
  EXPECT_FALSE(store_.inTransaction());
  EXPECT_EQ(Units(), 0);
  transaction.Rollback();
  EXPECT_THAT(FailureOf([&] { transaction.Rollback(); }), HasSubstr("no transaction"));
}

TEST_F(TransactionTest, AfterAFailedCommitANewOneBegins) {
  store_.Run("CREATE TABLE child (unit REFERENCES Units(UnitKey) DEFERRABLE INITIALLY DEFERRED)");
  Transaction transaction(store_);
  transaction.Begin();
  store_.Run("INSERT INTO child VALUES (99)");
  EXPECT_THROW(transaction.Commit(), StoreError);
  transaction.Begin();
  store_.Run("INSERT INTO Units (UnitKey) VALUES (1)");
  transaction.Commit();
  EXPECT_EQ(Units(), 1);
}

// As an import does, which undoes all of its lines when it is only tried.
TEST_F(TransactionTest, InsideOneOfTheHostItIsKeptOrUndoneAlone) {
  Transaction transaction(store_);
  store_.Run("BEGIN");
  transaction.Begin();
  store_.Run("INSERT INTO Units (UnitKey) VALUES (1)");
  transaction.Rollback();
  EXPECT_EQ(Units(), 0);
  transaction.Begin();
  store_.Run("INSERT INTO Units (UnitKey) VALUES (2)");
  transaction.Commit();
  EXPECT_EQ(Units(), 1);
  EXPECT_TRUE(store_.inTransaction());
  store_.Run("ROLLBACK");
  EXPECT_EQ(Units(), 0);
}

TEST_F(TransactionTest, InsideOneOfTheHostThereIsOnlyOneToo) {
  Transaction transaction(store_);
  store_.Run("BEGIN");
  transaction.Begin();
  EXPECT_THAT(FailureOf([&] { transaction.Begin(); }), HasSubstr("already open"));
}

}  // namespace
}  // namespace qorhost::sqlite
