// Finds the tables and columns that a tree's names mean, the types of its expressions, and what
// each literal must become where it stands.
#pragma once

#include <string_view>
#include <vector>

#include "host/dialect/lexer.h"
#include "host/dialect/tree.h"

namespace qorhost::dialect {

/// Completes the tree. Raises SqlError for a name outside the catalog, an ambiguous one, and for
/// what has no sensible meaning (a write to a generated column, an aggregate in WHERE).
void Bind(std::string_view sql, const std::vector<Literal>& literals, Statement& statement);

}  // namespace qorhost::dialect
