#include "host/store/sqlite/schema.h"

#include <fmt/format.h>
#include <sqlite3.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <fstream>
#include <string>
#include <system_error>
#include <thread>

#include "host/store/sqlite/audit_log.h"
#include "host/store/sqlite/migration_1.h"
#include "host/store/sqlite/migration_2.h"
#include "host/store/sqlite/migration_3.h"
#include "host/store/sqlite/migration_4.h"
#include "host/store/sqlite/migration_5.h"
#include "host/store/sqlite/migration_6.h"
#include "host/store/sqlite/migration_7.h"
#include "host/store/sqlite/transaction.h"
#include "host/store/store_error.h"

namespace qorhost::sqlite {

namespace {

constexpr std::size_t kHeaderSize = 100;  // of every SQLite file
constexpr int kMostOpenings = 100;        // of a file that is replaced again and again
constexpr int kFirstWithHashes = 6;       // of the audit: the program makes them

constexpr std::array kMigrations{Migration{1, kMigration1}, Migration{2, kMigration2},
                                 Migration{3, kMigration3}, Migration{4, kMigration4},
                                 Migration{5, kMigration5}, Migration{6, kMigration6},
                                 Migration{7, kMigration7}};

std::int64_t VersionOf(Database& database) {
  return database.Number("PRAGMA user_version");
}

bool IsOurs(Database& database) {
  return database.Number("PRAGMA application_id") == kApplicationId;
}

bool HasTables(Database& database) {
  return database.Number("SELECT count(*) FROM sqlite_schema") > 0;
}

// Whether the file begins as a database with our mark, whatever the rest of it is.
bool HeaderIsOurs(const std::filesystem::path& file) {
  constexpr std::string_view kMagic("SQLite format 3\0", 16);
  constexpr std::size_t kMarkAt = 68;
  constexpr unsigned kMarkSize = 4;
  std::array<char, kHeaderSize> header{};
  std::ifstream(file, std::ios::binary).read(header.data(), header.size());
  std::int64_t mark = 0;
  for (std::size_t at = kMarkAt; at < kMarkAt + kMarkSize; ++at) {
    mark = mark * 256 + static_cast<unsigned char>(header[at]);
  }
  return std::string_view(header.data(), kMagic.size()) == kMagic && mark == kApplicationId;
}

// A program that was killed while a store had no log yet leaves a journal, from which its work is
// undone, and only by one who may write. One who may not is told so when he reads.
void UndoCutOffWork(const std::filesystem::path& file, const Patience& patience = {}) {
  std::filesystem::path journal = file;
  journal += "-journal";
  std::error_code missing;
  if (const std::uintmax_t size = std::filesystem::file_size(journal, missing);
      missing || size == 0 || !HeaderIsOurs(file)) {
    return;
  }
  try {
    Database database(file, OpenMode::kReadWrite, patience);
    (void)HasTables(database);
  } catch (const StoreError&) {  // whoever reads is told the same
  }
}

// A file as it is looked at, without a change to what it holds.
Database OpenToLook(const std::filesystem::path& file) {
  UndoCutOffWork(file);
  return {file, OpenMode::kReadOnly};
}

// Refuses files that are not ours before anything is written to them.
void CheckOwner(Database& database) {
  const bool hasTables = HasTables(database);
  if (hasTables && !IsOurs(database)) {
    throw StoreError(
        fmt::format("'{}' is a database of another program: name another file", database.name()));
  }
  if (!hasTables && database.readOnly()) {
    throw StoreError(fmt::format("'{}' is empty: create the store first", database.name()));
  }
}

void CheckVersion(Database& database, std::int64_t version) {
  if (version > SchemaVersion()) {
    throw StoreError(
        fmt::format("'{}' was written by a newer version of this program (schema {}, this one "
                    "reads up to {}): use that version",
                    database.name(), version, SchemaVersion()));
  }
  if (version < SchemaVersion() && database.readOnly()) {
    throw StoreError(
        fmt::format("'{}' is in an older form (schema {} instead of {}): open it for writing once",
                    database.name(), version, SchemaVersion()));
  }
}

void Migrate(Database& database) {
  // With the file locked and the version read again: another program may migrate it meanwhile.
  WholeTransaction transaction(database);
  Undoable migration(transaction);
  const std::int64_t version = VersionOf(database);
  CheckVersion(database, version);
  for (const Migration& step : kMigrations) {
    if (step.version > version) {
      database.Run(std::string(step.sql));
    }
  }
  if (version < kFirstWithHashes) {
    HashEarlierEntries(database);
  }
  database.Run(fmt::format("PRAGMA application_id={}; PRAGMA user_version={}", kApplicationId,
                           SchemaVersion()));
  migration.Keep();
}

bool HasLog(Database& database) {
  Statement mode(database, "PRAGMA journal_mode");
  return mode.Step() && mode.Text(0) == "wal";
}

// False when others have the file in use. The engine does not wait for them where it might wait for
// itself, too, as when several give the file a log at once.
bool TryToGiveLog(Database& database) {
  try {
    database.Run("PRAGMA journal_mode=WAL");
  } catch (const StoreError& failure) {
    if (failure.fault() != StoreFault::kBusy) {
      throw;
    }
    return false;
  }
  return true;
}

// A store without a log has come from elsewhere or is older. To give it one, all others must have
// let go of it: those who have a log of their own, because it was put over their store, do so only
// at their end, and are not worth a long wait.
void GiveLog(Database& database, const Patience& patience) {
  constexpr std::chrono::milliseconds kLongest(1000);
  constexpr std::chrono::milliseconds kPause(10);
  if (HasLog(database)) {
    return;
  }
  database.SetPatience({std::chrono::milliseconds(0), {}});
  for (std::chrono::milliseconds waited{}; !TryToGiveLog(database); waited += kPause) {
    if (waited >= std::min(patience.limit, kLongest) ||
        (patience.waiting && !patience.waiting(waited))) {
      throw StoreError(
          fmt::format("'{}' has no log yet, and another program has it or the store that was there "
                      "open: nothing was changed; close every program that has it open, then try "
                      "again",
                      database.name()),
          StoreFault::kBusy);
    }
    std::this_thread::sleep_for(kPause);
  }
  database.SetPatience(patience);
}

void Prepare(Database& database, const Patience& patience = {}) {
  CheckOwner(database);
  CheckVersion(database, VersionOf(database));
  if (HasMoved(database)) {
    return;
  }
  if (!database.readOnly()) {
    // FULL: what an operator was told is saved stays saved when the power fails.
    GiveLog(database, patience);
    database.Run("PRAGMA synchronous=FULL");
  }
  const bool isOlder = VersionOf(database) < SchemaVersion();
  database.WatchLog();
  database.RequireOwnLog();
  if (isOlder) {
    Migrate(database);
    // The first seal stands in the file then: a copy from before it is told from the store.
    database.Run("PRAGMA wal_checkpoint(PASSIVE)");
    database.WatchLog();
  }
}

}  // namespace

std::span<const Migration> Migrations() {
  return kMigrations;
}

int SchemaVersion() {
  return kMigrations.back().version;
}

Database OpenDatabase(const std::filesystem::path& file, OpenMode mode, const Patience& patience) {
  // The engine finds the side files by name when it first reads. If the file has moved by then,
  // they may be those of another one, and what was read means nothing.
  for (int openings = 1; openings < kMostOpenings; ++openings) {
    if (mode == OpenMode::kReadOnly) {
      UndoCutOffWork(file, patience);
    }
    Database database(file, mode, patience);
    try {
      Prepare(database, patience);
    } catch (const StoreError&) {
      if (!HasMoved(database)) {
        // A log that was written for another file may have made nonsense of what was read.
        database.WatchLog();
        database.RequireOwnLog();
        throw;
      }
    }
    if (!HasMoved(database)) {
      return database;
    }
  }
  throw StoreError(
      fmt::format("'{}' is being replaced again and again: try again later", file.string()),
      StoreFault::kBusy);
}

bool HasMoved(const Database& database) noexcept {
  int moved = 0;
  sqlite3_file_control(database.handle(), "main", SQLITE_FCNTL_HAS_MOVED, &moved);
  return moved != 0;
}

bool IsStoreOrEmpty(const std::filesystem::path& file) {
  // A device or a pipe would not be read but waited for; SQLite takes a single byte for nothing.
  if (!std::filesystem::is_regular_file(file)) {
    return false;
  }
  if (const std::uintmax_t size = std::filesystem::file_size(file); size < kHeaderSize) {
    return size == 0;
  }
  if (HeaderIsOurs(file)) {
    return true;
  }
  try {
    // The mark of a store that was cut off while it was made may stand in its log alone.
    Database database = OpenToLook(file);
    return !HasTables(database) || IsOurs(database);
  } catch (const StoreError& failure) {
    if (failure.fault() == StoreFault::kNoStore || failure.fault() == StoreFault::kDamaged) {
      return false;
    }
    throw;
  }
}

bool IsNewerStore(const std::filesystem::path& file) {
  Database database = OpenToLook(file);
  return IsOurs(database) && VersionOf(database) > SchemaVersion();
}

bool IsDamaged(const std::filesystem::path& file) {
  const Database database = OpenToLook(file);
  Statement check(database, "PRAGMA quick_check(1)");
  return check.Step() && check.Text(0) != "ok";
}

bool IsOlderStore(const std::filesystem::path& file) {
  Database database = OpenToLook(file);
  return IsOurs(database) && HasTables(database) && VersionOf(database) < SchemaVersion();
}

std::vector<std::filesystem::path> SideFilesOf(const std::filesystem::path& file) {
  std::vector<std::filesystem::path> beside;
  for (const std::string_view ending : {"-wal", "-shm", "-journal"}) {
    beside.push_back(file);
    beside.back() += ending;
  }
  return beside;
}

Database OpenMemoryDatabase() {
  Database database = Database::InMemory();
  Prepare(database);
  return database;
}

}  // namespace qorhost::sqlite
