// Who may do what with a store on a server.
#pragma once

#include <string>
#include <vector>

#include "host/store/postgres/connection.h"

namespace qorhost::postgres {

/// Roles of the server, of which logins are made members. An empty name means none.
struct Roles {
  /// Does what the program does with a store: reads all of it, changes its rows, adds entries to
  /// the audit. It cannot alter or remove entries, set versions back, nor change the schema.
  std::string operators;
  /// Owns the store: all of this, upgrades, and whatever else a server lets an owner do.
  std::string administrators;
};

/// Grants the rights on the connection's store, and takes those from the roles that they are not to
/// have; may be repeated. A role that is missing is made, without a login of its own, where this
/// user may do that. Raises StoreError when it may not, and when the store is not its own to grant.
void GrantRights(Connection& connection, const Roles& roles);

/// The roles that have rights on a store that is there.
struct GrantedRights {
  std::string owner;
  std::vector<std::string> operators;
};
[[nodiscard]] GrantedRights RightsOn(Connection& connection);

/// From here to the end of the open transaction what is made belongs to the owner. Raises
/// StoreError (kNoRights) where this user is not one of his.
void ActAsOwner(Connection& connection, const GrantedRights& rights);

/// Grants in the open transaction what the roles had, on what has come since or stands in the place
/// of it.
void RenewRights(Connection& connection, const GrantedRights& rights);

}  // namespace qorhost::postgres
