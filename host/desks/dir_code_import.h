// Entering directory codes from a CSV file.
#pragma once

#include "host/cli/console.h"
#include "host/desks/import_run.h"
#include "host/desks/session.h"

namespace qorhost {

/// `dircodes import`: every line is a new code, saved through the screen.
ExitStatus RunCodeImport(const GlobalOptions& global, const ImportOptions& options,
                         Console& console);

}  // namespace qorhost
