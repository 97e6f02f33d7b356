// Failures across the component's boundary: numbered inside, HRESULT and EXCEPINFO outside.
#pragma once

#include <windows.h>

#include <string_view>

#include "frame/runtime_error.h"

namespace qorcred::com {

/// The code that automation clients know a failure's number by: 6 is 0x800A0006. A number that is
/// itself a code stays as it is.
[[nodiscard]] HRESULT CodeOf(const RuntimeError& failure) noexcept;

/// What a failed call on an automation object means. `info` is what came with DISP_E_EXCEPTION.
[[nodiscard]] RuntimeError FailureFrom(HRESULT result, EXCEPINFO& info);

/// Tells the caller of the failure of `source`: fills `info` unless it is null, and leaves an error
/// object for the thread. Returns DISP_E_EXCEPTION. Never raises.
HRESULT Tell(const RuntimeError& failure, std::string_view source, EXCEPINFO* info) noexcept;

}  // namespace qorcred::com
