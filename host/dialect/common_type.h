// What values of two kinds have in common where either may stand.
#pragma once

#include <optional>

#include "host/dialect/tree.h"

namespace qorhost::dialect {

/// The class of values that are of one class or the other: equal classes stay, Null gives way, a
/// number and a boolean are numbers, all else is unknown.
[[nodiscard]] ValueClass CommonClass(ValueClass one, ValueClass other);

/// The type of values that are of one type or the other: none where the types differ, but
/// Null gives way.
[[nodiscard]] std::optional<ColumnType> CommonType(ValueClass oneClass,
                                                   std::optional<ColumnType> one,
                                                   ValueClass otherClass,
                                                   std::optional<ColumnType> other);

}  // namespace qorhost::dialect
