// The rule of grouped queries: what is shown beside an aggregate must be the same for the group.
#pragma once

#include <string_view>
#include <vector>

#include "host/dialect/tree.h"

namespace qorhost::dialect {

/// Raises SqlError where a bound SELECT that groups shows or orders by a column that is neither
/// grouped by nor inside an aggregate.
void CheckGrouping(std::string_view sql, const Select& select,
                   const std::vector<OrderItem>& orderBy);

}  // namespace qorhost::dialect
