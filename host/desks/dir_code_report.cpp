#include "host/desks/dir_code_report.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <string_view>

#include "frame/convert.h"
#include "frame/data_services.h"
#include "frame/date.h"
#include "frame/schedules.h"
#include "host/desks/field_names.h"
#include "host/desks/input_fault.h"
#include "host/desks/operation_record.h"
#include "host/desks/report_captions.h"
#include "host/desks/unit_schedules.h"
#include "host/desks/words.h"
#include "host/store/rows.h"
#include "host/unit/unit_code.h"
#include "reports/dir_code_fragments.h"

namespace qorhost {

namespace {

using qorcred::TableView;
using qorcred::Value;

constexpr std::array<std::string_view, 2> kScheduleCaptions{dir_code_caption::kDndSchedule,
                                                            dir_code_caption::kCfSchedule};

FieldKind KindOf(std::int32_t rid) {
  namespace field = qorcred::report_field;
  switch (rid) {
    case field::kDirectoryCode:
    case field::kTimeDelay:
      return FieldKind::kNumber;
    case field::kPhoneNumber:
    case field::kExtension:
    case field::kCfPhoneNumber:
    case field::kCfExtension:
    case field::kDisplayName:
      return FieldKind::kText;
    case field::kDndSchedule:
    case field::kCfSchedule:
      return FieldKind::kSchedule;
    case field::kCfTimeDelay:
      return FieldKind::kNumberText;
    case field::kIsDndChecked:
    case field::kIsCfChecked:
    case field::kActive:
      return FieldKind::kYesNo;
    case field::kStartDate:
    case field::kEndDate:
      return FieldKind::kDate;
    case field::kShowDisplayName:
    case field::kShowDirectoryCode:
      return FieldKind::kYesNoText;
    default:
      return FieldKind::kOther;
  }
}

/// Operators at the end of the field's list that the report takes without narrowing anything.
std::size_t LeftOutOf(std::int32_t rid) {
  namespace field = qorcred::report_field;
  switch (rid) {
    case field::kDirectoryCode:
    case field::kTimeDelay:
      return 2;  // the ranges
    case field::kDisplayName:
      return 1;  // "does not contain" asks for schedules of that name
    default:
      return 0;
  }
}

NumberRange RangeOf(std::int32_t rid) {
  return rid == qorcred::report_field::kDirectoryCode ? NumberRange{0, kLargestUnitCode}
                                                      : kFromZero;
}

std::vector<ReportField> FieldsIn(const ListModel& list,
                                  const std::vector<std::string>& schedules) {
  namespace field = qorcred::report_field;
  std::vector<ReportField> fields;
  for (std::int32_t index = 0; index < list.count(); ++index) {
    const std::int32_t rid = list.ItemData(index);
    ReportField& added = fields.emplace_back();
    added.name = list.Text(index);
    added.alsoCalled = OtherNames(DirCodeNames(), added.name);
    added.kind = KindOf(rid);
    added.leftOut = LeftOutOf(rid);
    added.mayBeUnset = rid == field::kTimeDelay || rid == field::kCfTimeDelay;
    if (rid == field::kActive) {
      added.yesWord = "Active";
      added.noWord = "Inactive";
    }
    added.range = RangeOf(rid);
    if (added.kind == FieldKind::kSchedule) {
      added.names = schedules;
      const std::int32_t tick =
          list.FindData(rid == field::kDndSchedule ? field::kIsDndChecked : field::kIsCfChecked);
      added.switchedBy = tick == ListModel::kNone ? std::string() : list.Text(tick);
    }
  }
  return fields;
}

/// A cell as the grid shows it, in the type of its field: dates and Booleans are such.
Value ShownAs(FieldKind kind, const Value& cell, const GridValueItems* items) {
  const std::string* translated = items == nullptr ? nullptr : items->Translation(cell);
  Value shown = translated == nullptr ? cell : Value(*translated);
  if (const auto* text = shown.As<std::string>(); text != nullptr && kind == FieldKind::kDate) {
    const auto date = qorcred::ParseDate(*text);
    return date ? Value(*date) : shown;
  }
  if (kind == FieldKind::kYesNo || kind == FieldKind::kYesNoText) {
    const auto flag = YesOrNo(qorcred::TextOrEmpty(shown));
    return flag ? Value(*flag) : shown;
  }
  return shown;
}

/// One column of the output: of the result and, where the grid shows it, of the grid.
struct OutputColumn {
  ListField field;
  std::int32_t index = 0;
  const GridValueItems* items = nullptr;
};

List MakeList(std::vector<OutputColumn> columns, const qorcred::ObjectRef& bound) {
  List list;
  list.title = "Directory codes";
  for (OutputColumn& column : columns) {
    list.fields.push_back(std::move(column.field));
  }
  if (bound == nullptr) {
    return list;
  }
  const TableView rows(bound);
  const std::int32_t lastColumn = rows.UpperColumn();
  for (const std::int32_t row : RowNumbersOf(rows)) {
    std::vector<Value> cells;
    cells.reserve(columns.size());
    for (std::size_t at = 0; at < columns.size(); ++at) {
      const OutputColumn& column = columns[at];
      cells.push_back(
          column.index <= lastColumn
              ? ShownAs(list.fields[at].kind, rows.Cell(row, column.index), column.items)
              : Value(qorcred::Null{}));
    }
    list.rows.push_back(std::move(cells));
  }
  return list;
}

}  // namespace

DirCodeReport::DirCodeReport(DeskSession& session, std::int32_t unitKey)
    : session_(session),
      unitKey_(unitKey),
      filter_(session, kMostConditions),
      controller_("clsDirCodeReport", session.host(), session.tracer()) {
  const OperationRecord opening(session_);
  controller_.Set("gfrmTxFilter", filter_.screen());
  controller_.Set("mlngUnitKey", unitKey);
  controller_.Run<&qorcred::clsDirCodeReport::pbPopulateArrOperators>();
  controller_.Run<&qorcred::clsDirCodeReport::pbComboData>(session_.connection());
  opening.RequireNoFailure("open the report");
}

void DirCodeReport::Narrow(const std::vector<std::string>& conditions) {
  if (conditions.size() > kMostConditions) {
    throw InputFault(report_input::kCondition, conditions[kMostConditions],
                     fmt::format("the report takes at most {} conditions, not {}", kMostConditions,
                                 conditions.size()));
  }
  const std::vector<ReportField> fields = FilterFields();
  for (std::size_t row = 0; row < conditions.size(); ++row) {
    const ReportCondition condition = ReadCondition(conditions[row], fields);
    filter_.Enter(row, condition, fields[static_cast<std::size_t>(condition.field)].kind);
  }
}

std::vector<ReportField> DirCodeReport::FilterFields() const {
  return FieldsIn(filter_.Fields(0), ReportedSchedules(session_, unitKey_));
}

Outcome DirCodeReport::Compose() {
  OperationRecord composing(session_);
  statement_ =
      controller_.Run<&qorcred::clsDirCodeReport::pbGenSql>(session_.connection(), unitKey_);
  return composing.End(true);
}

Outcome DirCodeReport::Run() {
  OperationRecord showing(session_);
  qorcred::ObjectRef grid = grid_;
  qorcred::ObjectRef layout;
  const qorcred::ObjectRef noValueItem;
  controller_.Run<&qorcred::clsDirCodeReport::pvDirCodeReportResult>(
      unitKey_, session_.connection(), grid, statement_, layout, noValueItem);

  for (std::size_t index = 0; index < grid_->columns().size(); ++index) {
    const GridColumnModel& column = grid_->columns().at(index);
    if (std::find(kScheduleCaptions.begin(), kScheduleCaptions.end(), column.caption()) !=
        kScheduleCaptions.end()) {
      for (const qorcred::FixedSchedule& fixed : {qorcred::kNoAccess, qorcred::kFullAccess}) {
        column.items().Add(fixed.id, fixed.name);
      }
    }
  }
  return showing.End(true);
}

List DirCodeReport::Rows() const {
  const std::vector<std::string> names = ColumnNames();
  const std::vector<ReportField> known = FieldsIn(filter_.Fields(0), {});
  std::vector<OutputColumn> columns;
  for (std::size_t index = 0; index < names.size(); ++index) {
    OutputColumn& column = columns.emplace_back();
    column.index = static_cast<std::int32_t>(index);
    column.field = {names[index], names[index]};
    const auto field = std::find_if(known.begin(), known.end(), [&](const ReportField& one) {
      return one.name == names[index];
    });
    if (field != known.end()) {
      column.field.kind = field->kind;
      column.field.otherNames = field->alsoCalled;
    }
    // The grid's columns and the result's match by position; one that the store's owner moved is
    // shown as it is stored.
    const bool inGrid =
        index < grid_->columns().size() && grid_->columns().at(index).caption() == names[index];
    column.field.isExtra = !inGrid || !grid_->columns().at(index).visible();
    column.items = inGrid ? &grid_->columns().at(index).items() : nullptr;
  }
  return MakeList(std::move(columns), grid_->bound());
}

std::vector<std::string> DirCodeReport::ColumnNames() const {
  const QueryResult fields = session_.sql().Select(
      "SELECT FieldNameDisplay FROM TenantSelectionFields WHERE FieldName LIKE 'DirectoryCode._%' "
      "ORDER BY DisplaySeq");
  std::vector<std::string> names;
  for (const ResultRow row : fields.rows()) {
    names.push_back(qorcred::TextOrEmpty(row[0]));
  }
  if (names.empty()) {
    for (std::size_t index = 0; index < grid_->columns().size(); ++index) {
      names.push_back(grid_->columns().at(index).caption());
    }
  }
  return names;
}

}  // namespace qorhost
