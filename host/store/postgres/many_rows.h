// Many rows of a table in few statements.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

#include "host/store/sql_session.h"

namespace qorhost::postgres {

class Session;

/// As SqlSession::AddRows(), inside a transaction. Raises StoreError for what the server refuses,
/// after which nothing of it may be stored.
[[nodiscard]] std::vector<std::int32_t> AddManyRows(Session& session, std::string_view table,
                                                    std::span<const std::string_view> columns,
                                                    std::span<const RowCells> rows);

}  // namespace qorhost::postgres
