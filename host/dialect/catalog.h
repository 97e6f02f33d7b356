// The tables of the data store, as the dialect knows them: which names exist and what type each
// column has. The store creates its schema to match (a test compares the two).
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

namespace qorhost::dialect {

enum class ColumnType : std::uint8_t {
  kIdentity,  ///< the row's identity, assigned by the store
  kLong,
  kDouble,
  kBoolean,  ///< -1 and 0
  kDate,     ///< canonical text YYYY-MM-DD HH:MM:SS
  kText,     ///< compared without regard to case
};

struct Column {
  std::string_view name;
  ColumnType type;
  bool generated = false;  ///< equals the row's identity; the store computes it, nobody writes it
};

struct Table {
  std::string_view name;
  std::span<const Column> columns;
};

/// All tables of the schema.
[[nodiscard]] std::span<const Table> Tables();

/// A table by name, in any letter case; null when there is none.
[[nodiscard]] const Table* FindTable(std::string_view name);

/// A column by name, in any letter case; null when there is none.
[[nodiscard]] const Column* FindColumn(const Table& table, std::string_view name);

}  // namespace qorhost::dialect
