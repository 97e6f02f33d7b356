// Which tables and columns of the data store a statement names.
#pragma once

#include <set>
#include <string>
#include <string_view>
#include <tuple>

namespace qortest {

enum class ColumnUse {
  kRead,     ///< selected, compared, sorted by
  kWritten,  ///< a value is stored in it
};

struct NamedColumn {
  std::string table;   ///< as the catalog spells it, as all names here
  std::string column;  ///< empty: the row as a whole, which the statement deletes
  ColumnUse use = ColumnUse::kRead;

  friend bool operator==(const NamedColumn&, const NamedColumn&) = default;
  friend bool operator<(const NamedColumn& one, const NamedColumn& other) {
    return std::tie(one.table, one.column, one.use) <
           std::tie(other.table, other.column, other.use);
  }
};

/// The tables and columns that a statement of the desktop SQL names, by what they mean and not by
/// how they are spelled. Raises qorhost::dialect::SqlError for a statement that the dialect
/// refuses.
[[nodiscard]] std::set<NamedColumn> ColumnsNamedIn(std::string_view statement);

}  // namespace qortest
