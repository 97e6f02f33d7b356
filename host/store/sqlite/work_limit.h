// A bound on the work of one statement.
#pragma once

#include <cstdint>

#include "host/store/sqlite/database.h"

namespace qorhost::sqlite {

/// Stops what runs on a database during this object's lifetime when it takes more than about
/// kMostWork of the engine's steps: it fails with SQLITE_INTERRUPT. Reports of 100,000 rows take
/// a few million. A change that is stopped takes the whole transaction with it. One at a time.
class WorkLimit {
 public:
  static constexpr std::int64_t kMostWork = 200'000'000;

  explicit WorkLimit(Database& database, std::int64_t mostWork = kMostWork);
  ~WorkLimit();
  WorkLimit(const WorkLimit&) = delete;
  WorkLimit& operator=(const WorkLimit&) = delete;

 private:
  Database& database_;
};

}  // namespace qorhost::sqlite
