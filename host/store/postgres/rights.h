// Who may do what with a store on a server.
#pragma once

#include <string>

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

}  // namespace qorhost::postgres
