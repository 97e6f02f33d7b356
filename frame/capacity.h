// The limit on a unit's combined codes (credentials, entry codes and directory codes together).
#pragma once

#include <cstdint>
#include <string>

#include "frame/base64.h"
#include "frame/data_services.h"
#include "frame/host.h"

namespace qorcred {

/// The text that the store keeps of a capacity: 500 is "NTAw".
[[nodiscard]] std::string CapacityText(int capacity);

/// The most combined codes that the unit's type allows; kept as Base64 text in the store.
/// Raises what decoding raises, and kOverflow or kTypeMismatch for a text that is no 16-bit number.
[[nodiscard]] std::int16_t ReadUnitCapacity(Host& host, Base64Decoder& decoder,
                                            const DatabaseManager& manager,
                                            const ObjectRef& connection, std::int32_t unitKey,
                                            DatabaseError& error);

}  // namespace qorcred
