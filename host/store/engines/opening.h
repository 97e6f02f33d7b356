// Opening a store by its name, whatever engine it is kept by. The name is that of a file, or one
// that IsServerName() takes for a store on a server.
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "host/store/replacement.h"
#include "host/store/server_place.h"
#include "host/store/store.h"
#include "host/store/store_roles.h"

namespace qorhost {

/// Opens a store and brings its schema up to date; kCreate makes an empty one when there is none.
/// Raises StoreError for a file that is no store, is damaged, is newer than this program, or is
/// older and was opened for reading only.
[[nodiscard]] std::unique_ptr<Store> OpenStore(const std::filesystem::path& file, OpenMode mode,
                                               const Patience& patience = {});

/// Whether a name is that of a store on a server; see IsServerName().
[[nodiscard]] bool IsOnServer(const std::filesystem::path& name);
/// Whether there is a store on a server under that name, of whatever version. Raises StoreError
/// when the server or the database cannot be reached.
[[nodiscard]] bool IsStoreOnServer(const std::filesystem::path& name);
/// Makes an empty store on a server, in the place of the one that stands where that is ordered, to
/// be filled and then kept. Raises StoreError: for a store that stands and stays, for a server that
/// cannot spread tables, kBusy where somebody goes on writing to the one that is replaced.
[[nodiscard]] std::unique_ptr<ServerPlace> BeginOnServer(const std::filesystem::path& name,
                                                         const ServerPlaceOrder& order,
                                                         const Patience& patience);

/// Raises what that would raise, but for what others do meanwhile; changes nothing.
void RequirePlaceOnServer(const std::filesystem::path& name, const ServerPlaceOrder& order,
                          const Patience& patience);

/// Raises StoreError where the tables of a store of that name cannot be spread over several
/// servers, the rows of a unit together: for a file, and for a server that cannot do it.
void RequireDistribution(const std::filesystem::path& name);

/// Grants the rights on a store on a server to roles, which are made where they are missing and
/// this user may make them; may be repeated. All of it or nothing. Raises StoreError, also for a
/// store in a file.
void GrantRights(const std::filesystem::path& name, const StoreRoles& roles);

/// An empty store in memory, gone with the object.
[[nodiscard]] std::unique_ptr<Store> OpenMemoryStore();

// What follows is about files alone.

/// Whether a file holds a store, whole or damaged and of any version, or nothing at all: what may
/// be replaced without a loss of anything else. Only reads the file. Raises StoreError when it
/// cannot.
[[nodiscard]] bool IsStoreOrEmpty(const std::filesystem::path& file);

/// What a store, or an empty file, is to this program.
enum class StoreCondition : std::uint8_t {
  kUsable,
  kNewer,    ///< of a later version than this program's
  kDamaged,  ///< whatever of it can still be read
};
/// Only reads the file, all of it.
[[nodiscard]] StoreCondition ConditionOf(const std::filesystem::path& file);

/// Whether a file holds a store of an earlier version than this program's. Only reads the file.
/// Raises StoreError when it cannot, or when the file is damaged or no database.
[[nodiscard]] bool IsOlderStore(const std::filesystem::path& file);

/// The files that may stand beside a store's and belong to it.
[[nodiscard]] std::vector<std::filesystem::path> SideFilesOf(const std::filesystem::path& file);

/// What a store that is gone has left beside its place and that may hold something of it; what
/// holds nothing is none. Raises StoreError for a place where no store can stand: its name is too
/// long.
[[nodiscard]] std::optional<std::filesystem::path> RemainsBeside(
    const std::filesystem::path& place);

/// Puts a whole store, which nobody has open, where none is: `moveInPlace` gives it the name, or
/// raises. What was left beside its place goes. Raises StoreError, and no store is there then.
void PutWhereNoneIs(const std::filesystem::path& place, const std::filesystem::path& fresh,
                    const std::function<void()>& moveInPlace);

/// Keeps everybody from writing to a store that is to make room for another one; a store that is
/// too damaged for that is replaced all the same. Waits as every writer does. Raises StoreError:
/// kBusy when another program goes on writing, or reading what is not in the file yet.
[[nodiscard]] std::unique_ptr<Replacement> BeginReplacement(const std::filesystem::path& file,
                                                            Patience patience = {});

}  // namespace qorhost
