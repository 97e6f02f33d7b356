// Putting a database file in its place: where none is, and in the place of one that other programs
// may have open.
#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>

#include "host/store/replacement.h"
#include "host/store/sqlite/database.h"
#include "host/store/sqlite/file_lock.h"

namespace qorhost::sqlite {

/// What a store that is gone has left beside its place and that may hold something of it, or is no
/// file; none for what holds nothing: an empty file, a log without a frame, an index. Raises
/// StoreError for a place where no store can stand, because its name is too long.
[[nodiscard]] std::optional<std::filesystem::path> RemainsBeside(
    const std::filesystem::path& place);

/// Puts a file that nobody has open where none is: `moveInPlace` gives it the name, or raises. Side
/// files that were left there go before anybody can begin to read the new one; where they cannot,
/// it goes itself, and StoreError is raised.
void PutWhereNoneIs(const std::filesystem::path& place, const std::filesystem::path& fresh,
                    const std::function<void()>& moveInPlace);

/// The order, and what each step is for:
/// 1. The write lock: whoever writes has ended, and whoever wants to waits until the file has
/// moved,
///    which the taking of the lock finds.
/// 2. All of the log into the file, so that the file alone is the store if this ends half-way.
/// 3. Both files closed to connections that begin (those that have begun keep reading the old file
///    and its log, which live on without names).
/// 4. The side files go, the new file comes, and side files that a connection on the old file made
///    in between go, too: a log must never meet a file that it was not written for.
class Replacement final : public qorhost::Replacement {
 public:
  explicit Replacement(std::filesystem::path file, Patience patience = {});

  void Put(const std::filesystem::path& fresh, const std::function<void()>& moveInPlace) override;

 private:
  /// False where what was locked is not what stands there any more.
  bool Lock();
  void EmptyLog();

  std::filesystem::path file_;
  Patience patience_;  // with those who write, and with those who read what the log holds
  std::unique_ptr<FileLock> oldFile_;  // to outlive the connection
  std::unique_ptr<FileLock> newFile_;
  std::unique_ptr<Database> database_;  // none for a file that is too damaged to be locked
};

}  // namespace qorhost::sqlite
