// What a unit needs before a controller works on it.
#pragma once

#include <cstdint>

#include "host/desks/session.h"

namespace qorhost {

/// Raises FailureError that names the unit when the store has no settings for it: controllers would
/// fail without a word about the reason.
void RequireSettings(DeskSession& session, std::int32_t unitKey);

}  // namespace qorhost
