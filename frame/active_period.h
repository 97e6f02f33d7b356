// The period in which a tenant or a directory code is active.
#pragma once

#include <string_view>

#include "frame/controls.h"
#include "frame/value.h"

namespace qorcred {

inline constexpr std::string_view kPeriodWithoutLength =
    "The End Date must be later than the Start Date. Please select a later End Date.";

/// Whether both dates are chosen and the end is no whole minute after the start. Seconds do not
/// count: a period within one minute has no length. Raises what ToDate() raises.
[[nodiscard]] bool IsPeriodWithoutLength(const Value& start, const Value& end);

/// Moves a picker that shows the date of `today` on by a year: Month and Day when that year has no
/// such day, then Year.
void ShowNextYear(const DatePicker& picker, Date today);

/// The default last day of a unit that deactivates `days` days after `from`: no later than
/// `latest`, however many days that are.
[[nodiscard]] Date LastActiveDay(Date from, double days, Date latest);

}  // namespace qorcred
