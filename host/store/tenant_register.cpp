#include "host/store/tenant_register.h"

#include <limits>

#include "frame/runtime_error.h"

namespace qorhost {

std::int32_t TenantRegister::RequireLinkCode(std::int64_t code) {
  if (code > std::numeric_limits<std::int32_t>::max()) {
    throw qorcred::RuntimeError(qorcred::ErrorNumber::kOverflow, "The unit has no link code left");
  }
  return static_cast<std::int32_t>(code);
}

}  // namespace qorhost
