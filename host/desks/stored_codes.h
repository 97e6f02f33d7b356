// The store's side of a merge with a unit.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "dircodes/cls_dir_code.h"
#include "host/desks/merge_plan.h"
#include "host/desks/session.h"

namespace qorhost {

/// Stands behind whatever fails in a merge.
inline constexpr std::string_view kNothingChanged = "; nothing was changed";

/// The codes that the store has for the unit, as the controller fetches them, with what a merge
/// compares of each. Raises FailureError when they cannot be read.
[[nodiscard]] std::vector<StoredCode> ReadStoredCodes(DeskSession& session, std::int32_t unitKey,
                                                      Controlled<qorcred::clsDirCode>& controller);

}  // namespace qorhost
