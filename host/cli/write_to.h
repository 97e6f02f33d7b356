// Formatted text onto a stream.
#pragma once

#include <fmt/format.h>

#include <ostream>
#include <utility>

namespace qorhost {

/// What fmt/ostream.h has compiles all of the formatting once more in each source that reads it.
template <typename... Parts>
void WriteTo(std::ostream& out, fmt::format_string<Parts...> form, Parts&&... parts) {
  out << fmt::format(form, std::forward<Parts>(parts)...);
}

}  // namespace qorhost
