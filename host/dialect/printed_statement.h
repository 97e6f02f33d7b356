// What an engine's printer makes of a bound tree.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "host/dialect/parameters.h"
#include "host/dialect/tree.h"

namespace qorhost::dialect {

struct PrintedStatement {
  std::string sql;                    ///< in the engine's words, literals as parameters
  std::string sqlInUnit;              ///< see Shape
  std::vector<Parameter> parameters;  ///< in the order in which the engine binds them
};

}  // namespace qorhost::dialect
