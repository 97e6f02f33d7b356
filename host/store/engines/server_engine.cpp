#include "host/store/engines/server_engine.h"

#include "host/store/postgres/schema.h"
#include "host/store/postgres/store.h"

namespace qorhost {

std::unique_ptr<Store> OpenServerStore(const std::string& name, OpenMode mode,
                                       const Patience& patience) {
  return std::make_unique<postgres::Store>(postgres::OpenServerStore(name, mode), patience,
                                           mode == OpenMode::kReadOnly);
}

std::unique_ptr<Store> CreateDistributedServerStore(const std::string& name) {
  return std::make_unique<postgres::Store>(
      postgres::OpenServerStore(name, OpenMode::kCreate, postgres::Spread::kServers), Patience(),
      false);
}

void RequireDistributingServer(const std::string& name) {
  postgres::Connection connection(name);
  postgres::RequireSpreading(connection, postgres::Spread::kServers);
}

}  // namespace qorhost
