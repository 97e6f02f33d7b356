#include "host/desks/dir_code_list.h"

#include <fmt/format.h>

#include <algorithm>
#include <unordered_map>
#include <utility>

#include "frame/convert.h"
#include "frame/row_state.h"
#include "frame/screen_names.h"
#include "frame/text.h"
#include "host/desks/field_names.h"
#include "host/desks/list_entries.h"
#include "host/desks/name_words.h"
#include "host/desks/rows_by_rid.h"
#include "host/desks/tenant_name.h"
#include "host/unit/unit_rows.h"

namespace qorhost {

namespace {

using qorcred::Null;
using qorcred::Value;

// Columns of the detail query behind the RID: around those that a unit knows.
constexpr std::int32_t kFirstUnitColumn = 1;
constexpr std::int32_t kState = kFirstUnitColumn + unit_column::kCount;

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
    case qorcred::row_state::kInUnit:
      return "in the unit";
    case qorcred::row_state::kNotSent:
      return "to be sent";
    case qorcred::row_state::kChanged:
      return "change to be sent";
    case qorcred::row_state::kDeleted:
    default:
      return "deleted";
  }
}

/// The names of the tenants who have each code.
std::unordered_map<std::int32_t, qorcred::StringArray> TenantsByRow(DeskSession& session,
                                                                    std::int32_t unitKey) {
  constexpr std::int32_t kName = 1;
  const QueryResult result = session.sql().Select(fmt::format(
      "SELECT DIRECTORYCODE, {} FROM Tenants WHERE UnitKey={} AND DIRECTORYCODE <> NULL",
      kFullNameColumns, unitKey));
  std::unordered_map<std::int32_t, qorcred::StringArray> tenants;
  for (const ResultRow row : result.rows()) {
    tenants[qorcred::ToLong(row[0])].push_back(FullNameIn(row, kName));
  }
  for (auto& [rid, names] : tenants) {
    std::sort(names.begin(), names.end(), [](const std::string& one, const std::string& other) {
      return TextOrder(one) < TextOrder(other);
    });
  }
  return tenants;
}

std::vector<std::string> NamesOf(const ListModel& schedules) {
  std::vector<std::string> names;
  for (std::int32_t index = 0; index < schedules.count(); ++index) {
    names.push_back(schedules.Text(index));
  }
  return names;
}

std::vector<ListField> FieldsWith(const std::vector<std::string>& schedules) {
  const auto named = [](std::string_view key, FieldKind kind = FieldKind::kText) {
    return NamedField(DirCodeNames(), key, kind);
  };
  std::vector<ListField> fields{named("rid", FieldKind::kNumber),
                                named("code", FieldKind::kNumber),
                                named("phone"),
                                named("extension"),
                                named("delay", FieldKind::kNumber),
                                named("dnd_schedule", FieldKind::kSchedule),
                                named("forward_phone"),
                                named("forward_schedule", FieldKind::kSchedule),
                                named("active", FieldKind::kYesNo),
                                named("start", FieldKind::kDate),
                                named("end", FieldKind::kDate),
                                named("display_name"),
                                named("tenants"),
                                named("state")};
  for (const auto& [key, kind] :
       {std::pair("dnd", FieldKind::kYesNo), std::pair("forwarding", FieldKind::kYesNo),
        std::pair("forward_extension", FieldKind::kText),
        std::pair("forward_delay", FieldKind::kNumber), std::pair("show_name", FieldKind::kYesNo),
        std::pair("show_code", FieldKind::kYesNo)}) {
    fields.push_back(named(key, kind));
    fields.back().isExtra = true;
  }
  for (ListField& field : fields) {
    if (field.kind == FieldKind::kSchedule) {
      field.names = schedules;
    }
  }
  return fields;
}

Value Ticked(DirCodeDesk& desk, std::string_view box) {
  return desk.screen().Check(box).state() == 1;
}

