#include "frame/active_period.h"

#include <algorithm>

#include "frame/convert.h"
#include "frame/date.h"
#include "frame/format.h"

namespace qorcred {

bool IsPeriodWithoutLength(const Value& start, const Value& end) {
  if (IsEmptyText(start) || IsEmptyText(end)) return false;
  // Compared as texts without seconds.
  constexpr std::string_view kMinutePicture = "dd MMM yyyy HH:mm";
  const Date from = ToDate(Format(start, kMinutePicture));
  const Date to = ToDate(Format(end, kMinutePicture));
  return MinutesBetween(from, to) <= 0;
}

void ShowNextYear(const DatePicker& picker, Date today) {
  const CivilTime civil = ToCivil(today);
  if (civil.month == 2 && civil.day == 29) {
    picker.SetMonth(3);
    picker.SetDay(1);
  }
  picker.SetYear(civil.year + 1);
}

Date LastActiveDay(Date from, double days, Date latest) {
  // No more days than lead to the latest date: the sum may lie beyond the calendar.
  const auto daysLeft = static_cast<double>(DaysBetween(from, latest));
  const Date lastDay = AddDays(from, std::min(days, daysLeft));
  return DaysBetween(lastDay, latest) > 0 ? lastDay : latest;
}

}  // namespace qorcred
