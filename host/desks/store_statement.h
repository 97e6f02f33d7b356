// One statement of the desktop SQL dialect, run on a store by hand.
#pragma once

#include <cstdint>
#include <string>

#include "host/desks/session.h"
#include "host/files/table.h"

namespace qorhost {

struct ChangedRows {
  std::int64_t rows = 0;
  std::int64_t newRid = 0;  ///< identity of the row that an INSERT added last
};

/// Looked at before a store is opened for it. What the dialect does not know, and what a table does
/// not have, is a RefusedError with line and column; a failure of the store is a StoreError.
class StoreStatement {
 public:
  explicit StoreStatement(std::string text);

  /// Whether it only reads.
  [[nodiscard]] bool reads() const { return reads_; }

  [[nodiscard]] Table Read(DeskSession& session) const;
  ChangedRows Change(DeskSession& session) const;

 private:
  std::string text_;
  bool reads_ = false;
};

}  // namespace qorhost
