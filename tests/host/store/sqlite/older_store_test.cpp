// Stores of earlier versions, and stores that were replaced, through the contract.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <memory>
#include <vector>

#include "frame/date.h"
#include "host/store/engines/opening.h"
#include "host/store/sqlite/audit_log.h"
#include "host/store/sqlite/session.h"
#include "host/store/sqlite/store.h"
#include "host/store/store_connection.h"
#include "host/store/store_error.h"
#include "host/store/unit_of_work.h"
#include "tests/host/store/temporary_folder.h"

namespace qorhost::test {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;

constexpr std::int32_t kUnit = 1;

qorcred::Date Noon() {
  return qorcred::FromCivil({2026, 1, 31, 12, 0, 0});
}

struct Seat {
  Seat(const std::filesystem::path& file, OpenMode mode)
      : connection(std::make_shared<StoreConnection>(OpenStore(file, mode), Noon)) {}
  SqlSession& sql() const { return connection->session(); }
  UnitOfWork& work() const { return sql().work(); }
  sqlite::Database& database() const { return sqlite::DatabaseOf(connection->store()); }
  void AddDoor() const { sql().AddRow("DOORS", std::vector<Field>{{"UNITKEY", kUnit}}); }
  void AddUnit() const { database().Run("INSERT INTO Units (UnitKey) VALUES (1)"); }

  std::shared_ptr<StoreConnection> connection;
};

class OlderStore : public testing::Test {
 protected:
  const WorkOrder order_{{kUnit}, "add a door", {}};
  TemporaryFolder folder_;
  const std::filesystem::path file_ = folder_.File("building.db");
};

TEST_F(OlderStore, KeepsTheVersionsOfItsUnits) {
  UnitVersion shown;
  {
    const Seat seat(file_, OpenMode::kCreate);
    seat.AddUnit();
    seat.work().Begin(order_);
    seat.AddDoor();
    seat.work().Commit();
    shown = seat.work().VersionOf(kUnit);
    seat.database().Run(
        "UPDATE StoreSeal SET UnitKey=NULL; DROP VIEW CurrentVersions; "
        "DROP TRIGGER KeepVersion; ALTER TABLE StoreSeal DROP COLUMN UnitKey; "
        "ALTER TABLE StoreSeal DROP COLUMN Entry; ALTER TABLE StoreSeal DROP COLUMN UnitMark; "
        "PRAGMA user_version=6");
  }
  const Seat seat(file_, OpenMode::kReadWrite);
  EXPECT_EQ(seat.work().VersionOf(kUnit), shown);
  seat.work().Begin({{kUnit}, "add a door", shown});
  seat.AddDoor();
  EXPECT_TRUE(seat.work().Commit());
  EXPECT_EQ(seat.work().VersionOf(kUnit).entry, shown.entry + 1);
}

TEST_F(OlderStore, GetsTheHashesThatItWouldHave) {
  const Seat seat(file_, OpenMode::kCreate);
  seat.AddUnit();
  for (const std::vector<std::int32_t>& units :
       std::vector<std::vector<std::int32_t>>{{1}, {}, {2}}) {
    seat.work().Begin({units, "add a door", {}});
    seat.AddDoor();
    seat.work().Commit();
  }
  const std::vector<ChainHead> heads = seat.sql().audit().Heads();
  seat.database().Run("UPDATE AuditEntries SET Hash=''");
  sqlite::HashEarlierEntries(seat.database());
  EXPECT_EQ(seat.sql().audit().Heads(), heads);
  EXPECT_THAT(seat.sql().audit().Check(), IsEmpty());
}

TEST_F(OlderStore, ThatWasReplacedIsNotWritten) {
  const Seat seat(file_, OpenMode::kCreate);
  std::filesystem::rename(file_, folder_.File("old.db"));
  std::ofstream(file_).close();
  seat.work().Begin(order_);
  try {
    seat.AddDoor();
    ADD_FAILURE() << "wrote to a store that is not there";
  } catch (const StoreError& failure) {
    EXPECT_THAT(failure.what(), HasSubstr("was moved or replaced"));
  }
  EXPECT_EQ(seat.work().voided(), VoidReason::kReplaced);
  seat.work().Undo();
  EXPECT_FALSE(seat.sql().inTransaction());
}

TEST(SqliteSession, ParsesOneShapeOnce) {
  StoreConnection connection(OpenMemoryStore(), Noon);
  for (int number = 0; number < 50; ++number) {
    qorcred::Call(
        connection, "Execute",
        "INSERT INTO TenantsBackup (UnitKey,TenantID) VALUES (1 , " + std::to_string(number) + ")");
  }
  const auto& session = dynamic_cast<sqlite::Session&>(connection.session());
  EXPECT_EQ(session.translator().parsed(), 1U);
  EXPECT_EQ(sqlite::DatabaseOf(connection.store())
                .Number("SELECT count(DISTINCT TenantID) FROM TenantsBackup"),
            50);
}

}  // namespace
}  // namespace qorhost::test
