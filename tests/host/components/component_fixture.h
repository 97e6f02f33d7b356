// The store fixture with the components that controllers call on it.
#pragma once

#include <array>
#include <functional>
#include <string>
#include <string_view>

#include "frame/data_services.h"
#include "frame/runtime_error.h"
#include "frame/siblings.h"
#include "host/components/components.h"
#include "tests/host/store/store_fixture.h"

namespace qorhost::test {

class ComponentFixture : public StoreFixture {
 protected:
  [[nodiscard]] static qorcred::ObjectRef Create(std::string_view id) {
    return StoreComponents().Create(id);
  }

  [[nodiscard]] static qorcred::RuntimeError FailureOf(const std::function<void()>& body) {
    try {
      body();
    } catch (const qorcred::RuntimeError& failure) {
      return failure;
    }
    ADD_FAILURE() << "nothing was raised";
    return qorcred::RuntimeError(qorcred::ErrorNumber::kInternal);
  }

  /// Expects a manager call to succeed without an error.
  std::int32_t Insert(const std::string& sql) {
    const std::int32_t rid = manager().ExecuteInsert(Connection(), sql, "", "", error_);
    EXPECT_EQ(error_.text, "");
    return rid;
  }
  qorcred::Value Scalar(const std::string& sql) {
    const qorcred::Value value = manager().ExecuteScalar(Connection(), sql, error_);
    EXPECT_EQ(error_.text, "");
    return value;
  }
  [[nodiscard]] const qorcred::DatabaseManager& manager() const { return manager_; }

  qorcred::DatabaseError error_;

 private:
  qorcred::DatabaseManager manager_{Create(qorcred::component::kDatabaseManager)};
};

}  // namespace qorhost::test
