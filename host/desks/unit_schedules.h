// The schedules of a unit, as its screens and its report know them.
#pragma once

#include <cstdint>
#include <string>
#include <unordered_set>
#include <vector>

#include "host/desks/session.h"

namespace qorhost {

/// The ids of schedules, as a unit writes them.
using ScheduleIds = std::unordered_set<std::string>;

/// Those that the unit's screens offer: the two that every unit has, and the stored ones that are
/// not deleted.
[[nodiscard]] ScheduleIds OfferedSchedules(DeskSession& session, std::int32_t unitKey);

/// The names by which the directory-code report finds schedules: of every stored one, by their ids.
[[nodiscard]] std::vector<std::string> ReportedSchedules(DeskSession& session,
                                                         std::int32_t unitKey);

}  // namespace qorhost
