// What the boundary adds: the component against the library itself, in the same program and on the
// same host of automation objects.
#pragma once

#include "bench/com/fast_host.h"
#include "bench/com/rows.h"

namespace qorbench {

/// A credential controller, from its creation to its release. Its components are there.
[[nodiscard]] Row MeasureCreation();

/// A number put into a report controller, by name within C++ and by identifier through automation.
[[nodiscard]] Row MeasurePut();

/// pbSave of 1,000 numbers, for each.
[[nodiscard]] Row MeasureSave(const FastHost& host);

}  // namespace qorbench
