// The counts of units, kept up to date row by row while SQLite changes the rows.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include "host/store/sqlite/database.h"
#include "host/store/unit_register.h"

namespace qorhost::sqlite {

class Session;

/// Counts a unit's rows. Raises StoreError.
[[nodiscard]] UnitCounts CountUnit(Session& session, std::int32_t unitKey);

/// Those of the units that are followed, with what else is known of them. The database must outlive
/// it.
class KeptCounts {
 public:
  explicit KeptCounts(const Database& database) : database_(database) {}

  /// Follows every change of the unit's rows from now on, which are so many. Raises StoreError.
  void Follow(std::int32_t unitKey, const UnitCounts& now);
  void ForgetAll() noexcept {
    units_.clear();
    facts_.reset();
  }
  /// Null for a unit that is not followed.
  [[nodiscard]] const UnitCounts* Find(std::int32_t unitKey) const noexcept;

  /// What was read of a unit that is followed; null when it has to be read.
  [[nodiscard]] const UnitFacts* FactsOf(std::int32_t unitKey) const noexcept;
  /// Keeps it until a unit or its settings change.
  void KeepFacts(std::int32_t unitKey, const UnitFacts& facts);

  /// A place to go back to, when what came behind it is undone.
  using Place = std::vector<std::pair<std::int32_t, UnitCounts>>;
  [[nodiscard]] const Place& Here() const noexcept { return units_; }
  /// Units that are followed since then are forgotten.
  void GoBackTo(const Place& place) {
    units_ = place;
    facts_.reset();
  }

  /// To be told of each change before it, within the engine's own call: what the row was and is, is
  /// read from that. Raises when memory is out.
  void OnChange(int operation, std::string_view table);

 private:
  struct Columns {
    int unit = -1;
    int first = -1;  // of those that say whether the row counts
    int second = -1;
  };

  void ReadColumns();
  void Add(std::size_t table, bool isNew, int number);

  const Database& database_;
  std::vector<Columns> columns_;  // of each table that is counted
  Place units_;                   // few: an operation is meant for one
  std::optional<std::pair<std::int32_t, UnitFacts>> facts_;
};

}  // namespace qorhost::sqlite
