#include "host/files/table.h"

namespace qorhost {

namespace {

using qorcred::Value;
using qorcred::ValueType;

bool IsNumber(const Value& value) {
  return value.Is(ValueType::kInteger) || value.Is(ValueType::kLong) ||
         value.Is(ValueType::kDouble);
}

bool IsNothing(const Value& value) {
  return value.Is(ValueType::kNull) || value.Is(ValueType::kEmpty);
}

}  // namespace

std::vector<bool> NumberColumns(const Table& table) {
  const std::size_t columns = table.columns.size();
  std::vector<bool> numeric(columns, true);
  std::vector<bool> hasNumber(columns, false);
  for (const auto& row : table.rows) {
    for (std::size_t at = 0; at < columns; ++at) {
      const bool isNumber = IsNumber(row[at]);
      numeric[at] = numeric[at] && (isNumber || IsNothing(row[at]));
      hasNumber[at] = hasNumber[at] || isNumber;
    }
  }
  for (std::size_t at = 0; at < columns; ++at) {
    numeric[at] = numeric[at] && hasNumber[at];
  }
  return numeric;
}

}  // namespace qorhost
