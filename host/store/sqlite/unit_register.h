// What a database holds of each unit.
#pragma once

#include "host/store/units_in_work.h"

namespace qorhost::sqlite {

class Session;

class UnitRegister final : public UnitsInWork {
 public:
  explicit UnitRegister(Session& session);

 private:
  [[nodiscard]] std::optional<UnitFacts> Read(std::int32_t unitKey) override;
  [[nodiscard]] UnitCounts CountRows(std::int32_t unitKey) override;

  Session& session_;
};

}  // namespace qorhost::sqlite
