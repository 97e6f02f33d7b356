// What stands below Software\Classes.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

namespace qortest {

inline const std::string kLibraryId = "{15454B9D-F853-42C9-81E6-2264AACD34E3}";
inline const std::string kLibraryKey = "TypeLib\\" + kLibraryId;

/// With braces, in capitals.
[[nodiscard]] std::string GuidText(REFGUID guid);

/// The whole path of a key below Software\Classes; "" is that one itself.
[[nodiscard]] std::wstring Path(const std::string& below);

[[nodiscard]] bool Exists(HKEY root, const std::string& below, REGSAM view = 0);

/// Makes a key with all above it; fails the test when that cannot be done.
void MakeKey(HKEY root, const std::string& below, REGSAM view = 0,
             DWORD options = REG_OPTION_NON_VOLATILE);

/// Removes a key with all below it, likewise.
void RemoveKey(HKEY root, const std::string& below, REGSAM view = 0);

/// The text that stands as the key's default value, or as the named one; "(none)" without one.
[[nodiscard]] std::string ValueAt(HKEY root, const std::string& below,
                                  const wchar_t* name = nullptr);

/// Every key that belongs to the component.
[[nodiscard]] std::vector<std::string> OwnKeys();

/// Those of them that are there.
[[nodiscard]] std::vector<std::string> OwnKeysIn(HKEY root);

}  // namespace qortest
