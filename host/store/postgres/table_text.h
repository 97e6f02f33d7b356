// How the server declares the tables of the catalog.
#pragma once

#include <string>
#include <string_view>

#include "host/dialect/catalog.h"

namespace qorhost::postgres {

/// Whether a column that the catalog calls a number takes time stamps as well: a merge writes one
/// into Tenants.MODIFIED. It is a text on the server.
[[nodiscard]] bool TakesTimeStamps(const dialect::Column& column);

/// The declared type of a column: whole numbers and Booleans are integers, dates canonical texts.
/// Texts compare byte by byte; their order is that of desktop.key().
[[nodiscard]] std::string_view DeclaredType(const dialect::Column& column);

/// The CREATE TABLE statement of a table, without indexes and constraints beyond its identity,
/// which begins at 1 and is given out once.
[[nodiscard]] std::string CreateTableText(const dialect::Table& table);

}  // namespace qorhost::postgres
