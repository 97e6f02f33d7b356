// Makes up the directory codes of a unit, for demonstrations and measurements.
#pragma once

#include <cstdint>

#include "host/unit/unit_file.h"

namespace qorhost {

/// A unit with the codes 1 to `count`, varied in every field, without fault and in canonical form.
/// The same arguments give the same unit on every machine.
[[nodiscard]] UnitFile GenerateUnit(std::int32_t count, std::uint32_t seed);

}  // namespace qorhost
