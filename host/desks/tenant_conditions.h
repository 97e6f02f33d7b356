// Conditions on tenants: "FIELD OPERATOR VALUE", in the words of the reports.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "host/desks/report_words.h"
#include "host/desks/tenant_rows.h"

namespace qorhost {

/// Conditions of which a tenant must meet all. A tenant's cards are compared by the numbers printed
/// on them, and meet a condition when one of them does; "does not" is met when none does. A date
/// that is not set meets no condition but "does not equal" and "not between".
class TenantConditions {
 public:
  /// `links` must live as long. Raises InputFault for what is no condition.
  TenantConditions(const std::vector<std::string>& conditions, const TenantLinks& links);

  [[nodiscard]] bool AreMetBy(const TenantRow& tenant) const;
  /// "name, name at unit, group, ..."
  [[nodiscard]] static std::string FieldNames();

 private:
  [[nodiscard]] bool IsMet(const ReportCondition& condition, const TenantRow& tenant) const;

  const TenantLinks& links_;
  std::vector<ReportField> fields_;
  std::vector<ReportCondition> conditions_;
};

}  // namespace qorhost
