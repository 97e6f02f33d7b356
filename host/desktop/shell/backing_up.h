// Backups of the store that is open.
#pragma once

#include "host/desktop/running/workplace.h"

namespace qorhost {

/// Asks where to, writes the copy, and tells what came of it. A store in memory has none.
void BackUpStore(Workplace& place);

}  // namespace qorhost
