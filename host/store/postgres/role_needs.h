// What has to be done at the server before a store can be given to roles.
#pragma once

#include <string>
#include <string_view>

#include "host/store/postgres/connection.h"
#include "host/store/store_roles.h"

namespace qorhost::postgres {

/// Raises StoreError for names that cannot be those of two roles, and (kNoRights) where the roles
/// need what this user may not give them: it names the statements for the server's administrator.
/// Changes nothing.
void RequireGrantable(Connection& connection, const StoreRoles& roles);

/// Makes the roles that are missing, without a login of their own, this user a member of the
/// administrators', so that he can give them the store and goes on using it, and lets these make
/// schemas in the database. In the open transaction; raises what the above raises.
void MakeReady(Connection& connection, const StoreRoles& roles);

/// By which name the server knows the right to take a role.
[[nodiscard]] std::string_view RightToTake(const Connection& connection);

/// The statement by which a member of the role comes to have its rights.
[[nodiscard]] std::string InheritingText(const Connection& connection, const std::string& role,
                                         const std::string& user);

/// Raises StoreError for a name that is no role's here.
void RequireRoleName(const std::string& role);

}  // namespace qorhost::postgres
