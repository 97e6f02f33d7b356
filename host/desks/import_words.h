// The words in the cells of an import, and in what is said of them.
#pragma once

#include <optional>
#include <span>
#include <string>
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
/// No or 0, in any letter case; nothing for an empty one. Raises UsageError for anything else.
[[nodiscard]] std::optional<bool> ReadEither(std::string_view heading, std::string_view cell,
                                             const EitherWords& words);

/// What the entry into a screen calls something, and how the column is headed.
struct EntryWord {
  std::string_view word;
  std::string_view heading;
};

/// A message with the heading in the place of the word it begins with, when it is one of these.
[[nodiscard]] std::string InColumnWords(std::string_view message, std::span<const EntryWord> words);

}  // namespace qorhost
