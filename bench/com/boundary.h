// What a client does with a controller at the boundary: the component against controllers written
// by hand, and what the boundary itself adds to the library.
#pragma once

#include <vector>

#include "bench/com/fast_host.h"
#include "bench/com/rows.h"

namespace qorbench {

/// Each class's object, from its creation by the factory to its release. Its components are there.
[[nodiscard]] std::vector<Row> MeasureCreations();

/// A number put into a report controller by name.
[[nodiscard]] Row MeasurePut();

/// pbSave of 1,000 numbers, for each.
[[nodiscard]] Row MeasureSave(const FastHost& host);

/// The same against the library's own pbSave, called natively on the same host.
[[nodiscard]] Row MeasureSaveOfTheLibrary(const FastHost& host);

}  // namespace qorbench
