// The description of an installer, as wixl reads it.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include "com/registration_table.h"

namespace qorcred::com {

enum class Scope {
  kMachine,  ///< everybody; needs the rights of an administrator
  kUser,     ///< the user who installs
};

struct Installer {
  std::string version;  ///< "0.1.0"
  Bitness bitness = Bitness::k64;
  Scope scope = Scope::kMachine;
  std::filesystem::path folder;  ///< has qorCred.dll and every other file that is installed
  std::string content;  ///< differs whenever what is installed does: the package's own name
};

/// A folder of the user's or of the machine's programs gets every file of `folder`, the registry
/// what RegistrationTable() has. An older version of the same bitness and scope is replaced, a
/// newer one stays. Raises std::filesystem::filesystem_error when the folder cannot be read.
[[nodiscard]] std::string Describe(const Installer& installer);

/// The identifier that belongs to a name: the same name gives the same one, always and everywhere.
[[nodiscard]] std::string IdentifierOf(std::string_view name);

}  // namespace qorcred::com
