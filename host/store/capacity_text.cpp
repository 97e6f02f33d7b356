#include "host/store/capacity_text.h"

#include <cstddef>
#include <cstdint>

namespace qorhost {

std::string EncodeBase64(std::string_view bytes) {
  constexpr std::string_view kAlphabet =
      "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  constexpr std::size_t kGroup = 3;
  constexpr std::uint32_t kSixBits = 63;
  std::string text;
  for (std::size_t start = 0; start < bytes.size(); start += kGroup) {
    const std::string_view group = bytes.substr(start, kGroup);
    std::uint32_t bits = 0;
    for (std::size_t at = 0; at < kGroup; ++at) {
      bits = bits << 8U | (at < group.size() ? static_cast<std::uint8_t>(group[at]) : 0U);
    }
    // n bytes fill n + 1 characters; the rest of the four is padding.
    for (std::size_t at = 0; at <= kGroup; ++at) {
      const auto shift = static_cast<unsigned>(6 * (kGroup - at));
      text += at <= group.size() ? kAlphabet[bits >> shift & kSixBits] : '=';
    }
  }
  return text;
}

std::string CapacityText(int capacity) {
  return EncodeBase64(std::to_string(capacity));
}

}  // namespace qorhost
