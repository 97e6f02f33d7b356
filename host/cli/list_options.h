// What was asked of a list, and how its answer is printed.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

#include "host/cli/command_session.h"
#include "host/desks/list.h"
#include "host/terminal/console.h"

namespace qorhost {

struct ListOptions {
  ListQuery query;
  bool allUnits = false;
};

/// Raises UsageError where all units are asked for and one is named.
void RequireOneScope(const GlobalOptions& global, const ListOptions& options);

/// Prints what is asked of a list: a table as wide as the terminal, or JSON.
void PrintList(const GlobalOptions& global, List list, const ListQuery& query, Console& console);

/// Prints the list of the unit of --unit, or of all.
ExitStatus PrintOfUnits(const GlobalOptions& global, const ListOptions& options, Console& console,
                        List (*read)(DeskSession&, const std::vector<UnitName>&));
/// The same of a list that does without the units' names.
ExitStatus PrintOfQueue(const GlobalOptions& global, const ListOptions& options, Console& console,
                        List (*read)(DeskSession&, std::optional<std::int32_t>));

/// Prints the list of the chosen unit under its name, or those of all units as one.
void PrintUnitList(const GlobalOptions& global, const ListOptions& options, CommandSession& session,
                   Console& console, const std::function<List(const UnitName&)>& read);

}  // namespace qorhost
