// Which tables and columns of the data store a statement names.
#pragma once

#include <compare>
#include <set>
#include <string>
#include <string_view>

namespace qortest {

enum class ColumnUse {
  kRead,     ///< selected, compared, sorted by
  kWritten,  ///< a value is stored in it
};

struct NamedColumn {
  std::string table;   ///< as the catalog spells it, as all names here
  std::string column;  ///< empty: the row as a whole, which the statement deletes
  ColumnUse use = ColumnUse::kRead;

  auto operator<=>(const NamedColumn&) const = default;
};

/// The tables and columns that a statement of the desktop SQL names, by what they mean and not by
/// how they are spelled. Raises qorhost::dialect::SqlError for a statement that the dialect
/// refuses.
[[nodiscard]] std::set<NamedColumn> ColumnsNamedIn(std::string_view statement);

}  // namespace qortest
