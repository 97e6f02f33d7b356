// Defects for the fuzzer to find.
#pragma once

#include <windows.h>

#include <string>
#include <string_view>
#include <vector>

#include "com/ownership.h"

namespace qortest {

/// What can be planted, by name.
[[nodiscard]] const std::vector<std::string_view>& PlantedDefects();

/// An object that calls `object` and has the defect `name` beside; `object` itself for "".
[[nodiscard]] qorcred::com::ComPtr<IDispatch> WithDefect(
    const qorcred::com::ComPtr<IDispatch>& object, std::string_view name);

}  // namespace qortest
