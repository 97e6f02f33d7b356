// What registering the component enters: one table, for its own entry points and for the
// installers.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "com/identities.h"

namespace qorcred::com {

enum class Bitness { k32, k64 };

/// Who needs an entry. Below Software\Classes the system keeps CLSID and Interface apart for each
/// bitness, and everything else only once.
enum class Share {
  kOwn,     ///< the component of this bitness alone
  kCommon,  ///< the components of both
};

enum class Content {
  kText,    ///< `text` as it stands
  kFile,    ///< the component's file with its folder
  kFolder,  ///< the folder of that file
};

/// One value below Software\Classes.
struct RegistryEntry {
  std::string key;
  std::string name;  ///< empty for the key's default value
  Content content = Content::kText;
  std::string text;
  Share share = Share::kOwn;
};

/// "qorCred.clsCredential", and the same with ".1" behind it.
[[nodiscard]] std::string ProgId(std::string_view className);
[[nodiscard]] std::string VersionedProgId(std::string_view className);

/// The keys below which a class has its own entries.
[[nodiscard]] std::string ClassKey(const Identity& identity);
[[nodiscard]] std::string InterfaceKey(const Identity& identity);

[[nodiscard]] std::string LibraryKey();
/// The version of the type library.
[[nodiscard]] std::string LibraryVersionKey();
/// Where the type library in a file of that bitness is named.
[[nodiscard]] std::string LibraryFileKey(Bitness bitness);

/// Every value that a component of that bitness enters, in order.
[[nodiscard]] std::vector<RegistryEntry> RegistrationTable(Bitness bitness);

}  // namespace qorcred::com
