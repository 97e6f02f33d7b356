// Times of the place, told and read with their offset from UTC.
#pragma once

#include <cstdint>
#include <string>

#include "frame/value.h"

namespace qorhost {

/// Whose clock a date was read from, where it is a moment; such dates are told with their offset.
enum class TimeOf : std::uint8_t { kCalendar, kUtc, kPlace };

/// A date of the store, which is a time of the place, as "2026-01-31T14:05:09+01:00": with the
/// offset that this machine's time zone has then. Empty for what is no date.
[[nodiscard]] std::string WithOffset(const qorcred::Value& time);
/// A time of UTC in the same form: "2026-01-31T14:05:09+00:00".
[[nodiscard]] std::string WithUtcOffset(qorcred::Date time);
/// What the clock shows at a time that was told with that offset, in minutes east of UTC: of the
/// place with this machine's time zone. A calendar has no clock: the time as it is.
[[nodiscard]] qorcred::Date TimeOn(TimeOf clock, qorcred::Date time, int offset);

}  // namespace qorhost
