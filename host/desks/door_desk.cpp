#include "host/desks/door_desk.h"

#include <fmt/format.h>

#include <array>
#include <span>
#include <utility>
#include <vector>

#include "frame/convert.h"
#include "frame/text.h"
#include "host/desks/input_fault.h"
#include "host/desks/list_entries.h"
#include "host/desks/own_work.h"
#include "host/desks/stored_row.h"
#include "host/desks/typed_input.h"

namespace qorhost {

namespace {

struct Door {
  std::int32_t rid = 0;
  std::string name;
};

/// In their order: the first is door 1.
std::vector<Door> DoorsOf(DeskSession& session, std::int32_t unitKey) {
  std::vector<Door> doors;
  const QueryResult rows = session.sql().Select(
      fmt::format("SELECT RID, DOORNAME FROM DOORS WHERE UNITKEY={} ORDER BY DOORID", unitKey));
  for (const ResultRow row : rows.rows()) {
    doors.push_back({qorcred::ToLong(row[0]), qorcred::TextOrEmpty(row[1])});
  }
  return doors;
}

bool AreOneName(std::string_view one, std::string_view other) {
  return qorcred::CompareIgnoringCase(qorcred::Trim(one), qorcred::Trim(other)) == 0;
}

/// The place of the door that is meant.
std::size_t Find(const std::vector<Door>& doors, std::string_view given) {
  const auto number = WholeNumber(given);
  if (number && *number >= 1 && static_cast<std::size_t>(*number) <= doors.size()) {
    return static_cast<std::size_t>(*number) - 1;
  }
  std::vector<std::size_t> found;
  for (std::size_t at = 0; at < doors.size(); ++at) {
    if (AreOneName(doors[at].name, given)) {
      found.push_back(at);
    }
  }
  if (found.size() > 1) {
    throw InputFault(door_input::kDoor, given,
                     fmt::format("{} doors are called '{{value}}': give the door's number instead",
                                 found.size()));
  }
  if (found.empty()) {
    throw InputFault(door_input::kDoor, given, "the unit has no door '{value}'",
                     InputFault::Kind::kSeeList);
  }
  return found.front();
}

std::string ReadName(const std::string& given, const std::vector<Door>& doors, std::size_t own) {
  std::string name(qorcred::Trim(TypedText(door_input::kName, given)));
  if (name.empty()) {
    throw InputFault(door_input::kName, given, "{field} '{value}' is empty");
  }
  if (WholeNumber(name) || SaysNone(name) || AreOneName(name, kNoneEntry)) {
    throw InputFault(door_input::kName, given,
                     "{field} '{value}' would be taken for a door's number or for no door");
  }
  for (std::size_t at = 0; at < doors.size(); ++at) {
    if (at != own && AreOneName(doors[at].name, name)) {
      throw InputFault(door_input::kName, given,
                       fmt::format("door {} has the name '{{value}}' already", at + 1));
    }
  }
  return name;
}

/// A row of DoorList(); of a door that is not there none.
std::vector<qorcred::Value> CellsOf(const std::vector<Door>& doors, std::size_t at) {
  if (at >= doors.size()) {
    return {};
  }
  return {static_cast<std::int32_t>(at + 1), doors[at].name};
}

std::optional<Outcome> FindOvertaken(DeskSession& session, std::int32_t unitKey,
                                     const std::vector<Door>& doors,
                                     const std::optional<SeenRow>& seen) {
  if (!seen) {
    return std::nullopt;
  }
  const auto at = static_cast<std::size_t>(qorcred::ToLong(seen->cells.front()) - 1);
  RowsOfTable row{"DOORS", {}};
  if (at < doors.size()) {
    row.rids.push_back(doors[at].rid);
  }
  return qorhost::FindOvertaken(session, unitKey, *seen, CellsOf(doors, at), std::span(&row, 1));
}

}  // namespace

std::vector<std::string> DoorNames(DeskSession& session, std::int32_t unitKey) {
  std::vector<std::string> names;
  for (Door& door : DoorsOf(session, unitKey)) {
    names.push_back(std::move(door.name));
  }
  return names;
}

List DoorList(DeskSession& session, std::int32_t unitKey) {
  List list;
  list.fields = {{"Door", "door", FieldKind::kNumber}, {"Name", "name"}};
  const std::vector<Door> doors = DoorsOf(session, unitKey);
  for (std::size_t at = 0; at < doors.size(); ++at) {
    list.rows.push_back(CellsOf(doors, at));
  }
  return list;
}

ChangedDoor RenameDoor(DeskSession& session, std::int32_t unitKey, std::string_view door,
                       const std::string& name, Trial trial, const std::optional<SeenRow>& seen) {
  OwnWork work(session, {unitKey}, fmt::format("rename door {} to {}", door, name));
  const std::vector<Door> doors = DoorsOf(session, unitKey);
  if (const auto overtaken = FindOvertaken(session, unitKey, doors, seen)) {
    return {*overtaken, 0, "", ""};
  }
  const std::size_t at = Find(doors, door);
  ChangedDoor changed{
      {}, static_cast<std::int32_t>(at + 1), doors[at].name, ReadName(name, doors, at)};
  const std::array fields{Field{"DOORNAME", qorcred::Value(changed.name)}};
  changed.unchanged =
      WriteChanged(session, "DOORS", fmt::format("UNITKEY={} AND RID={}", unitKey, doors[at].rid),
                   fields) == 0;
  work.End(trial);
  return changed;
}

std::vector<ChangedDoor> RenameDoors(DeskSession& session, std::int32_t unitKey,
                                     const std::vector<NewDoorName>& renamed, Trial trial) {
  std::vector<ChangedDoor> changed;
  if (renamed.size() == 1) {
    const NewDoorName& only = renamed.front();
    changed.push_back(RenameDoor(session, unitKey, only.door, only.name, trial));
    return changed;
  }
  OwnWork work(session, {unitKey}, fmt::format("rename {} doors", renamed.size()));
  for (const NewDoorName& one : renamed) {
    changed.push_back(RenameDoor(session, unitKey, one.door, one.name, Trial::kNo));
  }
  work.End(trial);
  return changed;
}

}  // namespace qorhost
