// The place of a store on a server, while a new one is made in it.
#pragma once

namespace qorhost {

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
