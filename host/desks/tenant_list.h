// The tenants of a unit as rows, and one of them in full.
#pragma once

#include <utility>
#include <vector>

#include "host/desks/tenant_rows.h"
#include "host/files/table.h"

namespace qorhost {

/// A row for each tenant, in their order.
[[nodiscard]] Table TenantTable(const std::vector<TenantRow>& tenants, const TenantLinks& links);

/// Everything that is stored of one: each field with what it is called, and its value.
struct TenantDetail {
  TableColumn name;
  qorcred::Value value;
};
[[nodiscard]] std::vector<TenantDetail> DetailsOf(const TenantRow& tenant,
                                                  const TenantLinks& links);

}  // namespace qorhost
