// Base64: decoding as the controllers offer it to their hosts, and the way back.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "frame/host.h"

namespace qorcred {

inline constexpr std::string_view kBase64Alphabet =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

/// Base64 of bytes, padded with "=".
[[nodiscard]] std::string EncodeBase64(std::string_view bytes);

/// Decodes without validating. Only the first place of a group is checked; a byte outside the
/// alphabet (and the padding "=") in another place is mixed into the bits as the value 64.
/// One decoder for each controller: it knows the alphabet's bytes from its first call on.
class Base64Decoder {
 public:
  /// The value of each byte; 64 for one outside the alphabet.
  using Table = std::array<std::uint8_t, 256>;

  /// The decoded text, converted through the host's ANSI code page in both directions.
  /// Raises kOverflow for a byte outside the alphabet in the first place of a group, and
  /// kIndexOutOfRange for an empty text or one whose length in UTF-16 units is no multiple of 4;
  /// an earlier whole group is decoded, and may overflow, before an incomplete one is met.
  [[nodiscard]] std::string Decode(Host& host, std::string_view text);

 private:
  std::optional<Table> table_;
};

}  // namespace qorcred
