// The command that copies a store, or a unit of it, into another one.
#pragma once

#include <optional>
#include <string>

#include "host/cli/command_session.h"
#include "host/cli/commands.h"

namespace qorhost {

struct CopyOptions {
  std::optional<std::string> from;  ///< a file or a server; else the store of --db
  std::string to;                   ///< the same; made where there is none
  bool trial = false;               ///< tells what it would do
};

/// Adds `copy`. `global` and `options` must outlive the parsing and the run.
void DescribeCopy(CommandPlace place, const GlobalOptions& global, CopyOptions& options);

/// Copies the whole store, with --unit one unit, and tells what was copied once it was compared.
ExitStatus RunCopy(const GlobalOptions& global, const CopyOptions& options, Console& console);

}  // namespace qorhost
