#include "host/desks/tenant_conditions.h"

#include <fmt/format.h>

#include <algorithm>

#include "host/desks/tenant_list.h"

namespace qorhost {

TenantConditions::TenantConditions(const std::vector<std::string>& conditions,
                                   const TenantLinks& links)
    : links_(links) {
  const std::vector<ReportField> fields = ConditionFields(TenantFields(links));
  for (const std::string& condition : conditions) {
    conditions_.emplace_back(condition, fields);
  }
}

std::string TenantConditions::FieldNames() {
  return TenantFieldNames();
}

bool TenantConditions::AreMetBy(const TenantRow& tenant) const {
  return std::all_of(conditions_.begin(), conditions_.end(), [&](const ListCondition& condition) {
    return condition.IsMetBy(TenantCell(tenant, links_, condition.field()));
  });
}

}  // namespace qorhost
