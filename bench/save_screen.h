// The credential screen as the benchmarks fill it in.
#pragma once

#include <cstdint>
#include <memory>

#include "host/screens/screen_model.h"

namespace qorbench {

/// Every credential that the benchmarks issue is a card of this type, facility and codes.
inline constexpr std::int32_t kCardType = 0;
inline constexpr std::int32_t kFacilityCode = 12;

/// A screen with a card type chosen and the facility code entered, for ranges.
[[nodiscard]] std::shared_ptr<qorhost::ScreenModel> RangeScreen();

/// The same with the name, schedules (full access on the first two doors, none on the others) and
/// period (all of 2026) of a screen that creates tenants.
[[nodiscard]] std::shared_ptr<qorhost::ScreenModel> TenantRangeScreen();

/// Enters a range of numbers.
void EnterRange(qorhost::ScreenModel& screen, std::int32_t start, std::int32_t end);

}  // namespace qorbench
