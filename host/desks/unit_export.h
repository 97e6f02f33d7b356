// Writing a unit's stored directory codes down in the unit's own notation.
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

struct ExportedUnit {
  UnitFile file;  ///< the other codes by number, of several rows with one code the first
  std::vector<Obstacle> obstacles;
};

/// The unit as its stored codes say, without the display options that its firmware does not have.
/// An empty firmware is that of units with display options; another must be without fault.
[[nodiscard]] ExportedUnit ExportUnit(DeskSession& session, std::int32_t unitKey,
                                      const std::string& firmware);

}  // namespace qorhost
