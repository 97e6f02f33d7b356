// A store in memory, with the database underneath.
#pragma once

#include "host/store/sqlite/store.h"
#include "tests/host/store/store_fixture.h"

namespace qorhost::test {

class SqliteFixture : public StoreFixture {
 protected:
  /// Past the contract.
  [[nodiscard]] sqlite::Database& Raw() { return sqlite::DatabaseOf(connection_->store()); }
};

}  // namespace qorhost::test
