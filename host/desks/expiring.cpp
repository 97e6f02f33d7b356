#include "host/desks/expiring.h"

#include <fmt/format.h>

#include <algorithm>

#include "frame/convert.h"
#include "host/desks/attention_days.h"
#include "host/desks/tenant_name.h"

namespace qorhost {

namespace {

void Append(std::vector<ExpiringPeriod>& found, DeskSession& session, bool areTenants,
            const std::string& select) {
  const QueryResult result = session.sql().Select(select);
  for (const ResultRow row : result.rows()) {
    found.push_back({qorcred::ToLong(row[0]), areTenants, qorcred::TextOrEmpty(row[1]),
                     qorcred::ToDate(row[2])});
  }
}

}  // namespace

std::vector<ExpiringPeriod> ExpiringWithin(DeskSession& session, std::int32_t days) {
  const AttentionDays soon{session.Today(), days};
  std::vector<ExpiringPeriod> found;
  Append(found, session, true,
         fmt::format("SELECT UNITKEY, {}, ACTIVEENDTIME FROM TENANTS WHERE ACTIVETENANT=True AND "
                     "{}",
                     kTenantName, soon.SoonIn("ACTIVEENDTIME")));
  Append(found, session, false,
         fmt::format("SELECT UNITKEY, DIRECTORYCODE, ENDDATE FROM DIRECTORYCODE WHERE {} AND {}",
                     CodesThatEnd(), soon.SoonIn("ENDDATE")));
  std::stable_sort(found.begin(), found.end(),
                   [](const ExpiringPeriod& one, const ExpiringPeriod& other) {
                     return one.end.serial < other.end.serial;
                   });
  return found;
}

}  // namespace qorhost
