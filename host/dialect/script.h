// A text with several statements, taken apart.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace qorhost::dialect {

/// A statement of a script, and where its first byte stands there, from line 1 and column 1.
struct ScriptStatement {
  std::string text;  ///< without the semicolon; comments inside are blanks, line ends stay
  std::size_t line = 1;
  std::size_t column = 1;
};

/// The statements between semicolons; empty ones are left out. Outside of texts, dates and names in
/// brackets a comment goes from -- to the end of the line, or from a slash and a star to a star and
/// a slash. Raises SqlError, with line and column in the script, for what is no token and for a
/// comment that is not closed. Takes as long as the script.
[[nodiscard]] std::vector<ScriptStatement> StatementsOf(std::string_view script);

}  // namespace qorhost::dialect
