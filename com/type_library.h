// The type library that stands in the component's own file.
#pragma once

#include <windows.h>

namespace qorcred::com {

/// The description of a dispinterface; the caller owns the reference.
[[nodiscard]] HRESULT TypeInfoOf(REFIID dispinterface, ITypeInfo** info) noexcept;

}  // namespace qorcred::com
