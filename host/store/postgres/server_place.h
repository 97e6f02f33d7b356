// A new store in the place of another one, in a database.
#pragma once

#include <string>

#include "host/store/patience.h"
#include "host/store/postgres/rights.h"
#include "host/store/postgres/store.h"
#include "host/store/server_place.h"

namespace qorhost::postgres {

/// All in one transaction, from the making of the tables to the last row. The schemas of the old
/// store, "qorhost" and "desktop", are renamed in it to "qorhost_replaced" and "desktop_replaced",
/// and dropped behind it: that has to wait for those who read. Whoever had the old one open works
/// on the new one from then on, and has the same rights on it.
class ServerPlace final : public qorhost::ServerPlace {
 public:
  /// Makes an empty store, in the place of one that is to be replaced as soon as nobody writes to
  /// it. Raises StoreError: for a store that stands and is not to be replaced, kBusy where somebody
  /// goes on writing, or making one, kNoRights for one that is not this user's to replace, and for
  /// roles that cannot be given the new one.
  ServerPlace(const std::string& name, const ServerPlaceOrder& order, const Patience& patience);

  [[nodiscard]] qorhost::Store& store() override { return store_; }
  Replaced Keep() override;

 private:
  void SetAside();
  [[nodiscard]] Connection& connection() { return store_.connection(); }

  Patience patience_;
  Store store_;
  StoreRoles roles_;
  Connection::Witness witness_;
  bool isSetAside_ = false;
  GrantedRights rights_;  // on the one that is set aside
};

/// Raises what the making of that place would, but for what others do meanwhile; changes nothing.
void RequireServerPlace(const std::string& name, const ServerPlaceOrder& order,
                        const Patience& patience);

}  // namespace qorhost::postgres
