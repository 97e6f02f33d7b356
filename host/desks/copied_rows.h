// The rows of a store's tables on their way into another store.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "host/dialect/catalog.h"
#include "host/store/sql_session.h"

namespace qorhost {

/// A column that holds the identity of a row of another table.
struct LinkColumn {
  std::string_view column;
  std::string_view table;
};

struct CopiedTable {
  std::string_view name;
  std::string_view unit;  ///< the column of the unit's key; empty for what all units share
  std::array<LinkColumn, 4> links = {};
};

/// Every table of a store; a table comes behind those to which it has links.
[[nodiscard]] std::span<const CopiedTable> CopiedTables();
[[nodiscard]] const dialect::Table& LayoutOf(const CopiedTable& table);
/// The columns that a copy writes: all but those that the store computes. The identity is first.
[[nodiscard]] std::vector<std::string_view> CopiedColumns(const CopiedTable& table);
/// The keys of some units; none mean every row, also those of no unit.
using UnitKeys = std::vector<std::int32_t>;
/// How many rows it has.
[[nodiscard]] std::int64_t CountRows(SqlSession& session, const CopiedTable& table,
                                     const UnitKeys& units);

/// The rows of a table in the order of their identities and in pages, so that
/// no table has to be in memory. Cells are those of CopiedColumns() as they are stored: Booleans
/// -1 and 0, dates canonical texts.
class RowPages {
 public:
  /// The session must outlive it. One unit is looked for; of several, all rows are read.
  RowPages(SqlSession& session, const CopiedTable& table, const UnitKeys& units);

  /// Empty behind the last one.
  [[nodiscard]] std::vector<RowCells> Next();

 private:
  SqlSession* session_;
  std::string text_;  // up to the identity behind which the next page begins
  std::set<std::int32_t> only_;
  std::size_t unitAt_ = 0;
  std::int32_t last_ = 0;
};

/// Which new identity the row of a table has for its old one.
class IdentityMap {
 public:
  void Add(std::string_view table, std::int32_t from, std::int32_t to);
  /// Nothing for a row that was not copied.
  [[nodiscard]] std::optional<std::int32_t> Find(std::string_view table, std::int32_t from) const;

 private:
  std::unordered_map<std::string_view, std::unordered_map<std::int32_t, std::int32_t>> maps_;
};

/// A link to a row that was not there: it leads nowhere in the copy.
struct LostLink {
  std::string_view table;
  std::int32_t row = 0;  ///< its identity in the store that it was copied from
  std::string_view column;
  std::int32_t target = 0;
};

/// The row with its links leading to where the rows are in the copy. A link to a row that was not
/// copied becomes Null, a programming step's 0; it is put into `lost`.
[[nodiscard]] RowCells Linked(const CopiedTable& table, RowCells row, const IdentityMap& map,
                              std::vector<LostLink>& lost);

/// Compares what two stores hold of a table, page by page: `mapped` makes of a row of the first
/// what it must be in the second. Raises StoreError that names the row for a difference.
void RequireSameRows(RowPages first, RowPages second, const CopiedTable& table,
                     const std::function<RowCells(RowCells)>& mapped);

}  // namespace qorhost
