// The checks of what a benchmark did: a figure for wrong work is worth nothing.
#pragma once

#include <string_view>

namespace qorbench {

/// Prints what was wrong and ends the program unless `holds`.
void Check(bool holds, std::string_view expectation);

}  // namespace qorbench
