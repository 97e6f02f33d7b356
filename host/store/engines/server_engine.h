// Stores on a server, in a build that has the engine for them and in one that has not.
#pragma once

#include <memory>
#include <string>

#include "host/store/server_place.h"
#include "host/store/store.h"
#include "host/store/store_roles.h"

namespace qorhost {

/// As OpenStore(). Raises StoreError in a build without the engine.
[[nodiscard]] std::unique_ptr<Store> OpenServerStore(const std::string& name, OpenMode mode,
                                                     const Patience& patience);
/// As BeginOnServer(). Raises StoreError in a build without the engine, as the next one does.
[[nodiscard]] std::unique_ptr<ServerPlace> MakeServerPlace(const std::string& name,
                                                           const ServerPlaceOrder& order,
                                                           const Patience& patience);
/// As RequirePlaceOnServer().
void RequireServerPlace(const std::string& name, const ServerPlaceOrder& order,
                        const Patience& patience);
/// As RequireDistribution().
void RequireDistributingServer(const std::string& name);

/// As GrantRights(). Raises StoreError in a build without the engine.
void GrantServerRights(const std::string& name, const StoreRoles& roles);

}  // namespace qorhost
