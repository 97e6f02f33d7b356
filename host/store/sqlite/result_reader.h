// From the rows of a statement to the result table that controllers read.
#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "frame/result_table.h"
#include "host/dialect/catalog.h"
#include "host/store/cell_values.h"
#include "host/store/sqlite/database.h"

struct sqlite3_value;

namespace qorhost::sqlite {

/// The columns' kinds: after the types that the dialect knows (`types`, which may be shorter), else
/// after the declared types of the columns they come from.
[[nodiscard]] std::vector<CellKind> CellKindsOf(
    const Statement& statement, std::span<const std::optional<dialect::ColumnType>> types);

/// The columns' names as the statement gives them.
[[nodiscard]] std::vector<std::string> ColumnNamesOf(const Statement& statement);

/// A value of the engine as a cell of kPlain.
[[nodiscard]] qorcred::Value PlainValue(sqlite3_value* cell);

/// One cell of the current row.
[[nodiscard]] qorcred::Value ReadCell(const Statement& statement, int column, CellKind kind);

/// Steps to the end and keeps every row; without any it is one cell that holds "". There may be
/// fewer or more rows than expected: the number only saves the table from growing step by step.
/// Raises StoreError for more than kMostRows or kMostBytes.
[[nodiscard]] std::shared_ptr<qorcred::ResultTable> ReadRows(Statement& statement,
                                                             const std::vector<CellKind>& kinds,
                                                             std::size_t expectedRows,
                                                             std::size_t& rowCount);

}  // namespace qorhost::sqlite
