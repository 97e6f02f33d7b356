#include "host/desks/tenant_groups.h"

#include <fmt/format.h>

#include "frame/convert.h"

namespace qorhost {

std::vector<TenantGroup> ReadTenantGroups(DeskSession& session, std::int32_t unitKey) {
  const QueryResult stored = session.sql().Select(fmt::format(
      "SELECT RID, IsGroupZero FROM TenantGroup WHERE UnitKey={} ORDER BY RID", unitKey));
  std::vector<TenantGroup> groups;
  for (const ResultRow row : stored.rows()) {
    groups.push_back(
        {qorcred::ToLong(row[0]), !qorcred::IsEmptyText(row[1]) && qorcred::ToBoolean(row[1])});
  }
  return groups;
}

}  // namespace qorhost
