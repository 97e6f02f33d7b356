// The commands that exchange a unit's directory codes with a unit file.
#pragma once

#include <string>

#include "host/cli/command_session.h"

namespace qorhost {

struct DirCodeSyncOptions {
  std::string from;  ///< a file, or "-" for standard input
  bool dryRun = false;
  bool skipBadLines = false;
};

struct DirCodeExportOptions {
  std::string to;        ///< a file, or "-" for standard output
  std::string firmware;  ///< empty: that of units with display options
  bool skip = false;     ///< leaves codes out that a unit cannot hold
  bool force = false;    ///< replaces a file that is there already
  bool trial = false;    ///< tells what it would write
};

/// Makes the store's codes of the unit what the file says the unit holds, all of it or nothing.
ExitStatus RunDirCodeSync(const GlobalOptions& global, const DirCodeSyncOptions& options,
                          Console& console);
/// Writes the store's codes of the unit, by number. The file appears when it is whole.
ExitStatus RunDirCodeExport(const GlobalOptions& global, const DirCodeExportOptions& options,
                            Console& console);

}  // namespace qorhost
