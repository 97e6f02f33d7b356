// Values that are typed into filter rows to break, widen or overload a report's statement.
#pragma once

#include <string>
#include <vector>

namespace qortest {

struct Attempt {
  std::string name;
  std::string value;
  /// How docs/security.md shows the value when it is too long to be shown whole; else empty.
  std::string shown;
};

/// All of them, always in the same order.
[[nodiscard]] std::vector<Attempt> Attempts();

/// A text on one line of ASCII: bytes that are no part of well-formed UTF-8 and control characters
/// as \xNN. At most `most` bytes of it, then "...".
[[nodiscard]] std::string Visible(std::string_view text, std::size_t most);

}  // namespace qortest
