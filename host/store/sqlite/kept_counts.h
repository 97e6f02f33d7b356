// A unit's counts, kept up to date row by row.
#pragma once

#include <cstdint>

#include "host/store/sqlite/session.h"
#include "host/store/unit_register.h"

namespace qorhost::sqlite {

/// Temporary triggers on the tables that are counted. Inside a transaction their creation would
/// have the whole schema read again when a part of it is undone. Raises StoreError.
class KeptCounts final : public qorhost::KeptCounts {
 public:
  explicit KeptCounts(Session& session);
  ~KeptCounts() override;

  void Follow(std::int32_t unitKey) override;

 private:
  Session& session_;
};

/// The kept counts, or the rows as they are counted.
[[nodiscard]] UnitCounts ReadUnitCounts(Session& session, std::int32_t unitKey);

}  // namespace qorhost::sqlite
