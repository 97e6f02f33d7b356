// Directory codes as the screen's list shows them.
#pragma once

#include <cstdint>
#include <string>

#include "frame/value.h"

namespace qorcred {

/// The code with zeros in front, up to `digits` digits; as it is when `digits` is below 1.
[[nodiscard]] std::string PaddedCode(const Value& code, std::int32_t digits);

}  // namespace qorcred
