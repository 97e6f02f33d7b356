#include "tests/reports/report_fixture.h"

#include <string>

#include "host/screens/list_model.h"
#include "host/screens/picker_model.h"
#include "host/screens/simple_models.h"

namespace qortest {

void ChooseField(RecordingHost& host, std::int32_t row, std::int32_t field) {
  auto& fields = RowControl<qorhost::ListModel>(host, "cboField", row);
  fields.Clear();
  fields.AddItem("field");
  qorcred::Put(fields, "ItemData", 0, field);
  fields.Select(0);
}

void ChooseFieldAt(RecordingHost& host, std::int32_t row, std::int32_t place) {
  auto& fields = RowControl<qorhost::ListModel>(host, "cboField", row);
  fields.Clear();
  for (const char* field : {"Credential Type", "Card Number", "Facility Code", "Tenant Name"}) {
    fields.AddItem(field);
  }
  fields.Select(place);
}

void ChooseOperator(RecordingHost& host, std::int32_t row, std::int32_t place,
                    std::string_view word) {
  auto& operators = RowControl<qorhost::ListModel>(host, "cboFilter", row);
  operators.Clear();
  for (std::int32_t at = 0; at <= place; ++at) {
    operators.AddItem(std::string(word));
  }
  operators.Select(place);
}

void EnterValues(RecordingHost& host, std::int32_t row, std::string_view from,
                 std::string_view to) {
  RowControl<qorhost::TextModel>(host, "txtFrom", row).SetText(std::string(from));
  RowControl<qorhost::TextModel>(host, "txtTo", row).SetText(std::string(to));
}

void ChooseDates(RecordingHost& host, std::int32_t row, qorcred::Date from, qorcred::Date to) {
  RowControl<qorhost::PickerModel>(host, "dtpDateFrom", row).Choose(from);
  RowControl<qorhost::PickerModel>(host, "dtpDateTo", row).Choose(to);
}

void ClearRow(RecordingHost& host, std::int32_t row) {
  RowControl<qorhost::ListModel>(host, "cboField", row).Clear();
  RowControl<qorhost::ListModel>(host, "cboFilter", row).Clear();
  EnterValues(host, row, "");
}

}  // namespace qortest
