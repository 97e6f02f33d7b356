#include "host/store/engines/server_engine.h"

#include "host/store/postgres/schema.h"
#include "host/store/postgres/server_place.h"
#include "host/store/postgres/store.h"

namespace qorhost {

std::unique_ptr<Store> OpenServerStore(const std::string& name, OpenMode mode,
                                       const Patience& patience) {
  return std::make_unique<postgres::Store>(postgres::OpenServerStore(name, mode), patience,
                                           mode == OpenMode::kReadOnly);
}

std::unique_ptr<ServerPlace> MakeServerPlace(const std::string& name, bool replace,
                                             const Patience& patience) {
  return std::make_unique<postgres::ServerPlace>(name, replace, patience);
}

}  // namespace qorhost
