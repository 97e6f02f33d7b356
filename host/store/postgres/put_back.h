// Undoing what was done to a row.
#pragma once

#include <cstdint>
#include <optional>

#include "host/store/row_change.h"

namespace qorhost::postgres {

class Session;

/// As AuditLog::PutBack().
[[nodiscard]] std::optional<std::int64_t> PutRowBack(Session& session, const RowChange& change);

}  // namespace qorhost::postgres
