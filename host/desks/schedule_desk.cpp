#include "host/desks/schedule_desk.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <limits>
#include <span>

#include "frame/convert.h"
#include "frame/schedules.h"
#include "frame/text.h"
#include "host/desks/desk_error.h"
#include "host/desks/input_fault.h"
#include "host/desks/listed_rows.h"
#include "host/desks/own_work.h"
#include "host/desks/stored_row.h"
#include "host/desks/tenant_name.h"
#include "host/desks/typed_input.h"
#include "host/desks/words.h"

namespace qorhost {

namespace {

constexpr std::size_t kIdInList = 1;  // the column
constexpr std::int32_t kFirstOwn = qorcred::kFullAccess.id + 1;

struct Schedule {
  std::int32_t rid = 0;
  std::int32_t id = 0;
  std::string name;
  bool deleted = false;
};

std::vector<Schedule> SchedulesOf(DeskSession& session, std::int32_t unitKey) {
  std::vector<Schedule> schedules;
  const QueryResult rows = session.sql().Select(
      fmt::format("SELECT RID, ScheduleID, ScheduleName, Modified FROM Schedules WHERE UnitKey={} "
                  "ORDER BY ScheduleID, RID",
                  unitKey));
  for (const ResultRow row : rows.rows()) {
    schedules.push_back({qorcred::ToLong(row[0]),
                         qorcred::RoundToLong(qorcred::NumericValue(row[1])),
                         qorcred::TextOrEmpty(row[2]), IsDeleted(row[3])});
  }
  return schedules;
}

bool AreOneName(std::string_view one, std::string_view other) {
  return qorcred::CompareIgnoringCase(qorcred::Trim(one), qorcred::Trim(other)) == 0;
}

const Schedule& Find(const std::vector<Schedule>& schedules, std::string_view given) {
  const auto number = WholeNumber(given);
  std::vector<const Schedule*> found;
  for (const Schedule& schedule : schedules) {
    const bool isMeant = number ? schedule.id == *number : AreOneName(schedule.name, given);
    if (isMeant && !schedule.deleted) {
      found.push_back(&schedule);
    }
  }
  if (found.size() > 1) {
    throw InputFault(
        schedule_input::kSchedule, given,
        fmt::format("{} schedules are called '{{value}}': give the id instead", found.size()));
  }
  if (found.empty()) {
    throw InputFault(schedule_input::kSchedule, given, "the unit has no schedule '{value}'",
                     InputFault::Kind::kSeeList);
  }
  return *found.front();
}

/// One that is the building's own.
const Schedule& FindOwn(const std::vector<Schedule>& schedules, std::string_view given) {
  const Schedule& schedule = Find(schedules, given);
  if (IsOfEveryUnit(schedule.id)) {
    throw InputFault(schedule_input::kSchedule, given,
                     "every unit has the schedule '{value}', as it is");
  }
  return schedule;
}

/// `own` is the id of the schedule that gets the name.
std::string ReadName(const std::string& given, const std::vector<Schedule>& schedules,
                     std::optional<std::int32_t> own) {
  std::string name(qorcred::Trim(TypedText(schedule_input::kName, given)));
  if (name.empty()) {
    throw InputFault(schedule_input::kName, given, "{field} '{value}' is empty");
  }
  if (WholeNumber(name)) {
    throw InputFault(schedule_input::kName, given, "{field} '{value}' would be taken for an id");
  }
  if (name.find('\'') != std::string::npos) {
    throw InputFault(schedule_input::kName, given,
                     "{field} '{value}' has an apostrophe, with which no report could be asked for "
                     "it: write ’ instead");
  }
  for (const Schedule& schedule : schedules) {
    if (schedule.id != own && !schedule.deleted && AreOneName(schedule.name, name)) {
      throw InputFault(
          schedule_input::kName, given,
          fmt::format("the schedule {} has the name '{{value}}' already", schedule.id));
    }
  }
  return name;
}

std::int32_t IdOfNew(const std::vector<Schedule>& schedules,
                     const std::optional<std::string>& given) {
  constexpr std::int32_t kHighest = std::numeric_limits<std::int32_t>::max();
  if (given) {
    const std::int32_t id = ReadLong(schedule_input::kId, *given, {kFirstOwn, kHighest});
    const bool isTaken = std::any_of(schedules.begin(), schedules.end(),
                                     [id](const Schedule& other) { return other.id == id; });
    if (isTaken) {
      throw RefusedError(fmt::format("the unit has a schedule {} already: give another id", id));
    }
    return id;
  }
  const std::int32_t highest = schedules.empty() ? 0 : schedules.back().id;
  if (highest == kHighest) {
    throw RefusedError("the highest id is taken: give one that is free");
  }
  return std::max(highest + 1, kFirstOwn);
}

std::string TenantsUsing(std::int32_t unitKey, std::int32_t id) {
  return fmt::format(
      "UnitKey={0} AND (DOORSCHEDULE1={1} OR DOORSCHEDULE2={1} OR DOORSCHEDULE3={1} OR "
      "DOORSCHEDULE4={1})",
      unitKey, id);
}

std::string CodesUsing(std::int32_t unitKey, std::int32_t id) {
  return fmt::format("UnitKey={0} AND (DNDSCHEDULEID={1} OR CFSCHEDULEID={1})", unitKey, id);
}

/// The first rows that a SELECT finds, with their RIDs: "Abel Karin (RID 61); ... and 14 more".
struct Users {
  std::size_t count = 0;
  std::string names;
};

Users FindUsers(DeskSession& session, std::string_view select) {
  constexpr std::size_t kMost = 5;
  Users users;
  const QueryResult found = session.sql().Select(select);
  for (const ResultRow row : found.rows()) {
    if (++users.count <= kMost) {
      users.names += (users.names.empty() ? "" : "; ") +
                     WithRid(qorcred::Trim(qorcred::TextOrEmpty(row[1])), qorcred::ToLong(row[0]));
    }
  }
  if (users.count > kMost) {
    users.names = fmt::format("{}; and {} more", users.names, users.count - kMost);
  }
  return users;
}

std::string TenantsAmong(const Users& users) {
  return users.count == 1 ? fmt::format("{} tenant: {}", users.count, users.names)
                          : fmt::format("{} tenants: {}", users.count, users.names);
}

std::string CodesAmong(const Users& users) {
  return users.count == 1 ? fmt::format("{} directory code: {}", users.count, users.names)
                          : fmt::format("{} directory codes: {}", users.count, users.names);
}

/// "19 tenants: Abel Karin (RID 61); ... and 14 more, and by 1 directory code: 104 (RID 14)"
std::string Places(DeskSession& session, std::int32_t unitKey, std::int32_t id) {
  const Users tenants = FindUsers(
      session, fmt::format("SELECT RID, {} FROM Tenants WHERE {} ORDER BY LastName, FirstName, RID",
                           kTenantName, TenantsUsing(unitKey, id)));
  const Users codes = FindUsers(
      session,
      fmt::format("SELECT RID, DIRECTORYCODE FROM DirectoryCode WHERE {} ORDER BY DIRECTORYCODE",
                  CodesUsing(unitKey, id)));
  if (tenants.count > 0 && codes.count > 0) {
    return fmt::format("{}, and by {}", TenantsAmong(tenants), CodesAmong(codes));
  }
  return tenants.count > 0 ? TenantsAmong(tenants) : codes.count > 0 ? CodesAmong(codes) : "";
}

std::string RowOf(std::int32_t unitKey, const Schedule& schedule) {
  return fmt::format("UnitKey={} AND RID={}", unitKey, schedule.rid);
}

/// A schedule is the same one as long as it has its id.
std::optional<Outcome> FindOvertaken(DeskSession& session, std::int32_t unitKey,
                                     const std::vector<Schedule>& schedules,
                                     const std::optional<SeenRow>& seen) {
  if (!seen) {
    return std::nullopt;
  }
  RowsOfTable row{"Schedules", {}};
  std::vector<qorcred::Value> now;
  for (const Schedule& schedule : schedules) {
    if (!schedule.deleted && schedule.id == qorcred::ToLong(seen->cells.at(kIdInList))) {
      row.rids.push_back(schedule.rid);
      now = {unitKey, schedule.id, schedule.name};
    }
  }
  return qorhost::FindOvertaken(session, unitKey, *seen, now, std::span(&row, 1));
}

}  // namespace

bool IsOfEveryUnit(std::int32_t scheduleId) {
  return scheduleId < kFirstOwn;
}

List ScheduleList(DeskSession& session, const std::vector<UnitName>& units) {
  List list;
  list.title = "Schedules";
  list.fields = {{"Unit", "unit", FieldKind::kNumber},
                 {"Schedule", "schedule", FieldKind::kNumber},
                 {"Name", "name"},
                 {"Tenants", "tenants", FieldKind::kNumber},
                 {"Directory codes", "directory_codes", FieldKind::kNumber}};
  for (const UnitName& unit : units) {
    for (const Schedule& schedule : SchedulesOf(session, unit.key)) {
      if (!schedule.deleted) {
        list.rows.push_back(
            {unit.key, schedule.id, schedule.name,
             CountCell(RowsWhere(session, "Tenants", TenantsUsing(unit.key, schedule.id))),
             CountCell(RowsWhere(session, "DirectoryCode", CodesUsing(unit.key, schedule.id)))});
      }
    }
  }
  return list;
}

ChangedSchedule AddSchedule(DeskSession& session, std::int32_t unitKey, const std::string& name,
                            const std::optional<std::string>& id, Trial trial) {
  OwnWork work(session, {unitKey}, "add schedule " + name);
  const std::vector<Schedule> schedules = SchedulesOf(session, unitKey);
  ChangedSchedule added{{}, IdOfNew(schedules, id), "", ReadName(name, schedules, std::nullopt)};
  const std::array fields{Field{"ScheduleID", added.id}, Field{"ScheduleName", added.name},
                          Field{"UnitKey", unitKey}};
  session.sql().AddRow("Schedules", fields);
  work.End(trial);
  return added;
}

ChangedSchedule RenameSchedule(DeskSession& session, std::int32_t unitKey,
                               std::string_view schedule, const std::string& name, Trial trial,
                               const std::optional<SeenRow>& seen) {
  OwnWork work(session, {unitKey}, fmt::format("rename schedule {} to {}", schedule, name));
  const std::vector<Schedule> schedules = SchedulesOf(session, unitKey);
  if (const auto overtaken = FindOvertaken(session, unitKey, schedules, seen)) {
    return {*overtaken, 0, "", ""};
  }
  const Schedule& meant = FindOwn(schedules, schedule);
  ChangedSchedule renamed{{}, meant.id, meant.name, ReadName(name, schedules, meant.id)};
  const std::array fields{Field{"ScheduleName", qorcred::Value(renamed.name)}};
  renamed.unchanged = WriteChanged(session, "Schedules", RowOf(unitKey, meant), fields) == 0;
  work.End(trial);
  return renamed;
}

ChangedSchedule DeleteSchedule(DeskSession& session, std::int32_t unitKey,
                               std::string_view schedule, Trial trial,
                               const std::optional<SeenRow>& seen) {
  OwnWork work(session, {unitKey}, fmt::format("delete schedule {}", schedule));
  const std::vector<Schedule> schedules = SchedulesOf(session, unitKey);
  if (const auto overtaken = FindOvertaken(session, unitKey, schedules, seen)) {
    return {*overtaken, 0, "", ""};
  }
  const Schedule& meant = FindOwn(schedules, schedule);
  if (const std::string places = Places(session, unitKey, meant.id); !places.empty()) {
    throw RefusedError(fmt::format(
        "the schedule {}, {}, is in use by {}. Give them another one first; nothing was deleted",
        meant.id, meant.name, places));
  }
  (void)session.sql().Change("DELETE FROM Schedules WHERE " + RowOf(unitKey, meant),
                             dialect::StatementKind::kDelete);
  work.End(trial);
  return {{}, meant.id, meant.name, ""};
}

std::vector<ChangedSchedule> DeleteSchedules(DeskSession& session, std::int32_t unitKey,
                                             const std::vector<std::string>& schedules,
                                             Trial trial) {
  OwnWork all(session, {unitKey},
              schedules.size() == 1 ? "delete schedule " + schedules.front()
                                    : fmt::format("delete {} schedules", schedules.size()));
  std::vector<ChangedSchedule> deleted;
  for (const std::string& schedule : schedules) {
    deleted.push_back(DeleteSchedule(session, unitKey, schedule, trial));
  }
  all.End(trial);
  return deleted;
}

}  // namespace qorhost
