#include "host/store/postgres/schema.h"

#include <fmt/format.h>

#include <optional>
#include <string_view>

#include "host/store/postgres/change_triggers.h"
#include "host/store/postgres/migration_1.h"
#include "host/store/postgres/placement.h"
#include "host/store/postgres/sql_functions.h"
#include "host/store/store_error.h"

namespace qorhost::postgres {

namespace {

constexpr int kVersion = 1;
// Whoever makes a store keeps others from doing the same meanwhile.
constexpr std::string_view kMaking = "SELECT pg_advisory_xact_lock(1902072947)";

/// Nothing where the database has no store.
std::optional<int> VersionOf(Connection& connection) {
  if (connection.Run("SELECT to_regclass('qorhost.\"StoreSchema\"')").IsNull(0, 0)) {
    return std::nullopt;
  }
  const Result version = connection.Run(R"(SELECT "Version" FROM qorhost."StoreSchema")");
  return static_cast<int>(version.rows() == 0 ? 0 : version.Number(0, 0));
}

/// The tables with all that belongs to them; what the server is told of where they lie comes before
/// what it watches over.
std::string TablesText(Spread spread) {
  return SpreadText(kTables1, spread) + PlacingText(spread) + std::string(kLinks1) +
         ChangeTriggersText();
}

void Make(Connection& connection, Spread spread) {
  RequireSpreading(connection, spread);
  connection.RunAll("BEGIN");
  try {
    connection.Run(std::string(kMaking));
    if (!VersionOf(connection)) {
      connection.RunAll(CreateFunctionsText() +
                        "CREATE SCHEMA qorhost; SET LOCAL search_path = qorhost, public;" +
                        TablesText(spread) +
                        fmt::format(R"(CREATE TABLE "StoreSchema" ("Version" integer NOT NULL);)"
                                    "INSERT INTO \"StoreSchema\" VALUES ({})",
                                    kVersion));
    }
    connection.RunAll("COMMIT");
  } catch (...) {
    connection.UndoWhatIsOpen();
    throw;
  }
}

void RequireVersion(const Connection& connection, std::optional<int> version) {
  if (!version) {
    throw StoreError(fmt::format("There is no store in '{}': create it first", connection.name()),
                     StoreFault::kNoStore);
  }
  if (*version > kVersion) {
    throw StoreError(
        fmt::format("'{}' was written by a newer version of this program (schema {}, this one "
                    "reads up to {}): use that version",
                    connection.name(), *version, kVersion));
  }
  if (*version < kVersion) {
    throw StoreError(
        fmt::format("'{}' is in a form that no version of this program has written "
                    "(schema {})",
                    connection.name(), *version));
  }
}

}  // namespace

int SchemaVersion() {
  return kVersion;
}

Connection OpenServerStore(const std::string& name, OpenMode mode, Spread spread) {
  Connection connection(name);
  if (mode == OpenMode::kCreate && !VersionOf(connection)) {
    Make(connection, spread);
  }
  connection.Prepare([mode](Connection& opened) {
    RequireVersion(opened, VersionOf(opened));
    opened.RunAll("SET search_path = qorhost");
    if (mode == OpenMode::kReadOnly) {
      opened.RunAll("SET default_transaction_read_only = on");
    }
  });
  return connection;
}

}  // namespace qorhost::postgres
