#include "bench/check.h"

#include <fmt/format.h>

#include <cstdio>
#include <cstdlib>

namespace qorbench {

void Check(bool holds, std::string_view expectation) {
  if (holds) {
    return;
  }
  fmt::print(stderr, "qorbench: wrong result: {}\n", expectation);
  std::abort();
}

}  // namespace qorbench
