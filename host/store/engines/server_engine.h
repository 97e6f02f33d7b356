// Stores on a server, in a build that has the engine for them and in one that has not.
#pragma once

#include <memory>
#include <string>

#include "host/store/server_place.h"
#include "host/store/store.h"

namespace qorhost {

/// As OpenStore(). Raises StoreError in a build without the engine.
[[nodiscard]] std::unique_ptr<Store> OpenServerStore(const std::string& name, OpenMode mode,
                                                     const Patience& patience);
/// As BeginOnServer().
[[nodiscard]] std::unique_ptr<ServerPlace> MakeServerPlace(const std::string& name, bool replace,
                                                           const Patience& patience);

}  // namespace qorhost
