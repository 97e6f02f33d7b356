// Facts and counts of units.
#pragma once

#include "host/store/units_in_work.h"

namespace qorhost::postgres {

class Session;

class UnitRegister final : public UnitsInWork {
 public:
  explicit UnitRegister(Session& session);

 private:
  [[nodiscard]] std::optional<UnitFacts> Read(std::int32_t unitKey) override;
  [[nodiscard]] UnitCounts CountRows(std::int32_t unitKey) override;

  Session& session_;
};

}  // namespace qorhost::postgres
