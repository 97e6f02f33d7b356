// SQLite's failures, as the store's.
#pragma once

#include <string>

#include "host/store/store_error.h"

struct sqlite3;

namespace qorhost::sqlite {

/// What a result code, extended or primary, stands for.
[[nodiscard]] StoreFault FaultOf(int code);

/// The last failure of `database` as an error: what was being done, the system's reason or else
/// SQLite's text, and the advice.
[[nodiscard]] StoreError LastError(sqlite3* database, const std::string& doing);

}  // namespace qorhost::sqlite
