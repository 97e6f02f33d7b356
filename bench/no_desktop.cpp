// Where there is no Qt, nothing is measured of the desktop program.
#include "bench/benchmarks.h"

namespace qorbench {

std::vector<Comparison> AddDesktopBenchmarks(Size /*size*/) {
  return {};
}

}  // namespace qorbench
