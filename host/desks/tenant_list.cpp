#include "host/desks/tenant_list.h"

#include <string>

namespace qorhost {

namespace {

/// The first three columns are the parts of the name.
constexpr std::size_t kNameParts = 3;

TableColumn CalledAs(const TenantColumn& column) {
  return {std::string(column.title), std::string(column.key)};
}

}  // namespace

Table TenantTable(const std::vector<TenantRow>& tenants, const TenantLinks& links) {
  const auto columns = TenantColumns().subspan(kNameParts);
  Table table;
  table.columns = {{"RID", "rid"}, {"Name", "name"}};
  for (const TenantColumn& column : columns) {
    table.columns.push_back(CalledAs(column));
  }
  table.rows.reserve(tenants.size());
  for (const TenantRow& tenant : tenants) {
    std::vector<qorcred::Value> row{tenant.rid, tenant.Name()};
    for (const TenantColumn& column : columns) {
      row.push_back(column.shown(tenant, links));
    }
    table.rows.push_back(std::move(row));
  }
  return table;
}

std::vector<TenantDetail> DetailsOf(const TenantRow& tenant, const TenantLinks& links) {
  std::vector<TenantDetail> details{{{"RID", "rid"}, tenant.rid},
                                    {{"Tenant id", "tenant_id"}, tenant.tenantId}};
  for (const TenantColumn& column : TenantColumns()) {
    details.push_back({CalledAs(column), column.shown(tenant, links)});
  }
  return details;
}

}  // namespace qorhost
