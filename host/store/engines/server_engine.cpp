#include "host/store/engines/server_engine.h"

#include "host/store/postgres/rights.h"
#include "host/store/postgres/schema.h"
#include "host/store/postgres/server_place.h"
#include "host/store/postgres/store.h"

namespace qorhost {

std::unique_ptr<Store> OpenServerStore(const std::string& name, OpenMode mode,
                                       const Patience& patience) {
  return std::make_unique<postgres::Store>(postgres::OpenServerStore(name, mode, {}, patience),
                                           patience, mode == OpenMode::kReadOnly);
}

void RequireDistributingServer(const std::string& name) {
  postgres::Connection connection(name);
  postgres::RequireSpreading(connection, postgres::Spread::kServers);
}

std::unique_ptr<ServerPlace> MakeServerPlace(const std::string& name, const ServerPlaceOrder& order,
                                             const Patience& patience) {
  return std::make_unique<postgres::ServerPlace>(name, order, patience);
}

void RequireServerPlace(const std::string& name, const ServerPlaceOrder& order,
                        const Patience& patience) {
  postgres::RequireServerPlace(name, order, patience);
}

void GrantServerRights(const std::string& name, const StoreRoles& roles) {
  postgres::Connection connection = postgres::OpenServerStore(name, OpenMode::kReadWrite);
  postgres::GrantRightsAtOnce(connection, roles);
}

}  // namespace qorhost
