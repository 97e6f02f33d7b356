// A line of a trace taken apart for people: which object, which member, with what, and what came.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace qorhost {

enum class CallKind : std::uint8_t {
  kCall,
  kStatement,      ///< a call that hands a statement to the store
  kHostStatement,  ///< a statement of the host's own
  kOutcome,        ///< what came of a call in which others happened
};

/// Views into the line; empty where there is nothing.
struct CallLine {
  CallKind kind = CallKind::kCall;
  std::size_t depth = 0;       ///< calls around it
  std::string_view object;     ///< "clsCredential@1"; "host" for the host itself
  std::string_view member;     ///< "" for the default one
  std::string_view arguments;  ///< without parentheses; of a put "= value"
  std::string_view outcome;    ///< "-> 7 out rid: 3", "! 438 ..."
};

/// Reads what docs/trace.md describes. A line of another form has all of it in `arguments`.
[[nodiscard]] CallLine ReadCallLine(std::string_view line);

}  // namespace qorhost
