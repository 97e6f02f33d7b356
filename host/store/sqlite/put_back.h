// Undoes what the audit says was done to a row.
#pragma once

#include <cstdint>
#include <optional>

#include "host/store/row_change.h"

namespace qorhost::sqlite {

class Session;

/// What AuditLog::PutBack() promises.
[[nodiscard]] std::optional<std::int64_t> PutRowBack(Session& session, const RowChange& change);

}  // namespace qorhost::sqlite
