// The rows that a unit of work changes, as the server tells them.
#pragma once

#include <string_view>
#include <vector>

#include "host/store/change_log.h"
#include "host/store/postgres/connection.h"
#include "host/store/postgres/told_row.h"

namespace qorhost::postgres {

/// Listens to a connection from its beginning to its end.
class ChangeLog final : public qorhost::ChangeLog {
 public:
  explicit ChangeLog(Connection& connection);
  ~ChangeLog() override;

 private:
  void Hear(std::string_view text);
  void TakeWhatIsTold();
  void Take(const Told& told);
  void Count(std::string_view table, const ToldRow& row, int number);

  Connection& connection_;
  std::vector<Told> told_;  // by the statement that is under way
};

}  // namespace qorhost::postgres
