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
    : shown_(shown),
      minDate_(qorcred::FromCivil(kFirstDay)),
      maxDate_(qorcred::FromCivil(kLastDay)) {
  RequireInside(shown);
}

Value PickerModel::Chosen() const {
  return chosen_ ? Value(shown_) : Value(qorcred::Null{});
}

void PickerModel::Choose(std::optional<Date> date) {
  if (date) {
    RequireInside(*date);
    shown_ = *date;
  }
  chosen_ = date.has_value();
}

void PickerModel::RequireInside(Date date) const {
  const double day = qorcred::DayOf(date).serial;
  if (!(day >= qorcred::DayOf(minDate_).serial && day <= qorcred::DayOf(maxDate_).serial)) {
    throw RuntimeError(ErrorNumber::kInvalidProcedureCall);
  }
}

Value PickerModel::OwnMember(ControlMember member, InvokeKind kind, Arguments arguments) {
  switch (member) {
    case ControlMember::kDefault:
    case ControlMember::kValue:
      if (kind != InvokeKind::kPut) {
        RequireCount(arguments, 0);
        return Chosen();
      }
      RequireCount(arguments, 1);
      Choose(arguments.front().Is(qorcred::ValueType::kNull)
                 ? std::nullopt
                 : std::optional<Date>(qorcred::ToDate(arguments.front())));
      return {};
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
      return LimitMember(minDate_, kind, arguments);
    case ControlMember::kMaxDate:
      return LimitMember(maxDate_, kind, arguments);
    default:
      return CommonMember(member, kind, arguments);
  }
}

Value PickerModel::PartMember(int CivilTime::*part, InvokeKind kind, Arguments arguments) {
  CivilTime civil = qorcred::ToCivil(shown_);
  if (kind != InvokeKind::kPut) {
    RequireCount(arguments, 0);
    return Value(std::int32_t{civil.*part});
  }
  RequireCount(arguments, 1);
  civil.*part = qorcred::ToLong(arguments.front());
  const Date changed = qorcred::FromCivil(civil);
  if (qorcred::ToCivil(changed) != civil) {
    // The parts carried over into each other: there is no such date.
    throw RuntimeError(ErrorNumber::kInvalidProcedureCall);
  }
  RequireInside(changed);
  shown_ = changed;
  return {};
}

Value PickerModel::LimitMember(Date& limit, InvokeKind kind, Arguments arguments) {
  if (kind == InvokeKind::kPut) {
    RequireCount(arguments, 1);
    limit = qorcred::ToDate(arguments.front());
    return {};
  }
  RequireCount(arguments, 0);
  return Value(limit);
}

}  // namespace qorhost
