// A small invented property, for the tour and for trying things out.
#pragma once

#include <cstdint>
#include <functional>

#include "host/store/sql_session.h"

namespace qorhost {

/// The units of the demo store.
namespace demo {
inline constexpr std::int32_t kNearlyFullUnit = 1;  ///< 498 of 500 codes in use
inline constexpr std::int32_t kLongDoorNamesUnit = 2;
inline constexpr std::int32_t kNoFacilityCodeUnit = 3;  ///< ignores facility codes
}  // namespace demo

/// Asked before each row; answers false to end it.
using GoOn = std::function<bool()>;

/// Fills an empty store with three units, their doors, schedules, tenants, credentials and
/// directory codes: the same rows at every call. Raises StoreError when the store has units
/// already, and when it is not to go on; a failure leaves the store as it was.
void CreateDemoData(SqlSession& session, const GoOn& goOn = {});

}  // namespace qorhost
