// A store in memory with one unit and nothing else, and shorthand for looking into it.
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "frame/date.h"
#include "host/store/engines/opening.h"
#include "host/store/sqlite/store.h"
#include "host/store/store_connection.h"

namespace qorhost::test {

inline constexpr std::int32_t kUnit = 1;

class StoreFixture : public testing::Test {
 protected:
  void SetUp() override {
    connection_ = std::make_shared<StoreConnection>(OpenMemoryStore(), [this] { return now_; });
    Run("INSERT INTO Units (UnitKey, UnitName) VALUES (1, 'Court')");
  }

  // Whatever a test did, successful or not, must leave nothing running.
  void TearDown() override {
    EXPECT_EQ(connection_->BusyStatements(), 0);
    EXPECT_EQ(connection_->OpenTransactions(), 0);
  }

  /// The database underneath, past the contract.
  [[nodiscard]] sqlite::Database& Raw() { return sqlite::DatabaseOf(connection_->store()); }

  [[nodiscard]] qorcred::ObjectRef Connection() const { return connection_; }

  /// Runs SQLite text on the store, past the dialect.
  void Run(const std::string& sql) { Raw().Run(sql); }
  [[nodiscard]] std::int64_t Number(std::string_view sql) { return Raw().Number(sql); }
  [[nodiscard]] std::string Text(std::string_view sql) {
    sqlite::Statement statement(Raw(), sql);
    return statement.Step() ? std::string(statement.Text(0)) : "no row";
  }

  std::shared_ptr<StoreConnection> connection_;
  qorcred::Date now_ = qorcred::FromCivil({2026, 1, 31, 14, 5, 9});
};

}  // namespace qorhost::test
