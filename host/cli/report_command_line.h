// The words of the commands for reports.
#pragma once

#include "host/cli/commands.h"
#include "host/cli/report_commands.h"

namespace qorhost {

/// Adds `report` with its commands. `global` and `options` must outlive the parsing and the run.
void DescribeReports(CommandPlace place, const GlobalOptions& global, ReportOptions& options);

}  // namespace qorhost
