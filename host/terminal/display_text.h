// Text from outside as a terminal may show it.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace qorhost {

/// The text on one line that cannot steer a terminal: control and direction characters as \n, \t,
/// \x1B or \u202E, bytes that are not UTF-8 as U+FFFD.
[[nodiscard]] std::string Displayable(std::string_view text);

/// A text of many lines, each as Displayable() shows it, its ends of lines kept.
[[nodiscard]] std::string DisplayableLines(std::string_view text);

/// The names with commas between them; displayable.
[[nodiscard]] std::string AllNames(const std::vector<std::string>& names);
/// As many names as a person reads, with commas between them, and how many more there are;
/// displayable.
[[nodiscard]] std::string SomeNames(const std::vector<std::string>& names);

/// The columns that a displayable text takes on a terminal: wide characters two, combining marks
/// none.
[[nodiscard]] std::size_t DisplayWidth(std::string_view text);

/// The text, or as much of it as `width` columns hold with a "…" behind it. At least one column.
[[nodiscard]] std::string CutTo(std::string text, std::size_t width);

/// The text with blanks behind it up to `width` columns; a longer text stays whole.
[[nodiscard]] std::string PaddedTo(std::string text, std::size_t width);

}  // namespace qorhost
