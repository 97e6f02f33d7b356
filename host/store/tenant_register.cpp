#include "host/store/tenant_register.h"

#include <algorithm>
#include <limits>

#include "frame/runtime_error.h"

namespace qorhost {

std::int32_t TenantRegister::RequireLinkCode(std::int64_t code) {
  if (code > std::numeric_limits<std::int32_t>::max()) {
    throw qorcred::RuntimeError(qorcred::ErrorNumber::kOverflow, "The unit has no link code left");
  }
  return static_cast<std::int32_t>(code);
}

std::optional<std::int32_t> TenantRegister::HeldTenantId(const WriteBuffer& buffer,
                                                         std::int32_t unitKey, std::int32_t rid) {
  const HeldRows* const tenants = buffer.RowsOf("Tenants");
  if (tenants == nullptr) {
    return std::nullopt;
  }
  const std::span<const std::int32_t> rids = tenants->rids();
  const auto found = std::lower_bound(rids.begin(), rids.end(), rid);
  if (found == rids.end() || *found != rid) {
    return std::nullopt;
  }
  const auto row = static_cast<std::size_t>(found - rids.begin());
  return tenants->NumberIn(row, tenants->PlaceOf("UnitKey")) == unitKey ? rid : 0;
}

std::int32_t TenantRegister::CatchUp(LinkCodes::Known& codes) {
  const std::int32_t free = RequireLinkCode(codes.next());
  if (codes.counter < codes.afterTenants) {
    codes.counter = codes.afterTenants;
    codes.changed = true;
  }
  return free;
}

}  // namespace qorhost
