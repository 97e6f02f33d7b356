#include "host/store/postgres/migrations.h"

#include <fmt/format.h>

#include <array>

#include "host/store/postgres/migration_1.h"
#include "host/store/postgres/schema.h"

namespace qorhost::postgres {

namespace {

constexpr std::array kMigrations{Migration{1, kMigration1}};

}  // namespace

std::span<const Migration> Migrations() {
  return kMigrations;
}

void MakeTables(Connection& connection, std::span<const Migration> steps) {
  for (const Migration& step : steps) {
    connection.RunAll(std::string(step.sql));
  }
  connection.RunAll(fmt::format(R"(CREATE TABLE "StoreSchema" ("Version" integer NOT NULL);)"
                                R"(INSERT INTO "StoreSchema" VALUES ({}))",
                                steps.back().version));
}

void BringUpToDate(Connection& connection, std::span<const Migration> steps) {
  connection.RunAll("BEGIN");
  try {
    LockMaking(connection);
    connection.RunAll("SET LOCAL search_path = qorhost");
    const int version = VersionOf(connection).value_or(0);
    for (const Migration& step : steps) {
      if (step.version > version) {
        connection.RunAll(std::string(step.sql));
      }
    }
    connection.RunAll(fmt::format(R"(UPDATE "StoreSchema" SET "Version"={0} WHERE "Version"<{0})",
                                  steps.back().version));
    connection.RunAll("COMMIT");
  } catch (...) {
    connection.UndoWhatIsOpen();
    throw;
  }
}

}  // namespace qorhost::postgres
