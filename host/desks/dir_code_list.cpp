#include "host/desks/dir_code_list.h"

#include <fmt/format.h>

#include <unordered_map>

#include "frame/convert.h"
#include "frame/text.h"
#include "host/unit/unit_rows.h"

namespace qorhost {

namespace {

using qorcred::Null;
using qorcred::Value;

// Columns of the detail query.
enum Column : std::int32_t {
  kRid = 0,
  kCode = 1,
  kPhone = 2,
  kExtension = 3,
  kTimeDelay = 4,
  kDndSchedule = 5,
  kIsDndChecked = 6,
  kCfSchedule = 7,
  kIsCfChecked = 8,
  kCfPhone = 9,
  kActive = 12,
  kStartDate = 13,
  kEndDate = 14,
  kDisplayName = 15,
  kState = 18,
};

bool IsSet(const Value& flag) {
  return !qorcred::IsEmptyText(flag) && qorcred::ToBoolean(flag);
}

Value TextOrNull(std::string text) {
  return text.empty() ? Value(Null{}) : Value(std::move(text));
}

/// A schedule by its name on the screen; one that the unit does not have by its id.
Value ScheduleName(const ListModel& schedules, const Value& id) {
  if (qorcred::IsEmptyText(id)) {
    return Null{};
  }
  const std::int32_t index = schedules.FindData(qorcred::ToLong(id));
  return index == ListModel::kNone ? Value(qorcred::TextOrEmpty(id)) : Value(schedules.Text(index));
}

std::string StateText(const Value& state) {
  switch (static_cast<int>(qorcred::NumericValue(state))) {
    case 0:
      return "in the unit";
    case 1:
      return "to be sent";
    case 2:
      return "change to be sent";
    default:
      return "deleted";
  }
}

std::unordered_map<std::int32_t, std::int32_t> TenantsByRow(DeskSession& session,
                                                            std::int32_t unitKey) {
  const QueryResult result = session.sql().Select(fmt::format(
      "SELECT DIRECTORYCODE FROM Tenants WHERE UnitKey={} AND DIRECTORYCODE <> NULL", unitKey));
  std::unordered_map<std::int32_t, std::int32_t> counts;
  for (const ResultRow row : result.rows()) {
    ++counts[qorcred::ToLong(row[0])];
  }
  return counts;
}

Value Ticked(DirCodeDesk& desk, std::string_view box) {
  return desk.screen().Check(box).state() == 1;
}

Value Typed(DirCodeDesk& desk, std::string_view box) {
  return TextOrNull(desk.screen().Box(box).text());
}

Value Spun(DirCodeDesk& desk, std::string_view spinner) {
  return desk.screen().Any(spinner).Invoke("", qorcred::InvokeKind::kGet, {});
}

Value ChosenSchedule(DirCodeDesk& desk, std::string_view list) {
  return TextOrNull(desk.screen().List(list).SelectedText());
}

}  // namespace

Table DirCodeTable(DeskSession& session, DirCodeDesk& desk) {
  Table table;
  table.columns = {{"RID", "rid"},
                   {"Code", "code"},
                   {"Phone", "phone"},
                   {"Ext.", "extension"},
                   {"Delay", "delay"},
                   {"Do not disturb", "dnd_schedule"},
                   {"Forwarded to", "forward_phone"},
                   {"During", "forward_schedule"},
                   {"Active", "active"},
                   {"From", "from"},
                   {"To", "to"},
                   {"Display name", "display_name"},
                   {"Tenants", "tenants"},
                   {"State", "state"}};
  const ListModel& schedules = desk.screen().List("cboSchedules");
  const QueryResult details = session.sql().Select(
      fmt::format("SELECT RID,{},MODIFIED FROM DIRECTORYCODE WHERE UNITKEY={} AND DIRECTORYCODE>=0",
                  kUnitColumns, desk.unitKey()));
  std::unordered_map<std::int32_t, std::int32_t> rowOf;
  for (const ResultRow row : details.rows()) {
    rowOf.emplace(qorcred::ToLong(row[kRid]), row.number());
  }
  const auto tenants = TenantsByRow(session, desk.unitKey());
  for (std::int32_t index = 1; index < desk.codes().count(); ++index) {
    const std::int32_t rid = desk.codes().ItemData(index);
    const auto found = rowOf.find(rid);
    if (found == rowOf.end()) {
      continue;  // deleted by someone else since the list was filled
    }
    const auto cell = [&](Column column) { return details.table->At(found->second, column); };
    const bool disturbs = !IsSet(cell(kIsDndChecked));
    const bool forwards = IsSet(cell(kIsCfChecked));
    const auto held = tenants.find(rid);
    table.rows.push_back({rid, cell(kCode), cell(kPhone), cell(kExtension), cell(kTimeDelay),
                          disturbs ? Value(Null{}) : ScheduleName(schedules, cell(kDndSchedule)),
                          forwards ? cell(kCfPhone) : Value(Null{}),
                          forwards ? ScheduleName(schedules, cell(kCfSchedule)) : Value(Null{}),
                          IsSet(cell(kActive)), cell(kStartDate), cell(kEndDate),
                          cell(kDisplayName), held == tenants.end() ? 0 : held->second,
                          StateText(cell(kState))});
  }
  return table;
}

std::vector<std::string> TenantsShown(DirCodeDesk& desk) {
  const ListModel& list = desk.screen().List("lstTenants");
  std::vector<std::string> names;
  for (std::int32_t index = 0; index < list.count(); ++index) {
    if (list.ItemData(index) > 0) {
      names.emplace_back(qorcred::Trim(list.Text(index)));
    }
  }
  return names;
}

std::vector<DirCodeDetail> DetailsShown(DirCodeDesk& desk) {
  ScreenModel& screen = desk.screen();
  return {{"Directory code", "code", qorcred::Val(desk.codes().SelectedText())},
          {"RID", "rid", screen.Variable("glngrid")},
          {"Phone", "phone", Typed(desk, "txtPhoneNo")},
          {"Extension", "extension", Typed(desk, "txtExtn")},
          {"Delay", "delay", Spun(desk, "pvnTimeDelay")},
          {"Do not disturb", "dnd", Ticked(desk, "chkDND")},
          {"  schedule", "dnd_schedule", ChosenSchedule(desk, "cboSchedules")},
          {"Call forwarding", "forwarding", Ticked(desk, "chkCallForwarding")},
          {"  schedule", "forward_schedule", ChosenSchedule(desk, "cboSchedulesCF")},
          {"  phone", "forward_phone", Typed(desk, "txtPhoneNocf")},
          {"  extension", "forward_extension", Typed(desk, "txtExtnCF")},
          {"  delay", "forward_delay", Spun(desk, "pvnTimeDelayCF")},
          {"Active", "active", Ticked(desk, "chkActive")},
          {"  from", "from", screen.Date("dtpStart").Chosen()},
          {"  to", "to", screen.Date("dtpEnd").Chosen()},
          {"Display name", "display_name", Typed(desk, "txtDisplayName")},
          {"  shown", "show_name", Ticked(desk, "chkShowDisplayName")},
          {"Code shown", "show_code", Ticked(desk, "chkShowDirCode")},
          {"Tenants", "tenants", qorcred::StringArray(TenantsShown(desk))}};
}

}  // namespace qorhost
