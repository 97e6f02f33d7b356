// The tenants of a unit as rows, and one of them in full.
#pragma once

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#include "host/desks/list.h"
#include "host/desks/tenant_rows.h"
#include "host/files/table.h"

namespace qorhost {

/// The fields of the list: RID, name, the columns of the table that people see, and what is asked
/// for alone: the parts of the name, the id, and the numbers that are printed on the cards.
[[nodiscard]] std::vector<ListField> TenantFields(const TenantLinks& links);
/// "rid, name, ..."
[[nodiscard]] std::string TenantFieldNames();
/// A tenant's cell in the field at a place.
[[nodiscard]] qorcred::Value TenantCell(const TenantRow& tenant, const TenantLinks& links,
                                        std::size_t field);

/// A row for each tenant, in their order.
[[nodiscard]] List TenantList(const std::vector<TenantRow>& tenants, const TenantLinks& links);

/// Everything that is stored of one: each field with what it is called, and its value.
struct TenantDetail {
  TableColumn name;
  qorcred::Value value;
};
[[nodiscard]] std::vector<TenantDetail> DetailsOf(const TenantRow& tenant,
                                                  const TenantLinks& links);

}  // namespace qorhost
