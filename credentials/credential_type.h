// The types of credentials and their names.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

#include "frame/credential_numbers.h"

namespace qorcred {

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

/// Credential numbers run from 1 to this, the codes beside them from 0.
inline constexpr std::int32_t kHighestCredentialNumber = 65535;
inline constexpr std::int32_t kHighestFacilityCode = 255;
inline constexpr std::int32_t kHighestCorvinFacilityCode = 63;
inline constexpr std::int32_t kHighestIdCode = 26;
inline constexpr std::int32_t kHighestSequenceCode = 2;

}  // namespace qorcred
