#include <stdexcept>

#include "tests/host/store/store_names.h"

namespace qorhost::test {

std::string WhyNoServer() {
  return "this was built without libpq (Debian: libpq-dev)";
}

std::string NewServerName() {
  throw std::logic_error(WhyNoServer());
}

std::string NewServerNameLike(const std::string& /*name*/) {
  throw std::logic_error(WhyNoServer());
}

}  // namespace qorhost::test
