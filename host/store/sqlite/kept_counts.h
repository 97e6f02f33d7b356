// The counts of units, kept up to date row by row while SQLite changes the rows.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "host/store/followed_units.h"
#include "host/store/sqlite/database.h"

namespace qorhost::sqlite {

class Session;

/// Counts a unit's rows. Raises StoreError.
[[nodiscard]] UnitCounts CountUnit(Session& session, std::int32_t unitKey);

/// Counts the rows of units that are followed. The database and the units must outlive it.
class KeptCounts {
 public:
  KeptCounts(const Database& database, FollowedUnits& units) : database_(database), units_(units) {}

  /// To be called before the first unit is followed. Raises StoreError.
  void ReadColumns();

  /// To be told of each change before it, within the engine's own call: what the row was and is, is
  /// read from that. Raises when memory is out.
  void OnChange(int operation, std::string_view table);

 private:
  struct Columns {
    int unit = -1;
    int first = -1;  // of those that say whether the row counts
    int second = -1;
  };

  void Add(std::size_t table, bool isNew, int number);

  const Database& database_;
  FollowedUnits& units_;
  std::vector<Columns> columns_;  // of each table that is counted
};

}  // namespace qorhost::sqlite
