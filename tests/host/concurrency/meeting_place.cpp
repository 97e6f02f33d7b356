#include "tests/host/concurrency/meeting_place.h"

#include <algorithm>
#include <cstdlib>

namespace qorhost::test {

int OrderStep(int usual) {
  const char* const asked = std::getenv("QORHOST_MORE_ORDERS");
  const int times = asked == nullptr ? 1 : std::max(1, std::stoi(asked));
  return (usual + times - 1) / times;
}

}  // namespace qorhost::test
