// The types of credentials and their names.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

namespace qorcred {

/// The stored numbers of CREDENTIALBANK.CredentialType.
inline constexpr std::int16_t kCorvinCard = 0;
inline constexpr std::int16_t kStandardCard = 1;
inline constexpr std::int16_t kTransmitter = 2;

struct CredentialTypeName {
  std::int16_t type;
  std::string_view label;
};

/// In list order.
inline constexpr std::array<CredentialTypeName, 3> kCredentialTypes{{
    {kCorvinCard, "Corvin 30-Bit Card"},
    {kStandardCard, "Standard 26-Bit Card"},
    {kTransmitter, "Transmitter"},
}};

/// Credential numbers run from 1 to this.
inline constexpr std::int32_t kHighestCredentialNumber = 65535;

}  // namespace qorcred
