#include "host/desks/expiring.h"

#include <fmt/format.h>

#include <algorithm>

#include "frame/convert.h"
#include "frame/date.h"
#include "host/desks/tenant_name.h"

namespace qorhost {

namespace {

/// "#1/31/2026#"
std::string Literal(qorcred::Date day) {
  return fmt::format("#{}#", qorcred::DateText(qorcred::DayOf(day)));
}

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
  const qorcred::Date today = session.Today();
  const std::string from = Literal(today);
  const std::string behind = Literal(qorcred::AddDays(today, days + 1));
  std::vector<ExpiringPeriod> found;
  Append(found, session, true,
         fmt::format("SELECT UNITKEY, {}, ACTIVEENDTIME FROM TENANTS WHERE ACTIVETENANT=True AND "
                     "ACTIVEENDTIME >= {} AND ACTIVEENDTIME < {}",
                     kTenantName, from, behind));
  Append(found, session, false,
         fmt::format("SELECT UNITKEY, DIRECTORYCODE, ENDDATE FROM DIRECTORYCODE WHERE ACTIVE=True "
                     "AND ENDDATE >= {} AND ENDDATE < {}",
                     from, behind));
  std::stable_sort(found.begin(), found.end(),
                   [](const ExpiringPeriod& one, const ExpiringPeriod& other) {
                     return one.end.serial < other.end.serial;
                   });
  return found;
}

}  // namespace qorhost
