#include "host/store/engines/server_engine.h"
#include "host/store/store_error.h"

namespace qorhost {

namespace {

[[noreturn]] void RefuseServer() {
  throw StoreError(
      "This program was built without libpq and opens no store on a server: name a file, or build "
      "it "
      "where libpq is installed",
      StoreFault::kCannotOpen);
}

}  // namespace

std::unique_ptr<Store> OpenServerStore(const std::string& /*name*/, OpenMode /*mode*/,
                                       const Patience& /*patience*/) {
  RefuseServer();
}

void GrantServerRights(const std::string& /*name*/, const StoreRoles& /*roles*/) {
  RefuseServer();
}

}  // namespace qorhost
