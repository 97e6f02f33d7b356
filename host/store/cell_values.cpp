#include "host/store/cell_values.h"

#include <fmt/format.h>

#include "frame/date.h"
#include "host/dialect/canonical_date.h"
#include "host/store/store_error.h"

namespace qorhost {

CellKind CellKindOf(dialect::ColumnType type) {
  switch (type) {
    case dialect::ColumnType::kBoolean:
      return CellKind::kBoolean;
    case dialect::ColumnType::kDate:
      return CellKind::kDate;
    default:
      return CellKind::kPlain;
  }
}

qorcred::Value DateOrNumber(double serial) {
  const auto date = dialect::DateFromSerial(serial);
  return date.has_value() ? qorcred::Value(*date) : qorcred::Value(serial);
}

qorcred::Value DateOrText(std::string_view text) {
  if (const auto canonical = dialect::FromCanonicalDate(text)) {
    return {*canonical};
  }
  if (const auto other = qorcred::ParseDate(text)) {
    return {*other};
  }
  return {text};
}

void RequireBounded(std::size_t rows, std::size_t bytes) {
  if (rows > kMostRows || bytes > kMostBytes) {
    throw StoreError(
        fmt::format("The result has more than {}: narrow it with WHERE, with fewer columns, or to "
                    "its first rows with Top n",
                    rows > kMostRows ? fmt::format("{} rows", kMostRows)
                                     : fmt::format("{} MiB", kMostBytes >> 20U)),
        StoreFault::kTooMuchWork);
  }
}

}  // namespace qorhost
