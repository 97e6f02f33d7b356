// The component library as a whole: what keeps it loaded, and where it is.
#pragma once

#include <windows.h>

#include <string>

namespace qorcred::com {

/// Counts one object or one lock for as long as it lives.
class KeepLoaded {
 public:
  KeepLoaded() noexcept;
  ~KeepLoaded();
  KeepLoaded(const KeepLoaded&) = delete;
  KeepLoaded& operator=(const KeepLoaded&) = delete;
};

void LockModule() noexcept;
void UnlockModule() noexcept;
/// Whether nothing lives and nobody has locked.
[[nodiscard]] bool CanUnload() noexcept;

void RememberModule(HINSTANCE instance) noexcept;
/// The library's file with its folder.
[[nodiscard]] std::wstring ModulePath();

}  // namespace qorcred::com
