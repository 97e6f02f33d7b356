// What the directory-code screen would not take of a unit's codes.
#pragma once

#include <cstdint>
#include <string>
#include <unordered_set>

#include "host/desks/session.h"
#include "host/unit/unit_code.h"

namespace qorhost {

/// The ids of schedules, as a unit writes them.
using ScheduleIds = std::unordered_set<std::string>;

/// The schedules that the unit's screen offers.
[[nodiscard]] ScheduleIds OfferedSchedules(DeskSession& session, std::int32_t unitKey);

/// Why the screen would refuse a code, which is in canonical form; "" when it would take it. The
/// controller's merge stores whatever it is given.
[[nodiscard]] std::string FaultOnScreen(const UnitCode& code, const ScheduleIds& schedules);

}  // namespace qorhost
