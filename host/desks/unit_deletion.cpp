#include "host/desks/unit_deletion.h"

#include <fmt/format.h>

#include <algorithm>
#include <string_view>
#include <utility>

#include "host/desks/desk_error.h"
#include "host/desks/own_work.h"
#include "host/desks/stored_row.h"
#include "host/desks/unit_desk.h"
#include "host/desks/words.h"

namespace qorhost {

namespace {

std::string RowsOf(std::int32_t unitKey) {
  return fmt::format("UnitKey={}", unitKey);
}

void DeleteOne(DeskSession& session, const UnitToDelete& toDelete) {
  const std::int32_t unitKey = toDelete.unit.key;
  if (RowsWhere(session, "Units", RowsOf(unitKey)) == 0) {
    throw RefusedError(fmt::format("nothing was deleted: there is no unit {} any more", unitKey));
  }
  if (ContentsOf(session, unitKey) != toDelete.contents) {
    throw RefusedError(
        "nothing was deleted: somebody else has changed what is in the unit meanwhile. Try again");
  }
  // Rows before those that they refer to.
  for (const std::string_view table :
       {"ProgramSteps", "TenantsBackup", "Tenants", "CredentialBank", "DirectoryCode",
        "UnitCounters", "TenantGroup", "Schedules", "DOORS", "UnitSettings", "Units"}) {
    (void)session.sql().Change(fmt::format("DELETE FROM {} WHERE {}", table, RowsOf(unitKey)),
                               dialect::StatementKind::kDelete);
  }
}

}  // namespace

std::string UnitContents::Text() const {
  std::string text;
  const auto add = [&text](std::size_t count, std::string_view one, std::string_view many) {
    if (count > 0) {
      text += (text.empty() ? "" : ", ") + Counted(count, one, many);
    }
  };
  add(tenants, "tenant", "tenants");
  add(credentials, "credential", "credentials");
  add(codes, "directory code", "directory codes");
  add(steps, "waiting step", "waiting steps");
  return text;
}

UnitContents ContentsOf(DeskSession& session, std::int32_t unitKey) {
  const std::string ofUnit = RowsOf(unitKey);
  return {RowsWhere(session, "Tenants", ofUnit), RowsWhere(session, "CredentialBank", ofUnit),
          RowsWhere(session, "DirectoryCode", ofUnit),
          RowsWhere(session, "ProgramSteps", ofUnit + " AND Sent=False")};
}

std::vector<UnitToDelete> WithContents(DeskSession& session, const std::vector<UnitName>& units) {
  std::vector<UnitToDelete> toDelete;
  for (const UnitName& unit : units) {
    if (std::none_of(toDelete.begin(), toDelete.end(),
                     [&unit](const UnitToDelete& other) { return other.unit.key == unit.key; })) {
      toDelete.push_back({unit, ContentsOf(session, unit.key)});
    }
  }
  return toDelete;
}

UnitContents ContentsOf(const std::vector<UnitToDelete>& units) {
  UnitContents all;
  for (const UnitToDelete& one : units) {
    all.Add(one.contents);
  }
  return all;
}

Outcome DeleteUnits(DeskSession& session, const std::vector<UnitToDelete>& units, Trial trial) {
  std::vector<std::int32_t> keys;
  for (const UnitToDelete& one : units) {
    keys.push_back(one.unit.key);
  }
  OwnWork work(
      session, keys,
      fmt::format("delete {} {}", keys.size() == 1 ? "unit" : "units", fmt::join(keys, ", ")));
  for (const UnitToDelete& one : units) {
    if (auto overtaken = FindUnitOvertaken(session, one.unit.key, one.seen)) {
      return *std::move(overtaken);
    }
    DeleteOne(session, one);
  }
  work.End(trial);
  return {};
}

}  // namespace qorhost
