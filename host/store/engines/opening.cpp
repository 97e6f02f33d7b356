#include "host/store/engines/opening.h"

#include <fmt/format.h>

#include <utility>

#include "host/store/engines/server_engine.h"
#include "host/store/server_name.h"
#include "host/store/sqlite/replacement.h"
#include "host/store/sqlite/schema.h"
#include "host/store/sqlite/store.h"
#include "host/store/store_error.h"

namespace qorhost {

std::unique_ptr<Store> OpenStore(const std::filesystem::path& file, OpenMode mode,
                                 const Patience& patience) {
  if (IsOnServer(file)) {
    return OpenServerStore(file.string(), mode, patience);
  }
  return std::make_unique<sqlite::Store>(sqlite::OpenDatabase(file, mode, patience));
}

bool IsOnServer(const std::filesystem::path& name) {
  return IsServerName(name.string());
}

bool IsStoreOnServer(const std::filesystem::path& name) {
  try {
    (void)OpenServerStore(name.string(), OpenMode::kReadOnly, {});
    return true;
  } catch (const StoreError& failure) {
    if (failure.fault() == StoreFault::kNoStore) {
      return false;
    }
    throw;
  }
}

std::unique_ptr<ServerPlace> BeginOnServer(const std::filesystem::path& name,
                                           const ServerPlaceOrder& order,
                                           const Patience& patience) {
  return MakeServerPlace(name.string(), order, patience);
}

void RequirePlaceOnServer(const std::filesystem::path& name, const ServerPlaceOrder& order,
                          const Patience& patience) {
  RequireServerPlace(name.string(), order, patience);
}

void RequireDistribution(const std::filesystem::path& name) {
  if (!IsOnServer(name)) {
    throw StoreError(
        fmt::format("A store in a file cannot be spread over several servers: '{}' names no server",
                    name.string()));
  }
  RequireDistributingServer(name.string());
}

void GrantRights(const std::filesystem::path& name, const StoreRoles& roles) {
  if (!IsOnServer(name)) {
    throw StoreError(
        "Roles are granted rights on a store on a server: for a file set the rights of the file");
  }
  GrantServerRights(name.string(), roles);
}

std::unique_ptr<Store> OpenMemoryStore() {
  return std::make_unique<sqlite::Store>(sqlite::OpenMemoryDatabase());
}

bool IsStoreOrEmpty(const std::filesystem::path& file) {
  return sqlite::IsStoreOrEmpty(file);
}

StoreCondition ConditionOf(const std::filesystem::path& file) {
  try {
    if (sqlite::IsNewerStore(file)) {
      return StoreCondition::kNewer;
    }
    return sqlite::IsDamaged(file) ? StoreCondition::kDamaged : StoreCondition::kUsable;
  } catch (const StoreError& failure) {
    if (failure.fault() == StoreFault::kDamaged || failure.fault() == StoreFault::kNoStore) {
      return StoreCondition::kDamaged;
    }
    throw;
  }
}

bool IsOlderStore(const std::filesystem::path& file) {
  return sqlite::IsOlderStore(file);
}

std::vector<std::filesystem::path> SideFilesOf(const std::filesystem::path& file) {
  return sqlite::SideFilesOf(file);
}

std::optional<std::filesystem::path> RemainsBeside(const std::filesystem::path& place) {
  return sqlite::RemainsBeside(place);
}

void PutWhereNoneIs(const std::filesystem::path& place, const std::filesystem::path& fresh,
                    const std::function<void()>& moveInPlace) {
  sqlite::PutWhereNoneIs(place, fresh, moveInPlace);
}

std::unique_ptr<Replacement> BeginReplacement(const std::filesystem::path& file,
                                              Patience patience) {
  return std::make_unique<sqlite::Replacement>(file, std::move(patience));
}

}  // namespace qorhost
