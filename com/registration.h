// What the registry says of the component.
#pragma once

#include <windows.h>

namespace qorcred::com {

enum class Audience {
  kMachine,  ///< everybody; needs the rights of an administrator
  kUser,     ///< the current user
};

/// Enters all classes, their interfaces and the type library, over what an older file has entered.
/// The result is the system's own code: E_ACCESSDENIED without rights, and then nothing is changed.
/// After a later failure nothing stays, unless something of it was there before: then nothing is
/// taken away, and what was written until then stays.
[[nodiscard]] HRESULT Register(Audience audience) noexcept;

/// Takes everything that Register() entered away. What a component of the other bitness has entered
/// for itself stays, and with it the names that both share. After a failure it goes on with the
/// rest; the result is the first one's code. The system's own keys above stay, even empty.
[[nodiscard]] HRESULT Unregister(Audience audience) noexcept;

}  // namespace qorcred::com
