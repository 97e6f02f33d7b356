// What the directory-code screens, and the unit's type, would not take of a unit's codes.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "host/desks/merge_plan.h"
#include "host/desks/unit_schedules.h"
#include "host/unit/unit_code.h"

namespace qorhost {

/// Why the screen would refuse a code, which is in canonical form; "" when it would take it. The
/// controller's merge stores whatever it is given.
[[nodiscard]] std::string FaultOnScreen(const UnitCode& code, const ScheduleIds& schedules);

/// Raises RefusedError for a plan after which the unit would have more codes than its type allows,
/// or longer ones: the controller would write them, and the unit be unusable on its screens.
void RequireRoom(DeskSession& session, std::int32_t unitKey, const MergePlan& plan,
                 const std::vector<UnitCode>& unit);

}  // namespace qorhost
