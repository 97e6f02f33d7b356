#include "host/store/postgres/migrations.h"

#include <fmt/format.h>

#include <array>

#include "host/store/postgres/migration_1.h"
#include "host/store/postgres/rights.h"
#include "host/store/postgres/schema.h"
#include "host/store/postgres/transaction.h"

namespace qorhost::postgres {

namespace {

constexpr std::array kMigrations{Migration{1, kTables1, kLinks1}};

}  // namespace

std::span<const Migration> Migrations() {
  return kMigrations;
}

void MakeTables(Connection& connection, const StoreForm& form) {
  for (const Migration& step : form.steps) {
    connection.RunAll(SpreadText(step.sql, form.spread));
    if (&step == &form.steps.front()) {
      connection.RunAll(PlacingText(form.spread));
    }
    if (!step.links.empty()) {
      connection.RunAll(std::string(step.links));
    }
  }
  connection.RunAll(fmt::format(R"(CREATE TABLE "StoreSchema" ("Version" integer NOT NULL);)"
                                R"(INSERT INTO "StoreSchema" VALUES ({}))",
                                form.steps.back().version));
}

void BringUpToDate(Connection& connection, std::span<const Migration> steps,
                   const Patience& patience) {
  InOneTransaction(connection, kStoreSchema, [&] {
    LockMaking(connection, patience);
    connection.RunAll("SET LOCAL search_path = qorhost");
    const int version = VersionOf(connection).value_or(0);
    const GrantedRights rights = RightsOn(connection);
    ActAsOwner(connection, rights);
    if (version < steps.back().version) {
      (void)LockStore(connection, patience);  // whoever is writing comes to an end before
    }
    for (const Migration& step : steps) {
      if (step.version > version) {
        // Its tables may be read meanwhile.
        (void)connection.RunWaiting(fmt::format("{};{}", step.sql, step.links), patience);
      }
    }
    connection.RunAll(fmt::format(R"(UPDATE "StoreSchema" SET "Version"={0} WHERE "Version"<{0})",
                                  steps.back().version));
    RenewRights(connection, rights);
  });
}

}  // namespace qorhost::postgres
