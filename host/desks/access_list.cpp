#include "host/desks/access_list.h"

#include <fmt/format.h>

#include <string>
#include <utility>
#include <vector>

#include "frame/convert.h"
#include "frame/date.h"
#include "frame/schedules.h"
#include "host/desks/shown_value.h"
#include "host/desks/tenant_rows.h"
#include "host/desks/typed_input.h"

namespace qorhost {

namespace {

using qorcred::Null;
using qorcred::Value;

struct Door {
  std::int32_t number = 0;  // from 1
  std::string name;
};

/// Those that tenants have schedules for.
std::vector<Door> DoorsOf(DeskSession& session, std::int32_t unitKey) {
  const QueryResult stored = session.sql().Select(fmt::format(
      "SELECT DOORID, DOORNAME FROM DOORS WHERE UNITKEY={} AND DOORID BETWEEN 1 AND {} ORDER BY "
      "DOORID",
      unitKey, kTenantDoors));
  std::vector<Door> doors;
  for (const ResultRow row : stored.rows()) {
    doors.push_back({qorcred::ToLong(row[0]), qorcred::TextOrEmpty(row[1])});
  }
  if (doors.empty()) {
    for (std::int32_t number = 1; number <= static_cast<std::int32_t>(kTenantDoors); ++number) {
      doors.push_back({number, fmt::format("Door {}", number)});
    }
  }
  return doors;
}

bool PeriodHolds(const TenantRow& tenant, const AccessTime& time) {
  if (!tenant.active) {
    return true;  // none is kept
  }
  const bool hasBegun = !tenant.start || qorcred::SecondsBetween(*tenant.start, time.to) >= 0;
  const bool lasts = !tenant.end || qorcred::SecondsBetween(time.from, *tenant.end) >= 0;
  return hasBegun && lasts;
}

Value OrNull(const std::optional<qorcred::Date>& date) {
  return date ? Value(*date) : Value(Null{});
}

std::vector<ListField> Fields(const TenantLinks& links) {
  std::vector<ListField> fields{{"RID", "rid", FieldKind::kNumber},
                                {"Tenant", "tenant"},
                                {"Active", "active", FieldKind::kYesNo},
                                {"Start", "start", FieldKind::kDate},
                                {"End", "end", FieldKind::kDate},
                                {"Cards", "cards"},
                                {"Code", "code", FieldKind::kNumber},
                                {"Door", "door"},
                                {"Schedule", "schedule", FieldKind::kSchedule},
                                {"Access", "access", FieldKind::kYesNo},
                                {"Door number", "door_number", FieldKind::kNumber},
                                {"Resident", "resident", FieldKind::kYesNo}};
  constexpr std::size_t kSchedule = 8;
  constexpr std::size_t kExtras = 2;
  for (const auto& [id, name] : links.schedules) {
    fields[kSchedule].names.push_back(name);
  }
  for (std::size_t extra = fields.size() - kExtras; extra < fields.size(); ++extra) {
    fields[extra].isExtra = true;
  }
  return fields;
}

}  // namespace

AccessTime ReadAccessTime(DeskSession& session, std::string_view given) {
  qorcred::Date from = session.Today();
  if (!given.empty()) {
    const GivenDate read = ReadDate(access_input::kOn, given);
    if (read.hasTime) {
      return {read.date, read.date};
    }
    from = read.date;
  }
  qorcred::CivilTime last = qorcred::ToCivil(from);
  last.hour = 23;
  last.minute = 59;
  last.second = 59;
  return {from, qorcred::FromCivil(last)};
}

List AccessList(DeskSession& session, std::int32_t unitKey, const AccessTime& time) {
  const TenantLinks links(session, unitKey);
  const std::vector<Door> doors = DoorsOf(session, unitKey);
  List list;
  list.title = fmt::format("Access on {}", qorcred::SecondsBetween(time.from, time.to) == 0
                                               ? ShownText(time.from)
                                               : ShownDay(time.from));
  list.fields = Fields(links);
  for (const TenantRow& tenant : ReadTenants(session, unitKey)) {
    const bool holds = PeriodHolds(tenant, time);
    const Value cards = links.Cards(tenant);
    for (const Door& door : doors) {
      const std::int32_t schedule = tenant.schedules.at(static_cast<std::size_t>(door.number - 1));
      list.rows.push_back({tenant.rid, tenant.Name(), tenant.active, OrNull(tenant.start),
                           OrNull(tenant.end), cards, links.Code(tenant.code), door.name,
                           links.Schedule(schedule), holds && schedule != qorcred::kNoAccess.id,
                           door.number, tenant.resident});
    }
  }
  return list;
}

}  // namespace qorhost
