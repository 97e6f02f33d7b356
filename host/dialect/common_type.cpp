#include "host/dialect/common_type.h"

namespace qorhost::dialect {

ValueClass CommonClass(ValueClass one, ValueClass other) {
  const auto isNumber = [](ValueClass valueClass) {
    return valueClass == ValueClass::kNumber || valueClass == ValueClass::kBoolean;
  };
  if (one == other || other == ValueClass::kNull) {
    return one;
  }
  if (one == ValueClass::kNull) {
    return other;
  }
  return isNumber(one) && isNumber(other) ? ValueClass::kNumber : ValueClass::kUnknown;
}

std::optional<ColumnType> CommonType(ValueClass oneClass, std::optional<ColumnType> one,
                                     ValueClass otherClass, std::optional<ColumnType> other) {
  if (oneClass == ValueClass::kNull) {
    return other;
  }
  return otherClass == ValueClass::kNull || one == other ? one : std::nullopt;
}

}  // namespace qorhost::dialect
