// The store's tables on a server and how older ones come up to date.
#pragma once

#include <string>

#include "host/store/postgres/connection.h"
#include "host/store/postgres/placement.h"
#include "host/store/store.h"

namespace qorhost::postgres {

/// The version that this program reads and writes.
[[nodiscard]] int SchemaVersion();

/// Connects to the store of that name: the schema "qorhost" of a database, beside it "desktop" with
/// the dialect's functions. kCreate makes an empty one when there is none, spread as it is said;
/// kReadOnly lets nothing be written. Raises StoreError for a database without a store, for one of
/// a newer version, for a server that cannot spread tables so, and what Connection raises.
[[nodiscard]] Connection OpenServerStore(const std::string& name, OpenMode mode,
                                         Spread spread = Spread::kNone);

}  // namespace qorhost::postgres
