#include "host/desks/store_check.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <tuple>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

#include "credentials/credential_type.h"
#include "frame/convert.h"
#include "frame/text.h"
#include "host/components/application_object.h"
#include "host/desks/credential_types.h"
#include "host/desks/desk_error.h"
#include "host/desks/history.h"
#include "host/desks/listed_rows.h"
#include "host/desks/tenant_groups.h"
#include "host/desks/tenant_name.h"
#include "host/desks/tenant_rows.h"
#include "host/desks/unit_schedules.h"
#include "host/desks/unit_settings.h"
#include "host/desks/words.h"
#include "host/store/step_queue.h"

namespace qorhost {

namespace {

using qorcred::Null;
using qorcred::Value;

constexpr const char* kOneOfTwo = "give one of them another number, or delete it";

std::string TextOf(const Value& cell) {
  return std::string(qorcred::Trim(qorcred::TextOrEmpty(cell)));
}

bool IsSet(const Value& cell) {
  return !TextOf(cell).empty();
}

/// Looks one unit over.
class UnitCheck {
 public:
  UnitCheck(DeskSession& session, std::int32_t unitKey) : session_(session), unitKey_(unitKey) {}

  std::vector<Finding> Run() {
    ReadBuilding();
    LookAtCredentials();
    LookAtCodes();
    LookAtTenants();
    LookAtSteps();
    LookAtBackups();
    LookAtCapacity();
    LookAtSettings();
    return std::move(findings_);
  }

 private:
  void Add(std::string what, std::string advice) {
    findings_.push_back({unitKey_, std::move(what), std::move(advice)});
  }

  [[nodiscard]] QueryResult Select(std::string_view columns, std::string_view table) const {
    return session_.sql().Select(
        fmt::format("SELECT {} FROM {} WHERE UnitKey={} ORDER BY RID", columns, table, unitKey_));
  }

  /// What rows of people, cards and codes may be linked to.
  void ReadBuilding() {
    schedules_ = OfferedSchedules(session_, unitKey_);
    doors_ = Select("RID", "DOORS").rowCount;
    for (const TenantGroup& group : ReadTenantGroups(session_, unitKey_)) {
      groups_.insert(group.rid);
      if (group.isZero) {  // then new tenants are in that one, and nobody is in none
        groups_.erase(kNoGroup);
      }
    }
  }

  void LookAtCredentials() {
    const QueryResult rows = Select(
        "RID, CredentialType, PINNo, FacilityCode, IDCode, SequenceNumber, ButtonNumber, DOORCODE",
        "CredentialBank");
    using Number = std::tuple<double, double, double, double, double, double>;
    std::map<Number, std::int32_t> seen;
    std::map<std::string, std::vector<std::int32_t>> hidden;  // by type
    for (const ResultRow row : rows.rows()) {
      const std::int32_t rid = qorcred::ToLong(row[0]);
      const double type = qorcred::NumericValue(row[1]);
      // A card is told by its number and facility code, a transmitter by the other codes as well.
      const auto code = [&](std::int32_t column) {
        return type == qorcred::kTransmitter ? qorcred::NumericValue(row[column]) : 0;
      };
      const auto [same, isFirst] =
          seen.try_emplace(Number{type, qorcred::NumericValue(row[2]),
                                  qorcred::NumericValue(row[3]), code(4), code(5), code(6)},
                           rid);
      const std::string name = CardEntry(type, TextOf(row[2]));
      cards_.emplace(rid, name);
      if (!isFirst) {
        Add(fmt::format("{} is there twice, as RID {} and RID {}", name, same->second, rid),
            kOneOfTwo);
      }
      if (ScreenLabelOf(type).empty()) {
        hidden[IsSet(row[1]) ? TextOf(row[1]) : "Null"].push_back(rid);
      }
      if (type != qorcred::kTransmitter) {  // the screen shows no door for these
        LookAtDoor(row[7], WithRid(name, rid), rid);
      }
    }
    for (const auto& [type, rids] : hidden) {
      Add(fmt::format("credentials of the type {}, which no screen knows: {}, the first RID {}",
                      type, rids.size(), rids.front()),
          "give them a type that the screens know ('sql --write'), or leave them");
    }
  }

