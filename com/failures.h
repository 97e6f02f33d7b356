// Failures across the component's boundary: numbered inside, HRESULT and EXCEPINFO outside.
#pragma once

#include <windows.h>

#include "frame/runtime_error.h"

namespace qorcred::com {

/// The code that automation clients know a failure's number by: 6 is 0x800A0006. A number that is
/// itself a code stays as it is.
[[nodiscard]] HRESULT CodeOf(const RuntimeError& failure) noexcept;

/// What a failed call on an automation object means. `info` is what came with DISP_E_EXCEPTION.
[[nodiscard]] RuntimeError FailureFrom(HRESULT result, EXCEPINFO& info);

/// Tells the caller of the exception being handled, which `source` raised: fills `info` unless it
/// is null, and leaves an error object for the thread. Returns DISP_E_EXCEPTION. Call it in a catch
/// block only.
HRESULT TellCurrent(const wchar_t* source, EXCEPINFO* info) noexcept;

/// Returns `code` for a call that was refused; the thread's error object, which would tell of an
/// earlier failure, is gone.
HRESULT Refuse(HRESULT code) noexcept;

}  // namespace qorcred::com
