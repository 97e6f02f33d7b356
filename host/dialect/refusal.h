// What a refused statement is told.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace qorhost::dialect {

/// Raises SqlError with the line and column of a byte of the statement.
[[noreturn]] void Refuse(std::string_view sql, std::size_t offset, const std::string& message);

/// The start of `text`, short enough for a message, in single quotes.
[[nodiscard]] std::string Quoted(std::string_view text);

}  // namespace qorhost::dialect
