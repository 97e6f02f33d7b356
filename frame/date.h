// Calendar arithmetic on Date and the default text of a date.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "frame/value.h"

namespace qorcred {

/// A date taken apart: month 1 to 12, day 1 to 31, hour 0 to 23.
struct CivilTime {
  int year = 1899;
  int month = 12;
  int day = 30;
  int hour = 0;
  int minute = 0;
  int second = 0;
  friend bool operator==(const CivilTime&, const CivilTime&) = default;
};

/// Whether a serial number lies in the years 100 to 9999. The functions below raise
/// kInvalidProcedureCall for a date that does not.
[[nodiscard]] bool IsInCalendar(double serial) noexcept;

/// Takes a date apart, rounded to the nearest second.
[[nodiscard]] CivilTime ToCivil(Date date);

/// Puts a date together. Parts outside their range carry over (month 13 is January of the next
/// year). Raises kInvalidProcedureCall when the result lies outside the years 100 to 9999.
[[nodiscard]] Date FromCivil(const CivilTime& civil);

/// The same day at midnight.
[[nodiscard]] Date DayOf(Date date);

/// `days` later; a fraction is rounded to a whole day, half to even. Raises kInvalidProcedureCall
/// outside the years 100 to 9999.
[[nodiscard]] Date AddDays(Date date, double days);

/// Calendar days from `from` to `to`, the time of day not counting; negative when `to` is earlier.
[[nodiscard]] std::int64_t DaysBetween(Date from, Date to);

/// Minute boundaries from `from` to `to`: seconds do not count.
[[nodiscard]] std::int64_t MinutesBetween(Date from, Date to);

/// Whole seconds from `from` to `to`.
[[nodiscard]] std::int64_t SecondsBetween(Date from, Date to);

/// "1/31/2026 2:05:09 PM"; without the time at midnight; the time alone on day zero.
[[nodiscard]] std::string DateText(Date date);

/// Reads a date text: M/D/YYYY (two-digit years 00-29 are 20xx, 30-99 are 19xx), "dd MMM yyyy" or
/// YYYY-MM-DD, each with an optional time ("14:05", "2:05:09 PM"; also after a "T"), or a time
/// alone. English month names; blanks around are ignored. Anything else gives nothing.
[[nodiscard]] std::optional<Date> ParseDate(std::string_view text);

}  // namespace qorcred
