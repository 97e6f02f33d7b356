// How SQLite declares the tables of the catalog.
#pragma once

#include <string>
#include <string_view>

#include "host/dialect/catalog.h"

namespace qorhost::sqlite {

/// The declared type of a column of this type: "LONG", "DOUBLE", "BOOLEAN", "DATETIME" or
/// `TEXT COLLATE "DESKTOP"`; "INTEGER PRIMARY KEY AUTOINCREMENT" for an identity.
[[nodiscard]] std::string_view DeclaredType(dialect::ColumnType type);

/// The CREATE TABLE statement of a table, without indexes and constraints beyond its identity. A
/// generated column is declared GENERATED ALWAYS AS ("RID") VIRTUAL.
[[nodiscard]] std::string CreateTableText(const dialect::Table& table);

}  // namespace qorhost::sqlite