Value Typed(DirCodeDesk& desk, std::string_view box) {
  return TextOrNull(desk.screen().Box(box).text());
}

Value Spun(DirCodeDesk& desk, std::string_view spinner) {
  return desk.screen().Spin(spinner).value();
}

Value ChosenSchedule(DirCodeDesk& desk, std::string_view list) {
  return TextOrNull(desk.screen().List(list).SelectedText());
}

}  // namespace

List DirCodeList(DeskSession& session, DirCodeDesk& desk) {
  List list;
  list.title = "Directory codes";
  list.csvHasExtras = true;
  const ListModel& schedules = desk.screen().List(qorcred::kDndScheduleList);
  list.fields = FieldsWith(NamesOf(schedules));
  const QueryResult details = session.sql().Select(
      SelectOfCodes(fmt::format("RID,{},MODIFIED", kUnitColumns), desk.unitKey()));
  const auto rowOf = RowsByRid(details);
  const auto tenants = TenantsByRow(session, desk.unitKey());
  for (std::int32_t index = placeholders::kInDirCodes; index < desk.codes().count(); ++index) {
    const std::int32_t rid = desk.codes().ItemData(index);
    const auto found = rowOf.find(rid);
    if (found == rowOf.end()) {
      continue;  // deleted by someone else since the list was filled
    }
    const ResultRow row(*details.table, found->second);
    const auto cell = [&row](unit_column::Column column) { return row[kFirstUnitColumn + column]; };
    const bool disturbs = !IsSet(cell(unit_column::kIsDndChecked));
    const bool forwards = IsSet(cell(unit_column::kIsCfChecked));
    const auto held = tenants.find(rid);
    list.rows.push_back(
        {rid,
         cell(unit_column::kCode),
         cell(unit_column::kPhone),
         cell(unit_column::kExtension),
         cell(unit_column::kTimeDelay),
         disturbs ? Value(Null{}) : ScheduleName(schedules, cell(unit_column::kDndSchedule)),
         forwards ? cell(unit_column::kCfPhone) : Value(Null{}),
         forwards ? ScheduleName(schedules, cell(unit_column::kCfSchedule)) : Value(Null{}),
         IsSet(cell(unit_column::kActive)),
         cell(unit_column::kStartDate),
         cell(unit_column::kEndDate),
         cell(unit_column::kDisplayName),
         held == tenants.end() ? qorcred::StringArray() : held->second,
         StateText(row[kState]),
         !disturbs,
         forwards,
         forwards ? cell(unit_column::kCfExtension) : Value(Null{}),
         forwards ? cell(unit_column::kCfTimeDelay) : Value(Null{}),
         IsSet(cell(unit_column::kShowDisplayName)),
         IsSet(cell(unit_column::kShowDirectoryCode))});
  }
  return list;
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
          {"  schedule", "dnd_schedule", ChosenSchedule(desk, qorcred::kDndScheduleList)},
          {"Call forwarding", "forwarding", Ticked(desk, "chkCallForwarding")},
          {"  schedule", "forward_schedule", ChosenSchedule(desk, qorcred::kCfScheduleList)},
          {"  phone", "forward_phone", Typed(desk, "txtPhoneNocf")},
          {"  extension", "forward_extension", Typed(desk, "txtExtnCF")},
          {"  delay", "forward_delay", Spun(desk, "pvnTimeDelayCF")},
          {"Active", "active", Ticked(desk, "chkActive")},
          {"  start", "start", screen.Date("dtpStart").Chosen()},
          {"  end", "end", screen.Date("dtpEnd").Chosen()},
          {"Display name", "display_name", Typed(desk, "txtDisplayName")},
          {"  shown", "show_name", Ticked(desk, "chkShowDisplayName")},
          {"Code shown", "show_code", Ticked(desk, "chkShowDirCode")},
          {"Tenants", "tenants", qorcred::StringArray(TenantsShown(desk))}};
}

}  // namespace qorhost
