// The way back from what the library decodes, for tests that need Base64 text of known bytes.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace qortest {

inline constexpr std::string_view kBase64Alphabet =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

inline std::string EncodeBase64(std::span<const std::uint8_t> bytes) {
  std::string text;
  for (std::size_t i = 0; i < bytes.size(); i += 3) {
    unsigned group = 0;
    for (std::size_t place = 0; place < 3; ++place) {
      group = group * 256 + (i + place < bytes.size() ? bytes[i + place] : 0U);
    }
    for (std::size_t place = 0; place < 4; ++place) {
      const bool padding = i + place > bytes.size();
      text += padding ? '=' : kBase64Alphabet[(group >> (18 - 6 * place)) & 63U];
    }
  }
  return text;
}

}  // namespace qortest
