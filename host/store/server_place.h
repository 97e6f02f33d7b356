// The place of a store on a server, while a new one is made in it.
#pragma once

#include "host/store/store.h"
#include "host/store/store_roles.h"

namespace qorhost {

/// What place is asked for.
struct ServerPlaceOrder {
  bool replace = false;      ///< the store that stands there makes room
  bool distributed = false;  ///< its tables are spread over several servers
  StoreRoles roles = {};     ///< have rights on the new one once it is kept
};

/// Whether a store that was replaced is gone.
enum class Replaced : bool { kIsGone, kIsLeft };

/// Holds an empty store, to be filled. Until it is kept nobody else sees anything of it: they read
/// the one that stood there, or find none, and so it stays when this object, its program or the
/// connection ends before. Whoever wants to write to the old one waits meanwhile.
class ServerPlace {
 public:
  virtual ~ServerPlace() = default;
  ServerPlace(const ServerPlace&) = delete;
  ServerPlace& operator=(const ServerPlace&) = delete;

  /// The new one.
  [[nodiscard]] virtual Store& store() = 0;
  /// Stores it whole, in the place of the old one, when all sessions on it have ended. Raises
  /// StoreError. The old one goes then; it is left when somebody goes on reading it.
  virtual Replaced Keep() = 0;

 protected:
  ServerPlace() = default;
};

}  // namespace qorhost
