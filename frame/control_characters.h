// Characters that steer a device instead of being shown.
#pragma once

namespace qorcred {

/// Those of ASCII; bytes of longer UTF-8 characters are none of them.
[[nodiscard]] constexpr bool IsAsciiControl(char32_t codePoint) noexcept {
  constexpr char32_t kDelete = 0x7F;
  return codePoint < U' ' || codePoint == kDelete;
}

/// The same and the second set, which has no bytes of its own in UTF-8.
[[nodiscard]] constexpr bool IsControl(char32_t codePoint) noexcept {
  constexpr char32_t kFirstOfSecondSet = 0x80;
  constexpr char32_t kLastOfSecondSet = 0x9F;
  return IsAsciiControl(codePoint) ||
         (codePoint >= kFirstOfSecondSet && codePoint <= kLastOfSecondSet);
}

/// Those and the others that a terminal does not show but obeys: line and paragraph separators, and
/// what turns the reading direction.
[[nodiscard]] constexpr bool SteersDisplay(char32_t codePoint) noexcept {
  return IsControl(codePoint) || codePoint == 0x061C || codePoint == 0x200E ||
         codePoint == 0x200F || (codePoint >= 0x2028 && codePoint <= 0x202E) ||
         (codePoint >= 0x2066 && codePoint <= 0x2069);
}

}  // namespace qorcred
