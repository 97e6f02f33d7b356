#include "tests/com/component/registry.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <iterator>

#include "com/classes.h"
#include "com/text.h"

namespace qortest {

using qorcred::com::Classes;
using qorcred::com::ComClass;
using qorcred::com::ToUtf8;
using qorcred::com::ToWide;

std::string GuidText(REFGUID guid) {
  std::array<wchar_t, 39> text{};
  StringFromGUID2(guid, text.data(), static_cast<int>(text.size()));
  return ToUtf8(text.data());
}

std::wstring Path(const std::string& below) {
  return ToWide(below.empty() ? "Software\\Classes" : "Software\\Classes\\" + below);
}

bool Exists(HKEY root, const std::string& below, REGSAM view) {
  HKEY key = nullptr;
  if (RegOpenKeyExW(root, Path(below).c_str(), 0, KEY_QUERY_VALUE | view, &key) != ERROR_SUCCESS) {
    return false;
  }
  RegCloseKey(key);
  return true;
}

void MakeKey(HKEY root, const std::string& below, REGSAM view, DWORD options) {
  HKEY key = nullptr;
  ASSERT_EQ(RegCreateKeyExW(root, Path(below).c_str(), 0, nullptr, options, KEY_WRITE | view,
                            nullptr, &key, nullptr),
            ERROR_SUCCESS);
  RegCloseKey(key);
}

void RemoveKey(HKEY root, const std::string& below, REGSAM view) {
  const std::wstring path = Path(below);
  const std::size_t parent = path.find_last_of(L'\\');
  HKEY key = nullptr;
  ASSERT_EQ(RegOpenKeyExW(root, path.substr(0, parent).c_str(), 0, KEY_ALL_ACCESS | view, &key),
            ERROR_SUCCESS);
  EXPECT_EQ(RegDeleteTreeW(key, path.substr(parent + 1).c_str()), ERROR_SUCCESS);
  RegCloseKey(key);
}

std::string ValueAt(HKEY root, const std::string& below, const wchar_t* name) {
  std::array<wchar_t, 1024> text{};
  auto size = static_cast<DWORD>(text.size() * sizeof(wchar_t));
  const LSTATUS status =
      RegGetValueW(root, Path(below).c_str(), name, RRF_RT_REG_SZ, nullptr, text.data(), &size);
  return status == ERROR_SUCCESS ? ToUtf8(text.data()) : "(none)";
}

std::vector<std::string> OwnKeys() {
  std::vector<std::string> keys{kLibraryKey};
  for (const ComClass& comClass : Classes()) {
    const std::string progId = "qorCred." + ToUtf8(comClass.name);
    keys.push_back("CLSID\\" + GuidText(comClass.id));
    keys.push_back("Interface\\" + GuidText(comClass.dispinterface));
    keys.push_back(progId);
    keys.push_back(progId + ".1");
  }
  return keys;
}

std::vector<std::string> OwnKeysIn(HKEY root) {
  std::vector<std::string> there;
  const std::vector<std::string> keys = OwnKeys();
  std::copy_if(keys.begin(), keys.end(), std::back_inserter(there),
               [root](const std::string& key) { return Exists(root, key); });
  return there;
}

}  // namespace qortest
