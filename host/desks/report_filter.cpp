#include "host/desks/report_filter.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "host/desks/credential_types.h"
#include "host/desks/typed_input.h"

namespace qorhost {

namespace {

void ChooseType(ListModel& types, std::string_view given) {
  const std::int16_t type = ReadCredentialType(given).type;
  types.Clear();
  for (const CredentialTypeWords& known : CredentialTypes()) {
    types.AddItemWithData(std::string(known.reportName), known.type);
  }
  types.Select(type);
}

void ChooseDay(PickerModel& picker, const std::string& given) {
  constexpr std::string_view kField = report_input::kCondition;
  ChooseIn(picker, kField, ReadDate(kField, given).date, given);
}

}  // namespace

ReportFilter::ReportFilter(DeskSession& session, std::size_t conditions)
    : rows_(std::max(conditions, kFewestFilterRows)),
      screen_(MakeReportFilterScreen(rows_, session.Today())) {}

void ReportFilter::Enter(std::size_t row, const ReportCondition& condition, FieldKind kind) {
  Fields(row).Select(condition.field);
  auto& operators = At<ListModel>("cboFilter", row);
  for (const ReportOperator& known : OperatorsFor(kind)) {
    operators.AddItem(std::string(known.word));
  }
  operators.Select(condition.operation);

  switch (kind) {
    case FieldKind::kDate:
      ChooseDay(At<PickerModel>("dtpDateFrom", row), condition.first);
      if (!condition.second.empty()) {
        ChooseDay(At<PickerModel>("dtpDateTo", row), condition.second);
      }
      return;
    case FieldKind::kYesNo:
      At<CheckModel>("chkBoolean", row).SetState(ReadYesNo(condition.first) ? 1 : 0);
      return;
    case FieldKind::kYesNoText:
      At<TextModel>("txtFrom", row).SetText(ReadYesNo(condition.first) ? "Yes" : "No");
      return;
    case FieldKind::kCredentialType:
      ChooseType(At<ListModel>("cboType", row), condition.first);
      return;
    case FieldKind::kText:
    case FieldKind::kNumber:
    case FieldKind::kNumberText:
    case FieldKind::kSchedule:
    case FieldKind::kOther:
      At<TextModel>("txtFrom", row).SetText(TypedText(report_input::kCondition, condition.first));
      At<TextModel>("txtTo", row).SetText(TypedText(report_input::kCondition, condition.second));
      return;
  }
}

}  // namespace qorhost
