// When the tenants and directory codes of a unit end for which nobody says it.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "frame/value.h"
#include "host/store/sql_session.h"

namespace qorhost {

/// RECORDDEACTIVATION of UnitSettings.
enum DefaultEnd : std::int32_t { kNever, kOnDate, kAfterDays };

/// The columns of UnitSettings for "none", "90d" or a date. Raises InputFault.
[[nodiscard]] std::vector<Field> ReadDefaultEnd(const std::string& given);

/// What these columns hold, as it is typed: RECORDDEACTIVATION, DEACTIVATIONDATE and
/// DEACTIVATIONDAYS.
[[nodiscard]] std::string DefaultEndShown(const qorcred::Value& kind, const qorcred::Value& date,
                                          const qorcred::Value& days);

}  // namespace qorhost
