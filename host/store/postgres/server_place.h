// A new store in the place of another one, in a database.
#pragma once

#include <string>

#include "host/store/patience.h"
#include "host/store/postgres/connection.h"
#include "host/store/postgres/rights.h"
#include "host/store/server_place.h"

namespace qorhost::postgres {

/// What is set aside is renamed, the schemas "qorhost" and "desktop" to "qorhost_before" and
/// "desktop_before", in the transaction that makes the new ones: nobody sees a database without a
/// store. Whoever had the old one open works on the new one, and has the same rights on it, once it
/// is kept.
class ServerPlace final : public qorhost::ServerPlace {
 public:
  /// Makes an empty store, in the place of one that is to be replaced as soon as nobody writes to
  /// it. Raises StoreError: for a store that stands and is not to be replaced, for one
  /// that was set aside before and never put back, kBusy where somebody goes on writing, kNoRights
  /// for one that is not this user's to replace, and for roles that cannot be given the new one.
  ServerPlace(const std::string& name, const ServerPlaceOrder& order, const Patience& patience);
  ~ServerPlace() override;

  void Keep() override;

 private:
  void SetAside(const Patience& patience);
  void PutBack();
  void HandOverRights();

  Connection connection_;
  StoreRoles roles_;
  bool isSetAside_ = false;
  GrantedRights rights_;  // on the one that is set aside
  bool ended_ = false;
};

}  // namespace qorhost::postgres
