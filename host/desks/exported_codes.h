// The stored directory codes of a unit in the unit's own notation.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "host/desks/session.h"
#include "host/unit/unit_code.h"

namespace qorhost {

/// A stored code that no unit can hold.
struct Obstacle {
  double number = 0;
  std::int32_t rid = 0;
  std::string reason;
};

struct ExportedCodes {
  std::vector<UnitCode> codes;  ///< in canonical form, by number
  std::vector<Obstacle> obstacles;
};

/// All codes of the unit; of several rows with one code the first.
[[nodiscard]] ExportedCodes ExportCodes(StoreSession& session, std::int32_t unitKey);

}  // namespace qorhost
