// The rights on a store on a server.
#pragma once

#include <filesystem>

#include "host/store/store_roles.h"

namespace qorhost {

/// Raises RefusedError for a store in a file, whose rights are those of the file.
void RequireServerForRights(const std::filesystem::path& store);

/// Grants the rights on a store to roles; see StoreRoles. Raises StoreError, and what the above
/// raises.
void GrantRightsOn(const std::filesystem::path& store, const StoreRoles& roles);

}  // namespace qorhost
