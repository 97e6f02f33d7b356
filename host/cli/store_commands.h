// The commands that look at a store or make one.
#pragma once

#include <optional>
#include <string>

#include "host/cli/command_session.h"
#include "host/cli/list_options.h"
#include "host/cli/moving_commands.h"
#include "host/desks/store_rights.h"

namespace qorhost {

struct InitOptions {
  bool demo = false;
  bool force = false;
  bool trial = false;        ///< makes the store and does not put it in its place
  bool distributed = false;  ///< on a server that spreads its tables over several
  MovingOptions moving;      ///< of a building that is brought in
  StoreRoles roles;          ///< of a store on a server
  bool rightsAlone = false;  ///< nothing is made
};

struct SqlOptions {
  std::optional<std::string> statement;  ///< or - for a script from standard input
  std::optional<std::string> file;       ///< a script, or - for standard input
  bool write = false;
  bool trial = false;  ///< tells what it would do
};

/// Creates the store's file; an existing store is replaced with --force only, and stays as it was
/// when the new one cannot be made. A file that is no store is never replaced.
ExitStatus RunInit(const GlobalOptions& global, const InitOptions& options, Console& console);
/// Lists the units with the codes in use and their capacity.
ExitStatus RunUnits(const GlobalOptions& global, const ListOptions& asked, Console& console);
/// Lists the doors with their names and their captions on the credential screen.
ExitStatus RunDoors(const GlobalOptions& global, const ListOptions& asked, Console& console);
/// Lists the queue of programming steps.
ExitStatus RunSteps(const GlobalOptions& global, Console& console);
/// Runs one statement of the dialect, or those of a script as one unit of work, and shows their
/// rows or the numbers of rows changed.
ExitStatus RunSql(const GlobalOptions& global, const SqlOptions& options, Console& console);

}  // namespace qorhost
