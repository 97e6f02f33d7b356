#include "host/store/units_in_work.h"

#include "host/store/work_course.h"

namespace qorhost {

std::optional<UnitFacts> UnitsInWork::Find(std::int32_t unitKey) {
  work_.RequireUsable();
  if (const UnitFacts* const kept = work_.units().FactsOf(unitKey)) {
    return *kept;
  }
  std::optional<UnitFacts> facts = Read(unitKey);
  if (facts) {
    work_.units().KeepFacts(unitKey, *facts);
  }
  return facts;
}

UnitCounts UnitsInWork::Count(std::int32_t unitKey) {
  work_.RequireUsable();
  work_.WriteHeld();  // they are counted when they are written
  const UnitCounts* const kept = work_.units().CountsOf(unitKey);
  return kept != nullptr ? *kept : CountRows(unitKey);
}

void UnitsInWork::KeepCounts(std::int32_t unitKey) {
  work_.KeepCounts(unitKey, CountRows(unitKey));
}

}  // namespace qorhost
