// A look over the whole store for what must not be in it.
#pragma once

#include "host/desktop/running/workplace.h"

namespace qorhost {

/// Looks all units, the history and the store itself over, and shows what is wrong, or tells that
/// nothing is. Changes nothing.
void CheckStore(Workplace& place);

}  // namespace qorhost
