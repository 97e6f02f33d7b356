#include "host/store/postgres/role_needs.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <array>
#include <string>
#include <vector>

#include "host/dialect/names.h"
#include "host/store/store_error.h"

namespace qorhost::postgres {

namespace {

using dialect::QuotedName;

/// A statement that is still to be run.
struct RoleNeed {
  std::string statement;
  bool isOwn;  ///< this user may run it
};

/// The connection's, and what it may do at the server.
struct ServerUser {
  std::string name;
  bool isAboveAll;
  bool makesRoles;
  bool letsMakeSchemas;  ///< may give others the right to make schemas in the database
  std::string database;
  bool inherits;  ///< has the rights of the roles that it is made a member of
};

struct ServerRole {
  bool isThere = false;
  bool isUsers = false;     ///< the user may give it what he owns
  bool canBeUsers = false;  ///< the user may make himself a member
  bool makesSchemas = false;
  bool isUsable = false;  ///< the user has its rights without taking it
};

/// On later servers who may make roles is not above all of them, and a member may be kept from
/// taking his role.
bool IsSparing(const Connection& connection) {
  constexpr int kFirst = 160000;
  return connection.serverVersion() >= kFirst;
}

bool Is(const Result& result, int column) {
  return result.Text(0, column) == "t";
}

ServerUser UserOf(Connection& connection) {
  const Result found = connection.Run(
      "SELECT current_user, rolsuper, rolsuper OR rolcreaterole, "
      "has_database_privilege(current_database(), 'CREATE WITH GRANT OPTION'), "
      "current_database(), rolsuper OR rolinherit "
      "FROM pg_roles WHERE rolname = current_user");
  return {std::string(found.Text(0, 0)), Is(found, 1), Is(found, 2), Is(found, 3),
          std::string(found.Text(0, 4)), Is(found, 5)};
}

ServerRole RoleOf(Connection& connection, const ServerUser& user, const std::string& role) {
  const std::array name{Sent(role)};
  const Result found = connection.Run(
      fmt::format("SELECT pg_has_role(oid, '{}'), pg_has_role(oid, 'MEMBER WITH ADMIN OPTION'), "
                  "has_database_privilege(oid, current_database(), 'CREATE'), "
                  "pg_has_role(oid, 'USAGE') "
                  "FROM pg_roles WHERE rolname = $1::name",
                  RightToTake(connection)),
      name);
  if (found.rows() == 0) {
    return {false, user.isAboveAll, user.makesRoles, false, false};
  }
  return {true, Is(found, 0), Is(found, 1) || (user.makesRoles && !IsSparing(connection)),
          Is(found, 2), Is(found, 3)};
}

void AddMaking(std::vector<RoleNeed>& needs, const ServerUser& user, const ServerRole& found,
               const std::string& role) {
  if (!found.isThere) {
    needs.push_back({fmt::format("CREATE ROLE {} NOLOGIN", QuotedName(role)), user.makesRoles});
  }
}

std::vector<RoleNeed> NeedsOf(Connection& connection, const StoreRoles& roles) {
  const ServerUser user = UserOf(connection);
  std::vector<RoleNeed> needs;
  if (!roles.operators.empty()) {
    AddMaking(needs, user, RoleOf(connection, user, roles.operators), roles.operators);
  }
  if (roles.administrators.empty()) {
    return needs;
  }
  const std::string role = QuotedName(roles.administrators);
  const ServerRole found = RoleOf(connection, user, roles.administrators);
  AddMaking(needs, user, found, roles.administrators);
  if (!found.isUsers) {
    needs.push_back({fmt::format("GRANT {} TO {}", role, QuotedName(user.name)), found.canBeUsers});
  }
  // Who gives the store away goes on with it as one of its owners.
  if (!found.isUsable && (found.isUsers ? !user.isAboveAll : !user.inherits)) {
    needs.push_back({InheritingText(connection, roles.administrators, user.name), false});
  }
  if (!found.makesSchemas) {
    needs.push_back(
        {fmt::format("GRANT CREATE ON DATABASE {} TO {}", QuotedName(user.database), role),
         user.letsMakeSchemas});
  }
  return needs;
}

void RequireOwn(const std::vector<RoleNeed>& needs, const std::string& store) {
  std::vector<std::string> others;
  for (const RoleNeed& need : needs) {
    if (!need.isOwn) {
      others.push_back(need.statement);
    }
  }
  if (!others.empty()) {
    throw StoreError(
        fmt::format("The rights on '{}' cannot be granted, and nothing was changed: this user may "
                    "not do all that the roles need. Ask the server's administrator for {}",
                    store, fmt::join(others, "; ")),
        StoreFault::kNoRights);
  }
}

std::vector<RoleNeed> OwnNeedsOf(Connection& connection, const StoreRoles& roles) {
  RequireRoleName(roles.operators);
  RequireRoleName(roles.administrators);
  if (!roles.operators.empty() && roles.operators == roles.administrators) {
    throw StoreError("Operators and administrators need roles of their own");
  }
  std::vector<RoleNeed> needs = NeedsOf(connection, roles);
  RequireOwn(needs, connection.name());
  return needs;
}

}  // namespace

std::string_view RightToTake(const Connection& connection) {
  return IsSparing(connection) ? "SET" : "MEMBER";
}

std::string InheritingText(const Connection& connection, const std::string& role,
                           const std::string& user) {
  return IsSparing(connection)
             ? fmt::format("GRANT {} TO {} WITH INHERIT TRUE", QuotedName(role), QuotedName(user))
             : fmt::format("ALTER ROLE {} INHERIT", QuotedName(user));
}

void RequireGrantable(Connection& connection, const StoreRoles& roles) {
  (void)OwnNeedsOf(connection, roles);
}

void MakeReady(Connection& connection, const StoreRoles& roles) {
  for (const RoleNeed& need : OwnNeedsOf(connection, roles)) {
    connection.RunAll(need.statement);
  }
}

void RequireRoleName(const std::string& role) {
  // Some statements hold it between other quotes.
  if (role.find_first_of("\"'%$\\") != std::string::npos) {
    throw StoreError(fmt::format("'{}' is no name for a role here: use letters and digits", role));
  }
}

}  // namespace qorhost::postgres
