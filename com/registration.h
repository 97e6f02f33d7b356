// What the registry says of the component.
#pragma once

#include <windows.h>

namespace qorcred::com {

enum class Audience {
  kMachine,  ///< everybody; needs the rights of an administrator
  kUser,     ///< the current user
};

/// Enters all classes and the type library. Raises nothing: the result is the system's own code,
/// E_ACCESSDENIED without rights. After a failure nothing of it stays.
[[nodiscard]] HRESULT Register(Audience audience) noexcept;

/// Takes everything that Register() entered away. What a component of the other bitness has entered
/// for itself stays, and with it the names that both share.
[[nodiscard]] HRESULT Unregister(Audience audience) noexcept;

}  // namespace qorcred::com
