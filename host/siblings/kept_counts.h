// A unit's counts, kept up to date row by row.
#pragma once

#include <cstdint>

#include "host/store/sql_session.h"

namespace qorhost {

/// While it lives, ReadUnitStatus() need not count the unit's rows: many saves in one transaction,
/// each of which asks for the counts, take time linear in their number. Must begin and end inside a
/// transaction of the host's that lets nobody else write; the session must outlive it. Raises
/// StoreError.
class KeptCounts {
 public:
  KeptCounts(SqlSession& session, std::int32_t unitKey);
  ~KeptCounts();
  KeptCounts(const KeptCounts&) = delete;
  KeptCounts& operator=(const KeptCounts&) = delete;

 private:
  Database& database_;
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
