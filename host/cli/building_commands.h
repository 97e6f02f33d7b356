// The commands for units, doors and schedules: what they say.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "host/cli/command_session.h"
#include "host/cli/list_options.h"
#include "host/desks/unit_desk.h"

namespace qorhost {

struct UnitOptions {
  UnitEntry entry;
  std::optional<std::string> key;  ///< of a new unit
  std::vector<std::string> toEdit;
  std::vector<std::string> toDelete;
  bool settings = false;  ///< of list: prints them
  bool trial = false;     ///< tells what it would do
};

struct DoorOptions {
  std::vector<std::string> doors;
  std::vector<std::string> names;  ///< one for each
  bool trial = false;
};

struct ScheduleOptions {
  std::string schedule;
  std::string name;
  std::optional<std::string> id;      ///< of a new schedule
  std::vector<std::string> toDelete;  ///< all of them or none
  bool trial = false;
};

/// Of `options` the settings.
ExitStatus RunUnitList(const GlobalOptions& global, const UnitOptions& options,
                       const ListOptions& asked, Console& console);
ExitStatus RunUnitAdd(const GlobalOptions& global, const UnitOptions& options, Console& console);
ExitStatus RunUnitEdit(const GlobalOptions& global, const UnitOptions& options, Console& console);
ExitStatus RunUnitDelete(const GlobalOptions& global, const UnitOptions& options, Console& console);
ExitStatus RunDoorEdit(const GlobalOptions& global, const DoorOptions& options, Console& console);
ExitStatus RunScheduleList(const GlobalOptions& global, const ListOptions& asked, Console& console);
ExitStatus RunScheduleAdd(const GlobalOptions& global, const ScheduleOptions& options,
                          Console& console);
ExitStatus RunScheduleEdit(const GlobalOptions& global, const ScheduleOptions& options,
                           Console& console);
ExitStatus RunScheduleDelete(const GlobalOptions& global, const ScheduleOptions& options,
                             Console& console);

}  // namespace qorhost
