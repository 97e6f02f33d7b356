#include "host/store/postgres/taken_role.h"

#include <fmt/format.h>

#include <array>
#include <vector>

#include "host/dialect/names.h"
#include "host/store/postgres/rights.h"
#include "host/store/postgres/role_needs.h"

namespace qorhost::postgres {

namespace {

bool IsLetIn(Connection& connection) {
  const Result found = connection.Run(
      "SELECT has_schema_privilege(n.oid, 'USAGE') AND has_table_privilege(c.oid, 'SELECT') "
      "FROM pg_class c JOIN pg_namespace n ON n.oid = c.relnamespace "
      "WHERE n.nspname = 'qorhost' AND c.relname = 'StoreSchema'");
  return found.rows() == 0 || found.Text(0, 0) == "t";
}

bool MayTake(Connection& connection, const std::string& role) {
  const std::array values{Sent(role), Sent(RightToTake(connection))};
  return connection.Run("SELECT pg_has_role($1::name, $2::text)", values).Text(0, 0) == "t";
}

}  // namespace

std::string TakeRole(Connection& connection) {
  if (IsLetIn(connection)) {
    return "";
  }
  const GrantedRights rights = RightsOn(connection);
  std::vector<std::string> roles = rights.operators;
  roles.insert(roles.begin(), rights.owner);
  for (const std::string& role : roles) {
    if (MayTake(connection, role)) {
      ActAs(connection, role);
      return role;
    }
  }
  throw NoRightsOn(connection);
}

void ActAs(Connection& connection, const std::string& role) {
  connection.RunAll("SET ROLE " + dialect::QuotedName(role));
}

}  // namespace qorhost::postgres
