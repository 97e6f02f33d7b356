// Facts and counts of units.
#pragma once

#include "host/store/unit_register.h"

namespace qorhost::postgres {

class Session;

class UnitRegister final : public qorhost::UnitRegister {
 public:
  explicit UnitRegister(Session& session) : session_(session) {}

  [[nodiscard]] std::optional<UnitFacts> Find(std::int32_t unitKey) override;
  [[nodiscard]] UnitCounts Count(std::int32_t unitKey) override;
  void KeepCounts(std::int32_t unitKey) override;

 private:
  [[nodiscard]] std::optional<UnitFacts> Read(std::int32_t unitKey);
  [[nodiscard]] UnitCounts CountRows(std::int32_t unitKey);

  Session& session_;
};

}  // namespace qorhost::postgres
