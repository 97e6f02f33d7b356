// The groups of tenants that a unit has.
#pragma once

#include <cstdint>
#include <vector>

#include "host/desks/session.h"

namespace qorhost {

struct TenantGroup {
  std::int32_t rid = 0;
  bool isZero = false;  ///< the one that new tenants get
};

/// What tenants have for a group where none is the unit's group zero.
inline constexpr std::int32_t kNoGroup = 0;

/// In the order of their RIDs.
[[nodiscard]] std::vector<TenantGroup> ReadTenantGroups(DeskSession& session, std::int32_t unitKey);

}  // namespace qorhost
