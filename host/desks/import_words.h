// The words in the cells of an import.
#pragma once

#include <optional>
#include <string_view>

namespace qorhost {

/// Two words of which a cell holds one.
struct EitherWords {
  std::string_view yes;
  std::string_view no;
};
inline constexpr EitherWords kTrueFalse{"True", "False"};
inline constexpr EitherWords kActiveInactive{"Active", "Inactive"};

/// Whether the cell of a column says yes, in one of the two words, or as True, Yes or 1 and False,
/// No or 0, in any letter case; nothing for an empty one. Raises InputFault for anything else.
[[nodiscard]] std::optional<bool> ReadEither(std::string_view heading, std::string_view cell,
                                             const EitherWords& words);

}  // namespace qorhost
