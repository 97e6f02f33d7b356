// The words of the commands that import a CSV file.
#pragma once

#include "host/cli/commands.h"
#include "host/desks/import_run.h"

namespace qorhost {

using ImportCommand = ExitStatus (*)(const GlobalOptions& global, const ImportOptions& options,
                                     Console& console);

/// Adds `import`. `global` and `options` must outlive the parsing and the run.
void DescribeImport(CommandPlace place, const char* description, const char* examples,
                    const GlobalOptions& global, ImportOptions& options, ImportCommand run);

}  // namespace qorhost
