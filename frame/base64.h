// Base64 decoding as the controllers offer it to their hosts.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "frame/host.h"

namespace qorcred {

/// Decodes without validating. Only the first place of a group is checked; a byte outside the
/// alphabet (and the padding "=") in another place is mixed into the bits as the value 64.
/// One decoder for each controller: it keeps the alphabet's bytes from its first call on.
class Base64Decoder {
 public:
  /// The decoded text, converted through the host's ANSI code page in both directions.
  /// Raises kOverflow for a byte outside the alphabet in the first place of a group, and
  /// kIndexOutOfRange for an empty text or one whose length in UTF-16 units is no multiple of 4;
  /// an earlier whole group is decoded, and may overflow, before an incomplete one is met.
  [[nodiscard]] std::string Decode(Host& host, std::string_view text);

 private:
  std::vector<std::uint8_t> alphabet_;
};

}  // namespace qorcred
