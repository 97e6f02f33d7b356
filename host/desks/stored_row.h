// Writing a row of the store as a desk wants it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "host/desks/session.h"

namespace qorhost {

/// The whole number that a cell holds, rounded half to even; 0 where it holds none.
[[nodiscard]] std::int32_t StoredNumber(const qorcred::Value& cell);

/// A value in a statement of the dialect, whatever it holds.
[[nodiscard]] std::string LiteralOf(const qorcred::Value& value);

/// Writes those of the fields that are stored otherwise, into the rows of a table that meet a
/// condition and are all alike; the number of fields that were.
std::size_t WriteChanged(DeskSession& session, std::string_view table, std::string_view condition,
                         std::span<const Field> fields);

/// How many rows of a table meet a condition.
[[nodiscard]] std::size_t RowsWhere(DeskSession& session, std::string_view table,
                                    const std::string& condition);

}  // namespace qorhost
