// The place of a store on a server, while a new one is made in it.
#pragma once

#include "host/store/store_roles.h"

namespace qorhost {

/// What place is asked for.
struct ServerPlaceOrder {
  bool replace = false;      ///< the store that stands there makes room
  bool distributed = false;  ///< its tables are spread over several servers
  StoreRoles roles = {};     ///< have rights on the new one once it is kept
};

/// Holds an empty store, which is filled by whoever opens it; a store that stood there is set aside
/// meanwhile. Ends with the old one back in its place, or none, unless the new one was kept.
class ServerPlace {
 public:
  virtual ~ServerPlace() = default;
  ServerPlace(const ServerPlace&) = delete;
  ServerPlace& operator=(const ServerPlace&) = delete;

  /// The new one is whole: the old one goes. Raises StoreError.
  virtual void Keep() = 0;

 protected:
  ServerPlace() = default;
};

}  // namespace qorhost
