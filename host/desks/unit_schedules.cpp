#include "host/desks/unit_schedules.h"

#include <fmt/format.h>

#include "frame/convert.h"
#include "frame/schedules.h"

namespace qorhost {

ScheduleIds OfferedSchedules(DeskSession& session, std::int32_t unitKey) {
  ScheduleIds ids;
  for (const qorcred::FixedSchedule& fixed : {qorcred::kNoAccess, qorcred::kFullAccess}) {
    ids.insert(std::to_string(fixed.id));
  }
  const QueryResult rows = session.sql().Select(qorcred::StoredSchedulesQuery(unitKey));
  for (const ResultRow row : rows.rows()) {
    ids.insert(qorcred::TextOrEmpty(row[0]));
  }
  return ids;
}

std::vector<std::string> ReportedSchedules(DeskSession& session, std::int32_t unitKey) {
  const QueryResult rows = session.sql().Select(fmt::format(
      "SELECT ScheduleName FROM Schedules WHERE UnitKey={} ORDER BY ScheduleID", unitKey));
  std::vector<std::string> names;
  for (const ResultRow row : rows.rows()) {
    names.push_back(qorcred::TextOrEmpty(row[0]));
  }
  return names;
}

}  // namespace qorhost
