// Where libpq is not.
#include "bench/benchmarks.h"

namespace qorbench {

std::vector<Comparison> AddServerBenchmarks(Size /*size*/) {
  return {};
}

}  // namespace qorbench
