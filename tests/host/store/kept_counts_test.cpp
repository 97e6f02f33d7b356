// Counts that are kept row by row are those that counting gives.
#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "host/store/store_error.h"
#include "host/store/unit_register.h"
#include "tests/host/store/store_fixture.h"

namespace qorhost::test {
namespace {

class KeptCountsTest : public StoreFixture {
 protected:
  /// Begins a unit of work that keeps the counts of the unit.
  void BeginKeeping() {
    work().Begin({{kUnit}, "import", {}});
    work().Lock();
    connection_->session().units().KeepCounts(kUnit);
  }
  [[nodiscard]] qorhost::UnitOfWork& work() { return connection_->session().work(); }
  [[nodiscard]] UnitCounts Read(std::int32_t unit = kUnit) {
    return connection_->session().units().Count(unit);
  }
  [[nodiscard]] UnitCounts Counted() {
    return {Number("SELECT count(*) FROM CredentialBank WHERE UnitKey=1"),
            Number("SELECT count(*) FROM DirectoryCode WHERE UNITKEY=1 AND DIRECTORYCODE>=0 AND "
                   "(MODIFIED IS NULL OR MODIFIED<>3)"),
            Number("SELECT count(*) FROM ProgramSteps WHERE UnitKey=1 AND Sent=0")};
  }
};

TEST_F(KeptCountsTest, FollowEveryChangeOfARow) {
  constexpr unsigned kSeed = 4711;
  std::mt19937 random(kSeed);
  const auto any = [&random](const std::vector<std::string>& of) {
    return of[random() % of.size()];
  };
  const std::vector<std::string> units{"1", "2", KeepsRowsOfNoUnit() ? "NULL" : "3"};
  Run("INSERT INTO CredentialBank (UnitKey) VALUES (1), (2); INSERT INTO DirectoryCode (UNITKEY, "
      "DIRECTORYCODE) VALUES (1, 5), (1, -1); INSERT INTO ProgramSteps (UnitKey) VALUES (1), (1)");
  BeginKeeping();
  EXPECT_EQ(Read(), (UnitCounts{1, 1, 2}));
  for (int change = 0; change < 3000; ++change) {
    const std::string row = std::to_string(1 + random() % 100);
    const std::string code = any({"0", "7", "-1", "-0.5", "2.5", "NULL"});
    const std::string state = any({"0", "1", "3", "NULL"});
    const std::string sent = any({"0", "-1", "NULL"});
    Run(any({"INSERT INTO CredentialBank (UnitKey) VALUES (" + any(units) + ")",
             "INSERT INTO DirectoryCode (UNITKEY, DIRECTORYCODE, MODIFIED) VALUES (" + any(units) +
                 ", " + code + ", " + state + ")",
             "INSERT INTO ProgramSteps (UnitKey, Sent) VALUES (" + any(units) + ", " + sent + ")",
             "UPDATE CredentialBank SET UnitKey=" + any(units) + " WHERE RID=" + row,
             "UPDATE DirectoryCode SET DIRECTORYCODE=" + code + ", MODIFIED=" + state +
                 " WHERE RID=" + row,
             "UPDATE DirectoryCode SET UNITKEY=" + any(units) + " WHERE RID<" + row,
             "UPDATE ProgramSteps SET Sent=" + sent + " WHERE RID=" + row,
             "DELETE FROM CredentialBank WHERE RID=" + row,
             "DELETE FROM DirectoryCode WHERE RID=" + row,
             "DELETE FROM ProgramSteps WHERE RID=" + row}));
    ASSERT_EQ(Read(), Counted()) << "change " << change;
  }
  EXPECT_GT(Read().directoryCodes, 0);
  Run("DELETE FROM DirectoryCode");
  EXPECT_EQ(Read(), Counted());
  EXPECT_TRUE(work().Commit());
}

TEST_F(KeptCountsTest, AreUndoneWithTheRows) {
  BeginKeeping();
  {
    Undoable line(connection_->session().savepoint());
    Run("INSERT INTO CredentialBank (UnitKey) VALUES (1)");
    {
      Undoable inner(connection_->session().transaction());
      Run("INSERT INTO CredentialBank (UnitKey) VALUES (1)");
      EXPECT_EQ(Read().credentials, 2);
      inner.Undo();
    }
    EXPECT_EQ(Read().credentials, 1);
    line.Undo();
  }
  EXPECT_EQ(Read().credentials, 0);
  Run("INSERT INTO CredentialBank (UnitKey) VALUES (1)");
  EXPECT_EQ(Read().credentials, 1);
  work().Undo();
  EXPECT_EQ(Read().credentials, 0);
}

TEST_F(KeptCountsTest, OtherUnitsAreCounted) {
  BeginKeeping();
  Run("INSERT INTO CredentialBank (UnitKey) VALUES (2), (2)");
  EXPECT_EQ(Read(2), (UnitCounts{2, 0, 0}));
  EXPECT_EQ(Read(), (UnitCounts{0, 0, 0}));
  work().Undo();
}

TEST_F(KeptCountsTest, EndWithTheUnitOfWork) {
  BeginKeeping();
  Run("INSERT INTO ProgramSteps (UnitKey) VALUES (1)");
  EXPECT_TRUE(work().Commit());
  Run("INSERT INTO ProgramSteps (UnitKey) VALUES (1)");
  EXPECT_EQ(Read().pendingSteps, 2);
}

TEST_F(KeptCountsTest, AreRefusedWhileOthersCanWrite) {
  EXPECT_THROW(connection_->session().units().KeepCounts(kUnit), StoreError);
  work().Begin({{kUnit}, "import", {}});
  EXPECT_THROW(connection_->session().units().KeepCounts(kUnit), StoreError);
  work().Undo();
}

TEST_F(KeptCountsTest, WhatAUnitIsIsReadAgainWhenItChanges) {
  const auto name = [this] { return connection_->session().units().Find(kUnit)->name; };
  const auto type = [this] { return connection_->session().units().Find(kUnit)->type; };
  BeginKeeping();
  EXPECT_EQ(name(), "Court");
  EXPECT_EQ(type(), "");
  Run("INSERT INTO UnitSettings (UnitKey, UNITTYPE) VALUES (1, 'Panel')");
  EXPECT_EQ(type(), "Panel");
  {
    Undoable line(connection_->session().savepoint());
    Run("UPDATE Units SET UnitName='Yard' WHERE UnitKey=1");
    EXPECT_EQ(name(), "Yard");
    line.Undo();
  }
  EXPECT_EQ(name(), "Court");
  work().Undo();
  EXPECT_EQ(type(), "");
}

}  // namespace
}  // namespace qorhost::test
