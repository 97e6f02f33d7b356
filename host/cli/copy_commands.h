// The command that copies a store, or units of it, into another one.
#pragma once

#include <optional>
#include <string>

#include "host/cli/command_session.h"
#include "host/cli/commands.h"
#include "host/desks/copied_rows.h"

namespace qorhost {

struct CopyOptions {
  std::optional<std::string> from;  ///< a file or a server; else the store of --db
  std::string to;                   ///< the same; made where there is none
  UnitKeys units;                   ///< these alone; none: that of --unit, or all
  bool trial = false;               ///< tells what it would do
};

/// Adds `copy`. `global` and `options` must outlive the parsing and the run.
void DescribeCopy(CommandPlace place, const GlobalOptions& global, CopyOptions& options);

/// Copies the whole store, or the units that are named, and tells what was copied once it was
/// compared.
ExitStatus RunCopy(const GlobalOptions& global, const CopyOptions& options, Console& console);

}  // namespace qorhost
