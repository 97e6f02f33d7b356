// Times of the place, told with their offset from UTC.
#pragma once

#include <string>

#include "frame/value.h"

namespace qorhost {

/// A date of the store, which is a time of the place, as "2026-01-31T14:05:09+01:00": with the
/// offset that this machine's time zone has then. Empty for what is no date.
[[nodiscard]] std::string WithOffset(const qorcred::Value& time);
/// A time of UTC in the same form: "2026-01-31T14:05:09+00:00".
[[nodiscard]] std::string WithUtcOffset(qorcred::Date time);

}  // namespace qorhost
