// Who may do what with a store on a server.
#pragma once

#include <string>
#include <vector>

#include "host/store/postgres/connection.h"
#include "host/store/store_error.h"
#include "host/store/store_roles.h"

namespace qorhost::postgres {

/// Grants the rights on the connection's store in the open transaction, and takes those from the
/// operators that they are not to have; may be repeated. What the roles need before is done where
/// this user may do it (MakeReady()). Raises StoreError, kNoRights with the statements that are
/// missing or whose the store is.
void GrantRights(Connection& connection, const StoreRoles& roles);

/// The same in a transaction of its own.
void GrantRightsAtOnce(Connection& connection, const StoreRoles& roles);

/// The roles that have rights on a store that is there.
struct GrantedRights {
  std::string owner;
  std::vector<std::string> operators;
};
[[nodiscard]] GrantedRights RightsOn(Connection& connection);

/// Raises StoreError (kNoRights) where this user is not one of the owner's, and says how he
/// becomes one.
void RequireOwner(Connection& connection, const GrantedRights& rights);

/// What to tell a user who has no rights on the store.
[[nodiscard]] StoreError NoRightsOn(Connection& connection);

/// From here to the end of the open transaction what is made belongs to the owner. Raises
/// StoreError (kNoRights) where this user is not one of his.
void ActAsOwner(Connection& connection, const GrantedRights& rights);

/// Grants in the open transaction what the roles had, on what has come since or stands in the place
/// of it.
void RenewRights(Connection& connection, const GrantedRights& rights);

}  // namespace qorhost::postgres
