// The words of the commands for the history.
#pragma once

#include "host/cli/commands.h"
#include "host/cli/history_commands.h"

namespace qorhost {

/// Adds `history` with its commands. `global` and `options` must outlive the parsing and the run.
void DescribeHistory(CommandPlace place, const GlobalOptions& global, HistoryOptions& options);

}  // namespace qorhost
