// The guided tour: the screens and their reports at work on a copy of the demo building.
#pragma once

#include "host/cli/command_session.h"

namespace qorhost {

/// Shows what an operator would see, from opening the screens to the queue of programming steps.
/// Works in memory. Fails when a step does not come out as the tour tells it.
ExitStatus RunTour(const GlobalOptions& global, Console& console);

}  // namespace qorhost
