#include "host/desks/store_overview.h"

#include <fmt/format.h>

#include <optional>
#include <string>
#include <string_view>

#include "frame/convert.h"
#include "frame/siblings.h"
#include "frame/text.h"
#include "host/desks/credential_desk.h"
#include "host/desks/list_condition.h"
#include "host/desks/list_entries.h"
#include "host/desks/tenant_name.h"
#include "host/desks/unit_settings.h"

namespace qorhost {

namespace {

using qorcred::Null;
using qorcred::Value;

Value CapacityShown(DeskSession& session, std::int32_t unitKey) {
  const std::optional<std::int32_t> capacity = CapacityOf(session, unitKey);
  return capacity ? Value(*capacity) : Value(Null{});
}

/// The code that the unit knows, as a number where it is one.
Value CodeShown(const ProgramStep& step) {
  const auto number = NumberOf(Value(step.code));
  return step.code.empty() ? Value(Null{}) : number ? Value(*number) : Value(step.code);
}

std::string TenantName(DeskSession& session, std::string_view name, const ProgramStep& step) {
  const QueryResult result =
      session.sql().Select(fmt::format("SELECT {} FROM Tenants WHERE UnitKey={} AND TenantID={}",
                                       name, step.unitKey, step.subjectRid));
  return std::string(qorcred::Trim(qorcred::TextOrEmpty(result.table->At(0, 0))));
}

}  // namespace

UnitStatus UnitStatusOf(DeskSession& session, std::int32_t unitKey) {
  return ReadUnitStatus(session.sql(), unitKey);
}

std::vector<ProgramStep> StepsOf(DeskSession& session, std::optional<std::int32_t> unitKey) {
  return session.sql().steps().List(unitKey);
}

std::string SubjectOf(DeskSession& session, const ProgramStep& step) {
  if (step.kind == step::kProgramTenant) {
    return TenantName(session, kTenantSpokenName, step);
  }
  const std::string code = qorcred::TextOrEmpty(session.sql().Scalar(
      fmt::format("SELECT DIRECTORYCODE FROM DIRECTORYCODE WHERE UNITKEY={} AND RID={}",
                  step.unitKey, step.subjectRid)));
  return step.code.empty() ? code : fmt::format("{} to {}", step.code, code);
}

List UnitList(DeskSession& session, const std::vector<UnitName>& units) {
  List list;
  list.title = "Units";
  list.fields = {{"Unit", "unit", FieldKind::kNumber},
                 {"Name", "name"},
                 {"Type", "type"},
                 {"Credentials", "credentials", FieldKind::kNumber},
                 {"Entry codes", "entry_codes", FieldKind::kNumber},
                 {"Directory codes", "directory_codes", FieldKind::kNumber},
                 {"Capacity", "capacity", FieldKind::kNumber},
                 {"Pending steps", "pending_steps", FieldKind::kNumber}};
  const auto number = [](std::int64_t count) { return Value(static_cast<double>(count)); };
  for (const UnitName& unit : units) {
    const UnitStatus status = UnitStatusOf(session, unit.key);
    list.rows.push_back({unit.key, unit.name, status.type, number(status.credentials),
                         number(status.entryCodes), number(status.directoryCodes),
                         CapacityShown(session, unit.key), number(status.pendingSteps)});
  }
  return list;
}

std::vector<std::string> MissingSettings(DeskSession& session, const std::vector<UnitName>& units) {
  std::vector<std::string> missing;
  for (const UnitName& unit : units) {
    const std::optional<UnitFacts> facts = session.sql().units().Find(unit.key);
    if (!facts) {
      continue;
    }
    if (!facts->hasSettings) {
      missing.push_back(NoSettingsText(unit.key, unit.name));
    } else if (facts->type.empty()) {
      missing.push_back(
          fmt::format("unit {0} '{1}' has no type: nothing can be stored in it until it has one "
                      "('qorhost units "
                      "edit {0} --type TYPE')",
                      unit.key, unit.name));
    } else if (HasNoCapacity(session, unit.key)) {
      missing.push_back(fmt::format(
          "unit {0} '{1}' has the type '{2}', whose capacity is unknown: nothing can be stored in "
          "it until it has one ('qorhost units edit {0} --capacity N')",
          unit.key, unit.name, facts->type));
    }
  }
  return missing;
}

List DoorList(DeskSession& session, const std::vector<UnitName>& units) {
  List list;
  list.title = "Doors";
  list.fields = {{"Unit", "unit", FieldKind::kNumber},
                 {"Door", "door", FieldKind::kNumber},
                 {"Name", "name"},
                 {"Caption", "caption"}};
  for (const UnitName& unit : units) {
    CredentialDesk desk(session, unit.key, DeskScreen::kCredentials);
    const ListModel& doors = desk.screen().List("cboActivate");
    for (std::int32_t door = placeholders::kInDoors; door < doors.count(); ++door) {
      const std::string label = fmt::format("lblDoor{}", door);
      const bool shown = !desk.screen().SpelledName(label).empty();
      list.rows.push_back({unit.key, door, doors.Text(door),
                           shown ? Value(desk.screen().Any(label).caption()) : Value(Null{})});
    }
  }
  return list;
}

List StepList(DeskSession& session, std::optional<std::int32_t> unitKey) {
  List list;
  list.title = "Programming steps";
  list.fields = {{"Step", "step", FieldKind::kNumber},
                 {"Unit", "unit", FieldKind::kNumber},
                 {"Kind", "kind"},
                 {"Row", "row", FieldKind::kNumber},
                 {"Name", "name"},
                 {"Code", "code", FieldKind::kNumber},
                 {"Queued", "queued", FieldKind::kDate, TimeOf::kPlace},
                 {"Sent", "sent", FieldKind::kYesNo}};
  for (const ProgramStep& step : StepsOf(session, unitKey)) {
    const bool tenant = step.kind == step::kProgramTenant;
    list.rows.push_back({step.rid, step.unitKey, step.kind, step.subjectRid,
                         tenant ? Value(TenantName(session, kTenantName, step)) : Value(Null{}),
                         CodeShown(step), step.queuedAt, step.sent});
  }
  return list;
}

}  // namespace qorhost
