#include "host/cli/report_filter.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <string>

#include "frame/runtime_error.h"
#include "frame/text.h"
#include "host/cli/arguments.h"
#include "host/cli/console.h"
#include "host/cli/display_text.h"
#include "trace/tracing_object.h"

namespace qorhost {

namespace {

/// A credential type as the report calls it and as `credentials add --type` does.
struct TypeName {
  std::string_view name;
  std::string_view word;
};
// By the stored number.
constexpr std::array kTypeNames{
    TypeName{"Corvin 30 Bit card", "card30"}, TypeName{"Standard 26 Bit card", "card26"},
    TypeName{"Transmitter", "transmitter"}, TypeName{"Corporate 1000 35-Bit Card", "card35"}};

/// The credential screen writes "30-Bit", the report "30 Bit".
bool SameTypeName(std::string_view one, std::string_view other) {
  return qorcred::CompareIgnoringCase(qorcred::ReplaceAll(one, "-", " "),
                                      qorcred::ReplaceAll(other, "-", " ")) == 0;
}

void ChooseType(ListModel& types, std::string_view given) {
  const auto* const found =
      std::find_if(kTypeNames.begin(), kTypeNames.end(), [given](const TypeName& known) {
        return SameTypeName(known.name, given) || SameTypeName(known.word, given);
      });
  if (found == kTypeNames.end()) {
    std::string names;
    for (const TypeName& known : kTypeNames) {
      names += fmt::format("{}{} ({})", names.empty() ? "" : ", ", known.name, known.word);
    }
    throw UsageError(
        fmt::format("--where: '{}' is no credential type: {}", Displayable(given), names));
  }
  types.Clear();
  for (std::size_t type = 0; type < kTypeNames.size(); ++type) {
    types.AddItemWithData(std::string(kTypeNames[type].name), static_cast<std::int32_t>(type));
  }
  types.Select(static_cast<std::int32_t>(found - kTypeNames.begin()));
}

void ChooseDay(PickerModel& picker, const std::string& given) {
  try {
    picker.Choose(ReadDate("--where", given).date);
  } catch (const qorcred::RuntimeError&) {
    throw UsageError(fmt::format("--where: '{}' lies outside the years that the screen offers",
                                 Displayable(given)));
  }
}

}  // namespace

ReportFilter::ReportFilter(StoreSession& session, std::size_t conditions)
    : rows_(std::max(conditions, kFewestFilterRows)),
      screen_(MakeReportFilterScreen(rows_, session.Today())),
      visible_(screen_) {
  if (session.traced()) {
    visible_ = std::make_shared<TracingScreen>(
        screen_, session.transcript(),
        [screen = screen_.get()](std::string_view name) { return screen->SpelledName(name); });
  }
}

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
    case FieldKind::kOther:
      At<TextModel>("txtFrom", row).SetText(TypedText("--where", condition.first));
      At<TextModel>("txtTo", row).SetText(TypedText("--where", condition.second));
      return;
  }
}

}  // namespace qorhost
