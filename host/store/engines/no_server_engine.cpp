#include "host/store/engines/server_engine.h"
#include "host/store/store_error.h"

namespace qorhost {

namespace {

[[noreturn]] void Refuse() {
  throw StoreError(
      "This program was built without libpq and opens no store on a server: name a file, or build "
      "it where libpq is installed",
      StoreFault::kCannotOpen);
}

}  // namespace

std::unique_ptr<Store> OpenServerStore(const std::string& /*name*/, OpenMode /*mode*/,
                                       const Patience& /*patience*/) {
  Refuse();
}

void RequireServerPlace(const std::string& /*name*/, const ServerPlaceOrder& /*order*/,
                        const Patience& /*patience*/) {
  Refuse();
}

void RequireDistributingServer(const std::string& /*name*/) {
  Refuse();
}

std::unique_ptr<ServerPlace> MakeServerPlace(const std::string& /*name*/,
                                             const ServerPlaceOrder& /*order*/,
                                             const Patience& /*patience*/) {
  Refuse();
}

void GrantServerRights(const std::string& /*name*/, const StoreRoles& /*roles*/) {
  Refuse();
}

}  // namespace qorhost
