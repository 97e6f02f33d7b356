// Prints a bound tree as SQLite's SQL, literals as parameters.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "host/dialect/parameters.h"
#include "host/dialect/tree.h"

namespace qorhost::dialect {

struct PrintedStatement {
  std::string sql;
  std::vector<Parameter> parameters;  ///< of each "?" in that order
};

/// Raises SqlError where the statement is larger than the engine takes.
[[nodiscard]] PrintedStatement Print(std::string_view sql, const Statement& statement);

}  // namespace qorhost::dialect
