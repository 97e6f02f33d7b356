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

/// Whether a bound SELECT shows one row for each group, or one for all rows.
[[nodiscard]] bool IsAggregated(const Select& select, const std::vector<OrderItem>& orderBy);

/// Whether an expression is one that the SELECT groups by.
[[nodiscard]] bool IsGrouped(const Select& select, const Expression& expression);

}  // namespace qorhost::dialect
