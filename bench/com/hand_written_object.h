// The floor: an automation object with the two operations, written by hand for nothing else.
#pragma once

#include <windows.h>

#include "com/ownership.h"

namespace qorbench {

/// Has pbBase64Dec and pbRetrieveCredentials with the component's names, and makes the same calls
/// on the same objects of the host; no other member, no checks, no conversion that the host's
/// values do not need.
[[nodiscard]] qorcred::com::ComPtr<IDispatch> MakeHandWritten(
    const qorcred::com::ComPtr<IDispatch>& screen, const qorcred::com::ComPtr<IDispatch>& manager);

}  // namespace qorbench
