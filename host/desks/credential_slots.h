// Conditions of SQL on the two slots in which a tenant holds credentials.
#pragma once

#include <fmt/format.h>

#include <cstdint>
#include <string>
#include <string_view>

namespace qorhost {

/// On tenants who hold the credential of the row.
[[nodiscard]] inline std::string Holds(std::int32_t rid) {
  return fmt::format("(CREDENTIALID1={0} OR CREDENTIALID2={0})", rid);
}

/// On tenants with both slots taken: the controller replaces what is in the first.
inline constexpr std::string_view kHoldsTwo =
    "CREDENTIALID1 IS NOT NULL AND CREDENTIALID2 IS NOT NULL";

}  // namespace qorhost
