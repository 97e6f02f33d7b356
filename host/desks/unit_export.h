// The stored directory codes of a unit in the unit's own notation.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "host/desks/session.h"
#include "host/unit/unit_file.h"

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
[[nodiscard]] ExportedCodes ExportCodes(DeskSession& session, std::int32_t unitKey);

/// A unit file with the codes, without the display options that its firmware does not have. An
/// empty firmware is that of units with display options.
[[nodiscard]] UnitFile MakeUnitFile(std::vector<UnitCode> codes, const std::string& firmware);

}  // namespace qorhost
