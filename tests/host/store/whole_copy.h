// A store of a test put in the place of another one.
#pragma once

#include <sqlite3.h>

#include <stdexcept>

#include "host/store/sqlite/database.h"

namespace qorhost::test {

/// Puts everything of one store in the place of another's, as a restore does while it is open.
inline void CopyWhole(sqlite::Database& from, sqlite::Database& to) {
  constexpr int kAllPages = -1;
  sqlite3_backup* copying = sqlite3_backup_init(to.handle(), "main", from.handle(), "main");
  if (copying == nullptr || sqlite3_backup_step(copying, kAllPages) != SQLITE_DONE ||
      sqlite3_backup_finish(copying) != SQLITE_OK) {
    throw std::runtime_error("the store cannot be copied");
  }
}

}  // namespace qorhost::test
