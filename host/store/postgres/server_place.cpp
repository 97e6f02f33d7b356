#include "host/store/postgres/server_place.h"

#include <fmt/format.h>

#include "host/store/postgres/role_needs.h"
#include "host/store/postgres/schema.h"
#include "host/store/postgres/taken_role.h"
#include "host/store/postgres/transaction.h"
#include "host/store/store_error.h"

namespace qorhost::postgres {

namespace {

constexpr const char* kSetAside =
    "ALTER SCHEMA qorhost RENAME TO qorhost_replaced; "
    "ALTER SCHEMA desktop RENAME TO desktop_replaced";
constexpr const char* kDropReplaced =
    "DROP SCHEMA IF EXISTS qorhost_replaced, desktop_replaced CASCADE";

StoreForm FormOf(const ServerPlaceOrder& order) {
  return {.spread = order.distributed ? Spread::kServers : Spread::kNone};
}

/// What can be known before others are kept from writing.
void RequirePlace(Connection& connection, const ServerPlaceOrder& order) {
  RequireGrantable(connection, order.roles);
  RequireSpreading(connection, FormOf(order).spread);
  const bool stands = VersionOf(connection).has_value();
  if (stands && order.replace) {
    RequireOwner(connection, RightsOn(connection));
  }
  if (!stands || order.replace) {
    RequireRightToMake(connection);
  }
}

}  // namespace

ServerPlace::ServerPlace(const std::string& name, const ServerPlaceOrder& order,
                         const Patience& patience)
    : patience_(patience),
      store_(Connection(name, patience.working), patience, false),
      roles_(order.roles) {
  connection().Prepare([](Connection& opened) { (void)TakeRole(opened); });
  RequirePlace(connection(), order);
  connection().BeginWhole();
  LockMaking(connection(), patience_);
  if (order.replace && VersionOf(connection())) {
    SetAside();
  }
  if (VersionOf(connection())) {
    throw StoreError(
        fmt::format("There is a store in '{}' already, and it is left as it is", name));
  }
  MakeEmptyStore(connection(), FormOf(order));
  connection().RunAll("SET LOCAL search_path = qorhost");
  witness_ = WitnessIn(connection(), kStoreSchema);
}

void RequireServerPlace(const std::string& name, const ServerPlaceOrder& order,
                        const Patience& patience) {
  Connection connection(name, patience.working);
  (void)TakeRole(connection);
  RequirePlace(connection, order);
}

void ServerPlace::SetAside() {
  rights_ = RightsOn(connection());
  RequireOwner(connection(), rights_);
  // One that was replaced before, and whose end did not come.
  (void)connection().RunWaiting(kDropReplaced, patience_);
  // Whoever is writing to it comes to an end before.
  (void)connection().RunWaiting(R"(LOCK TABLE qorhost."UnitVersions" IN EXCLUSIVE MODE)",
                                patience_);
  connection().RunAll(kSetAside);
  isSetAside_ = true;
}

Replaced ServerPlace::Keep() {
  if (isSetAside_) {
    RenewRights(connection(), rights_);
  }
  if (!roles_.empty()) {
    GrantRights(connection(), roles_);
  }
  connection().KeepWhole(witness_);
  if (!isSetAside_) {
    return Replaced::kIsGone;
  }
  try {
    // Not before: a reader of it may be waiting for the right to write.
    (void)connection().RunWaiting(kDropReplaced, patience_);
    return Replaced::kIsGone;
  } catch (const StoreError&) {
    return Replaced::kIsLeft;
  }
}

}  // namespace qorhost::postgres
