// Where the component under test is.
#pragma once

#include <windows.h>

#include <string>

namespace qortest {

/// The folder of the running test, with "\" at its end.
[[nodiscard]] std::wstring TestFolder();

/// qorCred.dll, which is built beside the tests.
[[nodiscard]] std::wstring ComponentFile();

/// An entry point of the loaded component; null when it has none of that name.
template <typename Function>
[[nodiscard]] Function EntryPoint(HMODULE component, const char* name) {
  const FARPROC found = GetProcAddress(component, name);
  return reinterpret_cast<Function>(reinterpret_cast<void*>(found));
}

}  // namespace qortest
