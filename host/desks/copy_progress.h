// How far a copy has come.
#pragma once

#include <cstddef>
#include <cstdint>

#include "host/desks/desk_error.h"
#include "host/desks/progress.h"

namespace qorhost {

/// Every row counts twice: when it is written, and when it is compared.
class CopyProgress {
 public:
  CopyProgress(const Progress& progress, std::int64_t rows)
      : progress_(progress), total_(2 * rows) {}

  /// Raises CancelledError when the handler says no.
  void Add(std::size_t rows) {
    for (; rows > 0 && progress_; --rows) {
      if (!progress_(++done_, total_)) throw CancelledError();
    }
  }

 private:
  const Progress& progress_;
  std::int64_t total_;
  std::int64_t done_ = 0;
};

}  // namespace qorhost
