// What ends soon in a store: the periods of tenants and of directory codes.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "frame/value.h"
#include "host/desks/session.h"

namespace qorhost {

struct ExpiringPeriod {
  std::int32_t unitKey = 0;
  bool isTenant = false;  ///< else a directory code
  std::string name;       ///< the tenant's name, or the code: "101"
  qorcred::Date end;
};

/// The active tenants and codes of all units whose periods end today or within so many days behind
/// it, as AttentionList() has them of one unit, those that end first in front. Reads them alone.
[[nodiscard]] std::vector<ExpiringPeriod> ExpiringWithin(DeskSession& session, std::int32_t days);

}  // namespace qorhost
