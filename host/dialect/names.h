// Names in statements: compared without regard to ASCII case, printed in double quotes.
#pragma once

#include <string>
#include <string_view>

namespace qorhost::dialect {

/// Whether two names or keywords are the same, ASCII case not counting.
[[nodiscard]] bool SameName(std::string_view one, std::string_view other) noexcept;

/// The name in double quotes, quotes inside doubled.
[[nodiscard]] std::string QuotedName(std::string_view name);

}  // namespace qorhost::dialect
