#include "host/store/postgres/server_place.h"

#include <fmt/format.h>

#include "host/store/postgres/role_needs.h"
#include "host/store/postgres/schema.h"
#include "host/store/store_error.h"

namespace qorhost::postgres {

namespace {

constexpr const char* kSetAside =
    "ALTER SCHEMA qorhost RENAME TO qorhost_before; ALTER SCHEMA desktop RENAME TO desktop_before";
constexpr const char* kDropOld = "DROP SCHEMA qorhost_before, desktop_before CASCADE";
constexpr const char* kDropNew = "DROP SCHEMA qorhost, desktop CASCADE";
constexpr const char* kPutBack =
    "ALTER SCHEMA qorhost_before RENAME TO qorhost; ALTER SCHEMA desktop_before RENAME TO desktop";

void RunAtOnce(Connection& connection, const std::string& sql) {
  connection.RunAll("BEGIN; " + sql + "; COMMIT");
}

}  // namespace

ServerPlace::ServerPlace(const std::string& name, const ServerPlaceOrder& order,
                         const Patience& patience)
    : connection_(name), roles_(order.roles) {
  RequireGrantable(connection_, roles_);
  const StoreForm form{.spread = order.distributed ? Spread::kServers : Spread::kNone};
  const bool isMade = MakeStore(connection_, form, [&](Connection& connection) {
    if (!connection.Run("SELECT to_regnamespace('qorhost_before')").IsNull(0, 0)) {
      throw StoreError(fmt::format(
          "In '{}' stands a store that was being replaced when a program was ended, in the schemas "
          "qorhost_before and desktop_before: look at what is there, then drop these there, or "
          "qorhost and desktop, and rename these",
          connection.name()));
    }
    if (order.replace && VersionOf(connection)) {
      SetAside(patience);
    }
  });
  if (!isMade) {
    throw StoreError(
        fmt::format("There is a store in '{}' already, and it is left as it is", name));
  }
}

void ServerPlace::SetAside(const Patience& patience) {
  rights_ = RightsOn(connection_);
  RequireOwner(connection_, rights_);
  // Whoever is writing to it comes to an end before.
  (void)connection_.RunWaiting(R"(LOCK TABLE qorhost."UnitVersions" IN EXCLUSIVE MODE)", patience);
  connection_.RunAll(kSetAside);
  isSetAside_ = true;
}

ServerPlace::~ServerPlace() {
  if (ended_) {
    return;
  }
  try {
    PutBack();
  } catch (const StoreError&) {
    // Without the server nothing can be put back: its schemas tell what is left to do.
    connection_.UndoWhatIsOpen();
  }
}

void ServerPlace::PutBack() {
  RunAtOnce(connection_,
            isSetAside_ ? fmt::format("{}; {}", kDropNew, kPutBack) : std::string(kDropNew));
}

void ServerPlace::HandOverRights() {
  connection_.RunAll("BEGIN");
  try {
    if (isSetAside_) {
      RenewRights(connection_, rights_);
    }
    if (!roles_.empty()) {
      GrantRights(connection_, roles_);
    }
    connection_.RunAll("COMMIT");
  } catch (...) {
    connection_.UndoWhatIsOpen();
    throw;
  }
}

void ServerPlace::Keep() {
  HandOverRights();
  ended_ = true;
  if (isSetAside_) {
    RunAtOnce(connection_, kDropOld);
  }
}

}  // namespace qorhost::postgres
