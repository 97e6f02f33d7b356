#include "host/store/postgres/schema.h"

#include <fmt/format.h>

#include <string_view>
#include <utility>

#include "host/dialect/names.h"
#include "host/store/postgres/change_triggers.h"
#include "host/store/postgres/rights.h"
#include "host/store/postgres/sql_functions.h"
#include "host/store/postgres/taken_role.h"
#include "host/store/postgres/transaction.h"
#include "host/store/store_error.h"

namespace qorhost::postgres {

namespace {

void RequireVersion(const Connection& connection, std::optional<int> version, int latest) {
  if (!version) {
    throw StoreError(fmt::format("There is no store in '{}': create it first", connection.name()),
                     StoreFault::kNoStore);
  }
  if (*version > latest) {
    throw StoreError(
        fmt::format("'{}' was written by a newer version of this program (schema {}, this one "
                    "reads up to {}): use that version",
                    connection.name(), *version, latest));
  }
  if (*version < 1) {
    throw StoreError(
        fmt::format("'{}' is in a form that no version of this program has written "
                    "(schema {})",
                    connection.name(), *version));
  }
}

void MakeStoreWhereNoneIs(Connection& connection, const StoreForm& form, const Patience& patience) {
  RequireSpreading(connection, form.spread);
  InOneTransaction(connection, kStoreSchema, [&] {
    LockMaking(connection, patience);
    if (!VersionOf(connection)) {
      MakeEmptyStore(connection, form);
    }
  });
}

/// Where the login has rights on it through a role alone, `role` names that.
std::optional<int> VersionToOpen(Connection& connection, std::string& role) {
  try {
    return VersionOf(connection);
  } catch (const StoreError& failure) {
    if (failure.fault() != StoreFault::kNoRights) {
      throw;
    }
  }
  role = TakeRole(connection);
  return VersionOf(connection);
}

}  // namespace

std::optional<int> VersionOf(Connection& connection) {
  if (connection.Run("SELECT to_regclass('qorhost.\"StoreSchema\"')").IsNull(0, 0)) {
    return std::nullopt;
  }
  const Result version = connection.Run(R"(SELECT "Version" FROM qorhost."StoreSchema")");
  return static_cast<int>(version.rows() == 0 ? 0 : version.Number(0, 0));
}

void RequireSameVersion(const Connection& connection, bool isNewerByNow) {
  if (isNewerByNow) {
    throw StoreError(
        fmt::format("The store '{}' was brought up to date by a newer version of this program "
                    "while it was open: nothing was stored; use that version",
                    connection.name()));
  }
}

void RequireRightToMake(Connection& connection) {
  const Result who = connection.Run(
      "SELECT has_database_privilege(current_database(), 'CREATE')::int4, current_database(), "
      "current_user");
  if (who.Number(0, 0) == 0) {
    throw StoreError(
        fmt::format(
            "'{}' cannot hold a store that this user makes: ask its administrator for GRANT "
            "CREATE ON DATABASE {} TO {}",
            connection.name(), dialect::QuotedName(who.Text(0, 1)),
            dialect::QuotedName(who.Text(0, 2))),
        StoreFault::kNoRights);
  }
}

void LockMaking(Connection& connection, const Patience& patience) {
  (void)connection.RunWaiting("SELECT pg_advisory_xact_lock(1902072947)", patience);
}

void MakeEmptyStore(Connection& connection, const StoreForm& form) {
  RequireRightToMake(connection);
  // A distributed server has its functions in "public".
  connection.RunAll(CreateFunctionsText() +
                    "CREATE SCHEMA qorhost; SET LOCAL search_path = qorhost, public;");
  MakeTables(connection, form);
  connection.RunAll(ChangeTriggersText(form.spread));
}

Connection OpenServerStore(const std::string& name, OpenMode mode, const StoreForm& form,
                           const Patience& patience) {
  Connection connection(name, patience.working);
  const int latest = form.steps.back().version;
  std::string role;
  std::optional<int> version = VersionToOpen(connection, role);
  if (!version && mode == OpenMode::kCreate) {
    MakeStoreWhereNoneIs(connection, form, patience);
    version = VersionOf(connection);
  }
  RequireVersion(connection, version, latest);
  if (*version < latest) {
    BringUpToDate(connection, form.steps, patience);
  }
  connection.Prepare([mode, latest, role](Connection& opened) {
    if (!role.empty()) {
      ActAs(opened, role);
    }
    RequireVersion(opened, VersionOf(opened), latest);
    opened.RunAll(fmt::format("SET search_path = qorhost; SET qorhost.version = '{}'", latest));
    if (mode == OpenMode::kReadOnly) {
      opened.RunAll("SET default_transaction_read_only = on");
    }
  });
  return connection;
}

}  // namespace qorhost::postgres
