// What somebody was shown of a row before changing it, for desks that write rows themselves.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include "host/desks/outcome.h"
#include "host/desks/session.h"

namespace qorhost {

/// The cells of a row as a list of the desk showed them, and the last entry of the unit's audit
/// then.
struct SeenRow {
  std::vector<qorcred::Value> cells;
  std::int64_t entry = 0;
};

/// Rows of a table; without RIDs all of them.
struct RowsOfTable {
  std::string_view table;
  std::vector<std::int32_t> rids;
};

/// What others have stored in a unit behind an entry: that which changed one of the rows, or all of
/// it where nothing did.
[[nodiscard]] std::vector<WorkEntry> ChangesBehind(DeskSession& session, std::int64_t entry,
                                                   std::int32_t unitKey,
                                                   std::span<const RowsOfTable> rows);

/// How work on a row ends that was seen otherwise than it is stored; nothing where it is as it was
/// seen. `now` are its cells while nobody else can write, empty when it is gone; `rows` are what
/// they were read from. As many cells are compared as `now` has.
[[nodiscard]] std::optional<Outcome> FindOvertaken(DeskSession& session, std::int32_t unitKey,
                                                   const SeenRow& seen,
                                                   const std::vector<qorcred::Value>& now,
                                                   std::span<const RowsOfTable> rows);

}  // namespace qorhost
