// A store with one unit and nothing else, and shorthand for looking into it.
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <string>

#include "frame/date.h"
#include "host/store/store_connection.h"
#include "tests/host/store/engine.h"

namespace qorhost::test {

inline constexpr std::int32_t kUnit = 1;

class StoreFixture : public testing::Test {
 protected:
  void SetUp() override {
    connection_ = std::make_shared<StoreConnection>(FreshStore(), [this] { return now_; });
    Run("INSERT INTO Units (UnitKey, UnitName) VALUES (1, 'Court')");
  }

  // Whatever a test did, successful or not, must leave nothing running.
  void TearDown() override {
    EXPECT_EQ(connection_->BusyStatements(), 0);
    EXPECT_EQ(connection_->OpenTransactions(), 0);
  }

  [[nodiscard]] qorcred::ObjectRef Connection() const { return connection_; }

  /// Statements past the dialect; see engine.h.
  void Run(const std::string& sql) { RunRaw(connection_->store(), sql); }
  [[nodiscard]] std::int64_t Number(const std::string& sql) {
    return NumberOfRaw(connection_->store(), sql);
  }
  [[nodiscard]] std::string Text(const std::string& sql) {
    return TextOfRaw(connection_->store(), sql);
  }

  std::shared_ptr<StoreConnection> connection_;
  qorcred::Date now_ = qorcred::FromCivil({2026, 1, 31, 14, 5, 9});
};

}  // namespace qorhost::test
