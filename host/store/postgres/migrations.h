// How the tables of a store on a server come about, step by step.
#pragma once

#include <span>
#include <string_view>

#include "host/store/postgres/connection.h"
#include "host/store/postgres/placement.h"

namespace qorhost::postgres {

/// One step; behind it the store has that version.
struct Migration {
  int version;
  std::string_view sql;
  std::string_view links = {};  ///< what can be said only where the tables lie in their places
};

/// All of them, in their order. One that was released stays as it is.
[[nodiscard]] std::span<const Migration> Migrations();

/// What a store is made of.
struct StoreForm {
  Spread spread = Spread::kNone;
  std::span<const Migration> steps = Migrations();  ///< those of the program, or of a test
};

/// Makes the tables of an empty store, in the open transaction: all steps.
void MakeTables(Connection& connection, const StoreForm& form);

/// Takes a store through the steps behind its version, in one transaction; another program may be
/// doing the same meanwhile. What it makes belongs to the store's owner, and operators keep their
/// rights. Raises StoreError, and the store is as it was.
void BringUpToDate(Connection& connection, std::span<const Migration> steps,
                   const Patience& patience);

}  // namespace qorhost::postgres
