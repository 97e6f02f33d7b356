// Telling stores on a server from files.
#pragma once

#include <string_view>

namespace qorhost {

/// Whether a name is that of a store on a server, and not of a file: it begins with "postgresql:"
/// or "postgres:", or is "service=" with something behind it.
[[nodiscard]] bool IsServerName(std::string_view name);

}  // namespace qorhost