  void LookAtDoor(const Value& door, const std::string& card, std::int32_t rid) {
    const double number = qorcred::NumericValue(door);
    if (number < 0 || number > static_cast<double>(doors_)) {
      Add(fmt::format("{} has the door {}, which is not there", card, TextOf(door)),
          fmt::format("give it one of the unit's doors, from 1, or 0 for none; neither a screen "
                      "nor another command can load the card before: 'sql --write \"UPDATE "
                      "CredentialBank SET DOORCODE=0 WHERE RID={}\"'",
                      rid));
    }
  }

  void LookAtCodes() {
    const QueryResult rows = Select(
        "RID, DIRECTORYCODE, MODIFIED, STARTDATE, ENDDATE, ISDNDCHECKED, DNDSCHEDULEID, "
        "ISCFCHECKED, CFSCHEDULEID",
        "DirectoryCode");
    std::unordered_map<std::string, std::int32_t> seen;
    for (const ResultRow row : rows.rows()) {
      const std::int32_t rid = qorcred::ToLong(row[0]);
      codes_.insert(rid);
      if (!IsListedCode(row[1], row[2])) {
        continue;
      }
      const std::string code = TextOf(row[1]);
      const auto [same, isFirst] = seen.try_emplace(code, rid);
      if (!isFirst) {
        Add(fmt::format("directory code {} is there twice, as RID {} and RID {}", code,
                        same->second, rid),
            kOneOfTwo);
      }
      const std::string name = "directory code " + code;
      LookAtPeriod(row[3], row[4], name);
      LookAtSwitched(row[5], row[6], name, "Do Not Disturb");
      LookAtSwitched(row[7], row[8], name, "Call Forwarding");
    }
  }

  /// A schedule that counts only while its setting is switched on.
  void LookAtSwitched(const Value& on, const Value& schedule, const std::string& code,
                      std::string_view setting) {
    if (IsSet(on) && qorcred::ToBoolean(on) && IsMissingSchedule(schedule)) {
      Add(fmt::format("{} has the schedule {} for {}, which is not there", code, TextOf(schedule),
                      setting),
          fmt::format("give the code another schedule for {}, or switch that off", setting));
    }
  }

  [[nodiscard]] bool IsMissingSchedule(const Value& id) const {
    return IsSet(id) && !schedules_.contains(TextOf(id));
  }

  void LookAtTenants() {
    const QueryResult rows =
        Select(fmt::format("RID, {}, CREDENTIALID1, CREDENTIALID2, DIRECTORYCODE, "
                           "ACTIVESTARTTIME, ACTIVEENDTIME, GROUPID, DOORSCHEDULE1, "
                           "DOORSCHEDULE2, DOORSCHEDULE3, DOORSCHEDULE4",
                           kTenantName),
               "Tenants");
    for (const ResultRow row : rows.rows()) {
      const std::string name = WithRid(TextOf(row[1]), qorcred::ToLong(row[0]));
      LookAtHeld(row[2], name);
      LookAtHeld(row[3], name);
      tenants_.insert(qorcred::ToLong(row[0]));
      if (IsSet(row[4]) && !codes_.contains(qorcred::ToLong(row[4]))) {
        Add(fmt::format("tenant {} has the directory code RID {}, which is {}", name,
                        TextOf(row[4]), WhoseIs("DirectoryCode", row[4])),
            "give the tenant another directory code, or none");
      }
      LookAtPeriod(row[5], row[6], "tenant " + name);
      LookAtGroup(row[7], name);
      for (const std::int32_t door : {1, 2, 3, 4}) {
        LookAtDoorSchedule(row[7 + door], door, name);
      }
    }
  }

  /// Of a row that a link names and this unit does not have: no link may lead to another unit.
  [[nodiscard]] std::string WhoseIs(std::string_view table, const Value& rid) const {
    const Value unit = session_.sql().Scalar(
        fmt::format("SELECT UnitKey FROM {} WHERE RID={}", table, qorcred::ToLong(rid)));
    return IsSet(unit) ? fmt::format("unit {}'s", TextOf(unit)) : "not there";
  }

