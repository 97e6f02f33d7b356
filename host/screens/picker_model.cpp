#include "host/screens/picker_model.h"

#include "frame/convert.h"
#include "frame/runtime_error.h"

namespace qorhost {

using qorcred::Arguments;
using qorcred::CivilTime;
using qorcred::Date;
using qorcred::ErrorNumber;
using qorcred::InvokeKind;
using qorcred::RuntimeError;
using qorcred::Value;

namespace {

constexpr CivilTime kFirstDay{1601, 1, 1, 0, 0, 0};
constexpr CivilTime kLastDay{9999, 12, 31, 0, 0, 0};

}  // namespace

PickerModel::PickerModel(Date shown)
    : ControlModel(
          PickerState{shown, false, qorcred::FromCivil(kFirstDay), qorcred::FromCivil(kLastDay)}) {
  RequireInside(shown);
}

Value PickerModel::Chosen() const {
  return chosen() ? Value(shown()) : Value(qorcred::Null{});
}

void PickerModel::Choose(std::optional<Date> date) {
  if (date) {
    RequireInside(*date);
  }
  PickerState changed = Own<PickerState>();
  changed.shown = date.value_or(shown());
  changed.chosen = date.has_value();
  Assign(Own<PickerState>(), changed, ChangeKind::kValue);
}

void PickerModel::Show(Date date) {
  RequireInside(date);
  Assign(Own<PickerState>().shown, date, ChangeKind::kValue);
}

void PickerModel::RequireInside(Date date) const {
  const double day = qorcred::DayOf(date).serial;
  if (!(day >= qorcred::DayOf(minDate()).serial && day <= qorcred::DayOf(maxDate()).serial)) {
    throw RuntimeError(ErrorNumber::kInvalidProcedureCall);
  }
}

Value PickerModel::OwnMember(ControlMember member, InvokeKind kind, Arguments arguments) {
  switch (member) {
    case ControlMember::kDefault:
    case ControlMember::kValue:
      return Property(Chosen(), kind, arguments, [this](const Value& put) {
        Choose(put.Is(qorcred::ValueType::kNull) ? std::nullopt
                                                 : std::optional<Date>(qorcred::ToDate(put)));
      });
    case ControlMember::kYear:
      return PartMember(&CivilTime::year, kind, arguments);
    case ControlMember::kMonth:
      return PartMember(&CivilTime::month, kind, arguments);
    case ControlMember::kDay:
      return PartMember(&CivilTime::day, kind, arguments);
    case ControlMember::kHour:
      return PartMember(&CivilTime::hour, kind, arguments);
    case ControlMember::kMinute:
      return PartMember(&CivilTime::minute, kind, arguments);
    case ControlMember::kSecond:
      return PartMember(&CivilTime::second, kind, arguments);
    case ControlMember::kMinDate:
      return Property(minDate(), kind, arguments,
                      [this](const Value& put) { SetMinDate(qorcred::ToDate(put)); });
    case ControlMember::kMaxDate:
      return Property(maxDate(), kind, arguments,
                      [this](const Value& put) { SetMaxDate(qorcred::ToDate(put)); });
    default:
      return CommonMember(member, kind, arguments);
  }
}

Value PickerModel::PartMember(int CivilTime::*part, InvokeKind kind, Arguments arguments) {
  CivilTime civil = qorcred::ToCivil(shown());
  return Property(std::int32_t{civil.*part}, kind, arguments, [&](const Value& put) {
    civil.*part = qorcred::ToLong(put);
    const Date changed = qorcred::FromCivil(civil);
    if (qorcred::ToCivil(changed) != civil) {
      // The parts carried over into each other: there is no such date.
      throw RuntimeError(ErrorNumber::kInvalidProcedureCall);
    }
    Show(changed);
  });
}

}  // namespace qorhost
