// The store's tables on a server and how older ones come up to date.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "host/store/postgres/connection.h"
#include "host/store/postgres/migrations.h"
#include "host/store/postgres/placement.h"
#include "host/store/store.h"

namespace qorhost::postgres {

/// Connects to the store of that name: the schema "qorhost" of a database, beside it "desktop" with
/// the dialect's functions. kCreate makes an empty one when there is none, kReadOnly lets nothing
/// be written. A store of an earlier version is brought up to date first, whatever the mode. Raises
/// StoreError for a database without a store, for one of a newer version, for a server that cannot
/// spread tables as the form has it, kBusy where others keep it from being made or brought up to
/// date for longer than the patience lasts, and what Connection raises, which looks up by that.
[[nodiscard]] Connection OpenServerStore(const std::string& name, OpenMode mode,
                                         const StoreForm& form = {}, const Patience& patience = {});

/// Makes an empty store where none is, in the open transaction, which has taken LockMaking().
void MakeEmptyStore(Connection& connection, const StoreForm& form);

/// The table that each transaction changes that makes a store or brings one up to date.
inline constexpr std::string_view kStoreSchema = R"(qorhost."StoreSchema")";

/// Whether another program has brought the store up to a later version since this connection was
/// opened by OpenServerStore(): an expression, true or false.
inline constexpr std::string_view kIsNewerByNow =
    R"(coalesce((SELECT "Version"::text FROM "StoreSchema") <> )"
    "nullif(current_setting('qorhost.version', true), ''), false)";
/// Raises StoreError where that is true.
void RequireSameVersion(const Connection& connection, bool isNewerByNow);

/// The version of the store that is there; nothing where the database has none.
[[nodiscard]] std::optional<int> VersionOf(Connection& connection);
/// Raises kNoRights where this user may not make a store in the database, with the statement that
/// lets him.
void RequireRightToMake(Connection& connection);
/// Keeps others from making a store or bringing one up to date until the transaction ends. Raises
/// kBusy when another one goes on doing so.
void LockMaking(Connection& connection, const Patience& patience);

}  // namespace qorhost::postgres
