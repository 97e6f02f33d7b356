// The rows that a unit of work changes, as the server tells them.
#pragma once

#include <nlohmann/json_fwd.hpp>
#include <string_view>

#include "host/store/change_log.h"
#include "host/store/postgres/connection.h"

namespace qorhost::postgres {

/// Listens to a connection from its beginning to its end.
class ChangeLog final : public qorhost::ChangeLog {
 public:
  explicit ChangeLog(Connection& connection);
  ~ChangeLog() override;

 private:
  void Take(std::string_view text);
  void Count(std::string_view table, const nlohmann::json& row, int number);

  Connection& connection_;
};

}  // namespace qorhost::postgres
