// The guided tour: the screens and their reports at work on a copy of the demo building.
#pragma once

#include <memory>

#include "host/desks/session.h"
#include "host/terminal/console.h"

namespace qorhost {

/// Shows what an operator would see, from opening the screens to the queue of programming steps.
/// Works in memory, and answers the controllers' questions itself. Fails when a step does not come
/// out as the tour tells it.
ExitStatus RunTour(Surroundings surroundings, Console& console);

/// The same on a store that holds the demo building as it was made, and keeps what is done.
ExitStatus RunTourOn(std::unique_ptr<Store> store, Surroundings surroundings, Console& console);

}  // namespace qorhost
