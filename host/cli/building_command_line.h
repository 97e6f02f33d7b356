// The words of the commands for units, doors and schedules.
#pragma once

#include "host/cli/building_commands.h"
#include "host/cli/commands.h"

namespace qorhost {

/// Everything that their options write to.
struct BuildingChoice {
  ListOptions list;
  UnitOptions unit;
  DoorOptions door;
  ScheduleOptions schedule;
};

/// Adds `units`, `doors` and `schedules` with their commands. `global` and `choice` must outlive
/// the parsing and the run.
void DescribeBuilding(CommandPlace place, const GlobalOptions& global, BuildingChoice& choice);

}  // namespace qorhost
