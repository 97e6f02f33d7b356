// The rows that a unit of work changes, as the server tells them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

#include "host/store/change_log.h"
#include "host/store/postgres/connection.h"
#include "host/store/postgres/told_row.h"

namespace qorhost::postgres {

/// Listens to a connection from its beginning to its end.
class ChangeLog final : public qorhost::ChangeLog {
 public:
  explicit ChangeLog(Connection& connection);
  ~ChangeLog() override;

  void Start() override;

 private:
  void Hear(std::string_view text);
  void EndStatement();
  void Take(const Told& told);
  void Count(std::string_view table, const ToldRow& row, int number);

  /// What was told by the statement that is under way. Its rows are taken as they come, for there
  /// may be a store full of them.
  struct Statement {
    std::size_t first = 0;  // of its changes
    std::int64_t latestRid = 0;
    bool isInOrder = true;
  };

  Connection& connection_;
  std::optional<Statement> statement_;  // from the first row that it has told
};

}  // namespace qorhost::postgres