  /// A step that waits may be about a row that is gone, as long as it was no other unit's.
  void LookAtSteps() {
    const QueryResult rows = Select("RID, Kind, SubjectRID, Sent", "ProgramSteps");
    Linked tenants;
    Linked codes;
    for (const ResultRow row : rows.rows()) {
      const bool isTenant = TextOf(row[1]) == step::kProgramTenant;
      const std::int32_t subject = qorcred::ToLong(row[2]);
      const bool waits = !IsSet(row[3]) || !qorcred::ToBoolean(row[3]);
      if (waits && !(isTenant ? tenants_ : codes_).contains(subject)) {
        (isTenant ? tenants : codes)[subject].push_back(qorcred::ToLong(row[0]));
      }
    }
    const auto tell = [this](std::int32_t step, std::string_view kind, std::int32_t subject,
                             std::int32_t unit) {
      Add(fmt::format("the programming step {} is about the {} RID {}, which is unit {}'s", step,
                      kind, subject, unit),
          fmt::format("mark it as sent, for it would tell the unit of another one's row: 'steps "
                      "done {} --unit {}'",
                      step, unitKey_));
    };
    EachOfOtherUnits("Tenants", tenants, [&](auto step, auto subject, auto unit) {
      tell(step, "tenant", subject, unit);
    });
    EachOfOtherUnits("DirectoryCode", codes, [&](auto step, auto subject, auto unit) {
      tell(step, "directory code", subject, unit);
    });
  }

  void LookAtBackups() {
    const QueryResult rows = Select("RID, TenantID", "TenantsBackup");
    Linked tenants;
    for (const ResultRow row : rows.rows()) {
      const std::int32_t tenant = qorcred::ToLong(row[1]);
      if (!tenants_.contains(tenant)) {
        tenants[tenant].push_back(qorcred::ToLong(row[0]));
      }
    }
    EachOfOtherUnits("Tenants", tenants, [this](auto row, auto tenant, auto unit) {
      Add(fmt::format("the row {} of TenantsBackup is of the tenant RID {}, who is unit {}'s", row,
                      tenant, unit),
          fmt::format("no screen and no other command deletes it: 'sql --write \"DELETE FROM "
                      "TenantsBackup WHERE RID={}\"'",
                      row));
    });
  }

  // Rows by what they are linked to.
  using Linked = std::map<std::int32_t, std::vector<std::int32_t>>;

  /// Tells `found` of each of the rows, of what it is linked to, and of whose that is.
  template <typename Found>
  void EachOfOtherUnits(std::string_view table, const Linked& linked, const Found& found) {
    std::vector<std::int32_t> rids;
    for (const auto& [rid, rows] : linked) {
      rids.push_back(rid);
    }
    for (const std::string& condition : ConditionsOnRids(rids)) {
      const QueryResult others = session_.sql().Select(
          fmt::format("SELECT RID, UnitKey FROM {} WHERE UnitKey<>{} AND {} ORDER BY RID", table,
                      unitKey_, condition));
      for (const ResultRow other : others.rows()) {
        const std::int32_t rid = qorcred::ToLong(other[0]);
        for (const std::int32_t row : linked.at(rid)) {
          found(row, rid, qorcred::ToLong(other[1]));
        }
      }
    }
  }

  void LookAtGroup(const Value& group, const std::string& tenant) {
    if (IsSet(group) && !groups_.contains(qorcred::ToLong(group))) {
      Add(fmt::format("tenant {} is in the group {}, which is {}", tenant, TextOf(group),
                      WhoseIs("TenantGroup", group)),
          groups_.contains(kNoGroup)
              ? "put the tenant into one of the unit's groups, or into 0, which is none"
              : "put the tenant into one of the unit's groups");
    }
  }

  void LookAtDoorSchedule(const Value& schedule, std::int32_t door, const std::string& tenant) {
    if (IsMissingSchedule(schedule)) {
      Add(fmt::format("tenant {} has the schedule {} at door {}, which is not there", tenant,
                      TextOf(schedule), door),
          "give the tenant another schedule at that door");
    }
  }

  void LookAtHeld(const Value& held, const std::string& tenant) {
    if (!IsSet(held)) {
      return;
    }
    const std::int32_t rid = qorcred::ToLong(held);
    const auto card = cards_.find(rid);
    if (card == cards_.end()) {
      Add(fmt::format("tenant {} holds the credential RID {}, which is {}", tenant, rid,
                      WhoseIs("CredentialBank", held)),
          "give the tenant another credential, or none");
      return;
    }
    const auto [holder, isFirst] = holders_.try_emplace(rid, tenant);
    if (!isFirst) {
      Add(fmt::format("{} is held by {} and by {}", WithRid(card->second, rid), holder->second,
                      tenant),
          "assign it to the right one");
    }
  }

