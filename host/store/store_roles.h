// Who may do what with a store on a server.
#pragma once

#include <string>

namespace qorhost {

/// Roles of the server, of which its administrator makes logins members. Empty ones are left out.
struct StoreRoles {
  /// Does all that the program does with a store: reads it, changes its rows, adds entries to the
  /// history. It cannot alter or remove entries, set versions back, nor change the schema.
  std::string operators;
  /// Owns the store: all of this, upgrades, and whatever else a server lets an owner do.
  std::string administrators;
  [[nodiscard]] bool empty() const { return operators.empty() && administrators.empty(); }
};

}  // namespace qorhost
