// Copies of a store that can be put in its place again.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <vector>

#include "frame/date.h"
#include "host/desks/desk_error.h"
#include "host/desks/store_file.h"
#include "host/files/fresh_file.h"
#include "host/store/audit_log.h"

namespace qorhost {

/// A copy that was read back after it was written.
struct BackedUp {
  std::uintmax_t bytes = 0;
  std::vector<ChainHead> heads;  ///< of its history: to be noted elsewhere
};

// Of a trial the new file is made and read, and goes again without being put in place.

/// Writes all that a store holds at one moment to `to`, while others go on working, reads it back
/// and puts it in place: there is never half a backup under its name. A file that is there stays
/// unless it may be replaced and is a store itself; the store's own files never are. Raises
/// FileError, StoreError, ForeignFile and RefusedError.
BackedUp BackUp(const std::filesystem::path& store, const std::filesystem::path& to,
                Standing existing, const Patience& patience = {}, Trial trial = Trial::kNo);

/// What a restore did.
struct Restored {
  std::optional<std::filesystem::path> kept;  ///< the store that was there before, if one was
  std::vector<ChainHead> heads;
};

/// Puts the backup in the place of the store, which is kept under another name beside it, with the
/// moment in it, before. Nobody writes to the store meanwhile; programs that have it open must open
/// it again. The backup stays as it is. Raises what BackUp() raises; the store is as it was then.
Restored Restore(const std::filesystem::path& store, const std::filesystem::path& backup,
                 qorcred::Date now, const Patience& patience = {}, Trial trial = Trial::kNo);

}  // namespace qorhost
