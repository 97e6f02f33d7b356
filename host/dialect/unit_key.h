// Whose rows a statement means: what its text tells of the key of their unit.
#pragma once

#include <vector>

#include "host/dialect/tree.h"

namespace qorhost::dialect {

/// The column that has the key of a row's unit; null for a table whose rows belong to all units.
[[nodiscard]] const Column* UnitColumnOf(const Table& table);

/// The row of a table that a condition names by its identity.
struct NamedRow {
  const TableName* table = nullptr;       ///< null: none
  const Expression* condition = nullptr;  ///< the whole of it
};

/// Of a bound SELECT, UPDATE or DELETE that names one row by its identity and not by its unit.
/// Without that row the statement gives, changes and deletes nothing: it may be looked for in one
/// unit first.
[[nodiscard]] NamedRow RowNamedAlone(const Statement& statement);

/// A table of a SELECT whose rows are linked to those of another one that names its unit.
struct LinkedTable {
  const TableName* table = nullptr;
  const Expression* unit = nullptr;  ///< the literal that the other one's unit equals
};

/// The tables of a bound SELECT that name no unit of their own, where a link leads to one that
/// does: a link never leaves its unit. None where rows are kept that are linked to nothing.
[[nodiscard]] std::vector<LinkedTable> LinkedTables(const Select& select);

}  // namespace qorhost::dialect
