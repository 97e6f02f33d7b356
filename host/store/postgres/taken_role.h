// Rights on a store that a login has through a role alone.
#pragma once

#include <string>

#include "host/store/postgres/connection.h"

namespace qorhost::postgres {

/// Where the login may not use the store that is there, but is a member of a role that may, without
/// having its rights (NOINHERIT), takes that role for this connection: the owner's before one of
/// operators. Its name; empty where none is needed, or no store is there. Raises StoreError
/// (NoRightsOn()) where no role lets the login in.
std::string TakeRole(Connection& connection);

/// The same by the name of the role.
void ActAs(Connection& connection, const std::string& role);

}  // namespace qorhost::postgres
