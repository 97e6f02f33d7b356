// Prints a bound tree as the server's SQL, literals as parameters.
#pragma once

#include <cstddef>
#include <string_view>

#include "host/dialect/printed_statement.h"

namespace qorhost::postgres {

/// As many as a file takes.
inline constexpr std::size_t kMostParameters = 200'000;

/// For a dialect::Translator: each parameter is a "$1", bound as text; its type stands behind it.
/// Rows that the statement leaves in no order come in that of their identities. An INSERT gives the
/// new row's identity. Tables that are linked to one of a unit get that unit's key, and sqlInUnit
/// is set. Calls the functions of sql_functions.h. Raises SqlError where the statement is larger
/// than the server takes.
[[nodiscard]] dialect::PrintedStatement Print(std::string_view sql,
                                              const dialect::Statement& statement);

}  // namespace qorhost::postgres
