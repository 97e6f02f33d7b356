#include "host/desktop/binding/picker_binding.h"

namespace qorhost {

PickerBinding::PickerBinding(PickerModel& picker, DateField& field)
    : ControlBinding(picker, field), picker_(picker), field_(field) {
  field_.OnChoice(
      [this](std::optional<qorcred::Date> date) { Put([this, date] { picker_.Choose(date); }); });
  ShowAll();
}

void PickerBinding::ShowOwn(ChangeKind kind) {
  if (kind == ChangeKind::kLimits) {
    field_.ShowLimits(picker_.minDate(), picker_.maxDate());
  }
  field_.ShowDate(picker_.shown());
  field_.ShowChosen(picker_.chosen());
}

}  // namespace qorhost
