// Who may do what with a store on a server.
#pragma once

#include <filesystem>
#include <string>

namespace qorhost {

/// Roles of the server, of which its administrator makes logins members. Empty ones are left out.
struct StoreRoles {
  /// Does all that the program does with a store, and cannot alter the history or the schema.
  std::string operators;
  std::string administrators;  ///< owns the store
  [[nodiscard]] bool empty() const { return operators.empty() && administrators.empty(); }
};

/// Grants the rights on a store on a server to roles, which are made where they are missing and
/// this user may make them; may be repeated. Raises StoreError, also for a store in a file.
void GrantRights(const std::filesystem::path& name, const StoreRoles& roles);

}  // namespace qorhost
