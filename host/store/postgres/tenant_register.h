// Tenant ids, and link codes with their counter in the table UnitCounters.
#pragma once

#include "host/store/tenant_register.h"

namespace qorhost::postgres {

class Session;

class TenantRegister final : public qorhost::TenantRegister {
 public:
  explicit TenantRegister(Session& session) : session_(session) {}

  [[nodiscard]] std::int32_t TenantIdOf(std::int32_t unitKey, std::int32_t rid) override;
  void EachName(const std::function<Reading(const StoredNames&)>& take) override;
  void BackUp(std::int32_t unitKey, std::span<const std::int32_t> rids) override;
  [[nodiscard]] std::int32_t NextLinkCode(std::int32_t unitKey) override;
  void TakeLinkCodes(std::int32_t unitKey, std::int32_t count) override;

 private:
  [[nodiscard]] LinkCodes::Known ReadLinkCodes(std::int32_t unitKey);
  void KeepCounter(std::int32_t unitKey, std::int64_t nextCode);

  Session& session_;
};

}  // namespace qorhost::postgres
