// Reads the tokens of a statement into its tree.
#pragma once

#include <string_view>
#include <vector>

#include "host/dialect/lexer.h"
#include "host/dialect/tree.h"

namespace qorhost::dialect {

/// How deep expressions, joins and sub-selects may nest.
inline constexpr std::size_t kDeepestNesting = 200;

/// Reads one statement. Names stay as written: nothing is looked up yet. The tree refers to the
/// texts of `sql` and `literals`. Raises SqlError.
[[nodiscard]] Statement Parse(std::string_view sql, const std::vector<Literal>& literals);

}  // namespace qorhost::dialect
