// A date and time picker in memory.
#pragma once

#include <optional>

#include "frame/date.h"
#include "host/screens/control_model.h"

namespace qorhost {

/// Members: Value (Date or Null, the default member), Month, Day, Year, Hour, Minute, Second,
/// MinDate, MaxDate. The parts are those of the date-time shown, which stays when the value becomes
/// Null: writing a part changes what is shown and leaves a Null value Null. A part that gives no
/// date (month 2 with day 31 shown) or a day before MinDate or after MaxDate raises
/// kInvalidProcedureCall and changes nothing; the time of day does not count for the limits.
class PickerModel final : public ControlModel {
 public:
  /// Shows `shown`, with no date chosen.
  explicit PickerModel(qorcred::Date shown);

  [[nodiscard]] bool chosen() const { return Own<PickerState>().chosen; }
  [[nodiscard]] qorcred::Date shown() const { return Own<PickerState>().shown; }
  /// The chosen date, or Null.
  [[nodiscard]] qorcred::Value Chosen() const;
  [[nodiscard]] qorcred::Date minDate() const { return Own<PickerState>().minDate; }
  [[nodiscard]] qorcred::Date maxDate() const { return Own<PickerState>().maxDate; }
  /// Chooses a date, or none.
  void Choose(std::optional<qorcred::Date> date);
  /// Shows a date without choosing one or none.
  void Show(qorcred::Date date);
  /// The limits of what is chosen and shown from now on.
  void SetMinDate(qorcred::Date day) {
    Assign(Own<PickerState>().minDate, day, ChangeKind::kLimits);
  }
  void SetMaxDate(qorcred::Date day) {
    Assign(Own<PickerState>().maxDate, day, ChangeKind::kLimits);
  }

 protected:
  qorcred::Value OwnMember(ControlMember member, qorcred::InvokeKind kind,
                           qorcred::Arguments arguments) override;

 private:
  qorcred::Value PartMember(int qorcred::CivilTime::*part, qorcred::InvokeKind kind,
                            qorcred::Arguments arguments);
  void RequireInside(qorcred::Date date) const;
};

}  // namespace qorhost
