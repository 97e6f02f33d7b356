#include "tests/support/noted_by_name.h"

#include <stdexcept>
#include <string>

#include "tests/support/noted_controllers.h"

namespace qortest {

std::unique_ptr<qorcred::Controller> MakeNotedController(std::string_view className,
                                                         qorcred::Host& host) {
  if (className == "clsCredential") {
    return std::make_unique<UnderTest<qorcred::clsCredential>>(host);
  }
  if (className == "clsDirCode") return std::make_unique<UnderTest<qorcred::clsDirCode>>(host);
  if (className == "clsDirCodeReport") {
    return std::make_unique<UnderTest<qorcred::clsDirCodeReport>>(host);
  }
  if (className == "clsCredentialReport") {
    return std::make_unique<UnderTest<qorcred::clsCredentialReport>>(host);
  }
  throw std::runtime_error("no class of controllers: " + std::string(className));
}

}  // namespace qortest
