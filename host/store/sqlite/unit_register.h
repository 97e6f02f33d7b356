// What a database holds of each unit.
#pragma once

#include "host/store/unit_register.h"

namespace qorhost::sqlite {

class Session;

class UnitRegister final : public qorhost::UnitRegister {
 public:
  explicit UnitRegister(Session& session) : session_(session) {}

  [[nodiscard]] std::optional<UnitFacts> Find(std::int32_t unitKey) override;
  [[nodiscard]] UnitCounts Count(std::int32_t unitKey) override;
  void KeepCounts(std::int32_t unitKey) override;

 private:
  [[nodiscard]] std::optional<UnitFacts> Read(std::int32_t unitKey);

  Session& session_;
};

}  // namespace qorhost::sqlite
