// What stands above a report.
#pragma once

#include <cstdint>
#include <string>

#include "host/desks/session.h"

namespace qorhost {

/// A unit's name as it heads a report: "Unit 7" for one without a name.
[[nodiscard]] std::string ReportTitle(DeskSession& session, std::int32_t unitKey);

}  // namespace qorhost
