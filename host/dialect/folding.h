// Comparison of texts without regard to case, over Unicode code points, one to one.
#pragma once

#include <string>
#include <string_view>

namespace qorhost::dialect {

/// The code point that all letter cases of `point` share. A byte that is not UTF-8, numbered above
/// all code points as frame/utf8.h does, is its own, so that every text has an order.
[[nodiscard]] char32_t FoldPoint(char32_t point) noexcept;

/// Total order of texts by folded code points: negative, zero or positive.
[[nodiscard]] int CompareFolded(std::string_view one, std::string_view other) noexcept;

/// The text as folded code points.
[[nodiscard]] std::u32string Folded(std::string_view text);

/// The letter in upper or lower case, any other code point as it is.
[[nodiscard]] char32_t UpperPoint(char32_t point) noexcept;
[[nodiscard]] char32_t LowerPoint(char32_t point) noexcept;

/// The text with every letter in upper or lower case; bytes that are not UTF-8 stay.
[[nodiscard]] std::string UpperText(std::string_view text);
[[nodiscard]] std::string LowerText(std::string_view text);

}  // namespace qorhost::dialect
