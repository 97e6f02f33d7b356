// Counts that are kept row by row are those that counting gives.
#include "host/store/sqlite/kept_counts.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "tests/host/store/store_fixture.h"

namespace qorhost::test {

using namespace sqlite;

namespace {

class KeptCountsTest : public StoreFixture {
 protected:
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
  const std::vector<std::string> units{"1", "2", "NULL"};
  Run("INSERT INTO CredentialBank (UnitKey) VALUES (1), (2); INSERT INTO DirectoryCode (UNITKEY, "
      "DIRECTORYCODE) VALUES (1, 5), (1, -1); INSERT INTO ProgramSteps (UnitKey) VALUES (1), (1)");
  const auto kept = connection_->session().units().KeepCounts();
  Run("BEGIN");
  kept->Follow(kUnit);
  EXPECT_EQ(Read(), (UnitCounts{1, 1, 2}));
  for (int change = 0; change < 3000; ++change) {
    const std::string row = std::to_string(1 + random() % 100);
    const std::string code = any({"0", "7", "-1", "NULL"});
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
  Run("COMMIT");
}

TEST_F(KeptCountsTest, AreUndoneWithTheRows) {
  const auto kept = connection_->session().units().KeepCounts();
  Run("BEGIN");
  kept->Follow(kUnit);
  Run("SAVEPOINT line; INSERT INTO CredentialBank (UnitKey) VALUES (1); ROLLBACK TO line; RELEASE "
      "line");
  EXPECT_EQ(Read().credentials, 0);
  Run("INSERT INTO CredentialBank (UnitKey) VALUES (1)");
  EXPECT_EQ(Read().credentials, 1);
  Run("ROLLBACK");
  EXPECT_EQ(Read().credentials, 0);
}

TEST_F(KeptCountsTest, OtherUnitsAreCounted) {
  const auto kept = connection_->session().units().KeepCounts();
  Run("BEGIN");
  kept->Follow(kUnit);
  Run("INSERT INTO CredentialBank (UnitKey) VALUES (2), (2)");
  EXPECT_EQ(Read(2), (UnitCounts{2, 0, 0}));
  Run("COMMIT");
}

TEST_F(KeptCountsTest, LeaveNothingInTheStore) {
  const std::int64_t before = Number("SELECT count(*) FROM sqlite_schema");
  {
    const auto kept = connection_->session().units().KeepCounts();
    Run("BEGIN");
    kept->Follow(kUnit);
    Run("INSERT INTO ProgramSteps (UnitKey) VALUES (1)");
    Run("COMMIT");
  }
  Run("INSERT INTO ProgramSteps (UnitKey) VALUES (1)");
  EXPECT_EQ(Read().pendingSteps, 2);
  EXPECT_EQ(Number("SELECT count(*) FROM sqlite_schema"), before);
  EXPECT_EQ(Number("SELECT count(*) FROM temp.sqlite_schema"), 0);
}

}  // namespace
}  // namespace qorhost::test
