#include "host/store/sqlite/work_limit.h"

#include <sqlite3.h>

namespace qorhost::sqlite {

namespace {

// How often the engine asks whether to go on, in steps.
constexpr int kStride = 100'000;

}  // namespace

WorkLimit::WorkLimit(const Database& database, std::int64_t mostWork)
    : database_(database), left_(mostWork / kStride) {
  const auto isUsedUp = [](void* left) {
    auto& strides = *static_cast<std::int64_t*>(left);
    --strides;
    return strides < 0 ? 1 : 0;
  };
  sqlite3_progress_handler(database.handle(), kStride, isUsedUp, &left_);
}

WorkLimit::~WorkLimit() {
  sqlite3_progress_handler(database_.handle(), 0, nullptr, nullptr);
}

}  // namespace qorhost::sqlite
