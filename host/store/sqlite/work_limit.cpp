#include "host/store/sqlite/work_limit.h"

namespace qorhost::sqlite {

WorkLimit::WorkLimit(Database& database, std::int64_t mostWork) : database_(database) {
  database_.BoundSteps(mostWork);
}

WorkLimit::~WorkLimit() {
  database_.BoundSteps(std::nullopt);
}

}  // namespace qorhost::sqlite
