// Writing a unit's stored directory codes down in the unit's own notation.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "host/desks/desk_error.h"
#include "host/desks/session.h"
#include "host/files/fresh_file.h"
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

/// What becomes of the codes that no unit can hold.
enum class Unholdable : std::uint8_t {
  kRefused,  ///< with one of them nothing is exported
  kLeftOut,  ///< the others are exported
};

/// There are codes that no unit can hold, and they may not be left out.
class UnholdableCodes : public RefusedError {
 public:
  explicit UnholdableCodes(std::vector<Obstacle> obstacles);

  [[nodiscard]] const std::vector<Obstacle>& obstacles() const noexcept { return obstacles_; }

 private:
  std::vector<Obstacle> obstacles_;
};

/// The unit as its stored codes say, without the display options that its firmware does not have.
/// An empty firmware is that of units with display options; another must be without fault. Raises
/// UnholdableCodes.
[[nodiscard]] ExportedUnit ExportUnit(DeskSession& session, std::int32_t unitKey,
                                      const std::string& firmware, Unholdable unholdable);

/// Writes the unit file, whole or not at all; never over a file of the store `store`, under
/// whatever name. Raises FileError as WriteWholeFile() does.
void WriteExport(const UnitFile& unit, const std::filesystem::path& to, Standing existing,
                 const std::filesystem::path& store);

}  // namespace qorhost
