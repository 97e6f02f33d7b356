// Which places of a store that is spread over several a statement meets, by the server's own plans.
#pragma once

#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace qorhost::postgres::test {

struct PlannedStatement {
  std::string sql;
  /// The numbers of the places (see kPartitions) whose rows the plan reads, changes or deletes.
  std::set<int> places;
  /// It adds rows to a table by unit and names no unit for them.
  bool addsWithoutUnit = false;
};

/// The statements whose plans a part of the server's log holds, in their order; see
/// TestServer::LogPlans(). Raises std::runtime_error for a log that cannot be read.
[[nodiscard]] std::vector<PlannedStatement> PlannedStatements(std::string_view log);

}  // namespace qorhost::postgres::test
