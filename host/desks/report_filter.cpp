#include "host/desks/report_filter.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "frame/date.h"
#include "host/desks/credential_types.h"
#include "host/desks/input_fault.h"
#include "host/desks/typed_input.h"

namespace qorhost {

namespace {

void OfferTypes(ListModel& types) {
  types.Clear();
  for (const CredentialTypeWords& known : CredentialTypes()) {
    types.AddItemWithData(std::string(known.reportName), known.type);
  }
}

void ChooseType(ListModel& types, std::string_view given) {
  const std::int16_t type = ReadCredentialType(given).type;
  OfferTypes(types);
  types.Select(type);
}

void ChooseDay(PickerModel& picker, const std::string& given) {
  constexpr std::string_view kField = report_input::kCondition;
  ChooseIn(picker, kField, ReadDate(kField, given).date, given);
}

/// "2026-01-31"; "" where none is chosen.
std::string DayIn(const PickerModel& picker) {
  if (!picker.chosen()) {
    return {};
  }
  const qorcred::CivilTime day = qorcred::ToCivil(picker.shown());
  return fmt::format("{:04}-{:02}-{:02}", day.year, day.month, day.day);
}

bool IsYesNo(FieldKind kind) {
  return kind == FieldKind::kYesNo || kind == FieldKind::kYesNoText;
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

void ReportFilter::Follow(std::vector<ReportField> fields) {
  fields_ = std::move(fields);
  for (std::size_t row = 0; row < rows_; ++row) {
    selections_.push_back(Fields(row).OnSelect([this, row](std::int32_t) { OfferOperators(row); }));
    selections_.push_back(Operators(row).OnSelect([this, row](std::int32_t) { ShowValues(row); }));
    OfferOperators(row);
  }
}

void ReportFilter::Clear(std::size_t row) {
  Fields(row).Select(ListModel::kNone);
  OfferOperators(row);
}

const ReportField* ReportFilter::FieldIn(std::size_t row) const {
  const std::int32_t chosen = Fields(row).selected();
  return chosen == ListModel::kNone || static_cast<std::size_t>(chosen) >= fields_.size()
             ? nullptr
             : &fields_[static_cast<std::size_t>(chosen)];
}

void ReportFilter::OfferOperators(std::size_t row) {
  ListModel& operators = Operators(row);
  operators.Clear();
  At<TextModel>("txtFrom", row).SetText("");
  At<TextModel>("txtTo", row).SetText("");
  if (const ReportField* field = FieldIn(row)) {
    for (const ReportOperator& known : OperatorsOf(*field)) {
      operators.AddItem(std::string(known.word));
    }
    operators.Select(0);
    if (field->kind == FieldKind::kCredentialType) {
      OfferTypes(At<ListModel>("cboType", row));
      At<ListModel>("cboType", row).Select(0);
    }
  }
  operators.SetEnabled(FieldIn(row) != nullptr);
  ShowValues(row);
}

void ReportFilter::ShowValues(std::size_t row) {
  const ReportField* field = FieldIn(row);
  const std::int32_t operation = Operators(row).selected();
  const bool any = field != nullptr && operation != ListModel::kNone;
  const bool isDate = any && field->kind == FieldKind::kDate;
  const bool isType = any && field->kind == FieldKind::kCredentialType;
  const bool isAnswer = any && IsYesNo(field->kind);
  const bool isText = any && !isDate && !isType && !isAnswer;
  const bool isRange =
      any && OperatorsFor(field->kind)[static_cast<std::size_t>(operation)].IsRange();
  At<TextModel>("txtFrom", row).SetVisible(isText);
  At<TextModel>("txtTo", row).SetVisible(isText && isRange);
  At<PickerModel>("dtpDateFrom", row).SetVisible(isDate);
  At<PickerModel>("dtpDateTo", row).SetVisible(isDate && isRange);
  At<CheckModel>("chkBoolean", row).SetVisible(isAnswer);
  At<ListModel>("cboType", row).SetVisible(isType);
}

/// The condition in words, without the values that are missing.
std::string ReportFilter::EnteredIn(std::size_t row, const ReportField& field) const {
  const ReportOperator& chosen =
      OperatorsFor(field.kind)[static_cast<std::size_t>(Operators(row).selected())];
  std::string first = At<TextModel>("txtFrom", row).text();
  std::string second = At<TextModel>("txtTo", row).text();
  if (field.kind == FieldKind::kDate) {
    first = DayIn(At<PickerModel>("dtpDateFrom", row));
    second = DayIn(At<PickerModel>("dtpDateTo", row));
  } else if (IsYesNo(field.kind)) {
    first = At<CheckModel>("chkBoolean", row).state() == 0 ? "no" : "yes";
  }
  std::vector<std::string_view> words{field.name, chosen.word, first};
  if (chosen.IsRange()) {
    words.insert(words.end(), {"and", second});
  }
  std::erase(words, std::string_view());  // what is missing leaves no gap
  return fmt::format("{}", fmt::join(words, " "));
}

void ReportFilter::TakeEntered() {
  for (std::size_t row = 0; row < rows_; ++row) {
    const ReportField* field = FieldIn(row);
    if (field == nullptr || field->kind == FieldKind::kCredentialType) {
      continue;  // a type is chosen from a list
    }
    ReportCondition condition;
    try {
      condition = ReadCondition(EnteredIn(row, *field), fields_);
      (void)TypedText(report_input::kCondition, condition.first);
    } catch (const InputFault& fault) {
      throw InputFault(kConditionRows.at(row), fault.value(), fault.reason(), fault.kind());
    }
    if (field->kind == FieldKind::kYesNoText) {
      At<TextModel>("txtFrom", row).SetText(condition.first == "yes" ? "Yes" : "No");
    } else if (field->kind != FieldKind::kDate && field->kind != FieldKind::kYesNo) {
      At<TextModel>("txtFrom", row).SetText(condition.first);
      At<TextModel>("txtTo", row).SetText(condition.second);
    }
  }
}

}  // namespace qorhost
