#include "host/store/schema.h"

#include <fmt/format.h>
#include <sqlite3.h>

#include <array>
#include <string>

#include "host/store/migration_1.h"
#include "host/store/store_error.h"

namespace qorhost {

namespace {

constexpr std::array kMigrations{Migration{1, kMigration1}};

std::int64_t VersionOf(Database& database) {
  return database.Number("PRAGMA user_version");
}

// Refuses files that are not ours before anything is written to them.
void CheckOwner(Database& database) {
  const bool hasTables = database.Number("SELECT count(*) FROM sqlite_schema") > 0;
  if (hasTables && database.Number("PRAGMA application_id") != kApplicationId) {
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
  database.Run("BEGIN IMMEDIATE");
  try {
    const std::int64_t version = VersionOf(database);
    CheckVersion(database, version);
    for (const Migration& migration : kMigrations) {
      if (migration.version > version) {
        database.Run(std::string(migration.sql));
      }
    }
    database.Run(fmt::format("PRAGMA application_id={}; PRAGMA user_version={}", kApplicationId,
                             SchemaVersion()));
    database.Run("COMMIT");
  } catch (...) {
    if (database.inTransaction()) {
      sqlite3_exec(database.handle(), "ROLLBACK", nullptr, nullptr, nullptr);
    }
    throw;
  }
}

void Prepare(Database& database) {
  CheckOwner(database);
  CheckVersion(database, VersionOf(database));
  if (!database.readOnly()) {
    // FULL: what an operator was told is saved stays saved when the power fails.
    database.Run("PRAGMA journal_mode=WAL; PRAGMA synchronous=FULL");
  }
  if (VersionOf(database) < SchemaVersion()) {
    Migrate(database);
  }
}

}  // namespace

std::span<const Migration> Migrations() {
  return kMigrations;
}

int SchemaVersion() {
  return kMigrations.back().version;
}

Database OpenStore(const std::filesystem::path& file, OpenMode mode) {
  Database database(file, mode);
  Prepare(database);
  return database;
}

Database OpenMemoryStore() {
  Database database = Database::InMemory();
  Prepare(database);
  return database;
}

}  // namespace qorhost
