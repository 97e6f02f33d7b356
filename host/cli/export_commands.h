// The command that takes a building out of its store.
#pragma once

#include <string>

#include "host/cli/command_session.h"
#include "host/cli/commands.h"

namespace qorhost {

struct ExportOptions {
  std::string desktopCsv;  ///< the folder
  bool trial = false;      ///< tells what it would write
};

/// Adds `export`. `global` and `options` must outlive the parsing and the run.
void DescribeExport(CommandPlace place, const GlobalOptions& global, ExportOptions& options);

/// Writes the tables of the building, with --unit of one unit alone, into a folder.
ExitStatus RunExport(const GlobalOptions& global, const ExportOptions& options, Console& console);

}  // namespace qorhost
