// How CREDENTIALBANK.CredentialType numbers the types of credentials.
#pragma once

#include <cstdint>

namespace qorcred {

inline constexpr std::int16_t kCorvinCard = 0;
inline constexpr std::int16_t kStandardCard = 1;
inline constexpr std::int16_t kTransmitter = 2;

}  // namespace qorcred
