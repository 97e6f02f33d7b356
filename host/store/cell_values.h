// From what an engine holds in a cell to the value that controllers read.
#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <string_view>

#include "frame/value.h"
#include "host/dialect/catalog.h"

namespace qorhost {

/// How the cells of a column become values. Null is Null in every column.
enum class CellKind : std::uint8_t {
  kPlain,    ///< whole numbers Long (Double beyond 32 bit), others Double, texts String
  kBoolean,  ///< Boolean; a text stays a String
  kDate,     ///< Date; a text that is no date stays a String
};

[[nodiscard]] CellKind CellKindOf(dialect::ColumnType type);

/// A whole number: Long, or Double beyond 32 bits.
[[nodiscard]] inline qorcred::Value WholeNumber(std::int64_t number) {
  const bool fits = number >= std::numeric_limits<std::int32_t>::min() &&
                    number <= std::numeric_limits<std::int32_t>::max();
  return fits ? qorcred::Value(static_cast<std::int32_t>(number))
              : qorcred::Value(static_cast<double>(number));
}

/// A number in a date column counts days; one outside the calendar stays a number.
[[nodiscard]] qorcred::Value DateOrNumber(double serial);

/// A text in a date column: canonical, in another form, or none.
[[nodiscard]] qorcred::Value DateOrText(std::string_view text);

/// A result may not become larger.
inline constexpr std::size_t kMostRows = 1'000'000;
inline constexpr std::size_t kMostBytes = std::size_t{256} << 20U;

/// Raises StoreError for a result that has become too large, with a word how to narrow it.
void RequireBounded(std::size_t rows, std::size_t bytes);

}  // namespace qorhost
