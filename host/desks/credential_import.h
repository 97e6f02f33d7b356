// Entering credentials from a CSV file.
#pragma once

#include "host/cli/console.h"
#include "host/desks/import_run.h"
#include "host/desks/session.h"

namespace qorhost {

/// `credentials import`: every line is a new credential, saved through the screen and, where the
/// line names a tenant, assigned through it.
ExitStatus RunCredentialImport(const GlobalOptions& global, const ImportOptions& options,
                               Console& console);

}  // namespace qorhost
