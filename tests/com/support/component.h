// The registered component as its clients reach it.
#pragma once

#include <windows.h>

#include "com/ownership.h"

namespace qortest {

using qorcred::com::ComPtr;

/// A new object of a registered class, for example L"qorCred.clsCredential"; null when there is
/// none or it could not be made.
[[nodiscard]] ComPtr<IDispatch> CreateObject(const wchar_t* programmaticId);

/// What the component's own entry point says of being unloaded: S_OK or S_FALSE.
[[nodiscard]] HRESULT CanUnload();

/// The component's factory for a class.
[[nodiscard]] ComPtr<IClassFactory> FactoryOf(const wchar_t* programmaticId);

}  // namespace qortest
