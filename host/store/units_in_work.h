// What a store holds of each unit, which a unit of work keeps while nobody else can write.
#pragma once

#include <cstdint>
#include <optional>

#include "host/store/unit_register.h"

namespace qorhost {

class WorkCourse;

/// An engine derives from it how a unit is read and its rows are counted.
class UnitsInWork : public UnitRegister {
 public:
  [[nodiscard]] std::optional<UnitFacts> Find(std::int32_t unitKey) final;
  [[nodiscard]] UnitCounts Count(std::int32_t unitKey) final;
  void KeepCounts(std::int32_t unitKey) final;

 protected:
  /// The unit of work lives longer than the calls of this.
  explicit UnitsInWork(WorkCourse& work) : work_(work) {}

 private:
  /// Nothing for a unit that the store does not have.
  [[nodiscard]] virtual std::optional<UnitFacts> Read(std::int32_t unitKey) = 0;
  [[nodiscard]] virtual UnitCounts CountRows(std::int32_t unitKey) = 0;

  WorkCourse& work_;
};

}  // namespace qorhost
