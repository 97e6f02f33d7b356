// Conditions on tenants: "FIELD OPERATOR VALUE", in the words of the reports.
#pragma once

#include <string>
#include <vector>

#include "host/desks/list_condition.h"
#include "host/desks/tenant_rows.h"

namespace qorhost {

/// Conditions of which a tenant must meet all, on the fields of the list of tenants.
class TenantConditions {
 public:
  /// `links` must live as long. Raises InputFault for what is no condition.
  TenantConditions(const std::vector<std::string>& conditions, const TenantLinks& links);

  [[nodiscard]] bool AreMetBy(const TenantRow& tenant) const;
  /// "rid, name, name_at_unit, ..."
  [[nodiscard]] static std::string FieldNames();

 private:
  const TenantLinks& links_;
  std::vector<ListCondition> conditions_;
};

}  // namespace qorhost
