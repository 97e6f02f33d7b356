// Prints a bound tree as SQLite's SQL, literals as parameters.
#pragma once

#include <string_view>

#include "host/dialect/printed_statement.h"

namespace qorhost::sqlite {

/// For a dialect::Translator: each parameter is a "?". Raises SqlError where the statement is
/// larger than the engine takes.
[[nodiscard]] dialect::PrintedStatement Print(std::string_view sql,
                                              const dialect::Statement& statement);

}  // namespace qorhost::sqlite
