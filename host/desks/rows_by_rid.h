// Finding the rows of a result by their identity.
#pragma once

#include <cstdint>
#include <unordered_map>

#include "frame/convert.h"
#include "host/store/sql_session.h"

namespace qorhost {

/// The place in the result of each row, by the RID in the result's first column.
[[nodiscard]] inline std::unordered_map<std::int32_t, std::int32_t> RowsByRid(
    const QueryResult& result) {
  std::unordered_map<std::int32_t, std::int32_t> rows;
  rows.reserve(result.rowCount);
  for (const ResultRow row : result.rows()) {
    rows.emplace(qorcred::ToLong(row[0]), row.number());
  }
  return rows;
}

}  // namespace qorhost
