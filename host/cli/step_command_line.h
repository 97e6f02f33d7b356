// The words of the commands for programming steps.
#pragma once

#include "host/cli/commands.h"
#include "host/cli/step_commands.h"

namespace qorhost {

/// Adds `steps` with its commands. `global` and `options` must outlive the parsing and the run.
void DescribeSteps(CommandPlace place, const GlobalOptions& global, StepOptions& options);

}  // namespace qorhost
