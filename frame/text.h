// Small operations on UTF-8 text, with lengths counted as hosts count them: in UTF-16 units.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace qorcred {

/// Removes blanks (only U+0020) at both ends.
[[nodiscard]] std::string_view Trim(std::string_view text) noexcept;

/// Length in UTF-16 units. A byte that is not UTF-8 counts as one unit.
[[nodiscard]] std::size_t Utf16Length(std::string_view text) noexcept;

/// The first `units` UTF-16 units; stops before a character that would be cut in half.
[[nodiscard]] std::string_view LeftUtf16(std::string_view text, std::size_t units) noexcept;

/// The last `units` UTF-16 units; starts behind a character that would be cut in half.
[[nodiscard]] std::string_view RightUtf16(std::string_view text, std::size_t units) noexcept;

/// `units` UTF-16 units from the position `first` (from 0); fewer where the text ends. Leaves out
/// characters that would be cut in half.
[[nodiscard]] std::string_view MidUtf16(std::string_view text, std::size_t first,
                                        std::size_t units) noexcept;

[[nodiscard]] constexpr bool IsDigit(char letter) noexcept {
  return letter >= '0' && letter <= '9';
}

/// Whether the text is a digit or more, and nothing else.
[[nodiscard]] bool IsDigits(std::string_view text) noexcept;

/// An ASCII letter in lower case, any other character unchanged.
[[nodiscard]] constexpr char LowerAscii(char letter) noexcept {
  return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
}

/// ASCII letters in upper case, everything else unchanged.
[[nodiscard]] std::string UpperAscii(std::string_view text);

/// Replaces every occurrence in one pass from the left; `from` must not be empty.
[[nodiscard]] std::string ReplaceAll(std::string_view text, std::string_view from,
                                     std::string_view to);

[[nodiscard]] bool Contains(std::string_view text, std::string_view part) noexcept;

/// Compares without regard to case, by folded code points (Latin, Greek, Cyrillic, Armenian):
/// negative, zero or positive.
[[nodiscard]] int CompareIgnoringCase(std::string_view one, std::string_view other) noexcept;

}  // namespace qorcred
