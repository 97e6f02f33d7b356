// Where there is no Qt, nothing is measured of the desktop program.
#include "bench/benchmarks.h"

namespace qorbench {

std::shared_ptr<void> StartDesktop() {
  return nullptr;
}

std::vector<Comparison> AddDesktopBenchmarks(Size /*size*/) {
  return {};
}

}  // namespace qorbench
