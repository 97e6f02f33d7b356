// The command that copies a store, or units of it, into another one, and a building of another
// application into a new one.
#pragma once

#include <optional>
#include <string>

#include "host/cli/command_session.h"
#include "host/cli/commands.h"
#include "host/cli/moving_commands.h"
#include "host/desks/copied_rows.h"

namespace qorhost {

struct CopyOptions {
  std::optional<std::string> from;  ///< a file or a server; else the store of --db
  std::string to;                   ///< the same; made where there is none
  UnitKeys units;                   ///< these alone; none: that of --unit, or all
  bool trial = false;               ///< tells what it would do
  MovingOptions moving;             ///< of a desktop database, but its name
  bool force = false;               ///< of a desktop database: replaces what is there
};

/// Adds `copy`. `global` and `options` must outlive the parsing and the run.
void DescribeCopy(CommandPlace place, const GlobalOptions& global, CopyOptions& options);

/// Copies the whole store, or the units that are named, and tells what was copied once it was
/// compared. A desktop database becomes a new store, as by `init --from`.
ExitStatus RunCopy(const GlobalOptions& global, const CopyOptions& options, Console& console);

}  // namespace qorhost
