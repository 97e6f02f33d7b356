// Stores on a server, in a build that has the engine for them and in one that has not.
#pragma once

#include <memory>
#include <string>

#include "host/store/store.h"

namespace qorhost {

/// As OpenStore(). Raises StoreError in a build without the engine.
[[nodiscard]] std::unique_ptr<Store> OpenServerStore(const std::string& name, OpenMode mode,
                                                     const Patience& patience);

/// As CreateDistributedStore() and RequireDistribution(). Both raise StoreError in a build without
/// the engine.
[[nodiscard]] std::unique_ptr<Store> CreateDistributedServerStore(const std::string& name);
void RequireDistributingServer(const std::string& name);

}  // namespace qorhost
