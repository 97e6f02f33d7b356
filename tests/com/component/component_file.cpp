#include "tests/com/component/component_file.h"

#include <array>

namespace qortest {

std::wstring TestFolder() {
  std::array<wchar_t, 1024> path{};
  const DWORD length = GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
  const std::wstring file(path.data(), length);
  return file.substr(0, file.find_last_of(L'\\') + 1);
}

std::wstring ComponentFile() {
  return TestFolder() + L"qorCred.dll";
}

}  // namespace qortest
