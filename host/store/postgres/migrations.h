// How the tables of a store on a server come about, step by step.
#pragma once

#include <span>
#include <string_view>

#include "host/store/postgres/connection.h"

namespace qorhost::postgres {

/// One step; behind it the store has that version.
struct Migration {
  int version;
  std::string_view sql;
};

/// All of them, in their order. One that was released stays as it is.
[[nodiscard]] std::span<const Migration> Migrations();

/// Makes the tables of an empty store, in the open transaction: all steps.
void MakeTables(Connection& connection, std::span<const Migration> steps);

/// Takes a store through the steps behind its version, in one transaction; another program may be
/// doing the same meanwhile. Raises StoreError, and the store is as it was.
void BringUpToDate(Connection& connection, std::span<const Migration> steps);

}  // namespace qorhost::postgres
