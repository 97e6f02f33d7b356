// The form in which UNITTYPES.TOTAL holds a unit type's capacity.
#pragma once

#include <string>
#include <string_view>

namespace qorhost {

/// Base64 of bytes, padded with "=".
[[nodiscard]] std::string EncodeBase64(std::string_view bytes);

/// The Base64 text of a capacity's decimal digits: 500 is "NTAw".
[[nodiscard]] std::string CapacityText(int capacity);

}  // namespace qorhost
