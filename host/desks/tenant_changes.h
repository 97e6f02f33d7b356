// What becomes of a tenant, field by field.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "frame/value.h"
#include "host/desks/tenant_rows.h"
#include "host/files/table.h"

namespace qorhost {

/// One field of one tenant, before and after.
struct TenantChange {
  std::int32_t rid = 0;
  std::string name;  ///< of the tenant, as it was
  TableColumn field;
  qorcred::Value before;
  qorcred::Value after;
};

/// The columns that differ, for an UPDATE: "LastName='Berg', FirstName=NULL"; "" when none does.
/// Each is added to `changes`.
[[nodiscard]] std::string Differences(const TenantRow& before, const TenantRow& after,
                                      const TenantLinks& links, std::vector<TenantChange>& changes);

/// Whether the tenant holds the card.
[[nodiscard]] bool HoldsCard(const TenantRow& tenant, std::int32_t card);
/// The cards that one row has and another has not.
[[nodiscard]] std::vector<std::int32_t> CardsMissing(const TenantRow& from, const TenantRow& in);

}  // namespace qorhost
