// What was done to one row, or to a run of new ones, fit to be undone.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "frame/value.h"

namespace qorhost {

/// A column of a row with its value as it is stored: Booleans as -1 and 0, dates as canonical
/// texts.
struct StoredCell {
  std::string column;
  qorcred::Value value;
  friend bool operator==(const StoredCell&, const StoredCell&) = default;
};

enum class RowChangeKind : std::uint8_t {
  kInserted,  ///< `after` is the first row of the run; of the others the identity is kept alone
  kUpdated,   ///< `before` and `after` hold the columns that differ
  kDeleted,   ///< `before` is the row
};

/// Of several changes of one row each is kept, in their order.
struct RowChange {
  RowChangeKind kind = RowChangeKind::kInserted;
  std::string table;
  std::int64_t rid = 0;
  std::int64_t lastRid = 0;  ///< of a run of inserted rows; else `rid`
  std::vector<StoredCell> before;
  std::vector<StoredCell> after;
};

/// A change as a line of JSON, and back. Whole numbers stay apart from others, and bytes that are
/// no UTF-8 come back as they were. Reading raises StoreError for anything else.
[[nodiscard]] std::string TextOfChange(const RowChange& change);
[[nodiscard]] RowChange ChangeFromText(std::string_view text);

}  // namespace qorhost
