// The tables of a SELECT.
#pragma once

#include <vector>

#include "host/dialect/tree.h"

namespace qorhost::dialect {

/// In the order in which FROM names them.
[[nodiscard]] std::vector<const TableName*> TablesOf(const Select& select);

}  // namespace qorhost::dialect
