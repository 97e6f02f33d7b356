// Runs the command that was chosen.
#pragma once

#include "host/cli/command_session.h"
#include "host/cli/commands.h"
#include "host/cli/error_report.h"
#include "host/terminal/console.h"

namespace qorhost {

/// With --trace-file its trace is written, too. The one place where failures of a command become an
/// exit status and a message.
[[nodiscard]] Ended RunChosen(const CommandRun& run, const GlobalOptions& global, Console& console);

}  // namespace qorhost
