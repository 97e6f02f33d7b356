// Binding of a date and time picker.
#pragma once

#include "host/desktop/binding/control_binding.h"
#include "host/desktop/binding/date_field.h"
#include "host/screens/picker_model.h"

namespace qorhost {

/// A picker without a chosen date goes on showing one, as the model does.
class PickerBinding final : public ControlBinding {
 public:
  PickerBinding(PickerModel& picker, DateField& field);
  ~PickerBinding() override { field_.OnChoice({}); }
  PickerBinding(const PickerBinding&) = delete;
  PickerBinding& operator=(const PickerBinding&) = delete;

 private:
  void ShowOwn(ChangeKind kind) override;

  PickerModel& picker_;
  DateField& field_;
};

}  // namespace qorhost
