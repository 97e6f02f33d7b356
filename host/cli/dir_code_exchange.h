// The commands that exchange a unit's directory codes with a unit file.
#pragma once

#include <string>

#include "host/cli/console.h"
#include "host/desks/session.h"

namespace qorhost {

struct SyncOptions {
  std::string from;  ///< a file, or "-" for standard input
  bool dryRun = false;
  bool skipBadLines = false;
};

struct ExportOptions {
  std::string to;        ///< a file, or "-" for standard output
  std::string firmware;  ///< empty: that of units with display options
  bool skip = false;     ///< leaves codes out that a unit cannot hold
};

/// Makes the store's codes of the unit what the file says the unit holds, all of it or nothing.
ExitStatus RunCodeSync(const GlobalOptions& global, const SyncOptions& options, Console& console);
/// Writes the store's codes of the unit, by number. A file is replaced when the new one is whole.
ExitStatus RunCodeExport(const GlobalOptions& global, const ExportOptions& options,
                         Console& console);

}  // namespace qorhost
