// Units copied into a store that has others.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "host/desks/copied_rows.h"
#include "host/desks/progress.h"
#include "host/store/sql_session.h"

namespace qorhost {

struct CopiedUnits {
  std::vector<std::pair<std::string_view, std::int64_t>> rows;  ///< of each table
  std::vector<LostLink> lost;
};

/// Copies units with all that belongs to them, and their types, as one unit of work called `what`.
/// Rows get identities of the store that they come into, links lead to them there, and both are
/// compared up to that before it is stored. The report's fields stay those of that store, and the
/// history stays where it is. Raises RefusedError for a unit that is not there, for a key that the
/// other store has already and a type that has another capacity there, CancelledError when the
/// handler says no, and StoreError; nothing is copied then.
CopiedUnits CopyUnits(SqlSession& from, SqlSession& to, const UnitKeys& units,
                      const std::string& what, const Progress& progress = {});

}  // namespace qorhost
