// What a merge with a unit does besides writing codes, which the library leaves undone.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "host/desks/merge_plan.h"
#include "host/desks/session.h"

namespace qorhost {

/// What a merge did besides its steps.
struct MergeAftermath {
  std::size_t tenantsReleased = 0;  ///< tenants that are without a code now
  std::size_t stepsWithdrawn = 0;   ///< programming steps that the unit's codes made moot
};

/// Takes the codes that the plan deletes from the tenants that hold them: the library leaves those
/// links behind. How many tenants lost one.
std::size_t ReleaseTenants(DeskSession& session, std::int32_t unitKey, const MergePlan& plan,
                           const std::vector<StoredCode>& stored);

/// The library finds the tenants of a deleted code by the number of rows that went, which is 1: it
/// would take the row 1 from its tenants at every deletion. They are out of its sight in between.
void HideTenantsFromDeletions(DeskSession& session, std::int32_t unitKey);
void ShowTenantsAgain(DeskSession& session, std::int32_t unitKey);

/// Both sides of a plan.
struct MergeSides {
  const std::vector<UnitCode>& unit;
  const std::vector<StoredCode>& stored;
};

/// Takes back what waits to be sent for rows that are now as the unit has them, or gone. How many
/// steps that were.
std::size_t WithdrawMootSteps(DeskSession& session, std::int32_t unitKey, const MergePlan& plan,
                              const MergeSides& sides);

}  // namespace qorhost
