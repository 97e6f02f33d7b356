// The schedules of a unit.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/desks/list.h"
#include "host/desks/outcome.h"
#include "host/desks/seen_row.h"
#include "host/desks/session.h"
#include "host/desks/trial.h"

namespace qorhost {

/// What the inputs are called in an InputFault.
namespace schedule_input {
inline constexpr std::string_view kSchedule = "schedule";
inline constexpr std::string_view kName = "name";
inline constexpr std::string_view kId = "id";
}  // namespace schedule_input

/// Done or stale.
struct ChangedSchedule : Outcome {
  std::int32_t id = 0;
  std::string former;  ///< its name before; "" of a new one
  std::string name;
};

/// The schedules with how many tenants and directory codes use each; those that are deleted but
/// stored are left out.
[[nodiscard]] List ScheduleList(DeskSession& session, const std::vector<UnitName>& units);

/// Whether it is one of the two that every unit has, which stay as they are.
[[nodiscard]] bool IsOfEveryUnit(std::int32_t scheduleId);

// Changes, each a unit of work; of a trial nothing is stored. A schedule is named by its id or its
// name. Raise InputFault for one that is not there, for one of the two that every unit has, and for
// a name that is empty, that another schedule has, that would be taken for an id, or with an
// apostrophe, which conditions of reports could not name. Of a schedule that was seen in
// ScheduleList() and has another name by now, or is gone, nothing is changed: it is stale.

/// Without an id it gets the one behind the highest. Raises RefusedError for an id that is taken.
[[nodiscard]] ChangedSchedule AddSchedule(DeskSession& session, std::int32_t unitKey,
                                          const std::string& name,
                                          const std::optional<std::string>& id, Trial trial);
[[nodiscard]] ChangedSchedule RenameSchedule(DeskSession& session, std::int32_t unitKey,
                                             std::string_view schedule, const std::string& name,
                                             Trial trial,
                                             const std::optional<SeenRow>& seen = std::nullopt);
/// Raises RefusedError, which says where, while a tenant or a directory code uses it. Of several
/// all are deleted or none.
[[nodiscard]] std::vector<ChangedSchedule> DeleteSchedules(
    DeskSession& session, std::int32_t unitKey, const std::vector<std::string>& schedules,
    Trial trial);
[[nodiscard]] ChangedSchedule DeleteSchedule(DeskSession& session, std::int32_t unitKey,
                                             std::string_view schedule, Trial trial,
                                             const std::optional<SeenRow>& seen = std::nullopt);

}  // namespace qorhost
