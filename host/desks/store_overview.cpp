#include "host/desks/store_overview.h"

#include <fmt/format.h>

#include <optional>
#include <string>
#include <string_view>

#include "frame/convert.h"
#include "frame/siblings.h"
#include "frame/text.h"
#include "host/desks/credential_desk.h"
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

std::string TenantName(DeskSession& session, std::string_view name, std::int32_t tenantId) {
  const QueryResult result =
      session.sql().Select(fmt::format("SELECT {} FROM Tenants WHERE TenantID={}", name, tenantId));
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
    return TenantName(session, kTenantSpokenName, step.subjectRid);
  }
  const std::string code = qorcred::TextOrEmpty(session.sql().Scalar(
      fmt::format("SELECT DIRECTORYCODE FROM DIRECTORYCODE WHERE RID={}", step.subjectRid)));
  return step.code.empty() ? code : fmt::format("{} to {}", step.code, code);
}

Table UnitTable(DeskSession& session, const std::vector<UnitName>& units) {
  Table table;
  table.columns = {{"Unit", "unit"},         {"Name", "name"},
                   {"Type", "type"},         {"Credentials", "credentials"},
                   {"Entry", "entry_codes"}, {"Directory", "directory_codes"},
                   {"Capacity", "capacity"}, {"Steps", "pending_steps"}};
  const auto number = [](std::int64_t count) { return Value(static_cast<double>(count)); };
  for (const UnitName& unit : units) {
    const UnitStatus status = UnitStatusOf(session, unit.key);
    table.rows.push_back({unit.key, unit.name, status.type, number(status.credentials),
                          number(status.entryCodes), number(status.directoryCodes),
                          CapacityShown(session, unit.key), number(status.pendingSteps)});
  }
  return table;
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
      missing.push_back(fmt::format(
          "unit {} '{}' has no type: nothing can be stored in it until its row of the store's "
          "table UnitSettings has one of UnitTypes",
          unit.key, unit.name));
    } else if (HasNoCapacity(session, unit.key)) {
      missing.push_back(fmt::format(
          "unit {} '{}' has the type '{}', whose capacity is unknown: nothing can be stored in it "
          "until UnitTypes has one",
          unit.key, unit.name, facts->type));
    }
  }
  return missing;
}

Table DoorTable(DeskSession& session, const std::vector<UnitName>& units) {
  Table table;
  table.columns = {{"Unit", "unit"}, {"Door", "door"}, {"Name", "name"}, {"On screen", "caption"}};
  for (const UnitName& unit : units) {
    CredentialDesk desk(session, unit.key, DeskScreen::kCredentials);
    const ListModel& doors = desk.screen().List("cboActivate");
    for (std::int32_t door = placeholders::kInDoors; door < doors.count(); ++door) {
      const std::string label = fmt::format("lblDoor{}", door);
      const bool shown = !desk.screen().SpelledName(label).empty();
      table.rows.push_back({unit.key, door, doors.Text(door),
                            shown ? Value(desk.screen().Any(label).caption()) : Value(Null{})});
    }
  }
  return table;
}

Table StepTable(DeskSession& session, std::optional<std::int32_t> unitKey) {
  Table table;
  table.columns = {{"Step", "step"}, {"Unit", "unit"}, {"Kind", "kind"},     {"Row", "subject_rid"},
                   {"Name", "name"}, {"Code", "code"}, {"Queued", "queued"}, {"Sent", "sent"}};
  for (const ProgramStep& step : StepsOf(session, unitKey)) {
    const bool tenant = step.kind == step::kProgramTenant;
    table.rows.push_back(
        {step.rid, step.unitKey, step.kind, step.subjectRid,
         tenant ? Value(TenantName(session, kTenantName, step.subjectRid)) : Value(Null{}),
         step.code.empty() ? Value(Null{}) : Value(step.code), step.queuedAt, step.sent});
  }
  return table;
}

}  // namespace qorhost
