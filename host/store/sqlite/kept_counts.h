// A unit's counts, kept up to date row by row.
#pragma once

#include <cstdint>

#include "host/store/sqlite/session.h"

namespace qorhost {

/// Lets ReadUnitStatus() do without counting a unit's rows: many saves in one transaction, each of
/// which asks for the counts, take time linear in their number. Must begin and end outside the
/// transaction, or undoing a part of it would read the whole schema again. The session must outlive
/// it. Raises StoreError.
class KeptCounts {
 public:
  explicit KeptCounts(SqlSession& session);
  ~KeptCounts();
  KeptCounts(const KeptCounts&) = delete;
  KeptCounts& operator=(const KeptCounts&) = delete;

  /// Counts the unit's rows and follows every change of them from now on, until the transaction in
  /// which it is called ends; it must let nobody else write.
  void Count(std::int32_t unitKey);

 private:
  SqlSession& session_;
};

/// What ReadUnitStatus() counts.
struct UnitCounts {
  std::int64_t credentials = 0;
  std::int64_t directoryCodes = 0;
  std::int64_t pendingSteps = 0;
  friend bool operator==(const UnitCounts&, const UnitCounts&) = default;
};

/// The kept counts, or the rows as they are counted.
[[nodiscard]] UnitCounts ReadUnitCounts(SqlSession& session, std::int32_t unitKey);

}  // namespace qorhost
