#include "com/module.h"

#include <atomic>

namespace qorcred::com {

namespace {

std::atomic<long> useCount{0};
HINSTANCE ownInstance = nullptr;

}  // namespace

KeepLoaded::KeepLoaded() noexcept {
  LockModule();
}

KeepLoaded::~KeepLoaded() {
  UnlockModule();
}

void LockModule() noexcept {
  ++useCount;
}

void UnlockModule() noexcept {
  --useCount;
}

bool CanUnload() noexcept {
  return useCount == 0;
}

void RememberModule(HINSTANCE instance) noexcept {
  ownInstance = instance;
}

std::wstring ModulePath() {
  std::wstring path(MAX_PATH, L'\0');
  for (;;) {
    const DWORD length =
        GetModuleFileNameW(ownInstance, path.data(), static_cast<DWORD>(path.size()));
    if (length < path.size()) {
      path.resize(length);
      return path;
    }
    path.resize(path.size() * 2);
  }
}

}  // namespace qorcred::com