  void LookAtPeriod(const Value& start, const Value& end, const std::string& what) {
    const auto* first = start.As<qorcred::Date>();
    const auto* last = end.As<qorcred::Date>();
    if (first != nullptr && last != nullptr && qorcred::SecondsBetween(*first, *last) < 0) {
      Add(fmt::format("the period of {} ends before it begins", what),
          "change its first or its last day");
    }
  }

  void LookAtCapacity() {
    const std::optional<std::int32_t> capacity = CapacityOf(session_, unitKey_);
    if (!capacity) {
      Add("its capacity is not known",
          fmt::format("give it a type that has one: 'units edit {} --type TYPE'", unitKey_));
      return;
    }
    const std::int64_t used = ReadUnitStatus(session_.sql(), unitKey_).CodesInUse();
    if (used > *capacity) {
      Add(fmt::format("{} codes are in use, and the unit takes {}", used, *capacity),
          "delete what is not needed: nothing can be added before");
    }
  }

  void LookAtSettings() {
    const QueryResult settings = Select(
        "RECORDDEACTIVATION, MaxDigitsDirectoryCode, MaxDigitsEntryCode, DEACTIVATIONDAYS, "
        "CARDDEFAULTFACILITYCODE, RFDEFAULTFACILITYCODE",
        "UnitSettings");
    for (const ResultRow row : settings.rows()) {
      const auto number = [&](std::string_view column) -> std::optional<std::int32_t> {
        const auto found = std::find(settings.columns.begin(), settings.columns.end(), column);
        const Value& cell = row[static_cast<std::int32_t>(found - settings.columns.begin())];
        const auto* given = cell.As<std::int32_t>();
        return given == nullptr ? std::nullopt : std::optional(*given);
      };
      for (const SettingBound* bound : BrokenBounds(number)) {
        Add(fmt::format("the setting '{}' is {}, and {} to {} can be", bound->name,
                        *number(bound->column), bound->lowest, bound->highest),
            fmt::format("give it another one: 'units edit {} {}'", unitKey_, bound->option));
      }
    }
  }

  DeskSession& session_;
  std::int32_t unitKey_;
  std::vector<Finding> findings_;
  ScheduleIds schedules_;                                  // that the screens offer
  std::unordered_set<std::int32_t> groups_{kNoGroup};      // RIDs, 0 where no group is zero
  std::size_t doors_ = 0;                                  // cards name them from 1, 0 is none
  std::unordered_map<std::int32_t, std::string> cards_;    // names by RID
  std::unordered_set<std::int32_t> codes_;                 // RIDs
  std::unordered_set<std::int32_t> tenants_;               // RIDs
  std::unordered_map<std::int32_t, std::string> holders_;  // tenants by the credential's RID
};

}  // namespace

std::vector<Finding> FindingsIn(DeskSession& session, std::int32_t unitKey) {
  return UnitCheck(session, unitKey).Run();
}

Table WholeCheck(DeskSession& session, const std::vector<UnitName>& units,
                 const Progress& progress) {
  const Undoable oneState = session.OneState();
  const auto total = static_cast<std::int64_t>(units.size()) + 2;
  std::int64_t done = 0;
  const auto next = [&] {
    if (progress && !progress(done++, total)) {
      throw CancelledError();
    }
  };
  Table table;
  table.columns = {{"Unit", "unit"}, {"What is wrong", "fault"}, {"How to mend it", "advice"}};
  next();
  for (const std::string& damage : session.Damages()) {
    table.rows.push_back({Null{}, "the store is damaged: " + damage, "restore the last backup"});
  }
  for (const UnitName& unit : units) {
    next();
    for (Finding& finding : FindingsIn(session, unit.key)) {
      table.rows.push_back({unit.key, std::move(finding.what), std::move(finding.advice)});
    }
  }
  next();
  for (const std::string& fault : FaultsOfHistory(session, {})) {
    table.rows.push_back({Null{}, "the history: " + fault,
                          "compare with a backup; what the rows hold is not touched by it"});
  }
  return table;
}

}  // namespace qorhost
