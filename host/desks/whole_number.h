// Whole numbers as people write them.
#pragma once

#include <charconv>
#include <cstdint>
#include <limits>
#include <optional>
#include <string_view>
#include <system_error>

#include "frame/text.h"

namespace qorhost {

/// The numbers that are taken, both bounds among them.
struct NumberRange {
  std::int64_t lowest = std::numeric_limits<std::int32_t>::min();
  std::int64_t highest = std::numeric_limits<std::int32_t>::max();
};

inline constexpr NumberRange kFromZero{0, std::numeric_limits<std::int32_t>::max()};

/// A whole number as it is taken wherever one is given: digits, a sign in front at most; blanks
/// around do not count. Nothing when the text is anything else or the number out of range.
[[nodiscard]] inline std::optional<std::int64_t> WholeNumberIn(std::string_view text,
                                                               NumberRange range) {
  std::string_view digits = qorcred::Trim(text);
  if (digits.starts_with('+') && !digits.starts_with("+-")) {
    digits.remove_prefix(1);
  }
  std::int64_t number = 0;
  const char* end = digits.data() + digits.size();
  const auto [stop, error] = std::from_chars(digits.data(), end, number);
  const bool inRange = number >= range.lowest && number <= range.highest;
  return error == std::errc() && stop == end && inRange ? std::optional(number) : std::nullopt;
}

/// The same of 32 bits.
[[nodiscard]] inline std::optional<std::int32_t> WholeNumber(std::string_view text) {
  const std::optional<std::int64_t> number = WholeNumberIn(text, {});
  return number ? std::optional(static_cast<std::int32_t>(*number)) : std::nullopt;
}

}  // namespace qorhost
