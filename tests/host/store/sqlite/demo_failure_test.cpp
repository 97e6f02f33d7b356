#include <gtest/gtest.h>

#include <memory>

#include "frame/date.h"
#include "host/store/demo.h"
#include "host/store/engines/opening.h"
#include "host/store/sqlite/store.h"
#include "host/store/store_error.h"

namespace qorhost {
namespace {

qorcred::Date SomeDay() {
  return qorcred::FromCivil({2026, 1, 31, 14, 5, 9});
}

TEST(DemoFailureTest, LeavesTheStoreAsItWasWhenItFails) {
  const std::unique_ptr<Store> store = OpenMemoryStore();
  sqlite::Database& database = sqlite::DatabaseOf(*store);
  database.Run(
      "CREATE TRIGGER refuse BEFORE INSERT ON Tenants WHEN NEW.UnitKey = 3 BEGIN "
      "SELECT raise(ABORT, 'no room'); END");
  EXPECT_THROW(CreateDemoData(*store->StartSession(SomeDay)), StoreError);
  EXPECT_EQ(database.Number("SELECT count(*) FROM Units"), 0);
  EXPECT_EQ(database.Number("SELECT count(*) FROM CredentialBank"), 0);
}

}  // namespace
}  // namespace qorhost
