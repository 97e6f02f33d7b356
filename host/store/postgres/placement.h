// Where the tables' rows lie when a store is spread over several places: those of a unit together.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "host/store/postgres/connection.h"

namespace qorhost::postgres {

enum class Spread : std::uint8_t {
  kNone,        ///< plain tables
  kPartitions,  ///< partitions of one server: by its plans tests see which places a statement meets
  kServers,     ///< by the functions of a distributed server
};

/// A table that every place has a part of, or the whole of.
struct PlacedTable {
  std::string_view name;
  std::string_view unitColumn;  ///< by which its rows are placed; empty: every place has them all
};

/// All but the one that stays where the store was made: the version of the schema. The first one
/// with a unit is that which the others lie beside.
[[nodiscard]] const std::vector<PlacedTable>& PlacedTables();

/// How many places kPartitions makes, numbered from 0: the one numbered n has of each table the
/// partition "(name)_p(n)".
inline constexpr int kPartitions = 8;

/// Raises StoreError where the server cannot spread tables so. Changes nothing.
void RequireSpreading(Connection& connection, Spread spread);

/// Statements that create tables, as they are written for a store that is spread so.
[[nodiscard]] std::string SpreadText(std::string_view createTables, Spread spread);

/// The statements that put the tables, once they are created and still empty of units, where they
/// are to lie, with the indexes of their identities. An identity is there once in a whole store; an
/// index watches over that where one place has all rows.
[[nodiscard]] std::string PlacingText(Spread spread);

/// Rows whose identities are there more than once, which no index kept out: a line each.
[[nodiscard]] std::vector<std::string> DoubleIdentities(Connection& connection);

}  // namespace qorhost::postgres
