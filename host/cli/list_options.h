// What was asked of a list, and how its answer is printed.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "host/cli/command_session.h"
#include "host/cli/list_output.h"
#include "host/desks/list.h"
#include "host/files/html_page.h"
#include "host/terminal/console.h"

namespace qorhost {

struct ListOptions {
  ListQuery query;
  bool allUnits = false;
  OutputOptions output;
};

/// A list that was read, and what stands above it.
struct PrintedList {
  List list;                                 ///< nothing was asked of it yet
  std::optional<UnitName> unit{};            ///< that it is of; none: all units
  std::string title{};                       ///< displayable, above a table; may be empty
  bool everyColumn = false;                  ///< CSV and JSON have the extra columns, too
  std::vector<std::string> narrowedBy = {};  ///< conditions that its rows meet already
  /// Makes the page of its answer; none: that of a list.
  std::function<HtmlPage(List answer, const ListQuery& asked)> page = nullptr;
};

/// Raises UsageError where all units are asked for and one is named.
void RequireOneScope(const GlobalOptions& global, const ListOptions& options);

/// Prints what is asked of a list: a table as wide as the terminal, CSV, JSON or a page.
void PrintList(const GlobalOptions& global, const ListOptions& options, PrintedList printed,
               CommandSession& session, Console& console);

/// Prints the list of the unit that the scope names, or of all: those of --all-units, too.
ExitStatus PrintOfUnits(const GlobalOptions& global, const ListOptions& options, UnitScope scope,
                        Console& console, List (*read)(DeskSession&, const std::vector<UnitName>&));
/// The same of what waits for the unit of --unit or QORHOST_UNIT, or for all.
ExitStatus PrintOfQueue(const GlobalOptions& global, const ListOptions& options, Console& console,
                        List (*read)(DeskSession&, std::optional<std::int32_t>));

/// Prints the list of the chosen unit under its name, or those of all units as one.
void PrintUnitList(const GlobalOptions& global, const ListOptions& options, CommandSession& session,
                   Console& console, const std::function<List(const UnitName&)>& read);

/// The one unit of --unit; nothing where there are all.
[[nodiscard]] std::optional<UnitName> OneUnit(const GlobalOptions& global,
                                              const std::vector<UnitName>& units);

}  // namespace qorhost
