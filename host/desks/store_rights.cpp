#include "host/desks/store_rights.h"

#include "host/desks/desk_error.h"
#include "host/store/engines/opening.h"

namespace qorhost {

void RequireServerForRights(const std::filesystem::path& store) {
  if (!IsOnServer(store)) {
    throw RefusedError(
        "Roles have rights on a store on a server: for a file, set the rights of the file");
  }
}

void GrantRightsOn(const std::filesystem::path& store, const StoreRoles& roles) {
  RequireServerForRights(store);
  GrantRights(store, roles);
}

}  // namespace qorhost
