// A unit's schedules as the screens list them: the two that every unit has, then the stored ones.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "frame/data_services.h"

namespace qorcred {

struct FixedSchedule {
  std::int32_t id;
  std::string_view name;
};

inline constexpr FixedSchedule kNoAccess{0, "No Access"};
inline constexpr FixedSchedule kFullAccess{1, "Full Access"};

/// The query for the schedules of a unit but the fixed and the deleted ones: columns 0 = id,
/// 1 = name.
[[nodiscard]] std::string StoredSchedulesQuery(std::int32_t unitKey);

/// Puts the fixed schedules into rows 0 and 1, in the given order, before what the query found.
void PutFixedSchedulesFirst(const TableView& schedules,
                            const std::array<FixedSchedule, 2>& inOrder);

}  // namespace qorcred
