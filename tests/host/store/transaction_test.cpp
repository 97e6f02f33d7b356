// Work that is kept or undone as a whole, through the contract.
#include "host/store/transaction.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <vector>

#include "host/store/store_error.h"
#include "tests/host/store/store_fixture.h"

namespace qorhost::test {
namespace {

class UndoableTest : public StoreFixture {
 protected:
  void AddDoor() { session().AddRow("DOORS", std::vector<Field>{{"UNITKEY", kUnit}}); }
  [[nodiscard]] std::int64_t Doors() { return Number("SELECT count(*) FROM DOORS"); }
  [[nodiscard]] SqlSession& session() { return connection_->session(); }
};

/// A unit of work that has taken the right to write.
class LockedWork : public WorkGuard {
 public:
  explicit LockedWork(SqlSession& session) : WorkGuard(session.work(), {{kUnit}, "test", {}}) {
    session.work().Lock();
  }
};

TEST_F(UndoableTest, WhatIsKeptStays) {
  {
    LockedWork work(session());
    AddDoor();
    work.Commit();
  }
  EXPECT_EQ(Doors(), 1);
  EXPECT_FALSE(session().inTransaction());
}

TEST_F(UndoableTest, WhatIsNotKeptIsUndoneAtItsEnd) {
  try {
    const LockedWork work(session());
    AddDoor();
    throw std::runtime_error("something else went wrong");
  } catch (const std::runtime_error&) {
    EXPECT_FALSE(session().inTransaction());
  }
  EXPECT_EQ(Doors(), 0);
}

TEST_F(UndoableTest, ALookMayBeginInsideItselfAndLeavesNothingOpen) {
  {
    const Undoable whole(session().look());
    {
      const Undoable part(session().look());
      EXPECT_EQ(Doors(), 0);
    }
    EXPECT_TRUE(session().inTransaction()) << "the part has ended the whole";
  }
  EXPECT_FALSE(session().inTransaction());
}

TEST_F(UndoableTest, ALookInAUnitOfWorkEndsNothingOfIt) {
  LockedWork work(session());
  AddDoor();
  {
    const Undoable look(session().look());
    EXPECT_EQ(Doors(), 1);
  }
  work.Commit();
  EXPECT_EQ(Doors(), 1);
}

TEST_F(UndoableTest, ASavepointIsUndoneAlone) {
  LockedWork work(session());
  AddDoor();
  {
    const Undoable line(session().savepoint());
    AddDoor();
  }
  {
    Undoable line(session().savepoint());
    AddDoor();
    line.Keep();
  }
  work.Commit();
  EXPECT_EQ(Doors(), 2);
}

TEST_F(UndoableTest, TheConnectionsTransactionIsAPartOfASavepoint) {
  LockedWork work(session());
  {
    Undoable line(session().savepoint());
    qorcred::Call(*connection_, "BeginTrans");
    AddDoor();
    qorcred::Call(*connection_, "CommitTrans");
    line.Undo();
  }
  EXPECT_TRUE(session().inTransaction());
  work.Commit();
  EXPECT_EQ(Doors(), 0);
}

// A row that breaks a link only when the whole is stored.
TEST_F(UndoableTest, WhatCannotBeKeptIsUndone) {
  Run("CREATE TABLE child (unit integer REFERENCES Units(UnitKey) DEFERRABLE INITIALLY DEFERRED)");
  {
    LockedWork work(session());
    AddDoor();
    Run("INSERT INTO child VALUES (99)");
    EXPECT_THROW(work.Commit(), StoreError);
  }
  EXPECT_FALSE(session().inTransaction());
  EXPECT_EQ(Doors(), 0);
}

TEST_F(UndoableTest, ATransactionInAUnitOfWorkThatCannotBeKeptIsUndoneOnce) {
  {
    const LockedWork work(session());
    session().transaction().Begin();
    AddDoor();
    session().work().Void(VoidReason::kFailed);
    EXPECT_THROW(session().transaction().Commit(), StoreError);
    EXPECT_NO_THROW(session().transaction().Rollback());
    EXPECT_TRUE(session().inTransaction()) << "the work has ended with its part";
  }
  EXPECT_EQ(Doors(), 0);
}

TEST_F(UndoableTest, WhatTheStoreGaveUpShows) {
  const LockedWork work(session());
  EXPECT_TRUE(session().inTransaction());
  Run("ROLLBACK");
  EXPECT_FALSE(session().inTransaction());
}

TEST_F(UndoableTest, AConnectionIsReachedByItsMembers) {
  ConnectionTransaction transaction(Connection());
  {
    Undoable work(transaction);
    EXPECT_TRUE(transaction.open());
    EXPECT_EQ(connection_->OpenTransactions(), 1);
    AddDoor();
    work.Keep();
  }
  {
    const Undoable work(transaction);
    AddDoor();
  }
  EXPECT_FALSE(transaction.open());
  EXPECT_EQ(Doors(), 1);
}

}  // namespace
}  // namespace qorhost::test
